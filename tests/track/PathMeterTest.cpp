// SPDX-License-Identifier: MIT
#include <vexaTrackLib/PathMeter.h>

#include "support/Paths.h"

#include <common/dbc.h>
#include <support/ContractChecks.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace {

using namespace vexaTrackLib;
using test::kStart;
using test::LongitudeAt;
using test::Measured;
using test::PointAt;
using test::Spot;

constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr double kBogus = std::numeric_limits<double>::quiet_NaN();
constexpr double kNear = 1e-6;

/// Places a second apart, with a speed in metres a second.
std::vector<Spot> Walk(int seconds, double speed) {
    std::vector<Spot> spots;
    for (int second = 0; second <= seconds; ++second)
        spots.push_back({second * speed, second});
    return spots;
}

void ExpectFinite(const PathStatistics& figures) {
    for (const double figure :
         {figures.metres, figures.metresWithHeight, figures.ascent, figures.descent, figures.rawAscent,
          figures.rawDescent, figures.lowest.value_or(0), figures.highest.value_or(0), figures.elapsedSeconds,
          figures.movingSeconds, figures.pausedSeconds, figures.MeanSpeed().value_or(0),
          figures.fastest.value_or(0)})
        EXPECT_TRUE(std::isfinite(figure)) << figure;
}

TEST(PathMeterTest, OfNoPointHasNoFigures) {
    const PathStatistics figures = PathMeter().Get();
    EXPECT_EQ(figures.points, 0U);
    EXPECT_EQ(figures.metres, 0);
    EXPECT_TRUE(figures.times.IsEmpty());
    EXPECT_TRUE(figures.bounds.IsEmpty());
    EXPECT_FALSE(figures.lowest);
    EXPECT_FALSE(figures.highest);
    EXPECT_FALSE(figures.MeanSpeed());
    EXPECT_FALSE(figures.fastest);
}

TEST(PathMeterTest, OfOnePointHasItsHeightAndTime) {
    const PathStatistics figures = Measured({{0, 5, 400}});
    EXPECT_EQ(figures.points, 1U);
    EXPECT_EQ(figures.lowest, 400);
    EXPECT_EQ(figures.highest, 400);
    EXPECT_EQ(figures.times.First(), kStart + 5000);
    EXPECT_EQ(figures.elapsedSeconds, 0);
    EXPECT_EQ(figures.movingSeconds, 0);
    EXPECT_FALSE(figures.MeanSpeed());
}

TEST(PathMeterTest, MeasuresTheWayFlatAndInSpace) {
    // 30 m along and 40 m up are 50 m, and 100 m without a height at one end stay 100 m.
    const PathStatistics figures = Measured({{0, {}, 100}, {30, {}, 140}, {130}, {230, {}, 0}});
    EXPECT_NEAR(figures.metres, 230, kNear);
    EXPECT_NEAR(figures.metresWithHeight, 250, kNear);
    EXPECT_EQ(figures.pointsWithoutHeight, 1U);
    EXPECT_EQ(figures.pointsWithoutTime, 4U);
}

TEST(PathMeterTest, MeasuresHeightsAcrossPointsWithoutOne) {
    const PathStatistics figures = Measured({{0, {}, 100}, {10}, {20, {}, 107}, {30, {}, 104}});
    EXPECT_EQ(figures.rawAscent, 7);
    EXPECT_EQ(figures.rawDescent, 3);
    EXPECT_EQ(figures.ascent, 7);
    EXPECT_EQ(figures.descent, 0);
    EXPECT_EQ(figures.lowest, 100);
    EXPECT_EQ(figures.highest, 107);
}

TEST(PathMeterTest, ClimbIsAnOption) {
    StatisticsOptions options;
    options.climb = 3;
    EXPECT_EQ(Measured({{0, {}, 100}, {20, {}, 107}, {30, {}, 104}}, options).descent, 3);
}

TEST(PathMeterTest, TakesTimeAndSpeed) {
    const PathStatistics figures = Measured(Walk(600, 1.5));
    EXPECT_EQ(figures.elapsedSeconds, 600);
    EXPECT_EQ(figures.movingSeconds, 600);
    EXPECT_EQ(figures.pauseCount, 0U);
    EXPECT_NEAR(*figures.MeanSpeed(), 1.5, kNear);
    EXPECT_NEAR(*figures.fastest, 1.5, kNear);
    EXPECT_EQ(figures.pointsWithoutTime, 0U);
}

