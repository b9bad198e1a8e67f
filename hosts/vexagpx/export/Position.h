// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxPoint.h>

#include <optional>

namespace vexagpx {

/// A place with its height and time, as they are written.
struct Position {
    double longitude = 0.0;       ///< degrees, -180 to 180
    double latitude = 0.0;        ///< degrees
    std::optional<double> height; ///< metres; finite
    std::optional<double> time;   ///< milliseconds since 1970-01-01T00:00:00 UTC, in the years 0 to 9999
};

/// Heights and times that no format has a place for are left out.
Position PositionOf(const vexaTransferLib::GpxPoint& point);

/// True when a format has a place for the time.
bool IsWritableTime(double millis);

/// Where the straight line between two positions, in degrees, that lie more than half of the world apart crosses the
/// 180th meridian; on the side of the first one. Height and time are interpolated when both have them.
Position CrossingOf180(const Position& from, const Position& to);

} // namespace vexagpx
