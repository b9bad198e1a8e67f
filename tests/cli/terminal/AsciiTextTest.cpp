// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/AsciiText.h>
#include <vexagpx/terminal/DisplayText.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using vexagpx::DisplayWidth;
using vexagpx::InAscii;

std::string Ascii(const char* utf8) {
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(utf8);
    const icu::UnicodeString ascii = InAscii(text);
    EXPECT_EQ(DisplayWidth(ascii), DisplayWidth(text)) << utf8;
    std::string bytes;
    return ascii.toUTF8String(bytes);
}

TEST(AsciiTextTest, LettersLoseTheirAccents) {
    EXPECT_EQ(Ascii("Z\u00FCrich \u2013 \u0141\u00F3d\u017A"), "Zurich - Lodz");
    // The accent is a character of its own.
    EXPECT_EQ(Ascii("Zu\u0308rich"), "Zurich");
}

TEST(AsciiTextTest, ALigatureKeepsItsColumn) {
    EXPECT_EQ(Ascii("Stra\u00DFe"), "Strase");
}

TEST(AsciiTextTest, WhatHasNoLetterIsAQuestionMarkForEachColumn) {
    EXPECT_EQ(Ascii("a\u5C71b"), "a??b");
    EXPECT_EQ(Ascii("\u0436"), "?");
    EXPECT_EQ(Ascii("\U0001F468\u200D\U0001F469\u200D\U0001F467!"), "?\?!");
}

TEST(AsciiTextTest, SignsOfTheTablesHaveSignsOfTheirOwn) {
    EXPECT_EQ(Ascii("Lake lo\u2026"), "Lake lo~");
    EXPECT_EQ(Ascii("5\u00B0 \u00B7 \u00D7"), "5  . *");
}

TEST(AsciiTextTest, AsciiStaysAsItIs) {
    EXPECT_EQ(Ascii(""), "");
    EXPECT_EQ(Ascii("a ~ b?"), "a ~ b?");
}

} // namespace
