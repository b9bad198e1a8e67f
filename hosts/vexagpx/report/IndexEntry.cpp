// SPDX-License-Identifier: MIT
#include <vexagpx/report/IndexEntry.h>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

template <class Iterator>
void AddPoints(Iterator begin, Iterator end, IndexEntry& entry) {
    for (Iterator point = begin; point != end; ++point) {
        double latitude = 0.0;
        double longitude = 0.0;
        point->GetPoint(latitude, longitude);
        entry.bounds.Add(latitude, longitude);
        double time = 0.0;
        if (point->GetTime(time))
            entry.times.Add(time);
    }
}

} // namespace

IndexEntry IndexEntryOf(const GpxDocument& document) {
    IndexEntry entry;
    entry.counts = CountDocument(document);
    AddPoints(document.GetWaypointIter(), document.GetWaypointEndIter(), entry);
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route)
        AddPoints(route->GetPointIter(), route->GetPointEndIter(), entry);
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track)
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment)
            AddPoints(segment->begin(), segment->end(), entry);
    return entry;
}

std::vector<std::string_view> KindsOf(const DocumentCounts& counts) {
    std::vector<std::string_view> kinds;
    const auto add = [&kinds](std::size_t count, std::string_view kind) {
        if (count != 0)
            kinds.push_back(kind);
    };
    add(counts.geocaches, "geocaches");
    add(counts.waypoints - counts.geocaches, "waypoints");
    add(counts.routes, "routes");
    add(counts.tracks, "tracks");
    return kinds;
}

} // namespace vexagpx
