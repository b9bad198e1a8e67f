// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTrackLib/statistics/Step.h>

#include <array>
#include <cstddef>

namespace vexaTrackLib::statistics {

/// Finds the steps of a segment that only the receiver made: jumps to a place far off, and back. A step is judged by
/// the five before it and the five after it, so each one comes out when five more have gone in.
class OutlierFilter {
public:
    /// Takes a step, and calls \p judged with a step and whether it is an outlier, unless it is too early for that.
    template <class Judged>
    void Add(const Step& step, Judged judged) {
        At(end_++) = step;
        if (end_ - next_ > kNeighbours)
            JudgeNext(judged);
    }

    /// Ends the segment: calls \p judged with the remaining steps.
    template <class Judged>
    void Break(Judged judged) {
        while (next_ < end_)
            JudgeNext(judged);
        first_ = end_;
    }

private:
    static constexpr std::size_t kNeighbours = 5; ///< on each side
    static constexpr std::size_t kRoom = 16;      ///< a power of two, above 2 * kNeighbours

    template <class Judged>
    void JudgeNext(Judged judged) {
        judged(At(next_), IsOutlier(next_));
        ++next_;
        if (next_ - first_ > kNeighbours)
            first_ = next_ - kNeighbours;
    }

    Step& At(std::size_t index) { return steps_[index % kRoom]; }
    const Step& At(std::size_t index) const { return steps_[index % kRoom]; }

    bool IsOutlier(std::size_t index) const;

    std::array<Step, kRoom> steps_;
    // Indices of all steps that ever were: those below first_ are of another segment or far away, those from next_ on
    // wait for their judgement.
    std::size_t first_ = 0;
    std::size_t next_ = 0;
    std::size_t end_ = 0;
};

} // namespace vexaTrackLib::statistics
