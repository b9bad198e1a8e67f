// SPDX-License-Identifier: MIT
#include <vexaTrackLib/statistics/ClimbMeter.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using vexaTrackLib::statistics::ClimbMeter;

ClimbMeter Measured(double climb, const std::vector<double>& heights) {
    ClimbMeter meter(climb);
    for (const double height : heights)
        meter.Add(height);
    meter.Break();
    return meter;
}

TEST(ClimbMeterTest, CountsFromValleyToPeakAndBack) {
    struct Row {
        std::vector<double> heights;
        double ascent;
        double descent;
        const char* reason;
    };
    const std::vector<Row> rows = {
        {{}, 0, 0, "no height"},
        {{100}, 0, 0, "one height"},
        {{100, 100, 100}, 0, 0, "flat"},
        {{100, 104.9}, 0, 0, "less than the climb"},
        {{100, 105}, 5, 0, "just the climb"},
        {{105, 100}, 0, 5, "the same downwards"},
        {{100, 103, 106, 109}, 9, 0, "in small parts"},
        {{100, 109, 106, 112}, 12, 0, "a dip that is no valley"},
        {{100, 109, 104, 112}, 17, 5, "a dip that is one"},
        {{100, 104, 99, 104, 99}, 5, 10, "the first peak is where the heights start to fall"},
        {{100, 98, 102, 98, 102}, 0, 0, "noise"},
        {{100, 98, 102, 98, 103}, 5, 0, "the valley is the lowest height before the peak"},
        {{0, 50, 20, 30, 10, 60}, 110, 50, "three mountains"},
        {{0, 50, 47}, 50, 0, "the end does not count when it is near to the peak"},
        {{-10, -40, -20}, 20, 30, "below the sea"},
    };
    for (const Row& row : rows) {
        const ClimbMeter meter = Measured(5, row.heights);
        EXPECT_DOUBLE_EQ(meter.Ascent(), row.ascent) << row.reason;
        EXPECT_DOUBLE_EQ(meter.Descent(), row.descent) << row.reason;
    }
}

TEST(ClimbMeterTest, CountsEveryDifferenceRaw) {
    const ClimbMeter meter = Measured(5, {100, 101, 101, 99.5, 102});
    EXPECT_DOUBLE_EQ(meter.RawAscent(), 3.5);
    EXPECT_DOUBLE_EQ(meter.RawDescent(), 1.5);
}

TEST(ClimbMeterTest, WithoutAClimbIsTheSameAsRaw) {
    const ClimbMeter meter = Measured(0, {100, 101, 101, 99.5, 102, 102, 101});
    EXPECT_DOUBLE_EQ(meter.Ascent(), meter.RawAscent());
    EXPECT_DOUBLE_EQ(meter.Descent(), meter.RawDescent());
    EXPECT_DOUBLE_EQ(meter.Descent(), 2.5);
}

TEST(ClimbMeterTest, DoesNotBridgeABreak) {
    ClimbMeter meter(5);
    meter.Add(100);
    meter.Add(110);
    meter.Break();
    meter.Add(500);
    meter.Add(480);
    meter.Break();
    EXPECT_EQ(meter.Ascent(), 10);
    EXPECT_EQ(meter.Descent(), 20);
    EXPECT_EQ(meter.RawAscent(), 10);
    EXPECT_EQ(meter.RawDescent(), 20);
}

} // namespace
