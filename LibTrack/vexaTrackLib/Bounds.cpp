// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Bounds.h>

#include <algorithm>

namespace vexaTrackLib {

void Bounds::Add(double latitude, double longitude) {
    south_ = std::min(south_, latitude);
    north_ = std::max(north_, latitude);
    west_ = std::min(west_, longitude);
    east_ = std::max(east_, longitude);
    const double wrapped = longitude < 0.0 ? longitude + 360.0 : longitude;
    wrappedWest_ = std::min(wrappedWest_, wrapped);
    wrappedEast_ = std::max(wrappedEast_, wrapped);
}

void Bounds::Add(const Bounds& other) {
    south_ = std::min(south_, other.south_);
    north_ = std::max(north_, other.north_);
    west_ = std::min(west_, other.west_);
    east_ = std::max(east_, other.east_);
    wrappedWest_ = std::min(wrappedWest_, other.wrappedWest_);
    wrappedEast_ = std::max(wrappedEast_, other.wrappedEast_);
}

} // namespace vexaTrackLib
