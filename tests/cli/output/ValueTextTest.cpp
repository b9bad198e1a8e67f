// SPDX-License-Identifier: MIT
#include <vexagpx/output/ValueText.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using vexagpx::NumberDigits;
using vexagpx::TimeDigits;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(ValueTextTest, NumbersHaveTheFewestDigitsAndNoExponentIfTheyAreUsual) {
    struct Row {
        double number;
        std::string_view text;
    };
    const Row rows[] = {
        {0.0, "0"},
        {-0.5, "-0.5"},
        {47.1, "47.1"},
        {0.1 + 0.2, "0.30000000000000004"},
        {100000.0, "100000"},
        {123456789012345.0, "123456789012345"},
        {0.0000001, "0.0000001"},
        {0.00000001, "1e-08"},
        {1e15, "1e+15"},
        {-1.7976931348623157e308, "-1.7976931348623157e+308"},
        {1.2345678901234566e-7, "0.00000012345678901234566"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(NumberDigits(row.number).Text(), row.text);
}

TEST(ValueTextTest, WhatIsNotFiniteHasNoDigits) {
    for (const double number : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_EQ(NumberDigits(number).Text(), "");
        EXPECT_EQ(TimeDigits(number).Text(), "");
    }
}

TEST(ValueTextTest, TimesAreInUtcWithTheDecimalsThatTheyNeed) {
    struct Row {
        double millis;
        std::string_view text;
    };
    const Row rows[] = {
        {0.0, "1970-01-01T00:00:00Z"},
        {1232014830000.0, "2009-01-15T10:20:30Z"},
        {1232014830250.0, "2009-01-15T10:20:30.25Z"},
        {1232014830007.0, "2009-01-15T10:20:30.007Z"},
        {1232014830000.125, "2009-01-15T10:20:30.000125Z"},
        {1232014830999.9999, "2009-01-15T10:20:31Z"},
        {-1.0, "1969-12-31T23:59:59.999Z"},
        {951782400000.0, "2000-02-29T00:00:00Z"},
        {-62167219200000.0, "0000-01-01T00:00:00Z"},
        {253402300799999.0, "9999-12-31T23:59:59.999Z"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(TimeDigits(row.millis).Text(), row.text);
}

TEST(ValueTextTest, TimesOutsideFourDigitsOfYearsHaveNoText) {
    for (const double millis : {-62167219200001.0, 253402300800000.0, 1e300, -1e300})
        EXPECT_EQ(TimeDigits(millis).Text(), "") << millis;
}

} // namespace
