// SPDX-License-Identifier: MIT
#include <vexagpx/report/ReceiptText.h>

#include <vexagpx/terminal/DisplayText.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace vexagpx {

namespace {

// Longer texts are no use to a person; the JSON form has more of them.
constexpr std::size_t kLongestText = 400;

bool IsPlain(const std::string& text) {
    return text.size() <= kLongestText &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

/// Safe for a terminal.
std::string Shown(const std::string& text) {
    if (IsPlain(text))
        return text;
    std::string utf8;
    Fitted(Printable(icu::UnicodeString::fromUTF8(text)), kLongestText).toUTF8String(utf8);
    return utf8;
}

std::string Counted(std::uint64_t count, const std::string& noun) {
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

/// "5:33"; "-" when the place is not known.
std::string PlaceText(const Place& place) {
    if (place.line == 0)
        return "-";
    return std::to_string(place.line) + ':' + (place.column == 0 ? "-" : std::to_string(place.column));
}

void WriteContents(const Contents& contents, Output& out) {
    std::string geocaches;
    if (contents.geocaches > 0)
        geocaches = " (" + Counted(contents.geocaches, "geocache") + ", " + Counted(contents.logs, "log") +
                    ", " + Counted(contents.travelBugs, "travel bug") + ")";
    out.Write("  Waypoints  " + std::to_string(contents.waypoints) + geocaches + "\n");
    std::string points;
    if (contents.routes > 0)
        points = " (" + Counted(contents.routePoints, "point") + ")";
    out.Write("  Routes     " + std::to_string(contents.routes) + points + "\n");
    points.clear();
    if (contents.tracks > 0)
        points = " (" + Counted(contents.segments, "segment") + ", " +
                 Counted(contents.trackPoints, "point") + ")";
    out.Write("  Tracks     " + std::to_string(contents.tracks) + points + "\n");
}

/// "3 times, first at 9:21, 10:21, 11:21"; empty for what is there once.
template <class Entry>
std::string Times(const Entry& entry) {
    if (entry.count == 1)
        return {};
    std::string text = std::to_string(entry.count) + " times";
    if (entry.places.back().line == 0)
        return text;
    text += entry.count > entry.places.size() ? ", first at " : ", at ";
    for (const Place& place : entry.places)
        text += (&place == &entry.places.front() ? "" : ", ") + PlaceText(place);
    return text;
}

/// The place and the first line, then the other lines below the latter; empty ones are left out.
template <class Entry>
void WriteEntry(const Entry& entry, const std::string& first, std::string_view second, Output& out) {
    const std::string place = PlaceText(entry.places.front());
    out.Write("  " + place + "  " + first + "\n");
    for (const std::string& line : {std::string(second), Times(entry)})
        if (!line.empty())
            out.Write("      " + line + "\n");
}

void WriteComplaints(const Receipt& receipt, Output& out) {
    if (receipt.Complaints().Count() == 0)
        return;
    out.Write("\nMessages of the XML parser\n");
    receipt.Complaints().ForEach([&](const auto& entry) {
        const ParserComplaint& complaint = entry.thing;
        const std::string file = complaint.file.empty() ? "" : "in " + Shown(complaint.file);
        WriteEntry(entry, std::string(Word(complaint.severity)) + ": " + Shown(complaint.text), file, out);
    });
}

void WritePassed(const Receipt& receipt, Output& out) {
    if (receipt.Passed().Count() == 0)
        return;
    out.Write("\nPassed over\n");
    receipt.Passed().ForEach([&](const auto& entry) {
        const PassedThing& thing = entry.thing;
        const std::string why = std::string(Word(thing.reason)) + ": " + Shown(thing.message);
        WriteEntry(entry, Shown(thing.element) + (thing.isLoss ? " (lost)" : ""), why, out);
    });
}

/// ", 2 of which a document could have held".
std::string LostText(const CheckTotals& totals) {
    if (totals.passed == 1)
        return ", and a document could have held it";
    const std::string share = totals.lost == totals.passed ? "all" : std::to_string(totals.lost);
    return ", " + share + " of which a document could have held";
}

} // namespace

void WriteReceiptText(const std::string& heading, const Contents* contents, const Receipt& receipt,
                      Output& out) {
    out.Write(Shown(heading) + "\n");
    if (contents != nullptr)
        WriteContents(*contents, out);
    else
        out.Write("  It could not be read.\n");
    WriteComplaints(receipt, out);
    if (contents != nullptr)
        WritePassed(receipt, out);
}

std::string SummaryText(const CheckTotals& totals) {
    const bool failed = totals.failures > 0;
    std::string text = failed ? Counted(totals.failures, "file") + " could not be read." : "";
    if (totals.documents == 0)
        return text;
    text += failed ? " " : "";
    const std::string everything = failed ? "Everything else" : "Everything";
    if (totals.passed == 0)
        return text + everything + " was read.";
    const std::string passedOver = totals.passed == 1 ? " was passed over" : " were passed over";
    if (totals.lost == 0)
        return text + everything + " that a document can hold was read. " +
               Counted(totals.passed, "other thing") + passedOver + ".";
    return text + Counted(totals.passed, "thing") + passedOver + LostText(totals) + ".";
}

} // namespace vexagpx
