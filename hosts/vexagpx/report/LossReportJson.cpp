// SPDX-License-Identifier: MIT
#include <vexagpx/report/LossReportJson.h>

#include <vexagpx/output/JsonWriter.h>

#include <cstdint>
#include <string_view>

namespace vexagpx {

namespace {

class LossReportJson {
public:
    explicit LossReportJson(Output& out) : json_(out) {}

    void Begin(const DocumentSource& source);
    void End() { json_.EndObject(); }

    void WriteError(const std::string& error) { json_.Member("error", error); }
    void Write(const DocumentCounts& counts) { WriteContents(json_, counts); }
    void WriteMessages(const LossReport& report);
    /// \param lostCount how many things are lost besides those of the report
    void WriteSkipped(const LossReport& report, std::uint64_t lostCount);
    void WriteWriting(const std::vector<WritingCheck>& checks);
    void WriteSchemaErrors(const SchemaReport& report);

private:
    template <class Entry>
    void WriteLocations(const Entry& entry);

    JsonWriter json_;
};

void LossReportJson::Begin(const DocumentSource& source) {
    json_.BeginObject();
    if (source.entry != nullptr)
        json_.Member("entry", *source.entry);
    json_.Member("file", source.file);
}

void LossReportJson::WriteMessages(const LossReport& report) {
    json_.Key("messages");
    json_.BeginArray();
    report.Messages().ForEach([&](const auto& entry) {
        json_.BeginObject();
        json_.Member("severity", Word(entry.value.severity));
        json_.Member("text", entry.value.text);
        if (!entry.value.file.empty())
            json_.Member("file", entry.value.file);
        WriteLocations(entry);
        json_.EndObject();
    });
    json_.EndArray();
}

void LossReportJson::WriteSkipped(const LossReport& report, std::uint64_t lostCount) {
    json_.Member("skippedCount", report.SkippedElements().Count());
    json_.Member("lostCount", report.LostCount() + lostCount);
    json_.Key("skipped");
    json_.BeginArray();
    report.SkippedElements().ForEach([&](const auto& entry) {
        json_.BeginObject();
        json_.Member("element", entry.value.element);
        if (!entry.value.attribute.empty())
            json_.Member("attribute", entry.value.attribute);
        json_.Member("reason", Word(entry.value.reason));
        json_.Member("message", entry.value.message);
        json_.Member("isLoss", entry.value.isLoss);
        WriteLocations(entry);
        json_.EndObject();
    });
    json_.EndArray();
}

void LossReportJson::WriteWriting(const std::vector<WritingCheck>& checks) {
    json_.Key("written");
    json_.BeginArray();
    for (const WritingCheck& check : checks) {
        json_.BeginObject();
        json_.Member("version", check.version);
        json_.Member("lostCount", check.LostCount());
        json_.Key("unwritten");
        json_.BeginArray();
        for (const UnwrittenKind& kind : check.unwritten.Kinds()) {
            json_.BeginObject();
            json_.Member("element", kind.element);
            json_.Member("message", kind.message);
            json_.Member("first", kind.first);
            json_.Member("count", kind.count);
            json_.EndObject();
        }
        json_.EndArray();
        if (check.unwritten.OthersCount() > 0)
            json_.Member("otherUnwrittenCount", check.unwritten.OthersCount());
        json_.Key("differences");
        json_.BeginArray();
        for (const std::string& difference : check.differences)
            json_.String(difference);
        json_.EndArray();
        if (check.otherDifferences > 0)
            json_.Member("otherDifferenceCount", check.otherDifferences);
        json_.EndObject();
    }
    json_.EndArray();
}

void LossReportJson::WriteSchemaErrors(const SchemaReport& report) {
    json_.Member("isValid", report.IsValid());
    json_.Member("schemaErrorCount", report.Errors().Count());
    json_.Key("schemaErrors");
    json_.BeginArray();
    report.Errors().ForEach([&](const auto& entry) {
        json_.BeginObject();
        json_.Member("element", entry.value.element);
        json_.Member("kind", SchemaCause(entry.value.kind).word);
        json_.Member("message", entry.value.message);
        WriteLocations(entry);
        json_.EndObject();
    });
    json_.EndArray();
}

/// Locations that are not known are left out.
template <class Entry>
void LossReportJson::WriteLocations(const Entry& entry) {
    json_.Member("count", entry.count);
    json_.Key("places");
    json_.BeginArray();
    for (const Location& location : entry.locations) {
        if (location.line == 0)
            continue;
        json_.BeginObject();
        json_.Member("line", location.line);
        if (location.column != 0)
            json_.Member("column", location.column);
        json_.EndObject();
    }
    json_.EndArray();
}

} // namespace

void WriteLossReportJson(const DocumentSource& source, const DocumentCounts& counts, const Findings& findings,
                         Output& out) {
    LossReportJson json(out);
    json.Begin(source);
    json.Write(counts);
    json.WriteMessages(findings.losses);
    if (findings.schema != nullptr)
        json.WriteSchemaErrors(*findings.schema);
    json.WriteSkipped(findings.losses, findings.writing != nullptr ? LostCount(*findings.writing) : 0);
    if (findings.writing != nullptr)
        json.WriteWriting(*findings.writing);
    json.End();
    out.Write("\n");
}

void WriteFailureJson(const DocumentSource& source, const std::string& error, const Findings& findings,
                      Output& out) {
    LossReportJson json(out);
    json.Begin(source);
    json.WriteError(error);
    json.WriteMessages(findings.losses);
    if (findings.schema != nullptr)
        json.WriteSchemaErrors(*findings.schema);
    json.End();
    out.Write("\n");
}

} // namespace vexagpx
