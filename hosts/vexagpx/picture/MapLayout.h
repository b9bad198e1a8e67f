// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/Drawing.h>
#include <vexagpx/picture/PathColours.h>
#include <vexagpx/picture/PathData.h>

#include <cstddef>

namespace vexagpx {

/// Draws the map into a box: graticule, paths, waypoints, start and end, scale bar, north arrow, names.
/// \param unit the size of texts and marks; 1 for a picture of common size
/// \returns how many names of waypoints had no room
std::size_t LayOutMap(const PathData& data, const PathColours& colours, const Box& box, double unit,
                      const MeasureText& measure, Drawing& drawing);

/// The marks, which the legend shows, too.
void DrawWaypointMark(Spot spot, bool isCache, double unit, Drawing& drawing);
void DrawStartMark(Spot spot, double unit, Drawing& drawing);
void DrawEndMark(Spot spot, double unit, Drawing& drawing);

/// Beyond so many routes and tracks, their starts and ends are not marked.
inline constexpr std::size_t kMostMarkedPaths = 30;

} // namespace vexagpx
