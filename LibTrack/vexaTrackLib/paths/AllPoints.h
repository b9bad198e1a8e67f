// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>

#include <cstddef>

namespace vexaTrackLib::paths {

/// \{
/// Calls `visit(point)` for all waypoints, and then all points of routes and of tracks.
template <class Visit>
void ForEachPoint(const vexaTransferLib::GpxDocument& document, Visit visit) {
    for (const vexaTransferLib::GpxPoint& point : document.GetWaypoints())
        visit(point);
    for (const vexaTransferLib::GpxRoute& route : document.GetRoutes())
        for (const vexaTransferLib::GpxPoint& point : route.GetPoints())
            visit(point);
    for (const vexaTransferLib::GpxTrack& track : document.GetTracks())
        for (const vexaTransferLib::GpxTrack::Segment& segment : track.GetSegments())
            for (const vexaTransferLib::GpxPoint& point : segment)
                visit(point);
}

template <class Visit>
void EditEachPoint(vexaTransferLib::GpxDocument& document, Visit visit) {
    for (vexaTransferLib::GpxPoint& point : document.EditWaypoints())
        visit(point);
    for (vexaTransferLib::GpxRoute& route : document.EditRoutes())
        for (vexaTransferLib::GpxPoint& point : route.EditPoints())
            visit(point);
    for (vexaTransferLib::GpxTrack& track : document.EditTracks())
        for (std::size_t i = 0; i < track.GetSegmentCount(); ++i)
            for (vexaTransferLib::GpxPoint& point : track.EditPoints(i))
                visit(point);
}
/// \}

} // namespace vexaTrackLib::paths
