// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The length of a path, place by place.

#include <common/Export.h>

namespace vexaTrackLib {

/// Adds up the length of a path, which is given one place after another. The pieces between the places are the shortest
/// ways on the ellipsoid WGS 84, as Distance computes them; heights do not count.
///
///     PathLength path;
///     for (auto point = track.GetPointIter(segment); point != track.GetPointEndIter(segment); ++point) {
///         point->GetPoint(latitude, longitude);
///         path.Add(latitude, longitude);
///     }
///     std::cout << path.Metres();
///
/// It keeps the last place and the sum, whatever the number of places. A piece of up to 50 km takes about a
/// twentieth of the time of a longer one. Copies continue on their own. Nothing is thrown. One object may be used by
/// one thread at a time.
class VEXATRANSFERLIB_API PathLength {
public:
    /// Continues the path to a place, and returns the length of this piece in metres: 0 for the first place, and for
    /// the first after Break().
    /// \param latitude in degrees, -90 to 90
    /// \param longitude in degrees, any finite number
    /// \returns NaN when this place or the one before has a latitude outside its range or a number that is not finite;
    ///          such a piece does not count in Metres()
    double Add(double latitude, double longitude);

    /// Ends a part of the path: the next place is not connected to the last.
    void Break() { connected_ = false; }

    /// The length of all pieces so far, in metres.
    double Metres() const { return metres_; }

private:
    friend class PathMeter;

    // Where the last place is in space, in metres from the centre of the earth.
    void GetSpace(double& x, double& y, double& z) const {
        x = place_.x;
        y = place_.y;
        z = place_.z;
    }

    // A place in space, in metres from the centre of the earth; and 1 - e^2 sin^2 of its latitude.
    struct Place {
        double x = 0.0;
        double y = 0.0;
        double z = 0.0;
        double narrowing = 1.0;
    };

    // Sine and cosine of an angle, and of those near to it.
    class Angle {
    public:
        VEXATRANSFERLIB_LOCAL void Set(double degrees);

        double sine = 0.0;
        double cosine = 1.0;

    private:
        double anchor_ = 0.0;
        double anchorSine_ = 0.0;
        double anchorCosine_ = 1.0;
    };

    VEXATRANSFERLIB_LOCAL Place PlaceOf(double latitude, double longitude);
    VEXATRANSFERLIB_LOCAL double Piece(const Place& place, double latitude, double longitude) const;

    Angle phi_;
    Angle lambda_;
    Place place_;
    double latitude_ = 0.0;
    double longitude_ = 0.0;
    double metres_ = 0.0;
    bool connected_ = false;
};

} // namespace vexaTrackLib
