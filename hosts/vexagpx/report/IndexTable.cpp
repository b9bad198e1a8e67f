// SPDX-License-Identifier: MIT
#include <vexagpx/report/IndexTable.h>

#include <vexagpx/output/ValueText.h>
#include <vexagpx/terminal/DisplayText.h>

#include <array>
#include <cstdio>
#include <string>
#include <string_view>

namespace vexagpx {

namespace {

icu::UnicodeString CountText(std::size_t count) {
    return count == 0 ? icu::UnicodeString() : NumberText(count);
}

std::string KindText(const DocumentCounts& counts) {
    std::string text;
    for (const std::string_view kind : KindsOf(counts))
        text.append(text.empty() ? "" : ", ").append(kind);
    return text.empty() ? "nothing" : text;
}

/// The day in UTC.
std::string DayText(double millis) {
    const TimeDigits digits(millis);
    return std::string(digits.Text().substr(0, digits.Text().find('T')));
}

/// "2009-01-15", "2009-01-15 to 2009-01-16".
std::string DaysText(const vexaTrackLib::TimeSpan& times) {
    const std::string first = DayText(times.First());
    const std::string last = DayText(times.Last());
    return first == last ? first : first + " to " + last;
}

/// "1.500 to 2.250", which is exact to about 100 metres.
std::string RangeText(double from, double to) {
    std::array<char, 64> text;
    std::snprintf(text.data(), text.size(), "%.3f to %.3f", from, to);
    return text.data();
}

std::string NoteText(const IndexEntry& entry) {
    std::string text = KindText(entry.counts);
    if (!entry.times.IsEmpty())
        text += "; " + DaysText(entry.times);
    if (!entry.bounds.IsEmpty())
        text += "; latitude " + RangeText(entry.bounds.South(), entry.bounds.North()) + ", longitude " +
                RangeText(entry.bounds.West(), entry.bounds.East());
    return text;
}

} // namespace

void IndexTable::Add(const IndexEntry& entry) {
    const DocumentCounts& counts = entry.counts;
    table_.AddRow(
        {NumberText(++rows_), icu::UnicodeString::fromUTF8(entry.Name()),
         CountText(counts.routePoints + counts.trackPoints), CountText(counts.waypoints),
         CountText(counts.geocaches), CountText(counts.routes), CountText(counts.tracks)},
        icu::UnicodeString::fromUTF8(entry.error.empty() ? NoteText(entry) : "unreadable: " + entry.error));
}

} // namespace vexagpx
