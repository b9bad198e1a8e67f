// SPDX-License-Identifier: MIT
#include <vexaTrackLib/PathLength.h>

#include <GeographicLib/Geodesic.hpp>

#include <cmath>
#include <limits>

namespace vexaTrackLib {

namespace {

// The ellipsoid WGS 84: its equatorial radius in metres, its flattening, and the squares of its first and second
// eccentricity.
constexpr double kRadius = 6378137.0;
constexpr double kFlattening = 1.0 / 298.257223563;
constexpr double kEccentricity2 = kFlattening * (2.0 - kFlattening);
constexpr double kSecondEccentricity2 = kEccentricity2 / (1.0 - kEccentricity2);

constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180.0;

// In radians. At this angle the first term that the series of sine and cosine lack is below the rounding of a double.
constexpr double kNearAngle = 0.01;

// Up to this distance in space, squared, a geodesic is near enough to an arc of a circle.
constexpr double kNear2 = 50'000.0 * 50'000.0;

double Square(double number) {
    return number * number;
}

// Not inlined into Add(), which is faster without it.
[[gnu::noinline]] double Geodesic(double latitude1, double longitude1, double latitude2, double longitude2) {
    double metres = 0.0;
    GeographicLib::Geodesic::WGS84().Inverse(latitude1, longitude1, latitude2, longitude2, metres);
    return metres;
}

} // namespace

// The functions here are inline because a Place that is returned through memory takes a third longer.

// The functions of the C library take longer than all else that a piece needs. Near an angle whose sine and cosine are
// known, a few terms of the series are as exact.
inline void PathLength::Angle::Set(double degrees) {
    const double delta = (degrees - anchor_) * kRadiansPerDegree;
    if (!(std::abs(delta) <= kNearAngle)) {
        anchor_ = degrees;
        anchorSine_ = sine = std::sin(degrees * kRadiansPerDegree);
        anchorCosine_ = cosine = std::cos(degrees * kRadiansPerDegree);
        return;
    }
    const double delta2 = delta * delta;
    const double deltaSine = delta * (1.0 + delta2 * (-1.0 / 6.0 + delta2 * (1.0 / 120.0)));
    const double lessThanOne = delta2 * (1.0 / 2.0 + delta2 * (-1.0 / 24.0 + delta2 * (1.0 / 720.0)));
    sine = anchorSine_ + (anchorCosine_ * deltaSine - anchorSine_ * lessThanOne);
    cosine = anchorCosine_ - (anchorSine_ * deltaSine + anchorCosine_ * lessThanOne);
}

inline PathLength::Place PathLength::PlaceOf(double latitude, double longitude) {
    phi_.Set(latitude);
    lambda_.Set(longitude);
    const double narrowing = 1.0 - kEccentricity2 * phi_.sine * phi_.sine;
    const double normal = kRadius / std::sqrt(narrowing);
    const double fromAxis = normal * phi_.cosine;
    return {fromAxis * lambda_.cosine, fromAxis * lambda_.sine, normal * (1.0 - kEccentricity2) * phi_.sine,
            narrowing};
}

// Between near places the geodesic is, within micrometres, the arc of a circle over the straight line through the
// earth. The circle has the curvature of the surface halfway, in the direction of the line (Euler's theorem for an
// ellipsoid): k = (1 + e'^2 dz^2 / c^2) / N, where c is the length of the line and N the radius of the prime vertical.
// Unlike formulas in latitude and longitude, this one holds at the poles and at the date line.
inline double PathLength::Piece(const Place& place, double latitude, double longitude) const {
    const double dz2 = Square(place.z - place_.z);
    const double line2 = Square(place.x - place_.x) + Square(place.y - place_.y) + dz2;
    if (!(line2 <= kNear2))
        return Geodesic(latitude_, longitude_, latitude, longitude);
    if (line2 == 0.0)
        return 0.0;
    const double halfway = (place.narrowing + place_.narrowing) / (2.0 * kRadius * kRadius);
    const double angle2 = Square(line2 + kSecondEccentricity2 * dz2) / line2 * halfway;
    // The first terms of the arc sine.
    return std::sqrt(line2) * (1.0 + angle2 * (1.0 / 24.0 + angle2 * (3.0 / 640.0)));
}

double PathLength::Add(double latitude, double longitude) {
    const bool isPlace = std::abs(latitude) <= 90.0 && std::isfinite(longitude);
    const Place place =
        isPlace ? PlaceOf(latitude, longitude) : Place{std::numeric_limits<double>::quiet_NaN()};
    const double piece = connected_ ? Piece(place, latitude, longitude) : 0.0;
    if (!std::isnan(piece))
        metres_ += piece;
    place_ = place;
    latitude_ = latitude;
    longitude_ = longitude;
    connected_ = true;
    return piece;
}

} // namespace vexaTrackLib
