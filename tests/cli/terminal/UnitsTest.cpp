// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/Units.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using namespace vexagpx;

std::string Utf8(const icu::UnicodeString& text) {
    std::string bytes;
    return text.toUTF8String(bytes);
}

TEST(UnitsTest, LengthsHaveAboutThreeDigits) {
    struct Row {
        double metres;
        const char* metric;
        const char* imperial;
    };
    for (const Row& row : std::vector<Row>{{0, "0 m", "0 ft"},
                                           {100, "100 m", "328 ft"},
                                           {304.7, "305 m", "0.19 mi"},
                                           {1609.344, "1.61 km", "1.00 mi"},
                                           {20000, "20.0 km", "12.4 mi"},
                                           {2e6, "2000 km", "1243 mi"}}) {
        EXPECT_EQ(Utf8(LengthText(row.metres, Units::kMetric)), row.metric);
        EXPECT_EQ(Utf8(LengthText(row.metres, Units::kImperial)), row.imperial);
    }
}

TEST(UnitsTest, HeightsAreWhole) {
    EXPECT_EQ(Utf8(HeightText(-12.4, Units::kMetric)), "-12 m");
    EXPECT_EQ(Utf8(HeightText(-12.4, Units::kImperial)), "-41 ft");
    EXPECT_EQ(Utf8(HeightText(1000, Units::kImperial)), "3281 ft");
}

TEST(UnitsTest, SpeedsHaveATenthBelowAHundred) {
    EXPECT_EQ(Utf8(SpeedText(1, Units::kMetric)), "3.6 km/h");
    EXPECT_EQ(Utf8(SpeedText(1, Units::kImperial)), "2.2 mph");
    EXPECT_EQ(Utf8(SpeedText(250, Units::kMetric)), "900 km/h");
    EXPECT_EQ(Utf8(SpeedText(250, Units::kImperial)), "559 mph");
}

TEST(UnitsTest, LengthsAreParsedWithTheirUnit) {
    EXPECT_EQ(ParseLength("5m"), 5.0);
    EXPECT_EQ(ParseLength("5 m"), 5.0);
    EXPECT_EQ(ParseLength("0m"), 0.0);
    EXPECT_EQ(ParseLength("2.5km"), 2500.0);
    EXPECT_DOUBLE_EQ(ParseLength("15ft").value(), 4.572);
    EXPECT_DOUBLE_EQ(ParseLength("0.5mi").value(), 804.672);
}

TEST(UnitsTest, DurationsAreParsedWithTheirUnit) {
    EXPECT_EQ(ParseDuration("90s"), 90.0);
    EXPECT_EQ(ParseDuration("2min"), 120.0);
    EXPECT_EQ(ParseDuration("1.5 h"), 5400.0);
}

TEST(UnitsTest, OtherTextsAreRefused) {
    for (const char* text : {"",     "5",    "m",    "-5m", "+5m",  " 5m",  "5  m",   "5m ",
                             "5mm",  "5M",   ".5m",  "5.m", "5,5m", "1e3m", "5.5.5m", "1234567890123456m",
                             "nanm", "infm", "0x5m", "5h"})
        EXPECT_EQ(ParseLength(text), std::nullopt) << text;
    for (const char* text : {"", "5", "2m", "2minutes", "1d", "-1s", "1h30min"})
        EXPECT_EQ(ParseDuration(text), std::nullopt) << text;
}

} // namespace
