// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/NumberText.h>

#include "support/LocaleScopes.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

using vexaTransferLib::testing_support::CLocaleScope;
using vexaTransferLib::testing_support::Utf8;
using vexaTransferLib::text::Add;
using vexaTransferLib::text::FixedText;
using vexaTransferLib::text::Multiply;
using vexaTransferLib::text::ReadDouble;
using vexaTransferLib::text::ReadInt32;

namespace {

constexpr double kMax = std::numeric_limits<double>::max();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string Fixed(double number, int decimals) {
    return std::string(FixedText(number, decimals).View());
}

std::string Printed(double number, int decimals) {
    std::array<char, 400> buffer = {};
    std::snprintf(buffer.data(), buffer.size(), "%.*f", decimals, number);
    return buffer.data();
}

// The bits, so that -0 and the kinds of NaN differ.
std::uint64_t Bits(double number) {
    return std::bit_cast<std::uint64_t>(number);
}

// Reads a text in both forms, which must give the same.
bool ReadShortDecimal(const std::u16string& text, double& number) {
    const double before = number;
    const bool isRead = vexaTransferLib::text::ReadShortDecimal(text.c_str(), number);
    const std::string narrow = Utf8(text.c_str());
    // A block of exactly its size, so that a sanitizer reports reading past the end.
    const std::string padded = narrow + "<999";
    const std::vector<char> buffer(padded.begin(), padded.end());
    double ofBytes = before;
    EXPECT_EQ(
        vexaTransferLib::text::ReadShortDecimal(std::string_view(buffer.data(), narrow.size()), ofBytes),
        isRead)
        << narrow;
    EXPECT_EQ(Bits(ofBytes), Bits(number)) << narrow;
    return isRead;
}

void ExpectReadAsStrtod(const std::string& text) {
    char* expectedEnd = nullptr;
    const double expected = std::strtod(text.c_str(), &expectedEnd);
    double number = 77.0;
    const char* const end = ReadDouble(text.c_str(), number);
    EXPECT_EQ(end - text.c_str(), expectedEnd - text.c_str()) << "\"" << text << "\"";
    // The payload of a NaN has no meaning here.
    EXPECT_EQ(std::isnan(number), std::isnan(expected)) << "\"" << text << "\"";
    EXPECT_EQ(std::signbit(number), std::signbit(expected)) << "\"" << text << "\"";
    if (!std::isnan(expected)) {
        EXPECT_EQ(Bits(number), Bits(expected)) << "\"" << text << "\"";
    }
}

} // namespace

TEST(NumberTextTest, FixedHasTheDecimalsAndAFullStop) {
    const struct {
        double number;
        int decimals;
        const char* expected;
        const char* reason;
    } rows[] = {
        {45.5, 9, "45.500000000", "padded with zeros"},
        {-122.25, 9, "-122.250000000", "sign"},
        {0.0, 6, "0.000000", "zero"},
        {-0.0, 6, "-0.000000", "negative zero keeps its sign"},
        {-1e-12, 9, "-0.000000000", "too small for the decimals, but negative"},
        {0.5, 0, "0", "a tie goes to the even digit"},
        {1.5, 0, "2", "a tie goes to the even digit"},
        {0.125, 2, "0.12", "a tie goes to the even digit"},
        {0.375, 2, "0.38", "a tie goes to the even digit"},
        {1.0000005, 6, "1.000001", "the double lies just above the tie"},
        {0.9999999999, 9, "1.000000000", "carries over"},
        {1e15 + 0.3, 1, "1000000000000000.2", "the nearest double, exactly"},
        {1e22, 0, "10000000000000000000000", "no exponent"},
        {5e-324, 9, "0.000000000", "subnormal"},
        {kInfinity, 6, "inf", "as printf has it"},
        {-kInfinity, 6, "-inf", "as printf has it"},
        {kNan, 6, "nan", "as printf has it"},
        {std::copysign(kNan, -1.0), 6, "-nan", "as printf has it"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Fixed(row.number, row.decimals), row.expected) << row.reason;
        EXPECT_EQ(Printed(row.number, row.decimals), row.expected) << row.reason;
    }
}

TEST(NumberTextTest, FixedHoldsTheLongestNumber) {
    EXPECT_EQ(Fixed(-kMax, 6).size(), 317U);
    EXPECT_EQ(Fixed(-kMax, 6), Printed(-kMax, 6));
    EXPECT_EQ(Fixed(-kMax, 9), Printed(-kMax, 9));
}

