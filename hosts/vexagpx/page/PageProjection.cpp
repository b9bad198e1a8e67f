// SPDX-License-Identifier: MIT
#include <vexagpx/page/PageProjection.h>

#include <algorithm>
#include <cmath>

namespace vexagpx {

namespace {

constexpr double kEarthRadius = 6371008.8;
constexpr double kPi = 3.14159265358979323846;

double Radians(double degrees) {
    return degrees * kPi / 180.0;
}

double Degrees(double radians) {
    return radians * 180.0 / kPi;
}

} // namespace

void PlaceBox::Range::Add(double value, bool isFirst) {
    low = isFirst ? value : std::min(low, value);
    high = isFirst ? value : std::max(high, value);
}

void PlaceBox::Add(double latitude, double longitude) {
    const double phi = Radians(latitude);
    const double lambda = Radians(longitude);
    x_.Add(std::cos(phi) * std::cos(lambda), isEmpty_);
    y_.Add(std::cos(phi) * std::sin(lambda), isEmpty_);
    z_.Add(std::sin(phi), isEmpty_);
    isEmpty_ = false;
}

void PlaceBox::Middle(double& latitude, double& longitude) const {
    const double x = x_.low + x_.high;
    const double y = y_.low + y_.high;
    const double z = z_.low + z_.high;
    const double level = std::hypot(x, y);
    latitude = level == 0.0 && z == 0.0 ? 0.0 : Degrees(std::atan2(z, level));
    longitude = level == 0.0 ? 0.0 : Degrees(std::atan2(y, x));
}

PageProjection::PageProjection(double latitude, double longitude)
    : sine_(std::sin(Radians(latitude))), cosine_(std::cos(Radians(latitude))),
      longitude_(Radians(longitude)) {}

void PageProjection::Project(double latitude, double longitude, double& x, double& y) const {
    const double phi = Radians(latitude);
    const double lambda = Radians(longitude) - longitude_;
    const double level = std::cos(phi) * std::cos(lambda);
    const double cosine = sine_ * std::sin(phi) + cosine_ * level;
    // The place opposite the middle is a circle, of which any point will do.
    const double scale = kEarthRadius * std::sqrt(2.0 / std::max(1.0 + cosine, 1e-9));
    x = scale * std::cos(phi) * std::sin(lambda);
    y = scale * (sine_ * level - cosine_ * std::sin(phi));
}

} // namespace vexagpx
