// SPDX-License-Identifier: MIT
#include <vexaTrackLib/statistics/FastestMeter.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using vexaTrackLib::statistics::FastestMeter;
using vexaTrackLib::statistics::Step;

struct Piece {
    double metres;
    double seconds;
};

std::optional<double> FastestOf(const std::vector<Piece>& pieces) {
    FastestMeter meter;
    for (const Piece& piece : pieces)
        meter.Add({{}, piece.metres, piece.seconds});
    return meter.Fastest();
}

TEST(FastestMeterTest, IsNothingBeforeTenSecondsAndThreeSteps) {
    EXPECT_FALSE(FastestOf({}));
    EXPECT_FALSE(FastestOf({{30, 5}, {30, 5}}));
    EXPECT_FALSE(FastestOf({{3, 3}, {3, 3}, {3, 3.9}}));
    EXPECT_EQ(FastestOf({{3, 3}, {3, 3}, {3, 4}}), 0.9);
}

TEST(FastestMeterTest, IsTheMeanOfTheFastestTenSeconds) {
    std::vector<Piece> pieces(30, {1, 1});
    for (int second = 12; second < 22; ++second)
        pieces[static_cast<std::size_t>(second)].metres = 4;
    EXPECT_EQ(FastestOf(pieces), 4.0);
    pieces[15].metres = 9;
    EXPECT_EQ(FastestOf(pieces), 4.5);
}

TEST(FastestMeterTest, TakesThreeStepsHoweverLongTheyAre) {
    EXPECT_EQ(FastestOf({{600, 60}, {300, 60}, {300, 60}, {1200, 60}}), 10.0);
}

TEST(FastestMeterTest, DoesNotBridgeABreak) {
    FastestMeter meter;
    for (int i = 0; i < 9; ++i)
        meter.Add({{}, 2, 1});
    meter.Break();
    for (int i = 0; i < 9; ++i)
        meter.Add({{}, 2, 1});
    EXPECT_FALSE(meter.Fastest());
    meter.Add({{}, 2, 1});
    EXPECT_EQ(meter.Fastest(), 2.0);
}

TEST(FastestMeterTest, StandsTheShortStepAtTheEndOfASegment) {
    std::vector<Piece> pieces(9, {1, 1});
    pieces.push_back({0.5, 0.5});
    EXPECT_FALSE(FastestOf(pieces));
    pieces.push_back({0.5, 0.5});
    EXPECT_EQ(FastestOf(pieces), 1.0);
}

} // namespace
