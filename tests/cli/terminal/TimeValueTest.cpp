// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/TimeValue.h>

#include "support/LocaleScopes.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using vexagpx::ParseTime;
using vexagpx::TimePart;
using vexaTransferLib::testing_support::CLocaleScope;

constexpr double kDay = 86400000.0;
constexpr double kNoon = 12 * 3600000.0;

TEST(TimeValueTest, ReadsDaysMinutesSecondsAndFractions) {
    EXPECT_EQ(ParseTime("1970-01-02"), kDay);
    EXPECT_EQ(ParseTime("1970-01-02T12:00"), kDay + kNoon);
    EXPECT_EQ(ParseTime("1970-01-02T12:00:01"), kDay + kNoon + 1000);
    EXPECT_EQ(ParseTime("1970-01-02T12:00:01.25Z"), kDay + kNoon + 1250);
    EXPECT_EQ(ParseTime("2024-02-29T00:00Z"), 1709164800000.0);
    EXPECT_EQ(ParseTime("0001-01-01"), -62135596800000.0);
}

TEST(TimeValueTest, FractionsHaveAFullStopInEveryLocale) {
    const CLocaleScope german("de_DE.UTF-8");
    if (!german.IsInstalled())
        GTEST_SKIP() << "no locale with a decimal comma";
    EXPECT_EQ(ParseTime("1970-01-02T00:00:00.25"), kDay + 250);
}

TEST(TimeValueTest, LongFractionsAreRounded) {
    EXPECT_EQ(ParseTime("1970-01-02T00:00:00." + std::string(5000, '9')), kDay + 1000);
    EXPECT_EQ(ParseTime("1970-01-02T00:00:00." + std::string(5000, '0') + "1"), kDay);
}

TEST(TimeValueTest, AZoneIsAheadOfUtc) {
    EXPECT_EQ(ParseTime("1970-01-02T12:00+02:00"), kDay + kNoon - 2 * 3600000.0);
    EXPECT_EQ(ParseTime("1970-01-02T12:00:00-09:30"), kDay + kNoon + 9.5 * 3600000.0);
}

TEST(TimeValueTest, TheEndOfADayOrAMinuteIsItsLastMillisecond) {
    EXPECT_EQ(ParseTime("1970-01-02", TimePart::kEnd), 2 * kDay - 1);
    EXPECT_EQ(ParseTime("1970-01-02T12:00", TimePart::kEnd), kDay + kNoon + 59999);
    EXPECT_EQ(ParseTime("1970-01-02T12:00Z", TimePart::kEnd), kDay + kNoon + 59999);
    EXPECT_EQ(ParseTime("1970-01-02T12:00:00", TimePart::kEnd), kDay + kNoon);
}

TEST(TimeValueTest, OtherTextsAreNoTimes) {
    for (const char* text : {"",
                             "2024",
                             "2024-05",
                             "2024-5-01",
                             "2024-13-01",
                             "2024-02-30",
                             "2023-02-29",
                             "24-05-01",
                             "-024-05-01",
                             "2024-05-01 08:00",
                             "2024-05-01T",
                             "2024-05-01T8:00",
                             "2024-05-01T24:00",
                             "2024-05-01T08:60",
                             "2024-05-01T08:00:60",
                             "2024-05-01T08:00:00.",
                             "2024-05-01T08:00:0",
                             "2024-05-01T08:00:00x",
                             "2024-05-01T08:00ZZ",
                             "2024-05-01T08:00+2",
                             "2024-05-01T08:00+15:00",
                             "2024-05-01Z",
                             "yesterday",
                             "2024-05-01T08:00:-1",
                             "2024-05-01T+8:00"})
        EXPECT_EQ(ParseTime(text), std::nullopt) << text;
}

} // namespace
