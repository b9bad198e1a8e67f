// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Leaves out the points of tracks and routes that do not show.

#include <common/Export.h>

#include <cstddef>

namespace vexaTransferLib {
class GpxRoute;
class GpxTrack;
} // namespace vexaTransferLib

namespace vexaTrackLib {

/// What became of a path.
struct SimplifiedPath {
    std::size_t before = 0; ///< points that it had
    std::size_t after = 0;  ///< and that it has
    /// How far the farthest point that was left out is from the piece between its neighbours that are left, in metres.
    /// On pieces that are longer than 100 km it is right to a hundredth.
    double farthest = 0.0;
};

// All of these remove points from a path until those that are left still show where it goes; heights and times do not
// count. The first and the last point of each segment stay, and so do segments. What stays keeps all that it has, and
// GpxSaver keeps it byte for byte. Pieces may be 300 km long at most. Time and memory are linear in the points; the
// functions that take a number of points need some 40 times as long as the others, which is about a second for a
// million.
//
// They throw std::bad_alloc, and then some segments may be simplified already. Different paths may be simplified on
// several threads at once.

/// \{
/// Leaves out points that are at most \p error from what is left.
///
///     const SimplifiedPath path = SimplifyTrack(document.EditTracks()[0], 5.0);
///     std::cout << path.before << " points, " << path.after << " are left, at most " << path.farthest << " m off\n";
///
/// \param error in metres
/// \throws dbc::precondition_error "The error must be a number of metres above 0."
VEXATRANSFERLIB_API SimplifiedPath SimplifyTrack(vexaTransferLib::GpxTrack& track, double error);
VEXATRANSFERLIB_API SimplifiedPath SimplifyRoute(vexaTransferLib::GpxRoute& route, double error);
/// \}

/// \{
/// Leaves at most so many points, with nearly the smallest error that does; a track with fewer is not changed. There
/// are more only when a track has so many segments that their ends are more.
/// \param points of all segments together
/// \throws dbc::precondition_error "A path must keep two points or more."
VEXATRANSFERLIB_API SimplifiedPath SimplifyTrackTo(vexaTransferLib::GpxTrack& track, std::size_t points);
VEXATRANSFERLIB_API SimplifiedPath SimplifyRouteTo(vexaTransferLib::GpxRoute& route, std::size_t points);
/// \}

} // namespace vexaTrackLib
