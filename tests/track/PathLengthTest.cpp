// SPDX-License-Identifier: MIT
#include <vexaTrackLib/PathLength.h>

#include <vexaTrackLib/Distance.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using vexaTrackLib::Distance;
using vexaTrackLib::PathLength;

TEST(PathLengthTest, OfNoPlaceAndOfOneIsZero) {
    PathLength path;
    EXPECT_EQ(path.Metres(), 0.0);
    EXPECT_EQ(path.Add(48, 11), 0.0);
    EXPECT_EQ(path.Metres(), 0.0);
}

TEST(PathLengthTest, IsTheSumOfThePieces) {
    PathLength path;
    path.Add(48, 11);
    const double first = path.Add(48.001, 11.001);
    const double second = path.Add(49, 13);
    EXPECT_NEAR(first, Distance(48, 11, 48.001, 11.001), 1e-8);
    EXPECT_NEAR(second, Distance(48.001, 11.001, 49, 13), 1e-8);
    EXPECT_EQ(path.Metres(), first + second);
}

TEST(PathLengthTest, StaysExactOnALongWayInSmallPieces) {
    PathLength path;
    double sum = 0.0;
    path.Add(-89, -179);
    for (int step = 1; step <= 17800; ++step) {
        const double latitude = -89 + step / 100.0;
        const double longitude = -179 + step / 50.0;
        const double piece = path.Add(latitude, longitude);
        ASSERT_NEAR(piece, Distance(-89 + (step - 1) / 100.0, -179 + (step - 1) / 50.0, latitude, longitude),
                    1e-8);
        sum += piece;
    }
    EXPECT_EQ(path.Metres(), sum);
}

TEST(PathLengthTest, DoesNotBridgeABreak) {
    PathLength path;
    path.Add(48, 11);
    const double first = path.Add(48.001, 11);
    path.Break();
    EXPECT_EQ(path.Add(10, 10), 0.0);
    const double second = path.Add(10.001, 10);
    EXPECT_EQ(path.Metres(), first + second);
}

TEST(PathLengthTest, LeavesOutWhatIsNoPlace) {
    PathLength path;
    path.Add(48, 11);
    EXPECT_TRUE(std::isnan(path.Add(91, 11)));
    EXPECT_TRUE(std::isnan(path.Add(48, 11)));
    EXPECT_TRUE(std::isnan(path.Add(48, std::numeric_limits<double>::quiet_NaN())));
    EXPECT_EQ(path.Metres(), 0.0);
    path.Break();
    path.Add(48, 11);
    path.Add(48.5, 11);
    EXPECT_NEAR(path.Metres(), Distance(48, 11, 48.5, 11), 1e-8);
}

TEST(PathLengthTest, ACopyContinuesOnItsOwn) {
    PathLength path;
    path.Add(48, 11);
    PathLength copy = path;
    copy.Add(48.001, 11);
    EXPECT_EQ(path.Metres(), 0.0);
    EXPECT_NEAR(copy.Metres(), Distance(48, 11, 48.001, 11), 1e-8);
}

} // namespace
