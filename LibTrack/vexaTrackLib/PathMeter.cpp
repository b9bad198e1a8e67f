// SPDX-License-Identifier: MIT
#include <vexaTrackLib/PathMeter.h>

#include <vexaTrackLib/PathLength.h>
#include <vexaTrackLib/paths/Length.h>
#include <vexaTrackLib/statistics/ClimbMeter.h>
#include <vexaTrackLib/statistics/FastestMeter.h>
#include <vexaTrackLib/statistics/OutlierFilter.h>
#include <vexaTrackLib/statistics/PauseFinder.h>

#include <common/dbc.h>

#include <algorithm>
#include <cmath>

namespace vexaTrackLib {

namespace {

constexpr char kSource[] = "LibTrack/vexaTrackLib/PathMeter.cpp";

// Beyond these a value is none, so that sums of any number of them are finite. In milliseconds and in metres.
constexpr double kLatestTime = 8.64e15;
constexpr double kGreatestHeight = 1e9;

// In seconds: the shortest step. Points at shorter intervals share one.
constexpr double kShortestStep = 1.0;

bool GetUsableTime(const vexaTransferLib::GpxPoint& point, double& time) {
    return point.GetTime(time) && std::abs(time) <= kLatestTime;
}

bool GetUsableHeight(const vexaTransferLib::GpxPoint& point, double& height) {
    return point.GetElevation(height) && std::abs(height) <= kGreatestHeight;
}

} // namespace

class PathMeter::Impl {
public:
    explicit Impl(const StatisticsOptions& options) : climb_(options.climb), pauses_(options) {}

    void Add(const vexaTransferLib::GpxPoint& point);
    void Break();
    /// To be called after Break().
    PathStatistics Result() const;

private:
    void AddHeight(double height, double piece);
    void AddTime(double time, double latitude, double longitude);
    void EndStep(const statistics::Stay& stay, double metres);
    void Judge(const statistics::Step& step, bool isOutlier);
    void EndTimes();

    PathStatistics result_;
    PathLength length_;
    statistics::ClimbMeter climb_;
    double height_ = 0.0;
    bool hasHeight_ = false; ///< the last point has

