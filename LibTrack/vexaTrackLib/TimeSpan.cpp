// SPDX-License-Identifier: MIT
#include <vexaTrackLib/TimeSpan.h>

#include <algorithm>
#include <cmath>

namespace vexaTrackLib {

void TimeSpan::Add(double time) {
    if (!std::isfinite(time))
        return;
    first_ = std::min(first_, time);
    last_ = std::max(last_, time);
}

void TimeSpan::Add(const TimeSpan& other) {
    first_ = std::min(first_, other.first_);
    last_ = std::max(last_, other.last_);
}

} // namespace vexaTrackLib
