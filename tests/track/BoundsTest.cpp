// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Bounds.h>

#include <gtest/gtest.h>

namespace {

using vexaTrackLib::Bounds;

TEST(BoundsTest, OfNoPlaceIsEmpty) {
    EXPECT_TRUE(Bounds().IsEmpty());
}

TEST(BoundsTest, OfOnePlaceIsThatPlace) {
    Bounds bounds;
    bounds.Add(-48.5, 11.25);
    EXPECT_FALSE(bounds.IsEmpty());
    EXPECT_EQ(bounds.South(), -48.5);
    EXPECT_EQ(bounds.North(), -48.5);
    EXPECT_EQ(bounds.West(), 11.25);
    EXPECT_EQ(bounds.East(), 11.25);
}

TEST(BoundsTest, WesternPointsAloneDoNotLieAcrossThe180thMeridian) {
    Bounds bounds;
    bounds.Add(48.6, -123.039668);
    bounds.Add(48.7, -122.730903);
    EXPECT_EQ(bounds.West(), -123.039668);
    EXPECT_EQ(bounds.East(), -122.730903);
}

TEST(BoundsTest, PointsAroundGreenwichDoNotLieAcrossThe180thMeridian) {
    Bounds bounds;
    bounds.Add(0, -1);
    bounds.Add(0, 1);
    EXPECT_EQ(bounds.West(), -1);
    EXPECT_EQ(bounds.East(), 1);
}

TEST(BoundsTest, PointsAroundThe180thMeridianLieAcrossIt) {
    Bounds bounds;
    bounds.Add(0, -179);
    bounds.Add(0, 178);
    EXPECT_EQ(bounds.West(), 178);
    EXPECT_EQ(bounds.East(), -179);
}

TEST(BoundsTest, AddsUp) {
    Bounds bounds;
    Bounds other;
    bounds.Add(other);
    EXPECT_TRUE(bounds.IsEmpty());
    other.Add(10, -179);
    bounds.Add(other);
    Bounds third;
    third.Add(20, 178);
    bounds.Add(third);
    EXPECT_EQ(bounds.South(), 10);
    EXPECT_EQ(bounds.North(), 20);
    EXPECT_EQ(bounds.West(), 178);
    EXPECT_EQ(bounds.East(), -179);
}

} // namespace