    statistics::OutlierFilter outliers_;
    statistics::PauseFinder pauses_;
    statistics::FastestMeter fastest_;
    double way_ = 0.0;         ///< since the last step
    double wayToTimed_ = 0.0;  ///< of that, up to the last point with a time
    statistics::Stay stepEnd_; ///< of the last step
    statistics::Stay timed_;   ///< the last point with a time
    bool hasTime_ = false;     ///< there is one in this segment
    double stepSeconds_ = 0.0; ///< of all steps
    double speedMetres_ = 0.0; ///< of all steps that are no outliers, those of pauses included
    double speedSeconds_ = 0.0;
};

void PathMeter::Impl::Add(const vexaTransferLib::GpxPoint& point) {
    double latitude = 0.0;
    double longitude = 0.0;
    point.GetPoint(latitude, longitude);
    ++result_.points;
    result_.bounds.Add(latitude, longitude);
    const double piece = length_.Add(latitude, longitude);
    way_ += piece;

    double height = 0.0;
    if (GetUsableHeight(point, height)) {
        AddHeight(height, piece);
    } else {
        ++result_.pointsWithoutHeight;
        result_.metresWithHeight += piece;
        hasHeight_ = false;
    }
    double time = 0.0;
    if (GetUsableTime(point, time))
        AddTime(time, latitude, longitude);
    else
        ++result_.pointsWithoutTime;
}

void PathMeter::Impl::AddHeight(double height, double piece) {
    if (hasHeight_)
        result_.metresWithHeight += paths::Length(piece, height - height_);
    else
        result_.metresWithHeight += piece;
    height_ = height;
    hasHeight_ = true;
    climb_.Add(height);
    result_.lowest = std::min(height, result_.lowest.value_or(height));
    result_.highest = std::max(height, result_.highest.value_or(height));
}

void PathMeter::Impl::AddTime(double time, double latitude, double longitude) {
    result_.times.Add(time);
    statistics::Stay stay{time, latitude, longitude};
    length_.GetSpace(stay.x, stay.y, stay.z);
    if (hasTime_ && time < timed_.time) {
        ++result_.backwardTimes;
        EndTimes();
    }
    if (!hasTime_) {
        pauses_.Start(stay);
        stepEnd_ = stay;
        way_ = 0.0;
    }
    timed_ = stay;
    wayToTimed_ = way_;
    hasTime_ = true;
    if (time - stepEnd_.time >= kShortestStep * 1000.0)
        EndStep(stay, way_);
}

void PathMeter::Impl::EndStep(const statistics::Stay& stay, double metres) {
    const statistics::Step step{stay, metres, (stay.time - stepEnd_.time) / 1000.0};
    stepSeconds_ += step.seconds;
    stepEnd_ = stay;
    way_ = 0.0;
    wayToTimed_ = 0.0;
    outliers_.Add(step, [this](const statistics::Step& judged, bool isOutlier) { Judge(judged, isOutlier); });
}

void PathMeter::Impl::Judge(const statistics::Step& step, bool isOutlier) {
    pauses_.Add(step, isOutlier);
    if (isOutlier)
        return;
    speedMetres_ += step.metres;
    speedSeconds_ += step.seconds;
    fastest_.Add(step);
}

// Ends what is measured by times: at the end of a segment, and where times go backwards.
void PathMeter::Impl::EndTimes() {
    if (!hasTime_)
        return;
    if (timed_.time > stepEnd_.time)
        EndStep(timed_, wayToTimed_);
    outliers_.Break([this](const statistics::Step& judged, bool isOutlier) { Judge(judged, isOutlier); });
    pauses_.Break();
    fastest_.Break();
    hasTime_ = false;
}

void PathMeter::Impl::Break() {
    EndTimes();
    climb_.Break();
    hasHeight_ = false;
    length_.Break();
}

PathStatistics PathMeter::Impl::Result() const {
    PathStatistics result = result_;
    result.metres = length_.Metres();
    result.ascent = climb_.Ascent();
    result.descent = climb_.Descent();
    result.rawAscent = climb_.RawAscent();
    result.rawDescent = climb_.RawDescent();
    if (!result.times.IsEmpty())
        result.elapsedSeconds = (result.times.Last() - result.times.First()) / 1000.0;
    result.movingSeconds = std::max(0.0, stepSeconds_ - pauses_.SecondsInSegments());
    result.pausedSeconds = pauses_.Seconds();
    result.pauseCount = pauses_.Count();
    result.pauses = pauses_.Pauses();
    // What is left of sums after a subtraction may be a rounding error below nothing.
    result.speedMetres = std::max(0.0, speedMetres_ - pauses_.StepMetres());
    result.speedSeconds = std::max(0.0, speedSeconds_ - pauses_.StepSeconds());
    result.fastest = fastest_.Fastest();
    return result;
}

PathMeter::PathMeter(const StatisticsOptions& options) {
    dbc::Require(std::isfinite(options.climb) && options.climb >= 0.0, kSource,
                 "The climb must be a number of metres, 0 or more.");
    dbc::Require(std::isfinite(options.pause) && options.pause >= 1.0, kSource,
                 "The shortest pause must be a number of seconds, 1 or more.");
    impl_ = std::make_unique<Impl>(options);
}

PathMeter::PathMeter(PathMeter&&) noexcept = default;
PathMeter& PathMeter::operator=(PathMeter&&) noexcept = default;
PathMeter::~PathMeter() = default;

void PathMeter::Add(const vexaTransferLib::GpxPoint& point) {
    impl_->Add(point);
}

void PathMeter::Break() {
    impl_->Break();
}

PathStatistics PathMeter::Get() const {
    Impl ended = *impl_;
    ended.Break();
    return ended.Result();
}

} // namespace vexaTrackLib
