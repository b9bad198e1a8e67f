// SPDX-License-Identifier: MIT
#include <vexagpx/commands/PathStatistics.h>

#include <GeographicLib/Geodesic.hpp>

#include <algorithm>
#include <cmath>

namespace vexagpx {

void Bounds::Add(double latitude, double longitude) {
    south_ = std::min(south_, latitude);
    north_ = std::max(north_, latitude);
    west_ = std::min(west_, longitude);
    east_ = std::max(east_, longitude);
    const double wrapped = longitude < 0.0 ? longitude + 360.0 : longitude;
    wrappedWest_ = std::min(wrappedWest_, wrapped);
    wrappedEast_ = std::max(wrappedEast_, wrapped);
}

void TimeSpan::Add(double time) {
    if (!std::isfinite(time))
        return;
    first_ = std::min(first_, time);
    last_ = std::max(last_, time);
}

void PathStatistics::Add(const vexaTransferLib::GpxPoint& point) {
    double latitude;
    double longitude;
    point.GetPoint(latitude, longitude);
    bounds_.Add(latitude, longitude);
    if (connected_) {
        double metres;
        GeographicLib::Geodesic::WGS84().Inverse(latitude_, longitude_, latitude, longitude, metres);
        metres_ += metres;
    }
    double time;
    if (point.GetTime(time))
        times_.Add(time);
    latitude_ = latitude;
    longitude_ = longitude;
    connected_ = true;
    ++points_;
}

} // namespace vexagpx
