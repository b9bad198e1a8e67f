// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cmath>

namespace vexaTrackLib::paths {

/// As std::hypot, which takes several times as long because it also knows numbers whose squares are too large or too small.
inline double Length(double x, double y) {
    const double square = x * x + y * y;
    return square > 1e-280 && square < 1e280 ? std::sqrt(square) : std::hypot(x, y);
}

} // namespace vexaTrackLib::paths
