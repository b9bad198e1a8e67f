// SPDX-License-Identifier: MIT
#include <vexaTrackLib/SimplifyPaths.h>

#include <common/dbc.h>
#include <vexaTrackLib/Distance.h>
#include <vexaTransferLib/GpxDocument.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace vexaTransferLib;
using testing::ElementsAre;
using vexaTrackLib::SimplifiedPath;
using vexaTrackLib::SimplifyRoute;
using vexaTrackLib::SimplifyRouteTo;
using vexaTrackLib::SimplifyTrack;
using vexaTrackLib::SimplifyTrackTo;

struct Position {
    double latitude;
    double longitude;

    bool operator==(const Position&) const = default;
};
using Positions = std::vector<Position>;

constexpr double kMetresOfDegree = 111195.0;

GpxTrack TrackOf(const std::vector<Positions>& segments) {
    GpxTrack track;
    for (const Positions& segment : segments) {
        GpxTrack::Segment points;
        for (const Position& position : segment)
            points.emplace_back(GpxPoint(kGpxTrackPoint, position.latitude, position.longitude));
        track.InsertSegment(track.GetSegmentCount(), points);
    }
    return track;
}

Positions PositionsOf(GpxTrack& track, std::size_t segment) {
    Positions positions;
    for (const GpxPoint& point : track.EditPoints(segment)) {
        Position position{};
        point.GetPoint(position.latitude, position.longitude);
        positions.push_back(position);
    }
    return positions;
}

/// A walk of so many points of 10 m each.
Positions Walk(std::size_t count, Position start, unsigned seed) {
    std::mt19937 random(seed);
    Positions positions;
    double direction = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        positions.push_back(start);
        direction += static_cast<double>(random() % 1000) / 1000.0 - 0.5;
        start.latitude += 10.0 / kMetresOfDegree * std::cos(direction);
        start.longitude +=
            10.0 / kMetresOfDegree * std::sin(direction) / std::cos(start.latitude * 0.0174532925);
        start.longitude = std::remainder(start.longitude, 360.0);
    }
    return positions;
}

TEST(SimplifyPathsTest, KeepsTheEndsOfEachSegmentAndTheCorners) {
    GpxTrack track =
        TrackOf({{{0, 0}, {0, 0.001}, {0, 0.002}, {0.001, 0.002}}, {{1, 1}}, {}, {{2, 2}, {2, 3}}});
    const SimplifiedPath path = SimplifyTrack(track, 5.0);
    EXPECT_THAT(PositionsOf(track, 0),
                ElementsAre(Position{0, 0}, Position{0, 0.002}, Position{0.001, 0.002}));
    EXPECT_EQ(track.GetSegmentCount(), 4U);
    EXPECT_EQ(path.before, 7U);
    EXPECT_EQ(path.after, 6U);
    EXPECT_LT(path.farthest, 0.01);
}

TEST(SimplifyPathsTest, TellsHowFarOffTheFarthestPointIs) {
    // 11.12 m beside the line.
    GpxTrack track = TrackOf({{{0, 0}, {0.0001, 0.01}, {0, 0.02}}});
    const SimplifiedPath path = SimplifyTrack(track, 20.0);
    EXPECT_EQ(path.after, 2U);
    EXPECT_NEAR(path.farthest, 11.06, 0.01);
}

TEST(SimplifyPathsTest, NothingIsFartherOffThanTheError) {
    const Positions places[] = {Walk(3000, {47, 8}, 1), Walk(3000, {89.5, 0}, 2),
                                Walk(3000, {-30, 179.99}, 3)};
    for (const Positions& walk : places) {
        for (const double error : {1.0, 5.0, 50.0}) {
            GpxTrack track = TrackOf({walk});
            const SimplifiedPath path = SimplifyTrack(track, error);
            EXPECT_LE(path.farthest, error);
            EXPECT_LT(path.after, path.before);
            EXPECT_EQ(path.after, PositionsOf(track, 0).size());
        }
    }
}

