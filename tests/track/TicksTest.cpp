// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Ticks.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace {

using testing::DoubleEq;
using testing::ElementsAre;
using testing::IsEmpty;
using vexaTrackLib::RoundTicks;
using vexaTrackLib::Ticks;

TEST(TicksTest, AreRoundNumbersBetweenTheTwo) {
    EXPECT_THAT(RoundTicks(203.0, 1187.0, 5).values, ElementsAre(400.0, 600.0, 800.0, 1000.0));
    EXPECT_THAT(RoundTicks(-3.0, 7.0, 6).values, ElementsAre(-2.0, 0.0, 2.0, 4.0, 6.0));
}

TEST(TicksTest, IncludeTheEnds) {
    EXPECT_THAT(RoundTicks(0.0, 1.0, 6).values, ElementsAre(DoubleEq(0.0), DoubleEq(0.2), DoubleEq(0.4),
                                                            DoubleEq(0.6), DoubleEq(0.8), DoubleEq(1.0)));
}

TEST(TicksTest, HaveTheDecimalsThatTellThemApart) {
    EXPECT_EQ(RoundTicks(0.0, 1.0, 6).decimals, 1);
    EXPECT_EQ(RoundTicks(11.51, 11.52, 4).decimals, 3);
    EXPECT_EQ(RoundTicks(0.0, 500.0, 6).decimals, 0);
}

TEST(TicksTest, AreNeverMoreThanWantedAndMostlyAtLeastAThird) {
    for (int most = 2; most < 20; ++most)
        for (double high = 0.001; high < 1e9; high *= 1.7) {
            const Ticks ticks = RoundTicks(high * 0.3, high, most);
            EXPECT_LE(static_cast<int>(ticks.values.size()), most) << high;
            EXPECT_GE(3 * static_cast<int>(ticks.values.size()) + 3, most) << high;
        }
}

TEST(TicksTest, OfOneNumberAreThatNumberOrNothing) {
    EXPECT_LE(RoundTicks(5.0, 5.0, 4).values.size(), 1U);
    EXPECT_LE(RoundTicks(0.0, 0.0, 4).values.size(), 1U);
}

TEST(TicksTest, OfWhatIsNoRangeAreNone) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(RoundTicks(2.0, 1.0, 4).values, IsEmpty());
    EXPECT_THAT(RoundTicks(nan, 1.0, 4).values, IsEmpty());
    EXPECT_THAT(RoundTicks(0.0, infinity, 4).values, IsEmpty());
    EXPECT_THAT(RoundTicks(-1.7e308, 1.7e308, 4).values, IsEmpty());
}

TEST(TicksTest, OfNumbersThatHardlyDifferEnd) {
    EXPECT_LE(RoundTicks(1e15, 1e15 + 0.25, 10).values.size(), 10U);
    EXPECT_LE(RoundTicks(1e-300, 2e-300, 10).values.size(), 10U);
}

} // namespace
