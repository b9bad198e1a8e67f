// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/DisplayText.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace vexagpx;

std::string Utf8(const icu::UnicodeString& text) {
    std::string bytes;
    text.toUTF8String(bytes);
    return bytes;
}

TEST(DisplayTextTest, PrintableStaysOnOneLineWithoutControls) {
    const std::vector<std::pair<const char16_t*, const char16_t*>> rows = {
        {u"plain", u"plain"},
        {u" a \t\r\n b ", u"a b"},
        {u"\u001B[31mred\u0007", u"[31mred"},
        {u"c1\u009Bx", u"c1 x"},
        {u"\u202Eabc\u202C", u"abc"},
        {u"zero\u200Bwidth\uFEFF", u"zerowidth"},
        {u"joined\u200D\u200C\uFE0F", u"joined"},
        {u"line\u2028separator", u"line separator"},
        {u"", u""},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(Utf8(Printable(text)), Utf8(expected));
}

TEST(DisplayTextTest, WidthCountsTerminalColumns) {
    EXPECT_EQ(DisplayWidth(u"abc"), 3U);
    EXPECT_EQ(DisplayWidth(u"日本"), 4U);
    EXPECT_EQ(DisplayWidth(u"e\u0301"), 1U);
    EXPECT_EQ(DisplayWidth(u"😀"), 2U);
    EXPECT_EQ(DisplayWidth(u""), 0U);
}

TEST(DisplayTextTest, FittedTextEndsInAnEllipsis) {
    EXPECT_EQ(Utf8(Fitted(u"abcdef", 6)), "abcdef");
    EXPECT_EQ(Utf8(Fitted(u"abcdef", 5)), "abcd…");
    EXPECT_EQ(Utf8(Fitted(u"日本語", 5)), "日本…");
    EXPECT_EQ(Utf8(Fitted(u"日本語", 4)), "日…");
    EXPECT_EQ(Utf8(Fitted(u"abc", 1)), "…");
    EXPECT_EQ(Utf8(FittedAtEnd(u"abcdef", 4)), "…def");
    EXPECT_EQ(Utf8(FittedAtEnd(u"abcd", 4)), "abcd");
}

TEST(DisplayTextTest, LengthsHaveUnits) {
    const std::vector<std::pair<double, std::string>> rows = {
        {0, "0 m"},         {999.4, "999 m"},     {999.6, "1.00 km"},  {1234, "1.23 km"},
        {12345, "12.3 km"}, {999940, "999.9 km"}, {999960, "1000 km"}, {40007863, "40008 km"},
        {9995, "10.0 km"},  {999950, "1000 km"},
    };
    for (const auto& [metres, expected] : rows)
        EXPECT_EQ(Utf8(LengthText(metres)), expected);
}

TEST(DisplayTextTest, HeightsAreWholeMetres) {
    EXPECT_EQ(Utf8(HeightText(35.5)), "36 m");
    EXPECT_EQ(Utf8(HeightText(-0.2)), "0 m");
    EXPECT_EQ(Utf8(HeightText(-430)), "-430 m");
    EXPECT_EQ(Utf8(HeightText(1e300)), "1e+300 m");
    EXPECT_EQ(Utf8(HeightText(std::numeric_limits<double>::quiet_NaN())), "nan m");
}

TEST(DisplayTextTest, DurationsHaveTheirTwoLargestUnits) {
    const std::vector<std::pair<double, std::string>> rows = {
        {0, "0 s"},           {999, "0 s"},          {45000, "45 s"},   {60000, "1 min"},
        {61000, "1 min 1 s"}, {3600000, "1 h"},      {3601000, "1 h"},  {5400000, "1 h 30 min"},
        {86400000, "1 d"},    {97200000, "1 d 3 h"}, {86460000, "1 d"},
    };
    for (const auto& [millis, expected] : rows)
        EXPECT_EQ(Utf8(DurationText(millis)), expected) << millis;
}

TEST(DisplayTextTest, SizesHaveDecimalUnits) {
    const std::vector<std::pair<std::uint64_t, std::string>> rows = {
        {0, "0 B"},         {999, "999 B"},        {1000, "1.0 kB"},       {999949, "999.9 kB"},
        {999950, "1.0 MB"}, {12345678, "12.3 MB"}, {5000000000, "5.0 GB"}, {UINT64_MAX, "18.4 EB"},
    };
    for (const auto& [bytes, expected] : rows)
        EXPECT_EQ(Utf8(SizeText(bytes)), expected);
}

} // namespace
