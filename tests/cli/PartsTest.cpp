// SPDX-License-Identifier: MIT

// The small parts of the tool on their own.

#include <vexagpx/commands/Measure.h>
#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/terminal/DisplayText.h>

#include "support/Tool.h"

#include <cstdlib>
#include <functional>
#include <limits>

#include <fcntl.h>

namespace {

using namespace vexagpx;

std::string JsonOf(const std::function<void(JsonWriter&)>& write) {
    const cli::Folder folder;
    const std::string path = folder.Write("out", "");
    Output out(::open(path.c_str(), O_WRONLY));
    JsonWriter json(out);
    write(json);
    out.Close();
    return cli::ReadFile(path);
}

std::string Utf8(const icu::UnicodeString& text) {
    std::string bytes;
    text.toUTF8String(bytes);
    return bytes;
}

TEST(JsonWriterTest, CommasStandBetweenMembersAndElementsOnly) {
    EXPECT_EQ(JsonOf([](JsonWriter& json) {
                  json.BeginObject();
                  json.Key("a");
                  json.BeginArray();
                  json.BeginObject();
                  json.EndObject();
                  json.Number(std::int32_t{-1});
                  json.BeginArray();
                  json.EndArray();
                  json.EndArray();
                  json.Key("b");
                  json.String(icu::UnicodeString(u"x"));
                  json.EndObject();
              }),
              R"({"a":[{},-1,[]],"b":"x"})");
}

TEST(JsonWriterTest, DoublesTakeTheirShortestForm) {
    const std::vector<std::pair<double, std::string>> rows = {
        {0.0, "0"},
        {-0.0, "-0"},
        {45.0, "45"},
        {0.1, "0.1"},
        {-122.25, "-122.25"},
        {1.0 / 3.0, "0.3333333333333333"},
        {179.9999998807907, "179.9999998807907"},
        {1232014830500.0, "1232014830500"},
        {1232019000000.0, "1.232019e+12"},
        {1e5, "1e+05"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
        {std::numeric_limits<double>::denorm_min(), "5e-324"},
        {std::numeric_limits<double>::quiet_NaN(), "\"NaN\""},
        {std::numeric_limits<double>::infinity(), "\"Infinity\""},
        {-std::numeric_limits<double>::infinity(), "\"-Infinity\""},
    };
    for (const auto& [number, expected] : rows)
        EXPECT_EQ(JsonOf([value = number](JsonWriter& json) { json.Number(value); }), expected);
}

TEST(JsonWriterTest, DoublesReadBackTheSame) {
    volatile double stored = 1.0; // in no register, which may have more digits
    for (int i = 0; i < 200; ++i) {
        stored = stored * -1.9437218 + 0.1;
        const double number = stored;
        EXPECT_EQ(std::strtod(JsonOf([number](JsonWriter& json) { json.Number(number); }).c_str(), nullptr),
                  number);
    }
}

TEST(JsonWriterTest, AnUnpairedSurrogateBecomesTheReplacementCharacter) {
    const char16_t units[] = {u'a', 0xD800, u'b', 0};
    EXPECT_EQ(JsonOf([&](JsonWriter& json) { json.String(icu::UnicodeString(units)); }), "\"a\xEF\xBF\xBD"
                                                                                         "b\"");
}

TEST(JsonWriterTest, WhatATerminalWouldObeyIsEscapedAndNothingElse) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"plain ~", "plain ~"},
        {"\x7F", "\\u007f"},
        {"\xC2\x80\xC2\x85\xC2\x9B\xC2\x9F", "\\u0080\\u0085\\u009b\\u009f"},
        {"\xC2\xA0\xC3\xA9", "\xC2\xA0\xC3\xA9"},
        {"\xD8\x9C", "\\u061c"},
        {"\xE2\x80\x8E\xE2\x80\x8F", "\\u200e\\u200f"},
        {"\xE2\x80\xAA\xE2\x80\xAB\xE2\x80\xAC\xE2\x80\xAD\xE2\x80\xAE",
         "\\u202a\\u202b\\u202c\\u202d\\u202e"},
        {"\xE2\x81\xA6\xE2\x81\xA7\xE2\x81\xA8\xE2\x81\xA9", "\\u2066\\u2067\\u2068\\u2069"},
        {"\xE2\x80\xA8\xE2\x80\xA9", "\\u2028\\u2029"},
        {"\xEF\xBB\xBF", "\\ufeff"},
        {"\xF3\xA0\x81\x81", "\\udb40\\udc41"},
        {"\x1B[31m\n\"\\", "\\u001b[31m\\n\\\"\\\\"},
        {"日本 👩\xE2\x80\x8D🚀", "日本 👩\xE2\x80\x8D🚀"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(JsonOf([text = text](JsonWriter& json) { json.String(std::string_view(text)); }),
                  '"' + expected + '"');
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

TEST(MeasureTest, WesternPointsAloneDoNotLieAcrossThe180thMeridian) {
    Bounds bounds;
    bounds.Add(48.6, -123.039668);
    bounds.Add(48.7, -122.730903);
    EXPECT_EQ(bounds.West(), -123.039668);
    EXPECT_EQ(bounds.East(), -122.730903);
}

TEST(MeasureTest, PointsAroundGreenwichDoNotEither) {
    Bounds bounds;
    bounds.Add(0, -1);
    bounds.Add(0, 1);
    EXPECT_EQ(bounds.West(), -1);
    EXPECT_EQ(bounds.East(), 1);
}

TEST(MeasureTest, ANewBoundsIsEmpty) {
    EXPECT_TRUE(Bounds().IsEmpty());
    EXPECT_TRUE(TimeSpan().IsEmpty());
}

TEST(MeasureTest, TimesThatAreNoNumberArePassedOver) {
    TimeSpan span;
    span.Add(std::numeric_limits<double>::quiet_NaN());
    span.Add(std::numeric_limits<double>::infinity());
    EXPECT_TRUE(span.IsEmpty());
    span.Add(-5);
    EXPECT_EQ(span.First(), -5);
    EXPECT_EQ(span.Last(), -5);
}

} // namespace
