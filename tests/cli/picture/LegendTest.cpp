// SPDX-License-Identifier: MIT
#include "picture/Support.h"

#include <vexagpx/picture/Legend.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

using cli::MeasureEqually;
using cli::PathOf;
using cli::ShapesOf;
using cli::TextsOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using vexagpx::Box;
using vexagpx::ColourBy;
using vexagpx::Drawing;
using vexagpx::Label;
using vexagpx::LayOutLegend;
using vexagpx::Line;
using vexagpx::PathColours;
using vexagpx::PathData;

constexpr Box kBox = {10.0, 10.0, 600.0, 400.0};

Drawing LegendOf(const PathData& data, ColourBy by = ColourBy::kNone) {
    Drawing drawing;
    LayOutLegend(data, PathColours(data, by), kBox, 1.0, MeasureEqually, drawing);
    return drawing;
}

PathData WithRoute() {
    PathData data;
    data.paths.push_back(PathOf({{{0, 0, 1}, {0, 1, 90}}}));
    data.paths.push_back(PathOf({{{0, 0, 1}, {0, 1, 90}}}));
    data.paths[1].name = "plan";
    data.paths[1].isRoute = true;
    return data;
}

TEST(LegendTest, NamesPathsInTheirColours) {
    const Drawing drawing = LegendOf(WithRoute());
    EXPECT_THAT(TextsOf(drawing), ElementsAre("start", "end", "walk", "plan"));
    const std::vector<Line> lines = ShapesOf<Line>(drawing);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_FALSE(lines[0].isDashed);
    EXPECT_TRUE(lines[1].isDashed);
    EXPECT_FALSE(lines[0].colour == lines[1].colour);
}

TEST(LegendTest, AScaleIsNamedInsteadOfPaths) {
    EXPECT_THAT(TextsOf(LegendOf(WithRoute(), ColourBy::kHeight)),
                ElementsAre("start", "end", "1 route", "height 1 to 90 m"));
}

TEST(LegendTest, StaysInItsBoxAndCountsTheRest) {
    PathData data;
    for (int i = 0; i < 100; ++i) {
        data.paths.push_back(PathOf({{{0, 0, 1}, {0, 1, 90}}}));
        data.paths.back().name = std::string(static_cast<std::size_t>(i % 40), 'x');
    }
    const Drawing drawing = LegendOf(data);
    EXPECT_THAT(TextsOf(drawing), Contains(HasSubstr(" more")));
    for (const Label& label : ShapesOf<Label>(drawing)) {
        const double width = std::min(MeasureEqually(label.text, label.size, false), label.widest);
        EXPECT_LE(label.at.x + width, kBox.right + 1.0) << label.text;
        EXPECT_LE(label.at.y, kBox.top + 60.0);
    }
}

TEST(LegendTest, OfNothingTakesNoRoom) {
    Drawing drawing;
    const PathData data;
    EXPECT_EQ(LayOutLegend(data, PathColours(data, ColourBy::kNone), kBox, 1.0, MeasureEqually, drawing),
              kBox.top);
}

} // namespace
