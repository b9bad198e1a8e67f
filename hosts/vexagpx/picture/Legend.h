// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/Drawing.h>
#include <vexagpx/picture/PathColours.h>
#include <vexagpx/picture/PathData.h>

namespace vexagpx {

/// Draws what colours and marks mean, in up to three rows: the scale of the colours with its unit, or the names of the
/// paths; routes, waypoints, geocaches; start and end.
/// \param box whose left, top and right count
/// \returns where the last row ends
double LayOutLegend(const PathData& data, const PathColours& colours, const Box& box, double unit,
                    const MeasureText& measure, Drawing& drawing);

} // namespace vexagpx
