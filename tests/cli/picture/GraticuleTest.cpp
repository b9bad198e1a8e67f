// SPDX-License-Identifier: MIT
#include "picture/Support.h"

#include <vexagpx/picture/Graticule.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using cli::PathOf;
using testing::Contains;
using vexagpx::DegreesName;
using vexagpx::FindNamePlace;
using vexagpx::GraticuleLine;
using vexagpx::MapFrame;
using vexagpx::PathData;
using vexagpx::RoundDegrees;
using vexagpx::Spot;

std::vector<std::string> NamesOf(const std::vector<std::vector<double>>& points) {
    PathData data;
    data.paths.push_back(PathOf({points}));
    std::vector<std::string> names;
    for (const GraticuleLine& line : MakeGraticule(MapFrame(data, {0.0, 0.0, 800.0, 600.0})))
        names.push_back(line.name);
    return names;
}

TEST(GraticuleTest, StepsAreRound) {
    EXPECT_EQ(RoundDegrees(0.9, 5), 0.2);
    EXPECT_EQ(RoundDegrees(20.0, 5), 5.0);
    EXPECT_EQ(RoundDegrees(170.0, 5), 45.0);
    EXPECT_EQ(RoundDegrees(360.0, 2), 90.0);
}

TEST(GraticuleTest, NamesHaveTheDigitsOfTheStep) {
    EXPECT_EQ(DegreesName(3 * 0.1, 0.1, 'N', 'S'), "0.3\u00b0 N");
    EXPECT_EQ(DegreesName(-12.0, 1.0, 'E', 'W'), "12\u00b0 W");
    EXPECT_EQ(DegreesName(48.85, 0.05, 'N', 'S'), "48.85\u00b0 N");
    EXPECT_EQ(DegreesName(0.0, 5.0, 'N', 'S'), "0\u00b0");
    EXPECT_EQ(DegreesName(-180.0, 5.0, 'E', 'W'), "180\u00b0");
}

TEST(GraticuleTest, NamesAcrossTheDateLineGoOnWithWest) {
    const std::vector<std::string> names = NamesOf({{52.0, 179.0, 0.0}, {53.0, -179.0, 0.0}});
    EXPECT_THAT(names, Contains("179\u00b0 E"));
    EXPECT_THAT(names, Contains("180\u00b0"));
    EXPECT_THAT(names, Contains("179\u00b0 W"));
}

TEST(GraticuleTest, AroundAPoleAreAllLongitudes) {
    const std::vector<std::string> names =
        NamesOf({{89.0, 0.0, 0.0}, {89.0, 120.0, 0.0}, {89.0, -120.0, 0.0}});
    for (const char* name : {"0\u00b0", "180\u00b0"})
        EXPECT_THAT(names, Contains(name));
    EXPECT_THAT(names, Contains("89\u00b0 N"));
}

TEST(GraticuleTest, TheWorldHasLinesEvery30DegreesAndItsEdge) {
    const std::vector<std::string> names = NamesOf({{0.0, -170.0, 0.0}, {0.0, 0.0, 0.0}, {60.0, 170.0, 0.0}});
    for (const char* name : {"30\u00b0 N", "60\u00b0 S", "90\u00b0 W", "150\u00b0 E", ""})
        EXPECT_THAT(names, Contains(name));
}

TEST(GraticuleTest, ANameIsWhereTheLineMeetsTheEdge) {
    Spot place;
    const GraticuleLine parallel = {{{{-10.0, 40.0}, {110.0, 40.0}}}, "x", false};
    ASSERT_TRUE(FindNamePlace(parallel, {0.0, 0.0, 100.0, 80.0}, place));
    EXPECT_EQ(place.x, 0.0);
    EXPECT_EQ(place.y, 40.0);
    const GraticuleLine meridian = {{{{30.0, 90.0}, {30.0, -5.0}}}, "x", true};
    ASSERT_TRUE(FindNamePlace(meridian, {0.0, 0.0, 100.0, 80.0}, place));
    EXPECT_EQ(place.x, 30.0);
    EXPECT_EQ(place.y, 80.0);
    EXPECT_FALSE(FindNamePlace({{{{200.0, 0.0}, {200.0, 50.0}}}, "x", true}, {0.0, 0.0, 100.0, 80.0}, place));
}

} // namespace
