// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxPoint.h>

#include <cstddef>
#include <limits>

namespace vexagpx {

/// The smallest box of latitudes and longitudes around points, in degrees. It may cross the 180th meridian: `West()` is
/// then greater than `East()`.
class Bounds {
public:
    void Add(double latitude, double longitude);

    bool IsEmpty() const { return south_ > north_; }
    double South() const { return south_; }
    double North() const { return north_; }
    double West() const { return LiesAcross180() ? wrappedWest_ : west_; }
    double East() const { return LiesAcross180() ? wrappedEast_ - 360.0 : east_; }

private:
    static constexpr double kFar = std::numeric_limits<double>::infinity();

    bool LiesAcross180() const {
        return west_ < 0.0 && east_ >= 0.0 && wrappedEast_ - wrappedWest_ < east_ - west_;
    }

    double south_ = kFar;
    double north_ = -kFar;
    double west_ = kFar;
    double east_ = -kFar;
    // The same with western longitudes as 180 to 360 degrees.
    double wrappedWest_ = kFar;
    double wrappedEast_ = -kFar;
};

/// The earliest and the latest of some times, in milliseconds since 1970 UTC. Times that are not finite are ignored.
class TimeSpan {
public:
    void Add(double time);

    bool IsEmpty() const { return first_ > last_; }
    double First() const { return first_; }
    double Last() const { return last_; }

private:
    double first_ = std::numeric_limits<double>::infinity();
    double last_ = -std::numeric_limits<double>::infinity();
};

/// Number of points, length and times of a path. Its points also extend the bounds of the whole document.
class PathStatistics {
public:
    explicit PathStatistics(Bounds& bounds) : bounds_(bounds) {}

    void Add(const vexaTransferLib::GpxPoint& point);
    /// The next point is not connected to the one before.
    void Break() { connected_ = false; }

    std::size_t Points() const { return points_; }
    /// Along the geodesics of WGS 84.
    double Metres() const { return metres_; }
    const TimeSpan& Times() const { return times_; }

private:
    Bounds& bounds_;
    TimeSpan times_;
    std::size_t points_ = 0;
    double metres_ = 0.0;
    double latitude_ = 0.0;
    double longitude_ = 0.0;
    bool connected_ = false;
};

} // namespace vexagpx
