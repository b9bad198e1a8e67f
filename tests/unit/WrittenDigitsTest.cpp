// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/WrittenDigits.h>

#include <vexaTransferLib/text/NumberText.h>

#include <gtest/gtest.h>

#include <string>

namespace vexaTransferLib::text {
namespace {

DigitsLeft Left(const std::string& text, int decimals) {
    double read = 0.0;
    ReadDouble(text.c_str(), read);
    return CompareDigits(text.c_str(), read, decimals);
}

TEST(WrittenDigitsTest, AllAreLeftOfANumberWithFewDecimals) {
    for (const char* text : {"0",           "-0",       "-0.0",
                             "7",           "47.5",     "-122.25",
                             "8.123456789", ".5",       "5.",
                             "+5",          " \t5",     "1e3",
                             "1.5E-3",      "0.0001e4", "100000000000000000000",
                             "1e22",        "0x1p3",    "nan",
                             "-inf",        "infinity", "0e999999999999999999999"})
        EXPECT_EQ(Left(text, 9), DigitsLeft::kAll) << text;
}

TEST(WrittenDigitsTest, ZerosAtStartAndEndDoNotCount) {
    for (const std::string text :
         {"8.1234567890000", "0008.1", "8.1000000000000000000000000000000", "1230e-1"})
        EXPECT_EQ(Left(text, 9), DigitsLeft::kAll) << text;
    EXPECT_EQ(Left("8.5" + std::string(100000, '0'), 9), DigitsLeft::kAll);
}

TEST(WrittenDigitsTest, MoreDecimalsThanAreWrittenAreRounded) {
    EXPECT_EQ(Left("8.123456789", 9), DigitsLeft::kAll);
    EXPECT_EQ(Left("8.1234567891", 9), DigitsLeft::kRounded);
    EXPECT_EQ(Left("8.123456", 6), DigitsLeft::kAll);
    EXPECT_EQ(Left("8.1234561", 6), DigitsLeft::kRounded);
    for (const char* text : {"1e-10", "-1e-400", "0.00000000000000000000001", "1.23456789e-2"})
        EXPECT_EQ(Left(text, 9), DigitsLeft::kRounded) << text;
}

TEST(WrittenDigitsTest, ADoubleMayNotHoldAllDigits) {
    EXPECT_EQ(Left("123456789012345678", 6), DigitsLeft::kOther);
    EXPECT_EQ(Left("12345678901234.567", 6), DigitsLeft::kOther);
    EXPECT_EQ(Left("1e400", 6), DigitsLeft::kOther);
}

TEST(WrittenDigitsTest, AnotherNumberIsNotOneThatIsOnlyRounded) {
    constexpr double kJustBelow180 = 180.0 - 1.0 / (1 << 23);
    EXPECT_EQ(CompareDigits("180", kJustBelow180, 9), DigitsLeft::kOther);
    EXPECT_EQ(CompareDigits("180.00000000000", kJustBelow180, 9), DigitsLeft::kOther);
    EXPECT_EQ(CompareDigits("180.00000000001", kJustBelow180, 9), DigitsLeft::kOther);
    EXPECT_EQ(CompareDigits("-5", 5.0, 9), DigitsLeft::kOther);
    EXPECT_EQ(CompareDigits("inf", 5.0, 9), DigitsLeft::kOther);
}

// What is quickly known of short numbers must agree with the comparison.
TEST(WrittenDigitsTest, NumbersThatAreCertainToBeWrittenAre) {
    int certain = 0;
    for (const int decimals : {6, 9})
        for (int i = 0; i < 200000; ++i) {
            std::string text = std::to_string(i * 7919LL % 100000 * (i % 3 == 0 ? 100003LL : 1LL));
            text += i % 5 == 0 ? "" : "." + std::to_string(i * 104729LL % 10000000000LL);
            double read = 0.0;
            DigitCounts counts;
            if (!ReadShortDecimal(std::u16string(text.begin(), text.end()).c_str(), read, counts))
                continue;
            if (!counts.AreWritten(decimals))
                continue;
            ++certain;
            ASSERT_EQ(CompareDigits(text.c_str(), read, decimals), DigitsLeft::kAll) << text;
        }
    EXPECT_GT(certain, 50000);
}

} // namespace
} // namespace vexaTransferLib::text
