// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTrackLib/Comparison.h>
#include <vexaTransferLib/GpxPoint.h>

#include <vector>

namespace vexaTrackLib::comparing {

/// Adds how two points differ, but for their names and what is in a geocache.
void ComparePoints(const vexaTransferLib::GpxPoint& oldPoint, const vexaTransferLib::GpxPoint& newPoint,
                   Difference& difference);

/// The same for two waypoints, with the name and the geocache.
void CompareWaypoints(const vexaTransferLib::GpxPoint& oldPoint, const vexaTransferLib::GpxPoint& newPoint,
                      Difference& difference);

/// Adds how the points of two paths differ.
void ComparePathPoints(const std::vector<const vexaTransferLib::GpxPoint*>& oldPoints,
                       const std::vector<const vexaTransferLib::GpxPoint*>& newPoints,
                       Difference& difference);

} // namespace vexaTrackLib::comparing
