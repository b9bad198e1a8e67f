// SPDX-License-Identifier: MIT
#include <vexaTrackLib/TimeSpan.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using vexaTrackLib::TimeSpan;

TEST(TimeSpanTest, OfNoTimeIsEmpty) {
    EXPECT_TRUE(TimeSpan().IsEmpty());
}

TEST(TimeSpanTest, TimesThatAreNoNumberAreSkipped) {
    TimeSpan span;
    span.Add(std::numeric_limits<double>::quiet_NaN());
    span.Add(std::numeric_limits<double>::infinity());
    EXPECT_TRUE(span.IsEmpty());
    span.Add(-5);
    EXPECT_EQ(span.First(), -5);
    EXPECT_EQ(span.Last(), -5);
}

TEST(TimeSpanTest, AddsUp) {
    TimeSpan span;
    TimeSpan other;
    span.Add(other);
    EXPECT_TRUE(span.IsEmpty());
    span.Add(7);
    other.Add(3);
    other.Add(9);
    span.Add(other);
    EXPECT_EQ(span.First(), 3);
    EXPECT_EQ(span.Last(), 9);
}

} // namespace
