// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/PathData.h>

#include <vexaTrackLib/MapProjection.h>

namespace vexagpx {

/// A map on which all of some data can be drawn, and its middle in degrees. That of a map of the world is on the
/// equator.
struct MapChoice {
    vexaTrackLib::MapProjection projection;
    double latitude = 0.0;
    double longitude = 0.0;
};

/// A map of a region, or of the world for what is in more than a region.
MapChoice ChooseMap(const PathData& data);

} // namespace vexagpx
