// SPDX-License-Identifier: MIT
#include <vexaTrackLib/statistics/OutlierFilter.h>

#include <algorithm>

namespace vexaTrackLib::statistics {

namespace {

// In metres a second. Nothing on the ground or in the air is faster than the first; jitter of a good receiver is below
// the second.
constexpr double kImpossible = 1000.0;
constexpr double kJitter = 5.0;
// In metres a second, for each second: what may be gained unseen within a long step.
constexpr double kAcceleration = 1.0;
// So many times as fast as its neighbours a step may be.
constexpr double kFactor = 3.0;
constexpr std::size_t kFewest = 3;

} // namespace

bool OutlierFilter::IsOutlier(std::size_t index) const {
    const Step& step = At(index);
    if (step.metres <= kJitter * step.seconds)
        return false;
    if (step.metres > kImpossible * step.seconds)
        return true;

    double metres = 0.0;
    double seconds = 0.0;
    std::size_t count = 0;
    // A jump and the way back are two steps, so the fastest of the neighbours does not count.
    const Step* fastest = nullptr;
    const std::size_t end = std::min(end_, index + kNeighbours + 1);
    for (std::size_t i = first_; i < end; ++i) {
        if (i == index)
            continue;
        const Step& other = At(i);
        metres += other.metres;
        seconds += other.seconds;
        ++count;
        if (!fastest || other.metres * fastest->seconds > fastest->metres * other.seconds)
            fastest = &other;
    }
    if (count <= kFewest)
        return false;
    metres -= fastest->metres;
    seconds -= fastest->seconds;
    const double allowed =
        kFactor * (seconds > 0.0 ? metres / seconds : 0.0) + kJitter + kAcceleration * step.seconds;
    return step.metres > allowed * step.seconds;
}

} // namespace vexaTrackLib::statistics
