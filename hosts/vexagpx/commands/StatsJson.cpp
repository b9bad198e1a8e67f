// SPDX-License-Identifier: MIT
#include <vexagpx/commands/StatsJson.h>

#include <vexagpx/commands/SourceJson.h>
#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/output/OptionalMembers.h>
#include <vexagpx/output/Rounded.h>

namespace vexagpx {

using vexaTrackLib::Bounds;
using vexaTrackLib::PathStatistics;
using vexaTrackLib::Pause;

namespace {

class StatsJson {
public:
    explicit StatsJson(JsonWriter& json) : json_(json) {}

    void WritePaths(std::string_view key, const std::vector<PathFigures>& paths, bool hasSegments);
    void WriteSum(std::string_view key, const PathSum& sum, bool hasSegments);

private:
    void WriteFigures(const PathStatistics& figures);
    void WriteTimes(const PathStatistics& figures);
    void WriteBounds(const Bounds& bounds);

    JsonWriter& json_;
};

void StatsJson::WritePaths(std::string_view key, const std::vector<PathFigures>& paths, bool hasSegments) {
    json_.Key(key);
    json_.BeginArray();
    for (const PathFigures& path : paths) {
        json_.BeginObject();
        MemberIfAny(json_, "name", path.name);
        if (hasSegments)
            json_.Member("segments", path.segments);
        WriteFigures(path.figures);
        ArrayIfAny(json_, "pauses", path.figures.pauses, [this](const Pause& pause) {
            json_.BeginObject();
            TimeMember(json_, "start", pause.start);
            json_.Member("duration", Rounded(pause.seconds));
            json_.Member("latitude", pause.latitude);
            json_.Member("longitude", pause.longitude);
            json_.EndObject();
        });
        json_.EndObject();
    }
    json_.EndArray();
}

void StatsJson::WriteSum(std::string_view key, const PathSum& sum, bool hasSegments) {
    json_.Key(key);
    json_.BeginObject();
    json_.Member("count", sum.count);
    if (hasSegments)
        json_.Member("segments", sum.segments);
    WriteFigures(sum.figures);
    json_.EndObject();
}

void StatsJson::WriteFigures(const PathStatistics& figures) {
    json_.Member("points", figures.points);
    json_.Member("pointsWithoutTime", figures.pointsWithoutTime);
    json_.Member("pointsWithoutHeight", figures.pointsWithoutHeight);
    json_.Member("backwardTimes", figures.backwardTimes);
    json_.Member("distance", Rounded(figures.metres));
    json_.Member("distanceWithHeight", Rounded(figures.metresWithHeight));
    if (figures.highest) {
        json_.Member("ascent", Rounded(figures.ascent));
        json_.Member("descent", Rounded(figures.descent));
        json_.Member("rawAscent", Rounded(figures.rawAscent));
        json_.Member("rawDescent", Rounded(figures.rawDescent));
        json_.Member("lowest", Rounded(*figures.lowest));
        json_.Member("highest", Rounded(*figures.highest));
    }
    if (!figures.times.IsEmpty())
        WriteTimes(figures);
    if (!figures.bounds.IsEmpty())
        WriteBounds(figures.bounds);
}

void StatsJson::WriteTimes(const PathStatistics& figures) {
    TimeMember(json_, "start", figures.times.First());
    TimeMember(json_, "end", figures.times.Last());
    json_.Member("elapsed", Rounded(figures.elapsedSeconds));
    json_.Member("moving", Rounded(figures.movingSeconds));
    json_.Member("paused", Rounded(figures.pausedSeconds));
    json_.Member("pauseCount", figures.pauseCount);
    if (const std::optional<double> mean = figures.MeanSpeed())
        json_.Member("meanSpeed", Rounded(*mean));
    if (const std::optional<double> fastest = figures.FastestSpeed())
        json_.Member("fastestSpeed", Rounded(*fastest));
}

void StatsJson::WriteBounds(const Bounds& bounds) {
    json_.Key("bounds");
    json_.BeginObject();
    json_.Member("south", bounds.South());
    json_.Member("west", bounds.West());
    json_.Member("north", bounds.North());
    json_.Member("east", bounds.East());
    json_.EndObject();
}

} // namespace

void WriteStatsJson(const DocumentFigures& document, const DocumentSource& source, Output& out) {
    JsonWriter json(out);
    StatsJson stats(json);
    json.BeginObject();
    WriteSource(json, source);
    stats.WritePaths("tracks", document.tracks, true);
    stats.WritePaths("routes", document.routes, false);
    stats.WriteSum("allTracks", document.allTracks, true);
    stats.WriteSum("allRoutes", document.allRoutes, false);
    json.EndObject();
    out.Write("\n");
}

void WriteStatsJson(const TotalFigures& total, Output& out) {
    JsonWriter json(out);
    StatsJson stats(json);
    json.BeginObject();
    json.Member("files", total.files);
    stats.WriteSum("allTracks", total.allTracks, true);
    stats.WriteSum("allRoutes", total.allRoutes, false);
    json.EndObject();
    out.Write("\n");
}

} // namespace vexagpx
