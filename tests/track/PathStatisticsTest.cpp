// SPDX-License-Identifier: MIT
#include <vexaTrackLib/PathStatistics.h>

#include "support/Paths.h"

#include <gtest/gtest.h>

namespace {

using namespace vexaTrackLib;
using namespace vexaTransferLib;
using test::kStart;
using test::Measured;
using test::PointAt;
using test::Spot;

TEST(PathStatisticsTest, OfATrackAreThoseOfItsSegments) {
    GpxTrack track;
    track.AddSegment();
    for (const Spot& spot : {Spot{0, 0, 100}, Spot{100, 60, 130}})
        track.AddPoint(PointAt(spot));
    track.AddSegment();
    for (const Spot& spot : {Spot{900, 100, 500}, Spot{700, 200, 480}})
        track.AddPoint(PointAt(spot));
    const PathStatistics figures = StatisticsOf(track);
    EXPECT_EQ(figures.points, 4U);
    EXPECT_NEAR(figures.metres, 300, 1e-6);
    EXPECT_EQ(figures.ascent, 30);
    EXPECT_EQ(figures.descent, 20);
    EXPECT_EQ(figures.movingSeconds, 160);
    EXPECT_EQ(figures.elapsedSeconds, 200);
}

TEST(PathStatisticsTest, OfARouteAreThoseOfItsPoints) {
    GpxRoute route(kTarvikRouteStandard);
    for (const Spot& spot : {Spot{0}, Spot{100}, Spot{50}})
        route.AddPoint(PointAt(spot, kGpxRoutePoint));
    EXPECT_NEAR(StatisticsOf(route).metres, 150, 1e-6);
    EXPECT_EQ(StatisticsOf(route).pointsWithoutTime, 3U);
}

TEST(PathStatisticsTest, OfADocumentAreTheSumsOfItsTracksAndRoutes) {
    GpxDocument document;
    for (const double metres : {100.0, 200.0}) {
        GpxTrack track;
        track.AddSegment();
        track.AddPoint(PointAt({0, 0}));
        track.AddPoint(PointAt({metres, 100}));
        document.AddTrack(track);
        GpxRoute route(kTarvikRouteStandard);
        route.AddPoint(PointAt({0}, kGpxRoutePoint));
        route.AddPoint(PointAt({metres / 10}, kGpxRoutePoint));
        document.AddRoute(route);
    }
    EXPECT_NEAR(StatisticsOfTracks(document).metres, 300, 1e-6);
    EXPECT_EQ(StatisticsOfTracks(document).elapsedSeconds, 200);
    EXPECT_NEAR(*StatisticsOfTracks(document).MeanSpeed(), 1.5, 1e-6);
    EXPECT_NEAR(StatisticsOfRoutes(document).metres, 30, 1e-6);
}

TEST(PathStatisticsTest, OptionsReachEveryPath) {
    StatisticsOptions options;
    options.climb = 50;
    GpxTrack track;
    track.AddSegment();
    track.AddPoint(PointAt({0, {}, 0}));
    track.AddPoint(PointAt({100, {}, 40}));
    GpxDocument document;
    document.AddTrack(track);
    EXPECT_EQ(StatisticsOfTracks(document).ascent, 40);
    EXPECT_EQ(StatisticsOfTracks(document, options).ascent, 0);
}

TEST(PathStatisticsTest, AddUpAsSumsAndExtremes) {
    PathStatistics sum = Measured({{0, 0, 10}, {100, 100, 30}, {101, 300, 25}});
    PathStatistics other = Measured({{500, 50, -5}, {700, 60}, {800, 40, 7}, {900, 50, 7}, {900, 50, 7}});
    sum.Add(other);
    sum.Add(PathStatistics());
    EXPECT_EQ(sum.points, 8U);
    EXPECT_EQ(sum.pointsWithoutHeight, 1U);
    EXPECT_EQ(sum.backwardTimes, 1U);
    EXPECT_NEAR(sum.metres, 101 + 400, 1e-6);
    EXPECT_EQ(sum.rawAscent, 20 + 12);
    EXPECT_EQ(sum.ascent, 20 + 12);
    EXPECT_EQ(sum.rawDescent, 5);
    EXPECT_EQ(sum.descent, 5);
    EXPECT_EQ(sum.lowest, -5);
    EXPECT_EQ(sum.highest, 30);
    EXPECT_EQ(sum.times.First(), kStart);
    EXPECT_EQ(sum.times.Last(), kStart + 300'000);
    EXPECT_EQ(sum.elapsedSeconds, 300 + 20);
    EXPECT_EQ(sum.movingSeconds, 100 + 20);
    EXPECT_EQ(sum.pausedSeconds, 200);
    EXPECT_EQ(sum.pauseCount, 1U);
    EXPECT_TRUE(sum.pauses.empty());
    EXPECT_NEAR(sum.bounds.East(), test::LongitudeAt(900), 1e-12);
}

TEST(PathStatisticsTest, AFastestSpeedBelowTheMeanIsNone) {
    // One minute at 3 m/s is the mean; three steps in succession include the pause.
    const PathStatistics figures = Measured({{0, 0}, {180, 60}, {185, 660}, {365, 720}});
    EXPECT_EQ(figures.pauseCount, 1U);
    EXPECT_NEAR(*figures.MeanSpeed(), 3, 1e-6);
    EXPECT_TRUE(figures.fastest);
    EXPECT_FALSE(figures.FastestSpeed());
    PathStatistics even = Measured({{0, 0}, {10, 10}, {20, 20}, {30, 30}, {40, 40}});
    EXPECT_NEAR(*even.FastestSpeed(), 1, 1e-6);
}

TEST(PathStatisticsTest, AnExtremeOfOnePathIsThatOfBoth) {
    PathStatistics fast;
    fast.fastest = 5;
    fast.highest = 100;
    fast.lowest = 50;
    PathStatistics sum;
    sum.Add(fast);
    EXPECT_EQ(sum.fastest, 5);
    EXPECT_EQ(sum.highest, 100);
    EXPECT_EQ(sum.lowest, 50);
    fast.fastest = 4;
    fast.highest = 90;
    fast.lowest = 60;
    sum.Add(fast);
    EXPECT_EQ(sum.fastest, 5);
    EXPECT_EQ(sum.highest, 100);
    EXPECT_EQ(sum.lowest, 50);
}

} // namespace
