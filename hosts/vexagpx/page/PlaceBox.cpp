// SPDX-License-Identifier: MIT
#include <vexagpx/page/PlaceBox.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vexagpx {

namespace {

constexpr double kPi = std::numbers::pi;

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

} // namespace vexagpx
