// SPDX-License-Identifier: MIT
#include <vexagpx/commands/PathStatistics.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace vexagpx;

TEST(PathStatisticsTest, WesternPointsAloneDoNotLieAcrossThe180thMeridian) {
    Bounds bounds;
    bounds.Add(48.6, -123.039668);
    bounds.Add(48.7, -122.730903);
    EXPECT_EQ(bounds.West(), -123.039668);
    EXPECT_EQ(bounds.East(), -122.730903);
}

TEST(PathStatisticsTest, PointsAroundGreenwichDoNotLieAcrossThe180thMeridian) {
    Bounds bounds;
    bounds.Add(0, -1);
    bounds.Add(0, 1);
    EXPECT_EQ(bounds.West(), -1);
    EXPECT_EQ(bounds.East(), 1);
}

TEST(PathStatisticsTest, ANewBoundsIsEmpty) {
    EXPECT_TRUE(Bounds().IsEmpty());
    EXPECT_TRUE(TimeSpan().IsEmpty());
}

TEST(PathStatisticsTest, TimesThatAreNoNumberAreSkipped) {
    TimeSpan span;
    span.Add(std::numeric_limits<double>::quiet_NaN());
    span.Add(std::numeric_limits<double>::infinity());
    EXPECT_TRUE(span.IsEmpty());
    span.Add(-5);
    EXPECT_EQ(span.First(), -5);
    EXPECT_EQ(span.Last(), -5);
}

} // namespace
