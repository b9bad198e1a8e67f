// SPDX-License-Identifier: MIT
#include <vexagpx/report/Contents.h>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

void CountGeocache(const GpxPoint& point, Contents& contents) {
    GpxGroundspeakCache cache;
    if (!point.GetGroundspeakCache(cache))
        return;
    ++contents.geocaches;
    contents.logs += cache.logs.size();
    contents.travelBugs += cache.travelbugs.size();
}

} // namespace

Contents CountContents(const GpxDocument& document) {
    Contents contents;
    contents.waypoints = document.GetWaypointCount();
    contents.routes = document.GetRouteCount();
    contents.tracks = document.GetTrackCount();
    for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point)
        CountGeocache(*point, contents);
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route)
        contents.routePoints += route->GetPointCount();
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        contents.segments += track->GetSegmentCount();
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment)
            contents.trackPoints += track->GetPointCount(segment);
    }
    return contents;
}

} // namespace vexagpx
