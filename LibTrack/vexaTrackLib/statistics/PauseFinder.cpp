// SPDX-License-Identifier: MIT
#include <vexaTrackLib/statistics/PauseFinder.h>

#include <algorithm>
#include <cmath>

namespace vexaTrackLib::statistics {

namespace {

constexpr double kSlow = 0.2;          // metres a second
constexpr double kWidestRadius = 25.0; // metres

double SecondsBetween(double start, double end) {
    return (end - start) / 1000.0;
}

} // namespace

PauseFinder::PauseFinder(const StatisticsOptions& options)
    : shortest_(options.pause), listed_(options.listedPauses) {
    const double radius = std::min(kSlow * shortest_, kWidestRadius);
    radius2_ = radius * radius;
}

void PauseFinder::Start(const Stay& stay) {
    const double seconds = SecondsBetween(last_.time, stay.time);
    if (started_ && seconds >= shortest_ && std::sqrt(StraightDistance2(last_, stay)) <= kSlow * seconds)
        Record(last_, stay.time);
    started_ = true;
    MoveTo(stay);
    last_ = stay;
}

void PauseFinder::Add(const Step& step, bool isOutlier) {
    const Stay start = last_;
    last_ = step.end;
    if (isOutlier)
        return;
    if (!IsInside(step.end)) {
        EndStay();
        MoveTo(start);
    }
    if (IsInside(step.end)) {
        inside_ = step.end.time;
        sum_.metres += step.metres;
        sum_.seconds += step.seconds;
        return;
    }
    if (step.seconds >= shortest_ && step.metres <= kSlow * step.seconds)
        RecordInSegment(start, step.end.time, {step.metres, step.seconds});
    MoveTo(step.end);
}

void PauseFinder::Break() {
    EndStay();
    MoveTo(last_);
}

void PauseFinder::MoveTo(const Stay& stay) {
    anchor_ = stay;
    inside_ = stay.time;
    sum_ = {};
}

void PauseFinder::EndStay() {
    if (SecondsBetween(anchor_.time, inside_) >= shortest_)
        RecordInSegment(anchor_, inside_, sum_);
}

void PauseFinder::RecordInSegment(const Stay& start, double end, const Sum& steps) {
    Record(start, end);
    secondsInSegments_ += SecondsBetween(start.time, end);
    steps_.metres += steps.metres;
    steps_.seconds += steps.seconds;
}

void PauseFinder::Record(const Stay& start, double end) {
    const double seconds = SecondsBetween(start.time, end);
    seconds_ += seconds;
    const bool continues = count_ > 0 && start.time == lastEnd_;
    lastEnd_ = end;
    if (!continues)
        ++count_;
    if (continues && count_ == pauses_.size())
        pauses_.back().seconds += seconds;
    else if (!continues && pauses_.size() < listed_)
        pauses_.push_back({start.time, seconds, start.latitude, start.longitude});
}

} // namespace vexaTrackLib::statistics