TEST(PathMeterTest, LeavesPausesOutOfMovingTimeAndMeanSpeed) {
    // Ten minutes at 1 m/s, ten minutes around one place, five minutes at 2 m/s.
    std::vector<Spot> spots = Walk(600, 1);
    for (int second = 601; second <= 1200; ++second)
        spots.push_back({600.0 + second % 3, second});
    for (int second = 1201; second <= 1500; ++second)
        spots.push_back({600.0 + (second - 1200) * 2, second});
    const PathStatistics figures = Measured(spots);
    EXPECT_EQ(figures.elapsedSeconds, 1500);
    ASSERT_EQ(figures.pauses.size(), 1U);
    // The circle of 24 m is entered before the place is reached, and left after it.
    EXPECT_NEAR(figures.pauses[0].start, kStart + 600'000, 24'000);
    EXPECT_NEAR(figures.pauses[0].seconds, 600, 36);
    EXPECT_NEAR(figures.pauses[0].longitude, LongitudeAt(600), LongitudeAt(24));
    EXPECT_EQ(figures.movingSeconds, 1500 - figures.pausedSeconds);
    EXPECT_NEAR(*figures.MeanSpeed(), 1200.0 / 900, 0.05);
    EXPECT_NEAR(*figures.fastest, 2, kNear);
}

TEST(PathMeterTest, PauseIsAnOption) {
    const std::vector<Spot> spots = {{0, 0}, {100, 50}, {101, 100}, {200, 150}};
    EXPECT_EQ(Measured(spots).pauseCount, 0U);
    StatisticsOptions options;
    options.pause = 50;
    EXPECT_EQ(Measured(spots, options).pauseCount, 1U);
    EXPECT_EQ(Measured(spots, options).movingSeconds, 100);
}

TEST(PathMeterTest, LeavesOutliersOutOfTheSpeedsButNotOfTheDistance) {
    std::vector<Spot> spots = Walk(300, 1.5);
    spots[100].east += 200;
    spots[200].east -= 150;
    const PathStatistics figures = Measured(spots);
    EXPECT_NEAR(*figures.MeanSpeed(), 1.5, kNear);
    EXPECT_NEAR(*figures.fastest, 1.5, kNear);
    EXPECT_NEAR(figures.metres, 450 + 2 * 200 + 2 * 150 - 3, 4);
    EXPECT_EQ(figures.movingSeconds, 300);
}

TEST(PathMeterTest, SegmentsAreMeasuredEachOnItsOwn) {
    PathMeter meter;
    for (const Spot& spot : {Spot{0, 0, 10}, Spot{10, 10, 20}, Spot{20, 20, 30}})
        meter.Add(PointAt(spot));
    meter.Break();
    for (const Spot& spot : {Spot{5020, 50, 90}, Spot{5030, 60, 80}})
        meter.Add(PointAt(spot));
    const PathStatistics figures = meter.Get();
    EXPECT_NEAR(figures.metres, 30, kNear);
    EXPECT_EQ(figures.rawAscent, 20);
    EXPECT_EQ(figures.rawDescent, 10);
    EXPECT_EQ(figures.elapsedSeconds, 60);
    EXPECT_EQ(figures.movingSeconds, 30);
    EXPECT_EQ(figures.pauseCount, 0U);
    EXPECT_NEAR(*figures.MeanSpeed(), 1, kNear);
}

TEST(PathMeterTest, AShortWayBetweenSegmentsIsAPause) {
    PathMeter meter;
    meter.Add(PointAt({0, 0}));
    meter.Add(PointAt({50, 50}));
    meter.Break();
    meter.Add(PointAt({70, 650}));
    meter.Add(PointAt({120, 700}));
    const PathStatistics figures = meter.Get();
    EXPECT_EQ(figures.pausedSeconds, 600);
    EXPECT_EQ(figures.movingSeconds, 100);
    EXPECT_EQ(figures.elapsedSeconds, 700);
}

TEST(PathMeterTest, CountsTimesThatGoBackwards) {
    const PathStatistics figures = Measured({{0, 100}, {10, 110}, {20, 50}, {30, 60}, {40, 60}, {50, 70}});
    EXPECT_EQ(figures.backwardTimes, 1U);
    EXPECT_EQ(figures.elapsedSeconds, 60);
    EXPECT_EQ(figures.movingSeconds, 30);
    EXPECT_NEAR(figures.metres, 50, kNear);
    EXPECT_NEAR(*figures.MeanSpeed(), 40.0 / 30, kNear);
}