TEST(NumberTextTest, FixedEqualsPrintfOnAnyDouble) {
    std::mt19937_64 random(20090115);
    std::uniform_real_distribution<double> degrees(-180.0, 180.0);
    for (int i = 0; i < 50000; ++i) {
        const double anyBits = std::bit_cast<double>(random());
        const double tie = static_cast<double>(static_cast<std::int64_t>(random() % 4000000000U)) / 1024.0;
        const double subnormal = std::bit_cast<double>(random() >> 12U);
        for (const double number : {anyBits, degrees(random), tie, subnormal}) {
            ASSERT_EQ(Fixed(number, 9), Printed(number, 9)) << std::hexfloat << number;
            ASSERT_EQ(Fixed(number, 6), Printed(number, 6)) << std::hexfloat << number;
        }
    }
}

TEST(NumberTextTest, FixedEqualsPrintfAtEverySizeAndTie) {
    std::mt19937_64 random(11);
    for (int exponent = -90; exponent <= 90; ++exponent) {
        for (int decimals = 0; decimals <= 12; ++decimals) {
            const double power = std::ldexp(1.0, exponent);
            // With a few random bits there are ties; with all bits random there are almost none.
            const double tie = std::ldexp(static_cast<double>(random() % 4096), exponent);
            const double any = std::ldexp(static_cast<double>(random() >> 11U), exponent - 52);
            for (const double number : {power, std::nextafter(power, 0.0), std::nextafter(power, kMax), tie,
                                        std::nextafter(tie, 0.0), std::nextafter(tie, kMax), any}) {
                ASSERT_EQ(Fixed(number, decimals), Printed(number, decimals)) << std::hexfloat << number;
                ASSERT_EQ(Fixed(-number, decimals), Printed(-number, decimals)) << std::hexfloat << number;
            }
        }
    }
}

TEST(NumberTextTest, FixedCarriesIntoEveryDigit) {
    for (int decimals = 1; decimals <= 9; ++decimals) {
        for (const double whole : {0.0, 9.0, 99.0, 179.0, 4294967295.0, 8589934590.0, 8589934591.0}) {
            const double halfUnit = 0.5 * std::pow(10.0, -decimals);
            for (const double number : {whole + 1.0 - halfUnit, std::nextafter(whole + 1.0 - halfUnit, 0.0),
                                        std::nextafter(whole + 1.0, 0.0)})
                EXPECT_EQ(Fixed(number, decimals), Printed(number, decimals)) << std::hexfloat << number;
        }
    }
}

TEST(NumberTextTest, ReadsWhatStrtodReads) {
    for (const char* text : {"",
                             "0",
                             "-0",
                             "+0",
                             "12",
                             "12.5",
                             "-12.5",
                             "+12.5",
                             " 12",
                             "\t\n\v\f\r1",
                             "12 ",
                             "12abc",
                             "abc",
                             ".",
                             ".5",
                             "5.",
                             "-",
                             "+",
                             "- 1",
                             "--1",
                             "+-1",
                             "1e3",
                             "1E+3",
                             "1e-3",
                             "1e",
                             "1e+",
                             "1e400",
                             "-1e400",
                             "1e-400",
                             "-1e-400",
                             "4.9e-324",
                             "2e-324",
                             "0x1F",
                             "0x1.8p3",
                             "0x",
                             "0xg",
                             "-0x1p-3",
                             "inf",
                             "INFINITY",
                             "-inf",
                             "infinit",
                             "nan",
                             "NaN",
                             "-nan",
                             "nan(123)",
                             "nan(",
                             "1,5",
                             "1.5.5",
                             "1.7976931348623159e308",
                             "2.2250738585072011e-308",
                             "00012",
                             "1_000",
                             "\xD9\xA1",
                             "\xC2\xA0"
                             "1",
                             "123456789012345678901234567890",
                             "0.1000000000000000055511151231257827021181583404541015625"}) {
        ExpectReadAsStrtod(text);
    }
}

TEST(NumberTextTest, ReadsWhatStrtodReadsOfRandomTexts) {
    constexpr char kAlphabet[] = "0123456789.+-eExX infa";
    std::mt19937 random(1);
    std::uniform_int_distribution<std::size_t> length(0, 12);
    std::uniform_int_distribution<std::size_t> letter(0, sizeof kAlphabet - 2);
    for (int i = 0; i < 100000; ++i) {
        std::string text(length(random), ' ');
        for (char& character : text)
            character = kAlphabet[letter(random)];
        ExpectReadAsStrtod(text);
    }
}

