// SPDX-License-Identifier: MIT
#include <vexagpx/picture/ColouredLine.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using vexagpx::ColouredRun;
using vexagpx::SimplifiedRuns;
using vexagpx::Spot;

TEST(ColouredLineTest, EachRunStartsWhereTheOneBeforeEnds) {
    const std::vector<ColouredRun> runs =
        SimplifiedRuns({{0, 0}, {10, 0}, {20, 0}, {20, 10}, {20, 20}}, {1, 1, 1, 2, 2});
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_EQ(runs[0].step, 1);
    EXPECT_EQ(runs[0].spots.size(), 2U);
    EXPECT_EQ(runs[0].spots.back().x, 20.0);
    EXPECT_EQ(runs[1].step, 2);
    EXPECT_EQ(runs[1].spots.front().x, 20.0);
    EXPECT_EQ(runs[1].spots.front().y, 0.0);
    EXPECT_EQ(runs[1].spots.back().y, 20.0);
}

TEST(ColouredLineTest, TheFirstPieceHasTheColourOfItsEnd) {
    const std::vector<ColouredRun> runs = SimplifiedRuns({{0, 0}, {10, 0}}, {1, 7});
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0].step, 7);
}

TEST(ColouredLineTest, AMillionPointsOfAFewPlacesAreFewSpots) {
    std::vector<Spot> spots;
    std::vector<std::uint8_t> steps;
    for (int i = 0; i < 1000000; ++i) {
        spots.push_back({i * 1e-4, 20.0 * std::sin(i * 1e-4)});
        steps.push_back(static_cast<std::uint8_t>(i % 24));
    }
    std::size_t count = 0;
    for (const ColouredRun& run : SimplifiedRuns(spots, steps))
        count += run.spots.size();
    EXPECT_LT(count, 3000U);
    EXPECT_EQ(SimplifiedRuns(spots, std::vector<std::uint8_t>(spots.size(), 0)).size(), 1U);
}

TEST(ColouredLineTest, NoSpotsAreNoRuns) {
    EXPECT_TRUE(SimplifiedRuns({}, {}).empty());
}

} // namespace
