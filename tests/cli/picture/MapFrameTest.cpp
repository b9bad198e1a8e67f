// SPDX-License-Identifier: MIT
#include "picture/Support.h"

#include <vexagpx/picture/MapFrame.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace {

using cli::PathOf;
using vexagpx::Box;
using vexagpx::kNoValue;
using vexagpx::MapFrame;
using vexagpx::PathData;
using vexagpx::Spot;

constexpr Box kBox = {10.0, 20.0, 810.0, 620.0};

PathData DataOf(const std::vector<std::vector<double>>& points) {
    PathData data;
    data.paths.push_back(PathOf({points}));
    return data;
}

void ExpectInside(const PathData& data) {
    const MapFrame frame(data, kBox);
    for (const auto& point : data.paths[0].segments[0])
        EXPECT_TRUE(kBox.Contains(frame.SpotOf(point.latitude, point.longitude)))
            << point.latitude << ' ' << point.longitude;
}

TEST(MapFrameTest, EverythingIsInsideWhereverItIs) {
    ExpectInside(DataOf({{47.0, 8.0, 0.0}, {47.1, 8.4, 0.0}}));
    ExpectInside(DataOf({{52.0, 179.0, 0.0}, {53.0, -179.0, 0.0}}));
    ExpectInside(DataOf({{89.0, 0.0, 0.0}, {89.0, 120.0, 0.0}, {89.0, -120.0, 0.0}}));
    ExpectInside(DataOf({{-90.0, 0.0, 0.0}}));
    ExpectInside(DataOf({{60.0, -170.0, 0.0}, {-40.0, 10.0, 0.0}, {0.0, 175.0, 0.0}, {90.0, 0.0, 0.0}}));
}

TEST(MapFrameTest, ATrackAcrossTheDateLineIsNoWorld) {
    const PathData data = DataOf({{52.0, 179.9, 0.0}, {52.0, -179.9, 0.0}});
    const MapFrame frame(data, kBox);
    EXPECT_FALSE(frame.Projection().IsOfWorld());
    EXPECT_LT(frame.SpotOf(52.0, 179.9).x, frame.SpotOf(52.0, -179.9).x);
    EXPECT_EQ(frame.PartsOf(data.paths[0].segments[0]).size(), 1U);
}

TEST(MapFrameTest, LengthsAreEqualInAllDirections) {
    const MapFrame frame(DataOf({{60.0, 10.0, 0.0}, {60.1, 10.3, 0.0}}), kBox);
    const Spot here = frame.SpotOf(60.05, 10.15);
    // A degree of longitude is half of one of latitude there.
    const double up = here.y - frame.SpotOf(60.06, 10.15).y;
    const double right = frame.SpotOf(60.05, 10.17).x - here.x;
    EXPECT_NEAR(right / up, 1.0, 0.01);
}

TEST(MapFrameTest, TheWorldIsCutAtItsEdge) {
    const PathData data = DataOf(
        {{0.0, 0.0, 0.0}, {50.0, 170.0, 0.0}, {40.0, -170.0, 0.0}, {-60.0, -90.0, 0.0}, {0.0, -30.0, 0.0}});
    const MapFrame frame(data, kBox);
    ASSERT_TRUE(frame.Projection().IsOfWorld());
    const auto parts = frame.PartsOf(data.paths[0].segments[0]);
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_THAT(parts[0].points, testing::ElementsAre(0, 1, 1));
    EXPECT_THAT(parts[1].points, testing::ElementsAre(2, 2, 3, 4));
    EXPECT_NEAR(parts[0].spots.back().y, parts[1].spots.front().y, 0.01);
}

TEST(MapFrameTest, PlaceOfIsTheInverse) {
    const MapFrame frame(DataOf({{47.0, 8.0, 0.0}, {47.1, 8.4, 0.0}}), kBox);
    double latitude = 0.0;
    double longitude = 0.0;
    frame.PlaceOf(frame.SpotOf(47.03, 8.2), latitude, longitude);
    EXPECT_NEAR(latitude, 47.03, 1e-9);
    EXPECT_NEAR(longitude, 8.2, 1e-9);
}

TEST(MapFrameTest, ASinglePointIsInTheMiddleWithRoomAround) {
    const MapFrame frame(DataOf({{47.0, 8.0, kNoValue}}), kBox);
    EXPECT_NEAR(frame.SpotOf(47.0, 8.0).x, 410.0, 1e-6);
    EXPECT_NEAR(frame.SpotOf(47.0, 8.0).y, 320.0, 1e-6);
    EXPECT_LT(frame.UnitsPerMetre(), 5.0);
}

} // namespace
