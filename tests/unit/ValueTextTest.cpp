// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/ValueText.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace vexaTransferLib::text {
namespace {

TEST(ValueTextTest, NumbersAreReadAsXmlSchemaWritesThem) {
    const struct {
        const char* text;
        double expected;
    } kNumbers[] = {{"12", 12.0},         {"+12.5", 12.5}, {"-.5", -0.5},
                    {"5.", 5.0},          {"1e2", 100.0},  {"1.5E-1", 0.15},
                    {" \t\r\n7\n ", 7.0}, {"0", 0.0},      {"47.123456789012345", 47.123456789012345},
                    {"-0", -0.0}};
    for (const auto& number : kNumbers)
        EXPECT_EQ(ReadSchemaNumber(number.text), std::optional(number.expected)) << number.text;
}

TEST(ValueTextTest, OtherTextsAreNoNumbers) {
    for (const char* text : {"", " ", "-", ".", "+.", "1,5", "1 2", "1e", "1e+", "e1", "--1", "0x10", "inf",
                             "INF", "nan", "NaN", "1e999", "12m",
                             "\xC2\xA0"
                             "1"})
        EXPECT_EQ(ReadSchemaNumber(text), std::nullopt) << text;
}

TEST(ValueTextTest, TimesAreReadAsXmlSchemaWritesThem) {
    const struct {
        const char* text;
        double expected;
    } kTimes[] = {{"1970-01-01T00:00:00Z", 0.0},
                  {"2009-01-15T10:20:30Z", 1232014830000.0},
                  {"2009-01-15T10:20:30", 1232014830000.0},
                  {" 2009-01-15T10:20:30Z\n", 1232014830000.0},
                  {"2009-01-15T10:20:30.25Z", 1232014830250.0},
                  {"2009-01-15T11:50:30+01:30", 1232014830000.0},
                  {"2009-01-15T09:20:30.5-01:00", 1232014830500.0},
                  {"1969-12-31T23:59:59.5Z", -500.0},
                  {"2008-12-31T24:00:00Z", 1230768000000.0},
                  {"2008-02-29T00:00:00Z", 1204243200000.0},
                  {"0001-01-01T00:00:00Z", -62135596800000.0}};
    for (const auto& time : kTimes)
        EXPECT_EQ(ReadSchemaTime(time.text), std::optional(time.expected)) << time.text;
}

TEST(ValueTextTest, OtherTextsAreNoTimes) {
    for (const char* text : {"",
                             "2009-01-15",
                             "2009-01-15 10:20:30Z",
                             "2009-1-15T10:20:30Z",
                             "2009-02-29T00:00:00Z",
                             "2009-13-01T00:00:00Z",
                             "2009-01-00T00:00:00Z",
                             "2009-01-15T24:00:01Z",
                             "2009-01-15T25:00:00Z",
                             "2009-01-15T10:60:00Z",
                             "2009-01-15T10:20:60Z",
                             "2009-01-15T10:20:30.Z",
                             "2009-01-15T10:20Z",
                             "2009-01-15T10:20:30z",
                             "2009-01-15T10:20:30+1:00",
                             "2009-01-15T10:20:30+14:01",
                             "2009-01-15T10:20:30+01:60",
                             "2009-01-15T10:20:30ZZ",
                             "0000-01-01T00:00:00Z",
                             "12009-01-15T10:20:30Z",
                             "2009-01-15T10:20:30X"})
        EXPECT_EQ(ReadSchemaTime(text), std::nullopt) << text;
}

TEST(ValueTextTest, OnlyTheWhiteSpaceOfXmlIsTrimmed) {
    EXPECT_EQ(Trimmed(" \t\r\na b\n"), "a b");
    EXPECT_EQ(Trimmed(" \n"), "");
    EXPECT_EQ(Trimmed("\v1"), "\v1");
}

} // namespace
} // namespace vexaTransferLib::text
