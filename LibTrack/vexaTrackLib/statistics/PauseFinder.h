// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTrackLib/PathStatistics.h>
#include <vexaTrackLib/statistics/Step.h>

#include <cstddef>
#include <vector>

namespace vexaTrackLib::statistics {

/// Finds the pauses of a path in its steps. A pause is a time in which the path stays within a circle around the place
/// where the pause starts, or one long step that is slower than slow. Pauses without a step between them are one.
class PauseFinder {
public:
    explicit PauseFinder(const StatisticsOptions& options);

    /// Starts a segment. The time since the last one is a pause if it was long and led not far.
    void Start(const Stay& stay);
    /// \param isOutlier the end of the step is no place where anybody was
    void Add(const Step& step, bool isOutlier);
    /// Ends a segment.
    void Break();

    const std::vector<Pause>& Pauses() const { return pauses_; }
    std::size_t Count() const { return count_; }
    double Seconds() const { return seconds_; }

    /// \{
    /// Of the pauses in segments: their time, and the way and the time of their steps that are no outliers.
    double SecondsInSegments() const { return secondsInSegments_; }
    double StepMetres() const { return steps_.metres; }
    double StepSeconds() const { return steps_.seconds; }
    /// \}

private:
    struct Sum {
        double metres = 0.0;
        double seconds = 0.0;
    };

    bool IsInside(const Stay& stay) const { return StraightDistance2(anchor_, stay) <= radius2_; }
    void MoveTo(const Stay& stay);
    void EndStay();
    void RecordInSegment(const Stay& start, double end, const Sum& steps);
    void Record(const Stay& start, double end);

    double shortest_;
    double radius2_;
    std::size_t listed_;

    Stay anchor_;          ///< the centre of the circle
    double inside_ = 0.0;  ///< the time of the last place inside the circle
    Sum sum_;              ///< since the anchor
    Stay last_;            ///< the end of the last step
    bool started_ = false; ///< there was a segment

    std::vector<Pause> pauses_;
    std::size_t count_ = 0;
    double seconds_ = 0.0;
    double secondsInSegments_ = 0.0;
    Sum steps_;
    double lastEnd_ = 0.0; ///< of the last pause
};

} // namespace vexaTrackLib::statistics
