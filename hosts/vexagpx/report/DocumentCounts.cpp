// SPDX-License-Identifier: MIT
#include <vexagpx/report/DocumentCounts.h>

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

} // namespace vexagpx
