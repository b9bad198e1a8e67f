// SPDX-License-Identifier: MIT
#include "picture/Support.h"

#include <vexagpx/picture/PictureLayout.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using cli::MeasureEqually;
using cli::PathOf;
using cli::ShapesOf;
using cli::TextsOf;
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;
using vexagpx::Clip;
using vexagpx::ColourBy;
using vexagpx::Drawing;
using vexagpx::kNoValue;
using vexagpx::LayOutPicture;
using vexagpx::PathData;
using vexagpx::PictureOptions;

PathData Walk(double height = 500.0) {
    PathData data;
    data.title = "A walk";
    data.paths.push_back(PathOf({{{47.0, 8.0, height}, {47.01, 8.01, height + 20.0}, {47.02, 8.0, height}}}));
    data.places.push_back({"bench", false, 47.01, 8.0});
    data.places.push_back({"box", true, 47.015, 8.005});
    return data;
}

Drawing Picture(const PathData& data, const PictureOptions& options = {}) {
    return LayOutPicture(data, options, MeasureEqually);
}

TEST(PictureLayoutTest, HasTitleLegendMapAndProfile) {
    const std::vector<std::string> texts = TextsOf(Picture(Walk()));
    EXPECT_THAT(texts, IsSupersetOf({"A walk", "start", "end", "1 waypoint", "1 geocache", "walk", "bench",
                                     "box", "N", "500 m", "47.01\u00b0 N"}));
}

TEST(PictureLayoutTest, TheMapUsesTheRoomOfAMissingProfile) {
    const auto mapHeight = [](const Drawing& drawing) {
        return ShapesOf<Clip>(drawing).front().box.Height();
    };
    EXPECT_GT(mapHeight(Picture(Walk(kNoValue))), mapHeight(Picture(Walk())) + 150.0);
}

TEST(PictureLayoutTest, AScaleOfColoursHasItsUnit) {
    PictureOptions options;
    options.colourBy = ColourBy::kSpeed;
    EXPECT_THAT(TextsOf(Picture(Walk(), options)), Contains("speed 36 to 36 km/h"));
    options.colourBy = ColourBy::kHeight;
    EXPECT_THAT(TextsOf(Picture(Walk(), options)), Contains("height 500 to 520 m"));
}

TEST(PictureLayoutTest, NamesWithoutRoomAreCounted) {
    PathData data = Walk();
    for (int i = 0; i < 50; ++i)
        data.places.push_back({"the same place", false, 47.01, 8.0});
    EXPECT_THAT(TextsOf(Picture(data)), Contains(HasSubstr(" names without room")));
    EXPECT_THAT(TextsOf(Picture(Walk())), Not(Contains(HasSubstr("without room"))));
}

TEST(PictureLayoutTest, ManyPathsAreCountedInTheLegend) {
    PathData data = Walk();
    for (int i = 0; i < 60; ++i)
        data.paths.push_back(data.paths[0]);
    EXPECT_THAT(TextsOf(Picture(data)), Contains(AllOf(HasSubstr("and "), HasSubstr(" more"))));
}

TEST(PictureLayoutTest, NearAPoleThereIsNoArrowToTheNorth) {
    PathData data;
    data.paths.push_back(PathOf({{{89.99, 0.0, 1.0}, {89.99, 120.0, 1.0}, {89.99, -120.0, 1.0}}}));
    EXPECT_THAT(TextsOf(Picture(data)), Not(Contains("N")));
}

TEST(PictureLayoutTest, AllSpotsAreFiniteInPicturesOfEverySize) {
    PathData data;
    data.paths.push_back(PathOf({{{47.0, 8.0, 5.0}}}));
    for (const PathData& each : {data, Walk(), Walk(kNoValue)})
        for (const auto& [width, height] :
             {std::pair(200, 150), std::pair(1000, 200), std::pair(5000, 5000)}) {
            PictureOptions options;
            options.width = width;
            options.height = height;
            for (const vexagpx::Line& line : ShapesOf<vexagpx::Line>(Picture(each, options)))
                for (const vexagpx::Spot& spot : line.spots)
                    ASSERT_TRUE(std::isfinite(spot.x) && std::isfinite(spot.y));
        }
}

} // namespace
