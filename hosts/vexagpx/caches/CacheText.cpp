// SPDX-License-Identifier: MIT
#include <vexagpx/caches/CacheText.h>

#include <vexagpx/output/ValueText.h>
#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/Lines.h>
#include <vexagpx/terminal/Table.h>

#include <cmath>

namespace vexagpx {

using vexaTrackLib::Geocache;
using vexaTrackLib::GeocacheCompanion;
using vexaTrackLib::GeocachePlace;
using vexaTransferLib::GpxCacheLogDetails;

namespace {

constexpr std::size_t kIndent = 2;

icu::UnicodeString FromUtf8(std::string_view text) {
    return icu::UnicodeString::fromUTF8(
        icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

icu::UnicodeString RatingPart(const std::optional<double>& rating) {
    return rating ? FromUtf8(NumberDigits(*rating).Text()) : icu::UnicodeString(u'-');
}

icu::UnicodeString RatingText(const Geocache& cache) {
    if (!cache.difficulty && !cache.terrain)
        return {};
    return RatingPart(cache.difficulty) + u'/' + RatingPart(cache.terrain);
}

icu::UnicodeString StatusText(const Geocache& cache) {
    if (cache.isArchived.value_or(false))
        return u"archived";
    return cache.isAvailable.value_or(true) ? u"" : u"disabled";
}

/// The one of eight directions that is the nearest.
icu::UnicodeString DirectionText(double bearing) {
    static constexpr const char16_t* kDirections[] = {u"N", u"NE", u"E", u"SE", u"S", u"SW", u"W", u"NW"};
    const auto eighth = static_cast<std::size_t>(std::lround(bearing / 45.0)) % 8;
    return kDirections[eighth];
}

icu::UnicodeString DistanceText(const Geocache& cache) {
    if (!cache.metres)
        return {};
    return LengthText(*cache.metres) + u' ' + DirectionText(cache.bearing.value_or(0.0));
}

icu::UnicodeString PlaceText(const std::optional<GeocachePlace>& place) {
    if (!place)
        return u"no place in the file";
    return DegreesText(place->latitude) + u", " + DegreesText(place->longitude);
}

icu::UnicodeString CompanionLine(const GeocacheCompanion& companion) {
    icu::UnicodeString line = companion.code + u"  ";
    line += companion.name == companion.code ? companion.type : companion.name;
    if (!companion.type.isEmpty() && companion.type != companion.name && companion.name != companion.code)
        line += u" (" + companion.type + u")";
    return Printable(line) + u", " + PlaceText(companion.place);
}

icu::UnicodeString LogLine(const GpxCacheLogDetails& log) {
    const icu::UnicodeString empty;
    icu::UnicodeString line = log.time ? DayText(log.time) : log.date.value_or(empty);
    for (const icu::UnicodeString& part : {log.type.value_or(empty), log.finder.value_or(empty)})
        if (!part.isEmpty())
            line += (line.isEmpty() ? icu::UnicodeString() : icu::UnicodeString(u", ")) + part;
    return line + u": " + LogText(log);
}

/// What comes below a geocache: companions, hint and logs.
std::vector<icu::UnicodeString> NotesOf(const Geocache& cache, const CacheDetailsWanted& details) {
    std::vector<icu::UnicodeString> notes;
    for (const GeocacheCompanion& companion : cache.companions)
        notes.push_back(CompanionLine(companion));
    if (details.hint && !cache.hint.isEmpty())
        notes.push_back(u"Hint: " + Printable(Cleaned(cache.hint)));
    for (const GpxCacheLogDetails& log : NewestLogs(cache, details.logs))
        notes.push_back(Printable(LogLine(log)));
    return notes;
}

void WriteTable(const std::vector<Geocache>& caches, const CacheDetailsWanted& details, Output& out) {
    Table table{{{u"Code", Column::Kind::kText},
                 {u"Name", Column::Kind::kFlexible},
                 {u"D/T", Column::Kind::kText},
                 {u"Distance", Column::Kind::kNumber},
                 {u"Size", Column::Kind::kText},
                 {u"Found", Column::Kind::kText},
                 {u"Status", Column::Kind::kText},
                 {u"Bugs", Column::Kind::kNumber},
                 {u"Type", Column::Kind::kText}}};
    for (const Geocache& cache : caches) {
        const std::size_t bugs = cache.travelBugs.size();
        table.AddRow({cache.code, cache.name, RatingText(cache), DistanceText(cache), cache.size,
                      DayText(cache.foundTime), StatusText(cache),
                      bugs == 0 ? icu::UnicodeString() : NumberText(bugs), cache.type},
                     {}, StatusText(cache).isEmpty() ? Style::kPlain : Style::kFaint);
        for (const icu::UnicodeString& note : NotesOf(cache, details))
            table.AddNote(note);
    }
    table.Write(out);
}

/// The values of a geocache, separated by commas.
icu::UnicodeString ValuesLine(const Geocache& cache) {
    icu::UnicodeString line;
    const auto add = [&](const char16_t* before, const icu::UnicodeString& value) {
        if (!value.isEmpty())
            line += (line.isEmpty() ? icu::UnicodeString() : icu::UnicodeString(u", ")) + before + value;
    };
    add(u"", cache.type);
    add(u"", cache.size);
    add(u"D/T ", RatingText(cache));
    add(u"", StatusText(cache));
    add(u"found ", DayText(cache.foundTime));
    add(u"by ", cache.owner);
    add(u"", PlaceText(cache.place));
    add(u"", DistanceText(cache));
    if (!cache.travelBugs.empty())
        add(u"", FromUtf8(Counted(cache.travelBugs.size(), "travel bug")));
    return Printable(line);
}

void WriteParagraph(const Geocache& cache, const CacheDetailsWanted& details, Output& out) {
    const icu::UnicodeString indent(u"  ");
    WriteWhole(out, Printable(cache.code + u"  " + cache.name), kIndent, Style::kHeading);
    WriteWhole(out, indent + ValuesLine(cache), kIndent);
    for (const icu::UnicodeString& note : NotesOf(cache, details))
        WriteWhole(out, indent + note, 2 * kIndent);
    const icu::UnicodeString text = CleanDescription(cache);
    for (std::int32_t start = 0; start < text.length();) {
        const std::int32_t found = text.indexOf(u'\n', start);
        const std::int32_t end = found < 0 ? text.length() : found;
        const icu::UnicodeString line = Printable(icu::UnicodeString(text, start, end - start));
        if (line.isEmpty())
            out.Write("\n");
        else
            WriteWhole(out, indent + line, kIndent);
        start = end + 1;
    }
}

void WriteHead(const CacheTextContent& content, Output& out) {
    std::string head = Counted(content.caches.size(), "geocache");
    if (content.caches.size() != content.allCaches)
        head += " of " + std::to_string(content.allCaches);
    if (content.otherWaypoints != 0)
        head += "; " + Counted(content.otherWaypoints, "other waypoint") +
                (content.otherWaypoints == 1 ? " is" : " are") + " not listed";
    WriteWhole(out, FromUtf8(head), 0);
}

} // namespace

void WriteCachesText(const CacheTextContent& content, const CacheDetailsWanted& details, Output& out) {
    WriteHead(content, out);
    if (details.description) {
        for (const Geocache& cache : content.caches) {
            out.Write("\n");
            WriteParagraph(cache, details, out);
        }
    } else if (!content.caches.empty()) {
        WriteTable(content.caches, details, out);
    }
    if (content.orphans.empty())
        return;
    out.Write("\n");
    WriteWhole(out, u"Waypoints whose geocaches are in none of the files:", kIndent, Style::kHeading);
    for (const GeocacheCompanion& orphan : content.orphans)
        WriteNote(out, u"  " + CompanionLine(orphan), 2 * kIndent);
}

} // namespace vexagpx
