// SPDX-License-Identifier: MIT
#include "picture/Support.h"

#include <vexagpx/picture/Palette.h>
#include <vexagpx/picture/PathColours.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using cli::PathOf;
using vexagpx::ColourBy;
using vexagpx::kNoValue;
using vexagpx::PathColours;
using vexagpx::PathData;
using vexagpx::PathSegment;
using vexagpx::SpeedsOf;

TEST(PathColoursTest, SpeedsAreThoseAroundAPoint) {
    // 100 metres in ten seconds, all along.
    const PathSegment segment = PathOf({{{0, 0, 1}, {0, 1, 1}, {0, 2, 1}, {0, 3, 1}}}).segments[0];
    for (const double speed : SpeedsOf(segment))
        EXPECT_DOUBLE_EQ(speed, 10.0);
}

TEST(PathColoursTest, SpeedsNeedTimesThatRise) {
    PathSegment segment = PathOf({{{0, 0, 1}, {0, 1, 1}, {0, 2, 1}, {0, 3, 1}}}).segments[0];
    segment[1].time = kNoValue;
    segment[2].time = -1.0;
    const std::vector<double> speeds = SpeedsOf(segment);
    EXPECT_DOUBLE_EQ(speeds[0], 10.0);
    EXPECT_TRUE(std::isnan(speeds[1]));
    EXPECT_TRUE(std::isnan(speeds[2]));
    EXPECT_DOUBLE_EQ(speeds[3], 10.0);
    EXPECT_TRUE(std::isnan(SpeedsOf({segment[0]})[0]));
}

TEST(PathColoursTest, HeightsGoFromTheFirstToTheLastColour) {
    PathData data;
    data.paths.push_back(PathOf({{{0, 0, 100}, {0, 1, 200}, {0, 2, kNoValue}, {0, 3, 300}}}));
    const PathColours colours(data, ColourBy::kHeight);
    ASSERT_TRUE(colours.HasScale());
    EXPECT_EQ(colours.Low(), 100.0);
    EXPECT_EQ(colours.High(), 300.0);
    const auto steps = colours.StepsOf(0, 0);
    EXPECT_EQ(colours.ColourOf(0, steps[0]), vexagpx::RampColour(0));
    EXPECT_EQ(colours.ColourOf(0, steps[2]), vexagpx::kUnknownColour);
    EXPECT_EQ(colours.ColourOf(0, steps[3]), vexagpx::RampColour(vexagpx::kRampSteps - 1));
}

TEST(PathColoursTest, AnOutlierDoesNotStretchTheScaleOfSpeeds) {
    PathData data;
    std::vector<std::vector<double>> points;
    for (int i = 0; i < 500; ++i)
        points.push_back({0.0, 0.0, 1.0});
    data.paths.push_back(PathOf({points}));
    auto& segment = data.paths[0].segments[0];
    for (std::size_t i = 250; i < segment.size(); ++i)
        segment[i].distance += 1e6;
    const PathColours colours(data, ColourBy::kSpeed);
    EXPECT_NEAR(colours.High(), 10.0, 1e-6);
}

TEST(PathColoursTest, WithoutValuesEachPathHasItsColour) {
    PathData data;
    data.paths.push_back(PathOf({{{0, 0, kNoValue}, {0, 1, kNoValue}}}));
    data.paths.push_back(PathOf({{{0, 0, kNoValue}, {0, 1, kNoValue}}}));
    const PathColours colours(data, ColourBy::kHeight);
    EXPECT_FALSE(colours.HasScale());
    EXPECT_NE(colours.ColourOf(0, 0), colours.ColourOf(1, 0));
}

} // namespace
