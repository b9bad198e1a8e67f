// SPDX-License-Identifier: MIT
#include <vexagpx/caches/CacheCsv.h>

#include <vexagpx/output/CsvWriter.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/terminal/DisplayText.h>

namespace vexagpx {

using vexaTrackLib::Geocache;
using vexaTrackLib::GeocacheCompanion;

namespace {

icu::UnicodeString Joined(const std::vector<icu::UnicodeString>& texts) {
    icu::UnicodeString joined;
    for (const icu::UnicodeString& text : texts)
        joined += (joined.isEmpty() ? icu::UnicodeString() : icu::UnicodeString(u"; ")) + text;
    return joined;
}

std::vector<icu::UnicodeString> CodesOf(const std::vector<GeocacheCompanion>& companions) {
    std::vector<icu::UnicodeString> codes;
    codes.reserve(companions.size());
    for (const GeocacheCompanion& companion : companions)
        codes.push_back(companion.code);
    return codes;
}

void WriteTitles(const CacheDetailsWanted& details, CsvWriter& csv) {
    for (const char* const title :
         {"code", "name", "owner", "type", "size", "difficulty", "terrain", "country", "state", "latitude",
          "longitude", "available", "archived", "placed", "found", "logs", "travel bugs", "companions"})
        csv.Text(title);
    if (details.distance) {
        csv.Text("distance");
        csv.Text("bearing");
    }
    if (details.hint)
        csv.Text("hint");
    if (details.description)
        csv.Text("description");
    csv.EndRow();
}

void NumberOrEmpty(const std::optional<double>& number, CsvWriter& csv) {
    if (number)
        csv.Number(*number);
    else
        csv.Empty();
}

void FlagOrEmpty(const std::optional<bool>& flag, CsvWriter& csv) {
    if (flag)
        csv.Bool(*flag);
    else
        csv.Empty();
}

void TimeOrEmpty(const std::optional<double>& time, CsvWriter& csv) {
    if (time)
        csv.Time(*time);
    else
        csv.Empty();
}

void WriteRow(const Geocache& cache, const CacheDetailsWanted& details, CsvWriter& csv) {
    csv.Text(cache.code);
    csv.Text(cache.name);
    csv.Text(cache.owner);
    csv.Text(cache.type);
    csv.Text(cache.size);
    NumberOrEmpty(cache.difficulty, csv);
    NumberOrEmpty(cache.terrain, csv);
    csv.Text(cache.country);
    csv.Text(cache.state);
    csv.Number(cache.place.latitude);
    csv.Number(cache.place.longitude);
    FlagOrEmpty(cache.isAvailable, csv);
    FlagOrEmpty(cache.isArchived, csv);
    TimeOrEmpty(cache.placedTime, csv);
    TimeOrEmpty(cache.foundTime, csv);
    csv.Number(cache.logCount);
    csv.Text(Joined(cache.travelBugs));
    csv.Text(Joined(CodesOf(cache.companions)));
    if (details.distance) {
        NumberOrEmpty(cache.metres, csv);
        NumberOrEmpty(cache.bearing, csv);
    }
    if (details.hint)
        csv.Text(Cleaned(cache.hint));
    if (details.description)
        csv.Text(CleanDescription(cache));
    csv.EndRow();
}

} // namespace

void WriteCachesCsv(const std::vector<Geocache>& caches, std::size_t orphanCount,
                    const CacheDetailsWanted& details, Output& out) {
    CsvWriter csv(out);
    WriteTitles(details, csv);
    for (const Geocache& cache : caches)
        WriteRow(cache, details, csv);
    if (details.logs != 0)
        PrintError("Note: the table has no place for logs; --json has.");
    if (orphanCount != 0)
        PrintError("Note: " + Counted(orphanCount, "waypoint") +
                   " of geocaches that are in none of the files are not in the table.");
}

} // namespace vexagpx
