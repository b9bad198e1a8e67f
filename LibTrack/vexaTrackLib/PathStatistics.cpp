// SPDX-License-Identifier: MIT
#include <vexaTrackLib/PathStatistics.h>

#include <vexaTrackLib/PathMeter.h>

#include <algorithm>
#include <functional>

namespace vexaTrackLib {

namespace {

// The greater of two values that may be absent, by `less`.
template <class Less>
std::optional<double> Extreme(const std::optional<double>& one, const std::optional<double>& other,
                              Less less) {
    if (!one || (other && less(*one, *other)))
        return other;
    return one;
}

} // namespace

std::optional<double> PathStatistics::MeanSpeed() const {
    if (speedSeconds <= 0.0)
        return std::nullopt;
    return speedMetres / speedSeconds;
}

std::optional<double> PathStatistics::FastestSpeed() const {
    const std::optional<double> mean = MeanSpeed();
    // The difference is for rounding: on an even path both are the same.
    if (fastest && mean && *fastest < *mean * (1.0 - 1e-9))
        return std::nullopt;
    return fastest;
}

void PathStatistics::Add(const PathStatistics& other) {
    points += other.points;
    pointsWithoutTime += other.pointsWithoutTime;
    pointsWithoutHeight += other.pointsWithoutHeight;
    backwardTimes += other.backwardTimes;
    metres += other.metres;
    metresWithHeight += other.metresWithHeight;
    ascent += other.ascent;
    descent += other.descent;
    rawAscent += other.rawAscent;
    rawDescent += other.rawDescent;
    lowest = Extreme(lowest, other.lowest, std::greater<>());
    highest = Extreme(highest, other.highest, std::less<>());
    times.Add(other.times);
    elapsedSeconds += other.elapsedSeconds;
    movingSeconds += other.movingSeconds;
    pausedSeconds += other.pausedSeconds;
    pauseCount += other.pauseCount;
    pauses.clear();
    speedMetres += other.speedMetres;
    speedSeconds += other.speedSeconds;
    fastest = Extreme(fastest, other.fastest, std::less<>());
    bounds.Add(other.bounds);
}

PathStatistics StatisticsOf(const vexaTransferLib::GpxTrack& track, const StatisticsOptions& options) {
    PathMeter meter(options);
    for (auto segment = track.GetSegmentIter(); segment != track.GetSegmentEndIter(); ++segment) {
        const auto end = track.GetPointEndIter(segment);
        for (auto point = track.GetPointIter(segment); point != end; ++point)
            meter.Add(*point);
        meter.Break();
    }
    return meter.Get();
}

PathStatistics StatisticsOf(const vexaTransferLib::GpxRoute& route, const StatisticsOptions& options) {
    PathMeter meter(options);
    for (auto point = route.GetPointIter(); point != route.GetPointEndIter(); ++point)
        meter.Add(*point);
    return meter.Get();
}

PathStatistics StatisticsOfTracks(const vexaTransferLib::GpxDocument& document,
                                  const StatisticsOptions& options) {
    PathStatistics sum;
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track)
        sum.Add(StatisticsOf(*track, options));
    return sum;
}

PathStatistics StatisticsOfRoutes(const vexaTransferLib::GpxDocument& document,
                                  const StatisticsOptions& options) {
    PathStatistics sum;
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route)
        sum.Add(StatisticsOf(*route, options));
    return sum;
}

} // namespace vexaTrackLib
