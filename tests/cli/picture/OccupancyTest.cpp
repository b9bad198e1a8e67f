// SPDX-License-Identifier: MIT
#include <vexagpx/picture/Occupancy.h>

#include <gtest/gtest.h>

namespace {

using vexagpx::Box;
using vexagpx::Occupancy;

constexpr Box kBox = {0.0, 0.0, 400.0, 300.0};

TEST(OccupancyTest, WhatIsTakenIsNotFree) {
    Occupancy occupancy(kBox);
    EXPECT_TRUE(occupancy.TakeIfFree({10.0, 10.0, 50.0, 20.0}));
    EXPECT_FALSE(occupancy.IsFree({45.0, 15.0, 60.0, 30.0}));
    EXPECT_TRUE(occupancy.IsFree({60.0, 10.0, 80.0, 20.0}));
    EXPECT_FALSE(occupancy.IsFree({390.0, 10.0, 410.0, 20.0}));
    occupancy.Take({-1000.0, -1000.0, -900.0, -900.0});
    EXPECT_TRUE(occupancy.IsFree({0.0, 0.0, 5.0, 5.0}));
}

} // namespace
