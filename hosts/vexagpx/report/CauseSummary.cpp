// SPDX-License-Identifier: MIT
#include <vexagpx/report/CauseSummary.h>

#include <vexagpx/report/LossReportText.h>
#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/Lines.h>

#include <algorithm>
#include <cstddef>

namespace vexagpx {

namespace {

constexpr std::size_t kIndent = 4;

void WriteIndented(const std::string& line, std::size_t indent, Output& out) {
    const auto length = static_cast<std::int32_t>(indent);
    const icu::UnicodeString blanks(length, u' ', length);
    WriteWhole(out, blanks + Printable(icu::UnicodeString::fromUTF8(line)), indent + 2);
}

/// The message without the name of the file, which says nothing about the cause.
std::string WithoutName(std::string message, const std::string& name) {
    const std::string file = name.substr(0, name.find(": "));
    for (std::size_t at = message.find(file); at != std::string::npos && !file.empty();
         at = message.find(file, at))
        message.erase(at, file.size());
    return message;
}

/// "a.gpx:12, b.gpx".
template <class Examples>
std::string ExamplesText(const Examples& examples) {
    std::string text;
    for (const auto& example : examples)
        text += (text.empty() ? "" : ", ") + example.file +
                (example.line == 0 ? "" : ":" + std::to_string(example.line));
    return text;
}

/// "gpx/wpt/speed (12), gpx/wpt/course (3)".
std::string NamesText(const std::vector<std::pair<std::string, std::uint64_t>>& names) {
    std::string text;
    for (const auto& [name, count] : names)
        text += (text.empty() ? "" : ", ") + name + " (" + std::to_string(count) + ")";
    return text;
}

} // namespace

void CauseSummary::Add(Kind kind, const Cause& cause, std::uint64_t count, Example example,
                       const std::string& name) {
    Group& group = groups_.try_emplace({kind, cause.word}, Group{kind, cause, 0, 0, {}, {}, 0}).first->second;
    group.count += count;
    if (group.lastDocument != documents_) {
        group.lastDocument = documents_;
        ++group.files;
        if (group.examples.size() < kMostExamples)
            group.examples.push_back(std::move(example));
    }
    if (!name.empty() && (group.names.size() < kMostNames || group.names.contains(name)))
        group.names[name] += count;
}

void CauseSummary::AddDocument(const std::string& name, const Findings& findings) {
    ++documents_;
    lossy_ += findings.losses.LostCount() != 0 ? 1 : 0;
    if (findings.schema != nullptr)
        AddSchemaErrors(name, *findings.schema);
    findings.losses.SkippedElements().ForEach([&](const auto& entry) {
        const SkippedElement& what = entry.value;
        const std::string where = what.element + (what.attribute.empty() ? "" : "@" + what.attribute);
        Add(what.isLoss ? Kind::kLoss : Kind::kNote, SkipCause(what.reason), entry.count,
            {name, {}, entry.locations.front().line}, where);
    });
}

void CauseSummary::AddFailure(const std::string& name, const std::string& message, const Findings& findings) {
    ++documents_;
    ++failures_;
    Add(Kind::kFailure, FailureCause(WithoutName(message, name)), 1, {name, message, 0}, {});
    if (findings.schema != nullptr)
        AddSchemaErrors(name, *findings.schema);
}

void CauseSummary::AddSchemaErrors(const std::string& name, const SchemaReport& report) {
    ++(report.IsValid() ? valid_ : invalid_);
    report.Errors().ForEach([&](const auto& entry) {
        Add(Kind::kInvalid, SchemaCause(entry.value.kind), entry.count,
            {name, {}, entry.locations.front().line}, entry.value.element);
    });
}

// The most frequent cause comes first.
std::vector<const CauseSummary::Group*> CauseSummary::Sorted(Kind kind) const {
    std::vector<const Group*> sorted;
    for (const auto& [key, group] : groups_)
        if (group.kind == kind)
            sorted.push_back(&group);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Group* left, const Group* right) { return left->files > right->files; });
    return sorted;
}

