// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/UsNumberFormat.h>

#include "support/IcuMemory.h"
#include "support/LocaleScopes.h"
#include "support/StoredNumbers.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <bit>
#include <chrono>
#include <cstdint>
#include <limits>
#include <new>
#include <string>

using vexaTransferLib::testing_support::IcuLocaleScope;
using vexaTransferLib::testing_support::RefusedIcuMemory;
using vexaTransferLib::testing_support::StoredNumbers;
using vexaTransferLib::testing_support::Utf8;
using vexaTransferLib::text::UsNumberFormat;

namespace {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

icu::UnicodeString Digits(std::int32_t count) {
    return icu::UnicodeString(count, u'0', count);
}

} // namespace

TEST(UsNumberFormatTest, IntegersAreGrouped) {
    const struct {
        std::int32_t number;
        const char* expected;
    } rows[] = {
        {0, "0"},
        {1, "1"},
        {-1, "-1"},
        {999, "999"},
        {1000, "1,000"},
        {1024, "1,024"},
        {12345, "12,345"},
        {-5678, "-5,678"},
        {1234567, "1,234,567"},
        {kHighest, "2,147,483,647"},
        {kLowest, "-2,147,483,648"},
    };
    UsNumberFormat format;
    for (const auto& row : rows)
        EXPECT_EQ(Utf8(format.Format(row.number)), row.expected);
}

TEST(UsNumberFormatTest, DoublesAreGroupedWithAtMostThreeDecimals) {
    const struct {
        double number;
        const char* expected;
        const char* reason;
    } rows[] = {
        {1234.5678, "1,234.568", "rounded"},
        {1.0, "1", "no trailing zeros"},
        {1.5, "1.5", "no trailing zeros"},
        {0.0625, "0.062", "a tie goes to the even digit"},
        {0.1875, "0.188", "a tie goes to the even digit"},
        {0.0004, "0", "too small"},
        {1e6, "1,000,000", "grouped"},
        {1e20, "100,000,000,000,000,000,000", "no exponent"},
        {std::numeric_limits<double>::infinity(), "\xE2\x88\x9E", "the sign for infinity"},
    };
    UsNumberFormat format;
    for (const auto& row : rows)
        EXPECT_EQ(Utf8(format.Format(row.number)), row.expected) << row.reason;
}

TEST(UsNumberFormatTest, ParsesTheIntegerAtTheStart) {
    const struct {
        const char16_t* text;
        std::int32_t expected;
        const char* reason;
    } rows[] = {
        {u"12", 12, "plain"},
        {u"-12", -12, "sign"},
        {u"12.0", 12, "fraction of zeros"},
        {u"7.9", 7, "the fraction is cut off"},
        {u"-7.9", -7, "the fraction is cut off towards zero"},
        {u"1,234", 1234, "grouped"},
        {u"1,234,567", 1234567, "grouped twice"},
        {u"1E3", 1000, "exponent"},
        {u"12abc", 12, "the rest does not matter"},
        {u"12 ", 12, "the rest does not matter"},
        {u"12,34", 0, "a group of two"},
        {u"1,23,4", 0, "groups of two and one"},
        {u"1,,2", 1, "an empty group"},
        {u"", 0, "nothing"},
        {u"abc", 0, "no number"},
        {u" 12", 0, "no blank is skipped"},
        {u"+12", 0, "no plus sign"},
        {u"(12)", 0, "no accountant's minus"},
        {u"-0", 0, "a double to ICU"},
        {u"2147483647", kHighest, "the highest"},
        {u"2147483648", kHighest, "clamped"},
        {u"1e20", kHighest, "clamped"},
        {u"1E20", kHighest, "clamped"},
        {u"-1E20", kLowest, "clamped"},
        {u"-2147483649", kLowest, "clamped"},
        {u"\u221E", kHighest, "infinity is clamped"},
        {u"-\u221E", kLowest, "infinity is clamped"},
        {u"NaN", kLowest, "as the cast has it here"},
    };
    UsNumberFormat format;
    for (const auto& row : rows)
        EXPECT_EQ(format.ParseInteger(row.text), row.expected) << Utf8(row.text) << ": " << row.reason;
}

