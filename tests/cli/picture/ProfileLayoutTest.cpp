// SPDX-License-Identifier: MIT
#include "picture/Support.h"

#include <vexagpx/picture/ProfileLayout.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

using cli::MeasureEqually;
using cli::PathOf;
using cli::ShapesOf;
using cli::TextsOf;
using testing::Contains;
using testing::IsSupersetOf;
using vexagpx::Area;
using vexagpx::ColourBy;
using vexagpx::Drawing;
using vexagpx::HasProfile;
using vexagpx::kNoValue;
using vexagpx::PathColours;
using vexagpx::PathData;
using vexagpx::ProfileAxis;

Drawing ProfileOf(const PathData& data) {
    Drawing drawing;
    drawing.width = 800.0;
    drawing.height = 200.0;
    LayOutProfile(data, PathColours(data, ColourBy::kNone), {0.0, 0.0, 800.0, 200.0}, 1.0, MeasureEqually,
                  drawing);
    return drawing;
}

PathData DataOf(const std::vector<std::vector<std::vector<double>>>& segments) {
    PathData data;
    data.paths.push_back(PathOf(segments));
    return data;
}

TEST(ProfileLayoutTest, NeedsALengthAndAHeight) {
    EXPECT_TRUE(HasProfile(DataOf({{{0, 0, 1}, {0, 1, 2}}})));
    EXPECT_FALSE(HasProfile(DataOf({{{0, 0, 1}}})));
    EXPECT_FALSE(HasProfile(DataOf({{{0, 0, kNoValue}, {0, 1, kNoValue}}})));
    EXPECT_FALSE(HasProfile(PathData()));
}

TEST(ProfileLayoutTest, TicksAreRoundAndHaveUnits) {
    const std::vector<std::string> texts =
        TextsOf(ProfileOf(DataOf({{{0, 0, 403}, {0, 1, 497}, {0, 2, 440}}})));
    EXPECT_THAT(texts, IsSupersetOf({"400 m", "420 m", "480 m", "0 m", "100 m", "200 m"}));
}

TEST(ProfileLayoutTest, BetweenSegmentsIsAGap) {
    const Drawing one = ProfileOf(DataOf({{{0, 0, 1}, {0, 1, 2}, {0, 2, 3}, {0, 3, 50}}}));
    const Drawing two = ProfileOf(DataOf({{{0, 0, 1}, {0, 1, 2}}, {{0, 2, 3}, {0, 3, 50}}}));
    ASSERT_EQ(ShapesOf<Area>(one).size(), 1U);
    const std::vector<Area> areas = ShapesOf<Area>(two);
    ASSERT_EQ(areas.size(), 2U);
    EXPECT_GT(areas[1].spots.front().x, areas[0].spots[1].x + 3.0);
}

TEST(ProfileLayoutTest, MissingHeightsInterruptTheLine) {
    EXPECT_EQ(
        ShapesOf<Area>(ProfileOf(DataOf({{{0, 0, 1}, {0, 1, 2}, {0, 2, kNoValue}, {0, 3, 1}, {0, 4, 9}}})))
            .size(),
        2U);
    std::vector<std::vector<double>> points;
    for (int i = 0; i < 200; ++i)
        points.push_back({0.0, 0.0, i % 2 == 0 ? 5.0 + i : kNoValue});
    EXPECT_EQ(ShapesOf<Area>(ProfileOf(DataOf({points}))).size(), 1U);
}

TEST(ProfileLayoutTest, ManyPointsAreAFewSpotsOfEachColumnWithItsPeaks) {
    std::vector<std::vector<double>> points;
    for (int i = 0; i < 100000; ++i)
        points.push_back({0.0, 0.0, i == 54321 ? 500.0 : 100.0 + i * 7919 % 100});
    const std::vector<Area> areas = ShapesOf<Area>(ProfileOf(DataOf({points})));
    ASSERT_EQ(areas.size(), 1U);
    EXPECT_LT(areas[0].spots.size(), 8000U);
    double top = 200.0;
    for (const vexagpx::Spot& spot : areas[0].spots)
        top = std::min(top, spot.y);
    // The peak is a single point; a margin of 6 % of the range is above it.
    EXPECT_LT(top, 30.0);
}

TEST(ProfileLayoutTest, SeveralPathsFollowOneAnotherWithTheirNames) {
    PathData data = DataOf({{{0, 0, 1}, {0, 1, 2}}});
    data.paths.push_back(PathOf({{{0, 0, 1}, {0, 1, 2}, {0, 2, 2}}}));
    data.paths[1].name = "second";
    EXPECT_THAT(TextsOf(ProfileOf(data)), IsSupersetOf({"walk", "second", "300 m"}));
}

TEST(ProfileLayoutTest, TheAxisCountsGapsBeforeADistance) {
    const ProfileAxis axis(DataOf({{{0, 0, 1}, {0, 1, 2}}, {{0, 2, 3}, {0, 3, 50}}}), 0.0, 210.0, 10.0);
    EXPECT_DOUBLE_EQ(axis.Length(), 200.0);
    EXPECT_DOUBLE_EQ(axis.PlaceOf(0, 0, 50.0), 50.0);
    EXPECT_DOUBLE_EQ(axis.PlaceOf(0, 1, 150.0), 160.0);
    EXPECT_DOUBLE_EQ(axis.PlaceOf(50.0), 50.0);
    EXPECT_DOUBLE_EQ(axis.PlaceOf(150.0), 160.0);
}

} // namespace