std::vector<std::pair<std::string, std::uint64_t>> CauseSummary::MostFrequentNames(const Group& group) {
    std::vector<std::pair<std::string, std::uint64_t>> names(group.names.begin(), group.names.end());
    std::stable_sort(names.begin(), names.end(),
                     [](const auto& left, const auto& right) { return left.second > right.second; });
    names.resize(std::min(names.size(), kShownNames));
    return names;
}

void CauseSummary::WriteGroup(const Group& group, Output& out) {
    std::string head = Counted(group.files, "file");
    if (group.count != group.files)
        head += ", " + Counted(group.count, "time");
    WriteIndented(head + ": " + std::string(group.cause.title) + (group.kind == Kind::kFailure ? " " : ". ") +
                      std::string(group.cause.advice),
                  kIndent / 2, out);
    if (!group.names.empty())
        WriteIndented(NamesText(MostFrequentNames(group)) + (group.names.size() > kShownNames ? ", ..." : ""),
                      kIndent, out);
    WriteIndented(ExamplesText(group.examples) + (group.files > group.examples.size() ? ", ..." : ""),
                  kIndent, out);
}

void CauseSummary::WriteGroups(Kind kind, std::string_view title, Output& out) const {
    const std::vector<const Group*> groups = Sorted(kind);
    if (groups.empty())
        return;
    out.Write("\n");
    WriteLine(out, icu::UnicodeString::fromUTF8(std::string(title)), Style::kHeading);
    for (const Group* group : groups)
        WriteGroup(*group, out);
}

void CauseSummary::WriteText(Output& out) const {
    std::string head = Counted(documents_, "document") + ": " +
                       std::to_string(documents_ - failures_ - lossy_) + " without a loss";
    if (lossy_ != 0)
        head += ", " + std::to_string(lossy_) + " with losses";
    if (failures_ != 0)
        head += ", " + std::to_string(failures_) + " that could not be read";
    head += ".";
    if (const std::string schema = SchemaSummaryText(valid_, invalid_); !schema.empty())
        head += " " + schema;
    WriteWhole(out, icu::UnicodeString::fromUTF8(head), 0);
    WriteGroups(Kind::kFailure, "Could not be read", out);
    WriteGroups(Kind::kInvalid, "Not valid by the schema", out);
    WriteGroups(Kind::kLoss, "Lost", out);
}

std::string_view CauseSummary::KindWord(Kind kind) {
    switch (kind) {
    case Kind::kFailure:
        return "unreadable";
    case Kind::kInvalid:
        return "invalid";
    case Kind::kLoss:
        return "loss";
    case Kind::kNote:
        break;
    }
    return "note";
}

void CauseSummary::WriteGroupJson(const Group& group, JsonWriter& json) {
    json.BeginObject();
    json.Member("kind", KindWord(group.kind));
    json.Member("cause", group.cause.word);
    json.Member("title", group.cause.title);
    json.Member("advice", group.cause.advice);
    json.Member("files", group.files);
    json.Member("count", group.count);
    json.Key("examples");
    json.BeginArray();
    for (const Example& example : group.examples) {
        json.BeginObject();
        json.Member("file", example.file);
        if (example.line != 0)
            json.Member("line", example.line);
        if (!example.detail.empty())
            json.Member("message", example.detail);
        json.EndObject();
    }
    json.EndArray();
    json.Key("elements");
    json.BeginObject();
    for (const auto& [name, count] : group.names) {
        json.AnyKey(name);
        json.Number(count);
    }
    json.EndObject();
    json.EndObject();
}

void CauseSummary::WriteJson(Output& out) const {
    JsonWriter json(out);
    json.BeginObject();
    json.Member("documents", documents_);
    json.Member("unreadable", failures_);
    json.Member("lossy", lossy_);
    if (valid_ + invalid_ != 0)
        json.Member("invalid", invalid_);
    json.Key("causes");
    json.BeginArray();
    for (const Kind kind : {Kind::kFailure, Kind::kInvalid, Kind::kLoss, Kind::kNote})
        for (const Group* group : Sorted(kind))
            WriteGroupJson(*group, json);
    json.EndArray();
    json.EndObject();
    out.Write("\n");
}

} // namespace vexagpx
