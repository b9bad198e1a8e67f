// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTrackLib/PathMeter.h>

#include <vexaTransferLib/GpxPoint.h>

#include <initializer_list>
#include <limits>
#include <optional>

namespace vexaTrackLib::test {

/// The time of the point after `second` 0.
inline constexpr double kStart = 1.6e12;

/// A point of a path along the equator.
struct Spot {
    double east; ///< metres
    std::optional<double> second = std::nullopt;
    std::optional<double> height = std::nullopt;
};

/// The longitude of a point so many metres east of the zero meridian, on the equator.
inline double LongitudeAt(double metresEast) {
    return metresEast / (6378137.0 * 3.14159265358979323846 / 180.0);
}

inline vexaTransferLib::GpxPoint
PointAt(const Spot& spot, vexaTransferLib::GpxPointType type = vexaTransferLib::kGpxTrackPoint) {
    vexaTransferLib::GpxPoint point(type, 0.0, LongitudeAt(spot.east));
    if (spot.second)
        point.SetTime(kStart + *spot.second * 1000.0);
    if (spot.height)
        point.SetElevation(*spot.height);
    return point;
}

/// The figures of a path of one segment.
template <class Spots>
PathStatistics Measured(const Spots& spots, const StatisticsOptions& options = {}) {
    PathMeter meter(options);
    for (const Spot& spot : spots)
        meter.Add(PointAt(spot));
    return meter.Get();
}

inline PathStatistics Measured(std::initializer_list<Spot> spots, const StatisticsOptions& options = {}) {
    return Measured<std::initializer_list<Spot>>(spots, options);
}

} // namespace vexaTrackLib::test