TEST(PathMeterTest, CountsTheWayOverPointsWithoutATime) {
    const PathStatistics figures = Measured({{-100}, {0, 0}, {10}, {20, 10}, {30}, {40, 30}, {900}});
    EXPECT_EQ(figures.pointsWithoutTime, 4U);
    EXPECT_EQ(figures.movingSeconds, 30);
    EXPECT_NEAR(*figures.MeanSpeed(), 40.0 / 30, kNear);
    EXPECT_NEAR(figures.metres, 1000, kNear);
}

TEST(PathMeterTest, PointsOfOneSecondShareAStep) {
    std::vector<Spot> spots;
    for (int i = 0; i <= 1000; ++i)
        spots.push_back(
            {i * 0.2, i / 10}); // two metres a second, ten points each, their times without fractions
    const PathStatistics figures = Measured(spots);
    EXPECT_EQ(figures.movingSeconds, 100);
    EXPECT_NEAR(*figures.MeanSpeed(), 2, kNear);
    EXPECT_NEAR(*figures.fastest, 2, kNear);
}

TEST(PathMeterTest, EqualTimesGiveNoSpeed) {
    const PathStatistics figures = Measured({{0, 7}, {10, 7}, {20, 7}, {1e5, 7}});
    EXPECT_EQ(figures.movingSeconds, 0);
    EXPECT_EQ(figures.backwardTimes, 0U);
    EXPECT_FALSE(figures.MeanSpeed());
    EXPECT_FALSE(figures.fastest);
}

TEST(PathMeterTest, ValuesThatAreNoneAreCountedAsSuch) {
    for (const double bogus : {kBogus, kInfinite, -kInfinite, 1e300, -1e300}) {
        SCOPED_TRACE(bogus);
        const PathStatistics figures =
            Measured({{0, 0, 10}, {10, bogus, bogus}, {20, 10, 20}, {30, bogus, bogus}, {40, 20, 30}});
        EXPECT_EQ(figures.pointsWithoutTime, 2U);
        EXPECT_EQ(figures.pointsWithoutHeight, 2U);
        EXPECT_EQ(figures.elapsedSeconds, 20);
        EXPECT_EQ(figures.rawAscent, 20);
        EXPECT_EQ(figures.highest, 30);
        EXPECT_NEAR(figures.metresWithHeight, 40, kNear);
        ExpectFinite(figures);
    }
}

TEST(PathMeterTest, HugeValuesGiveFiniteFigures) {
    ExpectFinite(
        Measured({{0, 8e12, 9e8}, {10, -8e12, -9e8}, {20, 8e12, 9e8}, {2e7, 8.1e12, 0}, {0, 8.1e12, 0}}));
}

TEST(PathMeterTest, MorePointsMayFollowTheFigures) {
    PathMeter meter;
    double last = 0;
    for (const Spot& spot : Walk(60, 2)) {
        meter.Add(PointAt(spot));
        last = meter.Get().metres;
    }
    EXPECT_NEAR(last, 120, kNear);
    EXPECT_NEAR(*meter.Get().fastest, 2, kNear);
    EXPECT_EQ(meter.Get().movingSeconds, 60);
}

TEST(PathMeterTest, MovesTakeTheFiguresAlong) {
    PathMeter meter;
    meter.Add(PointAt({0}));
    meter.Add(PointAt({10}));
    PathMeter moved = std::move(meter);
    EXPECT_NEAR(moved.Get().metres, 10, kNear);
    meter = PathMeter();
    EXPECT_EQ(meter.Get().points, 0U);
}

TEST(PathMeterTest, RefusesOptionsThatMeanNothing) {
    for (const double bogus : {-1.0, kBogus, kInfinite}) {
        StatisticsOptions options;
        options.climb = bogus;
        EXPECT_FAILURE(PathMeter{options}, dbc::precondition_error,
                       "The climb must be a number of metres, 0 or more.",
                       "LibTrack/vexaTrackLib/PathMeter.cpp");
    }
    for (const double bogus : {0.0, 0.9, -5.0, kBogus, kInfinite}) {
        StatisticsOptions options;
        options.pause = bogus;
        EXPECT_FAILURE(PathMeter{options}, dbc::precondition_error,
                       "The shortest pause must be a number of seconds, 1 or more.",
                       "LibTrack/vexaTrackLib/PathMeter.cpp");
    }
}

} // namespace
