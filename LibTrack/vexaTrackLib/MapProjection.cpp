// SPDX-License-Identifier: MIT
#include <vexaTrackLib/MapProjection.h>

#include <GeographicLib/Constants.hpp>
#include <GeographicLib/Math.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace vexaTrackLib {

using GeographicLib::Math;

namespace {

// Of a sphere with the area of the ellipsoid, in metres.
constexpr double kAuthalicRadius = 6371007.18;

double Eccentricity() {
    const double flattening = GeographicLib::Constants::WGS84_f();
    return std::sqrt(flattening * (2.0 - flattening));
}

/// The coefficients of the sines of two, four, six and eight times the latitude, in what the conformal latitude differs
/// by. What is left out of the series is below a tenth of a millimetre on the earth.
struct ConformalSeries {
    ConformalSeries() {
        const double e2 = Eccentricity() * Eccentricity();
        const double e4 = e2 * e2;
        const double e6 = e4 * e2;
        const double e8 = e4 * e4;
        two = -(e2 / 2.0 + 5.0 * e4 / 24.0 + 3.0 * e6 / 32.0 + 281.0 * e8 / 5760.0);
        four = 5.0 * e4 / 48.0 + 7.0 * e6 / 80.0 + 697.0 * e8 / 11520.0;
        six = -(13.0 * e6 / 480.0 + 461.0 * e8 / 13440.0);
        eight = 1237.0 * e8 / 161280.0;
    }

    double two = 0.0;
    double four = 0.0;
    double six = 0.0;
    double eight = 0.0;
};

/// Sine and cosine of the conformal latitude: that of a sphere to which the ellipsoid is mapped without change of
/// angles.
void ConformalLatitude(double latitude, double& sine, double& cosine) {
    static const ConformalSeries series;
    const double angle = latitude * Math::degree();
    const double geodeticSine = std::sin(angle);
    const double geodeticCosine = std::cos(angle);
    const double sine2 = 2.0 * geodeticSine * geodeticCosine;
    const double cosine2 = 1.0 - 2.0 * geodeticSine * geodeticSine;
    const double sine4 = 2.0 * sine2 * cosine2;
    const double cosine4 = 1.0 - 2.0 * sine2 * sine2;
    const double sine6 = sine4 * cosine2 + cosine4 * sine2;
    const double sine8 = 2.0 * sine4 * cosine4;
    // At most 0.0034: so few terms of its sine and cosine are exact.
    const double difference =
        series.two * sine2 + series.four * sine4 + series.six * sine6 + series.eight * sine8;
    const double square = difference * difference;
    const double differenceSine = difference * (1.0 - square / 6.0 * (1.0 - square / 20.0));
    const double differenceCosine = 1.0 - square / 2.0 * (1.0 - square / 12.0 * (1.0 - square / 30.0));
    sine = geodeticSine * differenceCosine + geodeticCosine * differenceSine;
    cosine = geodeticCosine * differenceCosine - geodeticSine * differenceSine;
}

/// The radius of the sphere on which lengths at this latitude are those of the ellipsoid.
double SphereRadius(double latitude) {
    // At the pole both lengths of the quotient are zero; it hardly changes near to it.
    const double near = std::clamp(latitude, -89.9, 89.9);
    double sine = 0.0;
    double cosine = 0.0;
    Math::sincosd(near, sine, cosine);
    const double e = Eccentricity() * sine;
    const double parallel = GeographicLib::Constants::WGS84_a() * cosine / std::sqrt(1.0 - e * e);
    double conformalSine = 0.0;
    double conformalCosine = 1.0;
    ConformalLatitude(near, conformalSine, conformalCosine);
    return parallel / conformalCosine;
}

/// The polynomial of the Equal Earth map in the parametric latitude, and its derivative.
struct EqualEarth {
    explicit EqualEarth(double theta) {
        constexpr double kA1 = 1.340264;
        constexpr double kA2 = -0.081106;
        constexpr double kA3 = 0.000893;
        constexpr double kA4 = 0.003796;
        const double t2 = theta * theta;
        const double t6 = t2 * t2 * t2;
        y = theta * (kA1 + kA2 * t2 + t6 * (kA3 + kA4 * t2));
        slope = kA1 + 3.0 * kA2 * t2 + t6 * (7.0 * kA3 + 9.0 * kA4 * t2);
    }

