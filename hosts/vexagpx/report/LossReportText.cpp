// SPDX-License-Identifier: MIT
#include <vexagpx/report/LossReportText.h>

#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/Lines.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace vexagpx {

namespace {

// A longer text does not help a person; the JSON form contains more of it.
constexpr std::size_t kLongestText = 400;

bool IsPlain(const std::string& text) {
    return text.size() <= kLongestText &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

/// The text, safe for a terminal.
std::string Shown(const std::string& text) {
    if (IsPlain(text))
        return text;
    std::string utf8;
    Fitted(Printable(icu::UnicodeString::fromUTF8(text)), kLongestText).toUTF8String(utf8);
    return utf8;
}

/// "5:33"; "-" when it is not known.
std::string LocationText(const Location& location) {
    if (location.line == 0)
        return "-";
    return std::to_string(location.line) + ':' +
           (location.column == 0 ? "-" : std::to_string(location.column));
}

/// "3 times, first at 9:21, 10:21, 11:21"; empty for a single occurrence.
template <class Entry>
std::string Times(const Entry& entry) {
    if (entry.count == 1)
        return {};
    std::string text = std::to_string(entry.count) + " times";
    if (entry.locations.back().line == 0)
        return text;
    text += entry.count > entry.locations.size() ? ", first at " : ", at ";
    for (const Location& location : entry.locations)
        text += (&location == &entry.locations.front() ? "" : ", ") + LocationText(location);
    return text;
}

/// \param indent of the lines after the first one, in a terminal
void WriteText(const std::string& line, std::size_t indent, Output& out, Style style = Style::kPlain) {
    WriteWhole(out, icu::UnicodeString::fromUTF8(line), indent, style);
}

/// Writes the title of what follows, below an empty line.
void WriteTitle(std::string_view title, Output& out, Style style = Style::kHeading) {
    out.Write("\n");
    WriteText(std::string(title), 0, out, style);
}

/// Writes the location with the first line, and below it the other lines that are not empty.
template <class Entry>
void WriteEntry(const Entry& entry, const std::string& first, std::string_view second, Output& out,
                Style style = Style::kPlain) {
    const std::string location = LocationText(entry.locations.front());
    WriteText("  " + location + "  " + first, location.size() + 4, out, style);
    for (const std::string& line : {std::string(second), Times(entry)})
        if (!line.empty())
            WriteText("      " + line, 6, out);
}

void WriteMessages(const LossReport& report, Output& out) {
    if (report.Messages().Count() == 0)
        return;
    WriteTitle("Messages of the XML parser", out);
    report.Messages().ForEach([&](const auto& entry) {
        const XmlMessage& xmlMessage = entry.value;
        const std::string file = xmlMessage.file.empty() ? "" : "in " + Shown(xmlMessage.file);
        WriteEntry(entry, std::string(Word(xmlMessage.severity)) + ": " + Shown(xmlMessage.text), file, out);
    });
}

void WriteSkipped(const LossReport& report, std::string_view title, Output& out) {
    if (report.SkippedElements().Count() == 0)
        return;
    WriteTitle(title, out);
    report.SkippedElements().ForEach([&](const auto& entry) {
        const SkippedElement& element = entry.value;
        const std::string why = std::string(Word(element.reason)) + ": " + Shown(element.message);
        const std::string attribute = element.attribute.empty() ? "" : "@" + Shown(element.attribute);
        WriteEntry(entry, Shown(element.element) + attribute + (element.isLoss ? " (lost)" : ""), why, out,
                   element.isLoss ? Style::kBad : Style::kPlain);
    });
}

void WriteSchemaErrors(const SchemaReport& report, Output& out) {
    if (report.IsValid()) {
        WriteTitle("Valid by its schema", out, Style::kGood);
        return;
    }
    WriteTitle("Not valid by its schema", out, Style::kBad);
    report.Errors().ForEach([&](const auto& entry) {
        const SchemaError& error = entry.value;
        WriteEntry(entry, Shown(error.element),
                   std::string(SchemaCause(error.kind).word) + ": " + Shown(error.message), out);
    });
}

void WriteWriting(const WritingCheck& check, Output& out) {
    WriteTitle("Written as GPX " + check.version, out);
    for (const std::string& line : UnwrittenLines(check.unwritten))
        WriteText("  " + line + " (lost)", 4, out, Style::kBad);
    for (const std::string& difference : check.differences)
        WriteText("  " + Shown(difference) + " (lost)", 4, out, Style::kBad);
    if (check.otherDifferences > 0)
        out.Write("  and " + Counted(check.otherDifferences, "other difference") + " (lost)\n");
    if (check.LostCount() == 0)
        WriteText("  Nothing is lost.", 2, out, Style::kGood);
}

/// ", and 2 of them are losses".
std::string LostText(const CheckTotals& totals) {
    if (totals.skipped == 1)
        return ", which is a loss";
    if (totals.lost == totals.skipped)
        return ", and all of them are losses";
    return ", and " + std::to_string(totals.lost) + " of them " +
           (totals.lost == 1 ? "is a loss" : "are losses");
}

/// "2 files could not be read. "; without the blank when there is nothing else to say.
std::string FailureText(const CheckTotals& totals) {
    if (totals.failures == 0)
        return {};
    return Counted(totals.failures, "file") + " could not be read." + (totals.documents > 0 ? " " : "");
}

} // namespace

void WriteLossReportText(const std::string& heading, const DocumentCounts* counts, const Findings& findings,
                         Output& out) {
    const LossReport& losses = findings.losses;
    WriteText(Shown(heading), 0, out, Style::kHeading);
    if (counts != nullptr)
        WriteCounts(*counts, GeocacheDetail::kLogsAndTravelBugs, out);
    else
        WriteText("  It could not be read.", 2, out, Style::kBad);
    WriteMessages(losses, out);
    if (findings.schema != nullptr)
        WriteSchemaErrors(*findings.schema, out);
    if (counts != nullptr)
        WriteSkipped(losses,
                     findings.writing != nullptr ? "Not as it should be, but kept" : "Skipped or changed",
                     out);
    if (findings.writing != nullptr)
        for (const WritingCheck& check : *findings.writing)
            WriteWriting(check, out);
}

std::string SummaryText(const CheckTotals& totals) {
    std::string text = FailureText(totals);
    if (totals.documents == 0)
        return text;
    const std::string everything = totals.failures > 0 ? "Everything else" : "Everything";
    if (totals.skipped == 0)
        return text + everything + " was read.";
    const std::string skipped = (totals.skipped == 1 ? " was" : " were") + std::string(" skipped or changed");
    if (totals.lost == 0)
        return text + everything + " that a document can hold was read. " +
               Counted(totals.skipped, "other thing") + skipped + ".";
    return text + Counted(totals.skipped, "thing") + skipped + LostText(totals) + ".";
}

std::string SchemaSummaryText(std::uint64_t valid, std::uint64_t invalid) {
    const auto are = [](std::uint64_t count) { return count == 1 ? " is" : " are"; };
    if (valid + invalid == 0)
        return {};
    if (valid == 0)
        return Counted(invalid, "document") + are(invalid) + " not valid by the schema.";
    const std::string text = Counted(valid, "document") + are(valid) + " valid by the schema";
    return invalid == 0 ? text + "." : text + ", " + std::to_string(invalid) + are(invalid) + " not.";
}

std::string KeepSummaryText(const CheckTotals& totals) {
    std::string text = FailureText(totals);
    if (totals.documents == 0)
        return text;
    text += totals.lost == 0 ? "Nothing is lost"
                             : Counted(totals.lost, "thing") + (totals.lost == 1 ? " is" : " are") + " lost";
    if (totals.skipped > 0)
        text += "; " + Counted(totals.skipped, "thing") + (totals.skipped == 1 ? " is" : " are") +
                " not as it should be, but kept";
    return text + ".";
}

} // namespace vexagpx
