// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/ValueText.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
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

TEST(ValueTextTest, WholeNumbersAreReadWhereSixtyFourBitsHoldThem) {
    const struct {
        const char* text;
        std::optional<std::int64_t> integer;
        std::optional<std::uint64_t> notNegative;
    } kNumbers[] = {{"12", 12, 12},
                    {" +7\n", 7, 7},
                    {"007", 7, 7},
                    {"-0", 0, 0},
                    {"-5", -5, std::nullopt},
                    {"9223372036854775807", INT64_MAX, INT64_MAX},
                    {"9223372036854775808", std::nullopt, 9223372036854775808u},
                    {"-9223372036854775808", INT64_MIN, std::nullopt},
                    {"-9223372036854775809", std::nullopt, std::nullopt},
                    {"18446744073709551615", std::nullopt, UINT64_MAX},
                    {"18446744073709551616", std::nullopt, std::nullopt}};
    for (const auto& number : kNumbers) {
        EXPECT_EQ(ReadSchemaInteger(number.text), number.integer) << number.text;
        EXPECT_EQ(ReadSchemaUnsigned(number.text), number.notNegative) << number.text;
    }
    for (const char* text :
         {"", " ", "-", "+-5", "--5", "1.0", "1e2", "1,234", "1 2", "0x1", "12a", "1234-GUID"}) {
        EXPECT_EQ(ReadSchemaInteger(text), std::nullopt) << text;
        EXPECT_EQ(ReadSchemaUnsigned(text), std::nullopt) << text;
    }
}

TEST(ValueTextTest, BooleansAreWordsInAnyCaseOrDigits) {
    for (const char* text : {"true", "True", "TRUE", " true\n", "1"})
        EXPECT_EQ(ReadBoolean(text), std::optional(true)) << text;
    for (const char* text : {"false", "False", "FALSE", "0"})
        EXPECT_EQ(ReadBoolean(text), std::optional(false)) << text;
    for (const char* text : {"", "yes", "01", "2", "truee", "tru"})
        EXPECT_EQ(ReadBoolean(text), std::nullopt) << text;
}

TEST(ValueTextTest, NumbersOfTheVendorMayHaveGroupsOfThreeDigits) {
    const struct {
        const char* text;
        std::optional<std::int32_t> integer;
        std::optional<double> number;
    } kNumbers[] = {{"42", 42, 42.0},
                    {" 1,234 ", 1234, 1234.0},
                    {"-1,234,567", -1234567, -1234567.0},
                    {"1234", 1234, 1234.0},
                    {"1,234.568", std::nullopt, 1234.568},
                    {"0.5", std::nullopt, 0.5},
                    {"2,147,483,647", INT32_MAX, 2147483647.0},
                    {"-2,147,483,648", INT32_MIN, -2147483648.0},
                    {"2147483648", std::nullopt, 2147483648.0},
                    {"-2147483649", std::nullopt, -2147483649.0}};
    for (const auto& number : kNumbers) {
        EXPECT_EQ(ReadGroupedInteger(number.text), number.integer) << number.text;
        EXPECT_EQ(ReadGroupedNumber(number.text), number.number) << number.text;
    }
    for (const char* text : {"", "-", ",123", "1,23", "1,2345", "1234,567", "12,34,567", "1,,234", "1,234,",
                             "1,a34", "x", "#ff0000", "--1,234"}) {
        EXPECT_EQ(ReadGroupedInteger(text), std::nullopt) << text;
        EXPECT_EQ(ReadGroupedNumber(text), std::nullopt) << text;
    }
}

TEST(ValueTextTest, TheCaseOfAsciiLettersAloneCanBeIgnored) {
    EXPECT_TRUE(EqualsIgnoringCase("HeartRate", "heartrate"));
    EXPECT_FALSE(EqualsIgnoringCase("hr", "hrs"));
    EXPECT_FALSE(EqualsIgnoringCase("[", "{"));
    EXPECT_FALSE(EqualsIgnoringCase("@", "`"));
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

TEST(ValueTextTest, TimesAreWrittenAsXmlSchemaHasThem) {
    const struct {
        double time;
        const char* text;
    } kTimes[] = {{0.0, "1970-01-01T00:00:00Z"},
                  {-0.0, "1970-01-01T00:00:00Z"},
                  {1232014830000.0, "2009-01-15T10:20:30Z"},
                  {1232014830250.0, "2009-01-15T10:20:30.250Z"},
                  {1232014830001.0, "2009-01-15T10:20:30.001Z"},
                  {0.5, "1970-01-01T00:00:00.0005Z"},
                  {-0.5, "1969-12-31T23:59:59.9995Z"},
                  {-1000.0, "1969-12-31T23:59:59Z"},
                  {1330473600000.0, "2012-02-29T00:00:00Z"},
                  {-62135596800000.0, "0001-01-01T00:00:00Z"},
                  {253402300799000.0, "9999-12-31T23:59:59Z"}};
    for (const auto& [time, text] : kTimes)
        EXPECT_EQ(SchemaTime(time), text);
}

TEST(ValueTextTest, TimesOutsideOfTheYears1To9999AreNotWritten) {
    for (const double time :
         {-62135596800000.01, 253402300800000.0, 1e300, -1e300, std::nan(""),
          std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()})
        EXPECT_EQ(SchemaTime(time), "") << time;
}

TEST(ValueTextTest, EveryTimeThatIsWrittenReadsBackTheSame) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> anyTime(-62135596800000.0, 253402300799999.0);
    std::uniform_real_distribution<double> recentTime(-1e9, 2e12);
    for (int i = 0; i < 5000; ++i) {
        for (const double time : {anyTime(random), recentTime(random), std::floor(anyTime(random)),
                                  std::nextafter(1000.0 * std::floor(recentTime(random) / 1000.0), -1e300)}) {
            const std::string text = SchemaTime(time);
            EXPECT_EQ(ReadSchemaTime(text), std::optional(time)) << text;
        }
    }
}

TEST(ValueTextTest, OnlyTheWhiteSpaceOfXmlIsTrimmed) {
    EXPECT_EQ(Trimmed(" \t\r\na b\n"), "a b");
    EXPECT_EQ(Trimmed(" \n"), "");
    EXPECT_EQ(Trimmed("\v1"), "\v1");
}

} // namespace
} // namespace vexaTransferLib::text