    double y;
    double slope;
};

const double kHalfRoot3 = std::sqrt(3.0) / 2.0;

} // namespace

MapProjection MapProjection::OfRegion(double latitude, double longitude) {
    MapProjection projection;
    projection.longitude_ = longitude;
    projection.radius_ = SphereRadius(latitude);
    ConformalLatitude(latitude, projection.sine_, projection.cosine_);
    return projection;
}

MapProjection MapProjection::OfWorld(double longitude) {
    MapProjection projection;
    projection.isWorld_ = true;
    projection.longitude_ = longitude;
    projection.radius_ = kAuthalicRadius;
    return projection;
}

MapProjection::Place MapProjection::Project(double latitude, double longitude) const {
    return isWorld_ ? ProjectWorld(latitude, longitude) : ProjectRegion(latitude, longitude);
}

MapProjection::Place MapProjection::ProjectRegion(double latitude, double longitude) const {
    double sine = 0.0;
    double cosine = 1.0;
    ConformalLatitude(latitude, sine, cosine);
    const double lambda = (longitude - longitude_) * Math::degree();
    const double lambdaSine = std::sin(lambda);
    const double lambdaCosine = std::cos(lambda);
    const double towardsMiddle = sine_ * sine + cosine_ * cosine * lambdaCosine;
    const double factor = 2.0 * radius_ / std::max(1.0 + towardsMiddle, 1e-12);
    return {factor * cosine * lambdaSine, factor * (cosine_ * sine - sine_ * cosine * lambdaCosine)};
}

MapProjection::Place MapProjection::ProjectWorld(double latitude, double longitude) const {
    double sine = 0.0;
    double cosine = 1.0;
    Math::sincosd(latitude, sine, cosine);
    const double theta = std::asin(std::clamp(kHalfRoot3 * sine, -1.0, 1.0));
    const EqualEarth at(theta);
    const double lambda = Math::AngNormalize(longitude - longitude_) * Math::degree();
    return {radius_ * lambda * std::cos(theta) / (kHalfRoot3 * at.slope), radius_ * at.y};
}

void MapProjection::Reverse(Place place, double& latitude, double& longitude) const {
    const double x = place.x / radius_;
    const double y = place.y / radius_;
    if (!isWorld_) {
        const double square = (x * x + y * y) / 4.0;
        const double cosine = (1.0 - square) / (1.0 + square); // of the angle from the middle
        const double factor = 1.0 / (1.0 + square);
        const double conformalSine = std::clamp(cosine * sine_ + y * factor * cosine_, -1.0, 1.0);
        const double tangent =
            conformalSine / std::sqrt(std::max(1.0 - conformalSine * conformalSine, 1e-32));
        latitude = std::atan(Math::tauf(tangent, Eccentricity())) / Math::degree();
        longitude = Math::AngNormalize(
            longitude_ + std::atan2(x * factor, cosine_ * cosine - sine_ * y * factor) / Math::degree());
        return;
    }
    constexpr double kLastTheta = 1.0471975511965976; // of a pole
    double theta = std::clamp(y / 1.2, -kLastTheta, kLastTheta);
    for (int i = 0; i < 8; ++i) {
        const EqualEarth at(theta);
        theta = std::clamp(theta - (at.y - y) / at.slope, -kLastTheta, kLastTheta);
    }
    const double lambda = x * kHalfRoot3 * EqualEarth(theta).slope / std::cos(theta) / Math::degree();
    latitude = std::asin(std::clamp(std::sin(theta) / kHalfRoot3, -1.0, 1.0)) / Math::degree();
    longitude = Math::AngNormalize(longitude_ + std::clamp(lambda, -180.0, 180.0));
}

double MapProjection::Scale(Place place) const {
    if (isWorld_)
        return 1.0;
    const double x = place.x / radius_;
    const double y = place.y / radius_;
    return 1.0 + (x * x + y * y) / 4.0;
}

} // namespace vexaTrackLib