TEST(NumberTextTest, ReadsBackEveryDouble) {
    std::mt19937_64 random(2);
    for (int i = 0; i < 20000; ++i) {
        const double number = std::bit_cast<double>(random());
        if (std::isnan(number))
            continue;
        std::array<char, 40> text = {};
        std::snprintf(text.data(), text.size(), "%.17g", number);
        double read = 0.0;
        EXPECT_EQ(*ReadDouble(text.data(), read), '\0');
        EXPECT_EQ(Bits(read), Bits(number)) << text.data();
    }
}

TEST(NumberTextTest, NoCLocaleShows) {
    const CLocaleScope german("de_DE.UTF-8");
    if (!german.IsInstalled())
        GTEST_SKIP() << "the locale de_DE.UTF-8 is not installed";
    ASSERT_EQ(Printed(1.5, 1), "1,5") << "the locale has no effect here";
    EXPECT_EQ(Fixed(1234567.5, 6), "1234567.500000");
    for (const char* text : {"1.5", " 1.5", "+1.5", "1.5x"}) {
        double number = 0.0;
        ReadDouble(text, number);
        EXPECT_EQ(number, 1.5) << text;
    }
    double number = 0.0;
    EXPECT_STREQ(ReadDouble("1,5", number), ",5");
    EXPECT_EQ(number, 1.0);
}

TEST(NumberTextTest, ShortDecimalsAreReadAtOnce) {
    for (const char* text : {"0",
                             "-0",
                             "-0.0",
                             "7",
                             "45.5",
                             "-122.25",
                             "46.0000700",
                             "400.1",
                             ".5",
                             "5.",
                             "-.5",
                             "-5.",
                             "007.50",
                             "0.1",
                             "0.3",
                             "9007199254740992",    // 2^53, the largest that is surely exact
                             "900719925474099.2",   // the same digits
                             "0.9007199254740992",  // 17 digits
                             "0009007199254740992", // 19 digits
                             "0.000000000000000001" /* 19 digits */}) {
        const std::string narrow = text;
        double number = 77.0;
        EXPECT_TRUE(ReadShortDecimal(std::u16string(narrow.begin(), narrow.end()), number)) << text;
        EXPECT_EQ(Bits(number), Bits(std::strtod(text, nullptr))) << text;
    }
}

// Texts whose value is so close to the middle between two doubles that 64 bits do not show on which side it
// is.
TEST(NumberTextTest, IsRoundedOnceWhereTheProcessorComputesWithMoreDigits) {
    for (const char* text :
         {"-48.064838065", "-63.768401420", "-21.794135700", "-138.073783186", "-14.061873866",
          "51.421173778", "100.655729805", "143.253531658", "-54.542875102", "-81.160665367", "87.851661",
          "-111.382714", "7386.554551958508", "3906.062293495115", "6828191825589310e8",
          "8455639467363371e15", "2330651685538494e12", "8998401905976183e13"}) {
        const std::string narrow = text;
        const std::uint64_t expected = Bits(std::strtod(text, nullptr));
        double number = 77.0;
        ReadDouble(text, number);
        EXPECT_EQ(Bits(number), expected) << text;
        if (narrow.find('e') != std::string::npos)
            continue;
        number = 77.0;
        EXPECT_TRUE(ReadShortDecimal(std::u16string(narrow.begin(), narrow.end()), number)) << text;
        EXPECT_EQ(Bits(number), expected) << text;
    }
}

TEST(NumberTextTest, NineDecimalsAreReadAsStrtodReadsThem) {
    std::mt19937_64 random(12);
    for (int i = 0; i < 100000; ++i) {
        const auto billionths = static_cast<long long>(random() % 180000000000U);
        const std::string digits = std::to_string(1000000000 + billionths % 1000000000);
        const std::string text = std::to_string(billionths / 1000000000) + '.' + digits.substr(1);
        double number = 77.0;
        ASSERT_TRUE(ReadShortDecimal(std::u16string(text.begin(), text.end()), number)) << text;
        ASSERT_EQ(Bits(number), Bits(std::strtod(text.c_str(), nullptr))) << text;
    }
}