TEST(SimplifyPathsTest, LeavesAtMostAsManyPointsAsWanted) {
    for (const std::size_t wanted : {2U, 3U, 10U, 100U, 2999U}) {
        GpxTrack track = TrackOf({Walk(2000, {47, 8}, 4), Walk(1000, {47.1, 8}, 5)});
        const SimplifiedPath path = SimplifyTrackTo(track, wanted);
        EXPECT_EQ(path.before, 3000U);
        EXPECT_LE(path.after, std::max<std::size_t>(wanted, 4)) << wanted;
        EXPECT_GE(path.after, wanted / 2) << wanted;
        EXPECT_EQ(path.after, PositionsOf(track, 0).size() + PositionsOf(track, 1).size());
    }
}

TEST(SimplifyPathsTest, APathWithFewPointsIsNotChanged) {
    GpxTrack track = TrackOf({{{0, 0}, {0, 0.001}, {0, 0.002}}});
    const SimplifiedPath path = SimplifyTrackTo(track, 3);
    EXPECT_EQ(path.after, 3U);
    EXPECT_EQ(path.farthest, 0.0);
    GpxTrack empty;
    EXPECT_EQ(SimplifyTrackTo(empty, 2).before, 0U);
    EXPECT_EQ(SimplifyTrack(empty, 1.0).after, 0U);
}

TEST(SimplifyPathsTest, EqualPointsAreOne) {
    GpxTrack track = TrackOf({Positions(1000, {47, 8})});
    EXPECT_EQ(SimplifyTrack(track, 1.0).after, 2U);
    track = TrackOf({Positions(1000, {47, 8})});
    EXPECT_EQ(SimplifyTrackTo(track, 10).after, 2U);
}

TEST(SimplifyPathsTest, ALongWayIsCheckedOnMapsOnWhichLengthsAreRight) {
    Positions flight;
    for (int i = 0; i <= 4000; ++i)
        flight.push_back({60.0, -100.0 + 0.05 * i});
    GpxTrack track = TrackOf({flight});
    const SimplifiedPath path = SimplifyTrack(track, 100.0);
    EXPECT_LE(path.farthest, 100.0);
    EXPECT_LT(path.after, 400U);
    // Pieces of the circle of latitude bend away from the shortest way by 100 m when they are some 40 km long.
    EXPECT_GT(path.after, 100U);
}

TEST(SimplifyPathsTest, WhatStaysKeepsAllThatItHas) {
    GpxTrack track = TrackOf({{{0, 0}, {0, 0.001}, {0, 0.002}}});
    track.SetName(u"Walk");
    track.EditPoints(0)[2].SetTime(1000.0);
    track.EditPoints(0)[2].SetName(u"End");
    SimplifyTrack(track, 1.0);
    icu::UnicodeString name;
    EXPECT_TRUE(track.EditPoints(0)[1].GetName(name));
    EXPECT_EQ(name, icu::UnicodeString(u"End"));
    EXPECT_TRUE(track.GetName(name));
}

TEST(SimplifyPathsTest, RoutesAreSimplifiedToo) {
    GpxRoute route(kTarvikRouteStandard);
    for (int i = 0; i < 5; ++i)
        route.EditPoints().Append(GpxPoint(kGpxRoutePoint, 0, 0.001 * i));
    GpxRoute other = route;
    EXPECT_EQ(SimplifyRoute(route, 1.0).after, 2U);
    EXPECT_EQ(route.GetPointCount(), 2U);
    EXPECT_EQ(SimplifyRouteTo(other, 3).after, 2U);
    EXPECT_EQ(other.GetPointCount(), 2U);
}

template <class Work>
std::string Refusal(Work work) {
    try {
        work();
    } catch (const dbc::precondition_error& error) {
        return error.what();
    }
    return "none";
}

TEST(SimplifyPathsTest, BadArgumentsAreRefused) {
    dbc::SetReportHandler(nullptr, nullptr);
    GpxTrack track;
    GpxRoute route(kTarvikRouteStandard);
    for (const double error : {0.0, -1.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(Refusal([&] { SimplifyTrack(track, error); }),
                  "The error must be a number of metres above 0.");
        EXPECT_EQ(Refusal([&] { SimplifyRoute(route, error); }),
                  "The error must be a number of metres above 0.");
    }
    for (const std::size_t points : {0U, 1U}) {
        EXPECT_EQ(Refusal([&] { SimplifyTrackTo(track, points); }), "A path must keep two points or more.");
        EXPECT_EQ(Refusal([&] { SimplifyRouteTo(route, points); }), "A path must keep two points or more.");
    }
    dbc::SetReportHandler(dbc::WriteReport, nullptr);
}

} // namespace
