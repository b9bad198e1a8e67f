// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The box of latitudes and longitudes around places.

#include <common/Export.h>

#include <limits>

namespace vexaTrackLib {

/// The smallest box of latitudes and longitudes around places, in degrees. It may cross the 180th meridian: `West()` is
/// then greater than `East()`. Nothing is thrown; const operations may run on several threads at once.
class VEXATRANSFERLIB_API Bounds {
public:
    /// Extends the box to a place.
    /// \param latitude in degrees, -90 to 90
    /// \param longitude in degrees, -180 to 180
    void Add(double latitude, double longitude);
    /// Extends the box to all places of another.
    void Add(const Bounds& other);

    /// True when there was no place. The corners are then bogus.
    bool IsEmpty() const { return south_ > north_; }

    /// \{
    /// The corners. Of the two boxes between two longitudes, the one that is narrower counts.
    double South() const { return south_; }
    double North() const { return north_; }
    double West() const { return LiesAcross180() ? wrappedWest_ : west_; }
    double East() const { return LiesAcross180() ? wrappedEast_ - 360.0 : east_; }
    /// \}

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

} // namespace vexaTrackLib