TEST(UsNumberFormatTest, LooksAtTheFirst400UnitsOnly) {
    UsNumberFormat format;
    EXPECT_EQ(format.ParseInteger(Digits(399) + u"7"), 7);
    EXPECT_EQ(format.ParseInteger(Digits(399) + u"78"), 7);
    EXPECT_EQ(format.ParseInteger(Digits(400) + u"8"), 0);
}

TEST(UsNumberFormatTest, GivesTheBitsThatAreStored) {
    UsNumberFormat format;
    for (const auto& row : StoredNumbers())
        EXPECT_EQ(format.ParseStored(icu::UnicodeString::fromUTF8(row.text)), row.stored)
            << row.text << ": " << row.reason;
}

TEST(UsNumberFormatTest, SkipsNoBlankBeforeAStoredNumber) {
    UsNumberFormat format;
    EXPECT_EQ(format.ParseStored(u" 12"), 0);
    EXPECT_EQ(format.ParseStored(u"12 "), 12);
}

TEST(UsNumberFormatTest, TheFirst400UnitsAreCodeUnits) {
    UsNumberFormat format;
    // Digits of two units each. The last one is cut in two, and its first half is not a digit.
    const icu::UnicodeString digits(400, 0x1D7CE, 200);
    EXPECT_EQ(format.ParseStored(digits.tempSubString(0, 398) + icu::UnicodeString(0x1D7D1)), 3);
    EXPECT_EQ(format.ParseStored(digits.tempSubString(0, 398) + u"1" + icu::UnicodeString(0x1D7D1)), 1);
}

TEST(UsNumberFormatTest, TheDefaultLocaleDoesNotShowInAStoredNumber) {
    for (const char* name : {"de_DE", "ar_EG", "fa_IR", "th_TH_TRADITIONAL"}) {
        const IcuLocaleScope scope(name);
        UsNumberFormat format;
        EXPECT_EQ(format.ParseStored(u"1,234"), 1234) << name;
        EXPECT_EQ(std::bit_cast<double>(format.ParseStored(u"1,234.5")), 1234.5) << name;
    }
}

TEST(UsNumberFormatTest, AVeryLongStoredNumberCostsNothing) {
    const icu::UnicodeString text(2000000, u'9', 2000000);
    UsNumberFormat format;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(std::bit_cast<double>(format.ParseStored(text)), std::numeric_limits<double>::infinity());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST(UsNumberFormatTest, AVeryLongNumberCostsNothing) {
    const icu::UnicodeString text(2000000, u'9', 2000000);
    UsNumberFormat format;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(format.ParseInteger(text), kHighest);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST(UsNumberFormatTest, TheDefaultLocaleDoesNotShow) {
    for (const char* name : {"de_DE", "ar_EG", "fa_IR", "th_TH_TRADITIONAL"}) {
        const IcuLocaleScope scope(name);
        UsNumberFormat format;
        EXPECT_EQ(Utf8(format.Format(1234567)), "1,234,567") << name;
        EXPECT_EQ(Utf8(format.Format(1234.5)), "1,234.5") << name;
        EXPECT_EQ(format.ParseInteger(u"1,234"), 1234) << name;
    }
}

TEST(UsNumberFormatTest, MemoryThatRunsOutNeverGivesAWrongText) {
    bool refusedAny = true;
    std::size_t failures = 0;
    for (std::size_t call = 1; refusedAny; ++call) {
        UsNumberFormat format;
        ASSERT_EQ(Utf8(format.Format(1)), "1") << "made before memory runs out";
        const RefusedIcuMemory refused = RefusedIcuMemory::AtCall(call);
        try {
            EXPECT_EQ(Utf8(format.Format(1234.5678)), "1,234.568") << "call " << call;
            EXPECT_EQ(Utf8(format.Format(-2147483647 - 1)), "-2,147,483,648") << "call " << call;
        } catch (const std::bad_alloc&) {
            ++failures;
        }
        refusedAny = refused.Refused() > 0;
    }
    EXPECT_GT(failures, 0U);
}

TEST(UsNumberFormatDeathTest, StopsTheProcessWhenIcuCannotMakeOne) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        {
            const RefusedIcuMemory refused = RefusedIcuMemory::Above(0);
            UsNumberFormat format;
            static_cast<void>(format.Format(1));
        },
        "^ASSERT failed at LibCore/vexaTransferLib/GpxUtils\\.cpp:[1-9][0-9]*\n$");
}
