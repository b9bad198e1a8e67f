// SPDX-License-Identifier: MIT
#include <vexagpx/export/LeftOut.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vexagpx::LeftOut;

TEST(LeftOutTest, NothingHasNoLines) {
    EXPECT_THAT(LeftOut().Lines(), IsEmpty());
}

TEST(LeftOutTest, EverythingHasALineWithItsNumber) {
    LeftOut one;
    one.metadata = one.extensions = one.logs = one.numbers = 1;
    one.pathPoints = one.pointTimes = one.pointDetails = 1;
    EXPECT_THAT(one.Lines(),
                ElementsAre("1 value of the metadata", "1 value in extensions", "1 log of geocaches",
                            "1 height or time out of range",
                            "1 point of routes and tracks (--layer points writes them)",
                            "1 time of points in lines (--layer points writes them)",
                            "the names, sensor values and other details of 1 point in lines (--layer points "
                            "writes them)"));
    LeftOut several;
    several.numbers = 2;
    several.logs = 3;
    EXPECT_THAT(several.Lines(), ElementsAre("3 logs of geocaches", "2 heights and times out of range"));
}

} // namespace
