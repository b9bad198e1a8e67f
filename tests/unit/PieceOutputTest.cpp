// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/PieceOutput.h>

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::standard {
namespace {

using Place = PieceOutput::Place;

/// An output with the pieces that it has passed on.
struct Collected {
    std::vector<std::string> pieces;
    PieceOutput::Receive receive = [this](std::string_view piece) { pieces.emplace_back(piece); };
    PieceOutput output{receive};

    std::string Text() {
        output.Flush();
        std::string text;
        for (const std::string& piece : pieces)
            text += piece;
        return text;
    }
};

std::string Escaped(const icu::UnicodeString& text, Place place) {
    Collected collected;
    collected.output.AppendEscaped(text, place);
    return collected.Text();
}

std::string NumberText(double number) {
    Collected collected;
    collected.output.AppendNumber(number);
    return collected.Text();
}

TEST(PieceOutputTest, NothingIsPassedOnForNothing) {
    Collected collected;
    collected.output.Append("");
    EXPECT_EQ(collected.Text(), "");
    EXPECT_TRUE(collected.pieces.empty());
}

TEST(PieceOutputTest, ShortTextsArePassedOnTogether) {
    Collected collected;
    collected.output.AppendAll("a", "bc", std::string("d"));
    EXPECT_TRUE(collected.pieces.empty());
    EXPECT_EQ(collected.output.Count(), 4U);
    collected.output.Flush();
    EXPECT_EQ(collected.pieces, std::vector<std::string>{"abcd"});
    EXPECT_EQ(collected.output.Count(), 4U);
}

TEST(PieceOutputTest, TextsOfAnyLengthAreJoinedInTheirOrder) {
    constexpr std::size_t kSize = std::size_t{64} * 1024;
    for (const std::size_t length : {kSize - 1, kSize, kSize + 1, 3 * kSize}) {
        for (const std::size_t before : {std::size_t{0}, std::size_t{1}, kSize - 1, kSize}) {
            Collected collected;
            const std::string all = std::string(before, 'a') + std::string(length, 'b') + 'c';
            collected.output.Append(std::string(before, 'a'));
            collected.output.Append(std::string(length, 'b'));
            collected.output.Append("c");
            EXPECT_EQ(collected.output.Count(), all.size());
            EXPECT_TRUE(collected.Text() == all) << before << ' ' << length;
        }
    }
}

TEST(PieceOutputTest, ManyShortTextsBecomePiecesOfSome64KiB) {
    Collected collected;
    for (int i = 0; i < 100'000; ++i)
        collected.output.Append("abc");
    EXPECT_EQ(collected.Text().size(), 300'000U);
    EXPECT_EQ(collected.pieces.size(), 5U);
}

TEST(PieceOutputTest, WhatTheReceiverThrowsPassesThrough) {
    const PieceOutput::Receive refuse = [](std::string_view) { throw std::domain_error("full"); };
    PieceOutput output(refuse);
    output.Append("a");
    EXPECT_THROW(output.Flush(), std::domain_error);
    EXPECT_THROW(output.Append(std::string(100'000, 'a')), std::domain_error);
}

TEST(PieceOutputTest, MarkupIsEscaped) {
    EXPECT_EQ(Escaped(u"<a b=\"c'\">&]]>", Place::kContent), "&lt;a b=\"c'\"&gt;&amp;]]&gt;");
    EXPECT_EQ(Escaped(u"<a b=\"c'\">&]]>", Place::kAttribute), "&lt;a b=&quot;c'&quot;&gt;&amp;]]&gt;");
}

TEST(PieceOutputTest, WhiteSpaceThatAReaderWouldChangeIsEscaped) {
    EXPECT_EQ(Escaped(u" \t\n\r\r\n", Place::kContent), " \t\n&#13;&#13;\n");
    EXPECT_EQ(Escaped(u" \t\n\r", Place::kAttribute), " &#9;&#10;&#13;");
}

TEST(PieceOutputTest, CharactersAreWrittenInUtf8) {
    EXPECT_EQ(Escaped(u"a\u00E9\u20AC\U0001F30D\U0010FFFD", Place::kContent),
              "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8C\x8D\xF4\x8F\xBF\xBD");
}

TEST(PieceOutputTest, ACharacterThatXmlCannotHoldIsReplaced) {
    for (const char16_t unit : {u'\0', u'\x1', u'\x8', u'\xB', u'\x1F', char16_t{0xD800}, char16_t{0xDFFF},
                                char16_t{0xFFFE}, char16_t{0xFFFF}}) {
        icu::UnicodeString text(u"a");
        text.append(unit).append(u'b');
        EXPECT_EQ(Escaped(text, Place::kContent), "a\xEF\xBF\xBD"
                                                  "b")
            << static_cast<int>(unit);
    }
}

TEST(PieceOutputTest, XmlHoldsTheseCharactersOnly) {
    for (const unsigned good :
         {0x9U, 0xAU, 0xDU, 0x20U, 0x7FU, 0xD7FFU, 0xE000U, 0xFFFDU, 0x10000U, 0x1FFFEU, 0x10FFFFU})
        EXPECT_TRUE(IsXmlCharacter(static_cast<char32_t>(good))) << good;
    for (const unsigned bad :
         {0x0U, 0x8U, 0xBU, 0xCU, 0xEU, 0x1FU, 0xD800U, 0xDBFFU, 0xDC00U, 0xDFFFU, 0xFFFEU, 0xFFFFU})
        EXPECT_FALSE(IsXmlCharacter(static_cast<char32_t>(bad))) << bad;
}

TEST(PieceOutputTest, NumbersHaveNoMoreDigitsThanTheyNeed) {
    const struct {
        double number;
        const char* text;
    } kNumbers[] = {{0.0, "0"},
                    {-0.0, "-0"},
                    {0.1, "0.1"},
                    {-1.5, "-1.5"},
                    {100.0, "100"},
                    {1e-9, "0.000000001"},
                    {1.0 / 3.0, "0.3333333333333333"},
                    {179.9999998807907, "179.9999998807907"},
                    {1e21, "1000000000000000000000"},
                    {123456789012345680.0, "123456789012345680"}};
    for (const auto& [number, text] : kNumbers)
        EXPECT_EQ(NumberText(number), text);
}

TEST(PieceOutputTest, EveryNumberReadsBackTheSame) {
    std::mt19937_64 random(1);
    std::vector<double> numbers = {std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest(),
                                   std::numeric_limits<double>::min(),
                                   -std::numeric_limits<double>::denorm_min(), 1e300};
    while (numbers.size() < 10'000) {
        const double number =
            std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 1900) - 1000);
        if (std::isfinite(number))
            numbers.push_back(number);
    }
    for (const double number : numbers) {
        const std::string text = NumberText(number);
        EXPECT_EQ(text.find_first_not_of("-0123456789."), std::string::npos) << text;
        double read = 0.0;
        std::from_chars(text.data(), text.data() + text.size(), read);
        EXPECT_EQ(read, number) << text;
    }
}

TEST(PieceOutputTest, WholeNumbersAreWrittenInFull) {
    Collected collected;
    collected.output.AppendInteger(std::numeric_limits<long long>::min());
    collected.output.AppendInteger(0);
    EXPECT_EQ(collected.Text(), "-92233720368547758080");
}

} // namespace
} // namespace vexaTransferLib::standard
