// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Where places of the earth are on a flat map.

#include <common/Export.h>

namespace vexaTrackLib {

/// Turns places into places of a map and back. There are two maps: one of a region, which keeps every angle, so that
/// shapes look right at every latitude, at the poles and across the 180th meridian; and one of the whole world, which
/// keeps areas.
///
/// Nothing is thrown. Const operations may run on several threads at once.
class VEXATRANSFERLIB_API MapProjection {
public:
    /// A place of the map in metres: `x` towards the right, `y` upwards. In the middle of a region these are metres of
    /// the ellipsoid WGS 84 in every direction; a metre of the earth is longer elsewhere (Scale).
    struct Place {
        double x = 0.0; ///< towards the right
        double y = 0.0; ///< upwards
    };

    /// An oblique stereographic map of a region. North is up in its middle.
    /// \param latitude, longitude the middle in degrees, -90 to 90 and any finite number
    static MapProjection OfRegion(double latitude, double longitude);
    /// The Equal Earth map of the world, whose edges are half around the earth from a meridian.
    /// \param longitude that of the meridian in the middle, in degrees
    static MapProjection OfWorld(double longitude);

    /// True for a map made by OfWorld().
    bool IsOfWorld() const { return isWorld_; }

    /// \param latitude in degrees, -90 to 90
    /// \param longitude in degrees, any finite number
    /// \returns a place that may be very far away for what is opposite the middle of a region; NaN for NaN
    Place Project(double latitude, double longitude) const;

    /// The place of the earth, whose longitude is from -180 to 180. For what is outside the map of the world, some
    /// place at its edge.
    void Reverse(Place place, double& latitude, double& longitude) const;

    /// How many metres of the map a metre of the earth has, in every direction: 1 in the middle of a region, more
    /// elsewhere. For the map of the world it is the root of how areas grow, which is 1 everywhere.
    double Scale(Place place) const;

private:
    MapProjection() = default;

    VEXATRANSFERLIB_LOCAL Place ProjectRegion(double latitude, double longitude) const;
    VEXATRANSFERLIB_LOCAL Place ProjectWorld(double latitude, double longitude) const;

    bool isWorld_ = false;
    double longitude_ = 0.0; // of the middle, in degrees
    double sine_ = 0.0;      // of the conformal latitude of the middle
    double cosine_ = 1.0;
    double radius_ = 0.0; // of the sphere, in metres
};

} // namespace vexaTrackLib
