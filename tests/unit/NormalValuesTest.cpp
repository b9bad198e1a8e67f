// SPDX-License-Identifier: MIT
#include "support/comparison/NormalValues.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <ostream>
#include <string>

using vexaTransferLib::testing_support::NormalNumber;
using vexaTransferLib::testing_support::NormalTime;

namespace {

struct Case {
    std::string text;
    std::string normal;
};

void PrintTo(const Case& row, std::ostream* out) {
    *out << "'" << row.text << "'";
}

} // namespace

class NormalNumberTest : public testing::TestWithParam<Case> {};

TEST_P(NormalNumberTest, HasOneTextForEachValue) {
    EXPECT_EQ(NormalNumber(GetParam().text), GetParam().normal);
    EXPECT_EQ(NormalNumber(GetParam().normal), GetParam().normal);
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, NormalNumberTest,
    testing::Values(Case{"1.5", "1.5"}, Case{"+01.50", "1.5"}, Case{" 1.5\r\n\t", "1.5"},
                    Case{"15e-1", "1.5"}, Case{"0.15E+1", "1.5"}, Case{"-1.5", "-1.5"}, Case{".5", "0.5"},
                    Case{"5.", "5"}, Case{"-.05", "-0.05"}, Case{"0", "0"}, Case{"-0.000", "0"},
                    Case{"0e999999999", "0"}, Case{"100", "100"}, Case{"1e2", "100"},
                    Case{"12300e-3", "12.3"}, Case{"007", "7"},
                    Case{"35.7804112695157527923583984375", "35.7804112695157527923583984375"},
                    Case{"9007199254740993", "9007199254740993"}, Case{"1e1000000", "1E1000000"},
                    Case{"10e999999", "1E1000000"}, Case{"1e-1000000", "1E-1000000"}));

INSTANTIATE_TEST_SUITE_P(NoNumbers, NormalNumberTest,
                         testing::Values(Case{"", ""}, Case{"  ", "  "}, Case{" x ", " x "},
                                         Case{"1,5", "1,5"}, Case{"1 5", "1 5"}, Case{"+", "+"},
                                         Case{".", "."}, Case{"--1", "--1"}, Case{"1e", "1e"},
                                         Case{"1e+-2", "1e+-2"}, Case{"0x10", "0x10"}, Case{"NaN", "NaN"},
                                         Case{"1.5m", "1.5m"}, Case{"1.2.3", "1.2.3"},
                                         Case{"1e99999999999999999999", "1e99999999999999999999"}));

class NormalTimeTest : public testing::TestWithParam<Case> {};

TEST_P(NormalTimeTest, HasOneTextForEachInstant) {
    EXPECT_EQ(NormalTime(GetParam().text), GetParam().normal);
    EXPECT_EQ(NormalTime(GetParam().normal), GetParam().normal);
}

INSTANTIATE_TEST_SUITE_P(Times, NormalTimeTest,
                         testing::Values(Case{"2023-06-15T10:30:00Z", "2023-06-15T10:30:00Z"},
                                         Case{" 2023-06-15T10:30:00 ", "2023-06-15T10:30:00Z"},
                                         Case{"2023-06-15T12:30:00+02:00", "2023-06-15T10:30:00Z"},
                                         Case{"2023-06-15T05:30:00-05:00", "2023-06-15T10:30:00Z"},
                                         Case{"2023-06-15T10:30:00.120Z", "2023-06-15T10:30:00.12Z"},
                                         Case{"2023-06-15T10:30:00.000Z", "2023-06-15T10:30:00Z"},
                                         Case{"2023-06-15T10:30:00.1234567890123",
                                              "2023-06-15T10:30:00.1234567890123Z"},
                                         Case{"2023-12-31T23:30:00-01:00", "2024-01-01T00:30:00Z"},
                                         Case{"2024-01-01T00:30:00+01:00", "2023-12-31T23:30:00Z"},
                                         Case{"2024-02-28T24:00:00Z", "2024-02-29T00:00:00Z"},
                                         Case{"2023-02-28T24:00:00Z", "2023-03-01T00:00:00Z"},
                                         Case{"1900-02-28T23:00:00-01:00", "1900-03-01T00:00:00Z"},
                                         Case{"2000-12-31T23:59:59Z", "2000-12-31T23:59:59Z"},
                                         Case{"0001-01-01T00:00:00Z", "0001-01-01T00:00:00Z"},
                                         Case{"12345-01-01T00:00:00Z", "12345-01-01T00:00:00Z"}));

INSTANTIATE_TEST_SUITE_P(NoTimes, NormalTimeTest,
                         testing::Values(Case{"", ""}, Case{" soon ", " soon "},
                                         Case{"2023-06-15", "2023-06-15"},
                                         Case{"2023-02-29T10:30:00Z", "2023-02-29T10:30:00Z"},
                                         Case{"2023-13-01T10:30:00Z", "2023-13-01T10:30:00Z"},
                                         Case{"2023-00-01T10:30:00Z", "2023-00-01T10:30:00Z"},
                                         Case{"2023-06-15T25:30:00Z", "2023-06-15T25:30:00Z"},
                                         Case{"2023-06-15T24:00:01Z", "2023-06-15T24:00:01Z"},
                                         Case{"2023-06-15T10:60:00Z", "2023-06-15T10:60:00Z"},
                                         Case{"2023-06-15T10:30:60Z", "2023-06-15T10:30:60Z"},
                                         Case{"2023-06-15T10:30:00.Z", "2023-06-15T10:30:00.Z"},
                                         Case{"2023-06-15T10:30Z", "2023-06-15T10:30Z"},
                                         Case{"2023-06-15 10:30:00Z", "2023-06-15 10:30:00Z"},
                                         Case{"2023-06-15T10:30:00z", "2023-06-15T10:30:00z"},
                                         Case{"2023-06-15T10:30:00+0200", "2023-06-15T10:30:00+0200"},
                                         Case{"2023-06-15T10:30:00+14:01", "2023-06-15T10:30:00+14:01"},
                                         Case{"2023-06-15T10:30:00ZZ", "2023-06-15T10:30:00ZZ"},
                                         Case{"23-06-15T10:30:00Z", "23-06-15T10:30:00Z"},
                                         Case{"0000-01-01T00:00:00Z", "0000-01-01T00:00:00Z"},
                                         Case{"0001-01-01T00:00:00+01:00", "0001-01-01T00:00:00+01:00"}));

// Every day of four centuries, by counting.
TEST(NormalTimeEveryDayTest, MidnightInAnotherZoneIsOneHourBeforeMidnight) {
    std::string yesterday;
    int days = 0;
    for (int year = 1999; year < 2400; ++year) {
        for (int month = 1; month <= 12; ++month) {
            for (int day = 1; day <= 31; ++day) {
                char date[16];
                std::snprintf(date, sizeof date, "%04d-%02d-%02d", year, month, day);
                const std::string midnight = std::string(date) + "T00:00:00Z";
                const std::string shifted = NormalTime(std::string(date) + "T00:00:00+01:00");
                if (shifted == std::string(date) + "T00:00:00+01:00")
                    continue; // there is no such day
                ++days;
                ASSERT_EQ(NormalTime(midnight), midnight);
                if (!yesterday.empty()) {
                    ASSERT_EQ(shifted, yesterday + "T23:00:00Z");
                }
                yesterday = date;
            }
        }
    }
    EXPECT_EQ(days, 146097 + 365);
}
