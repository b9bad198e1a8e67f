// SPDX-License-Identifier: MIT
#include <vexagpx/output/ValueText.h>

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

namespace {

using vexagpx::NumberDigits;
using vexagpx::TimeDigits;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Without zeros at the start and the end, sign, point and exponent.
std::size_t SignificantDigits(const std::string& text) {
    std::string digits;
    for (const char letter : text.substr(0, text.find('e')))
        if (letter >= '0' && letter <= '9' && (letter != '0' || !digits.empty()))
            digits += letter;
    const std::size_t last = digits.find_last_not_of('0');
    return last == std::string::npos ? 0 : last + 1;
}

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
        {0.000000001, "0.000000001"},
        {0.0000000001, "1e-10"},
        {-179.123456789, "-179.123456789"},
        {179.9999998807907, "179.9999998807907"},
        {999999.999999999, "999999.999999999"},
        {999999.9999999999, "999999.9999999999"},
        {1000000.0, "1000000"},
        {-0.0, "-0"},
        {1e15, "1e+15"},
        {-1.7976931348623157e308, "-1.7976931348623157e+308"},
        {1.2345678901234566e-7, "0.00000012345678901234566"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(NumberDigits(row.number).Text(), row.text);
}

TEST(ValueTextTest, NumbersReadBackTheSame) {
    std::mt19937_64 random(1);
    for (const double step : {1e-3, 1e-6, 1e-9, 1e-10, 1e-15, 1e3}) {
        for (int i = 0; i < 20000; ++i) {
            const double number =
                static_cast<double>(static_cast<std::int64_t>(random() % 2000000000000) - 1000000000000) *
                step;
            const std::string text(NumberDigits(number).Text());
            EXPECT_EQ(std::strtod(text.c_str(), nullptr), number) << text;
            std::array<char, 64> shortest{};
            std::to_chars(shortest.data(), shortest.data() + shortest.size(), number);
            EXPECT_LE(SignificantDigits(text), SignificantDigits(shortest.data())) << text;
        }
    }
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
