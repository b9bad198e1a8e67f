// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

namespace vexaTrackLib::statistics {

/// A place on the earth at a time.
struct Stay {
    double time = 0.0; ///< in milliseconds since 1970 UTC
    double latitude = 0.0;
    double longitude = 0.0;
    // In space, in metres.
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// The square of the straight distance between two places, in square metres.
inline double StraightDistance2(const Stay& from, const Stay& to) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double dz = to.z - from.z;
    return dx * dx + dy * dy + dz * dz;
}

/// What one step of a path was, which takes a second at least unless it is the last of a segment.
struct Step {
    Stay end;
    double metres = 0.0; ///< along the way
    double seconds = 0.0;
};

} // namespace vexaTrackLib::statistics