TEST(NumberTextTest, AProductIsRoundedOnce) {
    const struct {
        double a;
        double b;
        double expected;
    } rows[] = {
        {0x1.be56f6afd7c54p-2, 0x1.93fc3e866b0f4p+8, 0x1.602d587a88d85p+7},
        {0x1.2a3b4262c8804p-1, 0x1.bebccd46469aep+9, 0x1.04379828163c5p+9},
        {0x1.6373f6e654ceep-1, 0x1.c045b33474839p+9, 0x1.3735db93c5bbbp+9},
        {-0x1.6eb17367837dcp-1, 0x1.2bf3401450431p+9, -0x1.ada5b003e7841p+8},
        {0x1.56e4fc6d94dd6p+0, 0x1.83725d6be6bcfp+8, 0x1.037aac59e3a79p+9},
        {-0.0, 60.0, -0.0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Bits(Multiply(row.a, row.b)), Bits(row.expected)) << std::hexfloat << row.a << ' ' << row.b;
}

TEST(NumberTextTest, SumsAreRoundedOnce) {
    EXPECT_EQ(Bits(Add(-1000.0, 999.5)), Bits(-0.5));
    EXPECT_EQ(Bits(Add(1.0, std::ldexp(1.0, -53))), Bits(1.0));
    EXPECT_EQ(Bits(Add(1.0, std::ldexp(1.0, -53) + std::ldexp(1.0, -80))), Bits(1.0 + std::ldexp(1.0, -52)));
    EXPECT_EQ(Bits(Add(-0.0, -0.0)), Bits(-0.0));
}

TEST(NumberTextTest, OtherTextsAreNoShortDecimals) {
    for (const char16_t* text : {u"",
                                 u"-",
                                 u".",
                                 u"-.",
                                 u"+1",
                                 u" 1",
                                 u"1 ",
                                 u"1x",
                                 u"--1",
                                 u"1.5.5",
                                 u"1,5",
                                 u"1e3",
                                 u"1e",
                                 u"0x10",
                                 u"inf",
                                 u"nan",
                                 u"-inf",
                                 u"\u0661",
                                 u"1\u0661",
                                 u"\uFF11",
                                 u"1\u0131",
                                 u"9007199254740993",     // between two doubles
                                 u"-900719925474.0993",   // more digits than a double is sure to hold
                                 u"00009007199254740992", // 20 digits
                                 u"0.0000000000000000001" /* 20 digits */,
                                 u"18446744073709551616", // 0 if it wrapped
                                 u"184467440737095516160",
                                 u"1844674407370955161.7"}) {
        double number = 77.0;
        EXPECT_FALSE(ReadShortDecimal(text, number)) << Utf8(text);
        EXPECT_EQ(number, 77.0) << "nothing is read";
    }
}

TEST(NumberTextTest, ShortDecimalsEqualStrtod) {
    constexpr char kAlphabet[] = "0123456789012345678901234567890123456789.-e ";
    std::mt19937 random(3);
    std::uniform_int_distribution<std::size_t> length(1, 20);
    std::uniform_int_distribution<std::size_t> letter(0, sizeof kAlphabet - 2);
    int read = 0;
    for (int i = 0; i < 200000; ++i) {
        std::string text(length(random), ' ');
        for (char& character : text)
            character = kAlphabet[letter(random)];
        double number = 77.0;
        if (!ReadShortDecimal(std::u16string(text.begin(), text.end()), number))
            continue;
        ++read;
        char* end = nullptr;
        ASSERT_EQ(Bits(number), Bits(std::strtod(text.c_str(), &end))) << text;
        ASSERT_EQ(*end, '\0') << text;
    }
    EXPECT_GT(read, 50000);
}

TEST(NumberTextTest, IntegersSaturateAt32Bits) {
    constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
    const struct {
        const char* text;
        std::int32_t expected;
        const char* reason;
    } rows[] = {
        {"0", 0, "zero"},
        {"12", 12, "plain"},
        {"-12", -12, "sign"},
        {"+12", 12, "sign"},
        {" \t\n12", 12, "blanks before"},
        {"12,345", 12, "ends at the first other character"},
        {"12.9", 12, "no fraction"},
        {"010", 10, "never octal"},
        {"0x10", 0, "never hexadecimal"},
        {"", 0, "nothing"},
        {"abc", 0, "no number"},
        {"- 1", 0, "no number"},
        {"2147483647", kHighest, "the highest"},
        {"2147483648", kHighest, "one above"},
        {"4294967296", kHighest, "0 if it wrapped"},
        {"4294967297", kHighest, "1 if it wrapped"},
        {"3000000000", kHighest, "negative if it wrapped"},
        {"99999999999999999999", kHighest, "beyond 64 bits"},
        {"-2147483648", kLowest, "the lowest"},
        {"-2147483649", kLowest, "one below"},
        {"-99999999999999999999", kLowest, "beyond 64 bits"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ReadInt32(row.text), row.expected) << row.text << ": " << row.reason;
}
