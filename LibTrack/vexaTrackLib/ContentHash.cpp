// SPDX-License-Identifier: MIT
#include <vexaTrackLib/ContentHash.h>

#include <vexaTrackLib/content/ObjectHash.h>

#include <string_view>

namespace vexaTrackLib {

using namespace vexaTransferLib;

namespace {

using content::Hasher;

// What separates the parts of a document, so that none of them can be taken for another.
enum class Mark : std::uint64_t { kWaypoints = 1, kRoute, kTrack, kSegment };

void Add(Mark mark, Hasher& hasher) {
    hasher.Add(static_cast<std::uint64_t>(mark));
}

template <class Iterator>
void AddPoints(Iterator begin, Iterator end, Hasher& hasher) {
    for (Iterator point = begin; point != end; ++point)
        content::AddPoint(*point, hasher);
}

void AddSegments(const GpxTrack& track, Hasher& hasher) {
    for (auto segment = track.GetSegmentIter(); segment != track.GetSegmentEndIter(); ++segment) {
        if (segment->empty())
            continue;
        Add(Mark::kSegment, hasher);
        content::AddFields(track.GetSegmentElement(segment), "trkpt", hasher);
        AddPoints(segment->begin(), segment->end(), hasher);
    }
}

} // namespace

ContentHash::ContentHash(const GpxDocument& document) {
    Hasher hasher;
    Add(Mark::kWaypoints, hasher);
    AddPoints(document.GetWaypointIter(), document.GetWaypointEndIter(), hasher);
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route) {
        Add(Mark::kRoute, hasher);
        content::AddRoute(*route, hasher);
        AddPoints(route->GetPointIter(), route->GetPointEndIter(), hasher);
    }
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        Add(Mark::kTrack, hasher);
        content::AddTrack(*track, hasher);
        AddSegments(*track, hasher);
    }
    high_ = hasher.High();
    low_ = hasher.Low();
    isEmpty_ = document.GetWaypointCount() + document.GetRouteCount() + document.GetTrackCount() == 0;
}

std::string ContentHash::Text() const {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const std::uint64_t half : {high_, low_})
        for (int shift = 60; shift >= 0; shift -= 4)
            text += kDigits[(half >> shift) & 0xF];
    return text;
}

} // namespace vexaTrackLib
