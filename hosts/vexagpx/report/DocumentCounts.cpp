// SPDX-License-Identifier: MIT
#include <vexagpx/report/DocumentCounts.h>

#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/Lines.h>

#include <string>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

void CountGeocache(const GpxPoint& point, DocumentCounts& counts) {
    GpxGroundspeakCache cache;
    if (!point.GetGroundspeakCache(cache))
        return;
    ++counts.geocaches;
    counts.logs += cache.logs.size();
    counts.travelBugs += cache.travelbugs.size();
}

std::string GeocacheText(const DocumentCounts& counts, GeocacheDetail detail) {
    if (counts.geocaches == 0)
        return {};
    std::string text = Counted(counts.geocaches, "geocache");
    if (detail == GeocacheDetail::kLogsAndTravelBugs)
        text += ", " + Counted(counts.logs, "log") + ", " + Counted(counts.travelBugs, "travel bug");
    return " (" + text + ")";
}

std::string RouteText(const DocumentCounts& counts) {
    return counts.routes == 0 ? "" : " (" + Counted(counts.routePoints, "point") + ")";
}

std::string TrackText(const DocumentCounts& counts) {
    if (counts.tracks == 0)
        return {};
    return " (" + Counted(counts.segments, "segment") + ", " + Counted(counts.trackPoints, "point") + ")";
}

void WriteText(const std::string& line, Output& out) {
    constexpr std::size_t kLabelEnd = 13;
    WriteWhole(out, icu::UnicodeString::fromUTF8(line), kLabelEnd);
}

} // namespace

DocumentCounts CountDocument(const GpxDocument& document) {
    DocumentCounts counts;
    counts.waypoints = document.GetWaypointCount();
    counts.routes = document.GetRouteCount();
    counts.tracks = document.GetTrackCount();
    for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point)
        CountGeocache(*point, counts);
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route)
        counts.routePoints += route->GetPointCount();
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        counts.segments += track->GetSegmentCount();
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment)
            counts.trackPoints += track->GetPointCount(segment);
    }
    return counts;
}

void WriteCounts(const DocumentCounts& counts, GeocacheDetail detail, Output& out) {
    WriteText("  Waypoints  " + std::to_string(counts.waypoints) + GeocacheText(counts, detail), out);
    WriteText("  Routes     " + std::to_string(counts.routes) + RouteText(counts), out);
    WriteText("  Tracks     " + std::to_string(counts.tracks) + TrackText(counts), out);
}

void WriteContents(JsonWriter& json, const DocumentCounts& counts) {
    json.Key("contents");
    json.BeginObject();
    json.Member("waypoints", counts.waypoints);
    json.Member("routes", counts.routes);
    json.Member("routePoints", counts.routePoints);
    json.Member("tracks", counts.tracks);
    json.Member("segments", counts.segments);
    json.Member("trackPoints", counts.trackPoints);
    json.Member("geocaches", counts.geocaches);
    json.Member("logs", counts.logs);
    json.Member("travelBugs", counts.travelBugs);
    json.EndObject();
}

} // namespace vexagpx
