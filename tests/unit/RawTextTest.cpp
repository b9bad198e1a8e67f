// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/RawText.h>

#include <gtest/gtest.h>
#include <unicode/ustring.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace vexaTransferLib::text {
namespace {

using Form = RawText::Form;

std::u16string Decoded(std::string_view text, Form form, TextPlace place = TextPlace::kContent) {
    std::u16string units(text.size(), u'?');
    units.resize(static_cast<std::size_t>(Decode(text, form, place, units.data()) - units.data()));
    return units;
}

TEST(RawTextTest, CopiesAsciiAndConvertsUtf8) {
    EXPECT_EQ(Decoded("", Form::kAscii), u"");
    EXPECT_EQ(Decoded("a\tb\nc", Form::kAscii), u"a\tb\nc");
    EXPECT_EQ(
        Decoded("\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBD\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", Form::kUtf8),
        u"\x7F\x80\u07FF\u0800\uFFFD\U00010000\U0010FFFF");
}

TEST(RawTextTest, ReplacesReferences) {
    EXPECT_EQ(Decoded("a&amp;b&lt;&gt;&quot;&apos;", Form::kEncoded), u"a&b<>\"'");
    EXPECT_EQ(Decoded("&#9;&#10;&#13;&#32;&#x20;&#x1F5FB;&#xAbC;", Form::kEncoded),
              u"\t\n\r  \U0001F5FB\u0ABC");
    EXPECT_EQ(Decoded("&amp;amp;\xC3\xA9", Form::kEncoded), u"&amp;\u00E9");
}

TEST(RawTextTest, GivesEachLineEndAsOneLineFeed) {
    EXPECT_EQ(Decoded("a\r\nb\rc\nd\r\r\n\n", Form::kEncoded), u"a\nb\nc\nd\n\n\n");
    EXPECT_EQ(Decoded("a\r", Form::kEncoded), u"a\n");
}

TEST(RawTextTest, LeavesAmpersandsOfASectionAsTheyAre) {
    EXPECT_EQ(Decoded("&lt;\xC3\xA9 & &#65;", Form::kSection), u"&lt;\u00E9 & &#65;");
    EXPECT_EQ(Decoded("&amp;\r\n&\r", Form::kSection), u"&amp;\n&\n");
}

TEST(RawTextTest, GivesWhiteSpaceOfAttributesAsBlanks) {
    EXPECT_EQ(Decoded("a\tb\nc\r\nd\re f", Form::kEncoded, TextPlace::kAttribute), u"a b c d e f");
    EXPECT_EQ(Decoded("&#9;&#10;&#13;", Form::kEncoded, TextPlace::kAttribute), u"\t\n\r");
}

TEST(RawTextTest, ReadsReferencesThatEveryXmlParserKnows) {
    const auto expectReference = [](const char* text, unsigned length, char32_t character) {
        const Reference reference = ReadReference(text);
        EXPECT_EQ(reference.length, length) << text;
        EXPECT_EQ(reference.character, character) << text;
    };
    expectReference("&amp;x", 5, U'&');
    expectReference("&#65;", 5, U'A');
    expectReference("&#0000000065;", 13, U'A');
    expectReference("&#x10FFFF;", 10, U'\U0010FFFF');
    expectReference("&#xD7FF;", 8, U'\uD7FF');
    expectReference("&#xE000;", 8, U'\uE000');
    expectReference("&#xFFFD;", 8, U'\uFFFD');
}

TEST(RawTextTest, ReadsNoOtherReferences) {
    for (const char* text : {"&",
                             "&;",
                             "&a;",
                             "&amp",
                             "&amp ;",
                             "&AMP;",
                             "&nbsp;",
                             "&#;",
                             "&#x;",
                             "&#X41;",
                             "&#65",
                             "&#6a;",
                             "&#0;",
                             "&#8;",
                             "&#x1F;",
                             "&#xD800;",
                             "&#xDFFF;",
                             "&#xFFFE;",
                             "&#xFFFF;",
                             "&#x110000;",
                             "&#00000000065;",
                             "&#99999999999999999999;",
                             "&# 65;",
                             "&#-65;"})
        EXPECT_EQ(ReadReference(text).length, 0u) << text;
}

/// The length of the character at the start of the text by ICU; 0 when it is ill-formed, or one that XML excludes.
unsigned LengthByIcu(const char* text) {
    for (std::int32_t length = 1; length <= 4; ++length) {
        std::array<char16_t, 4> units{};
        std::int32_t count = 0;
        UErrorCode status = U_ZERO_ERROR;
        u_strFromUTF8(units.data(), 4, &count, text, length, &status);
        if (U_SUCCESS(status))
            return units[0] == u'\uFFFE' || units[0] == u'\uFFFF' ? 0 : static_cast<unsigned>(length);
    }
    return 0;
}

// All first and second bytes, with third and fourth bytes around the bounds.
TEST(RawTextTest, AcceptsTheCharactersThatIcuAcceptsExceptTwo) {
    constexpr std::array<unsigned, 8> kLast = {0x00, 0x7F, 0x80, 0x8F, 0xBD, 0xBE, 0xBF, 0xC0};
    for (unsigned bytes = 0x100; bytes < 0x10000; ++bytes)
        for (const unsigned third : kLast)
            for (const unsigned fourth : kLast) {
                const char text[] = {static_cast<char>(bytes >> 8), static_cast<char>(bytes & 0xFF),
                                     static_cast<char>(third), static_cast<char>(fourth), '\0'};
                ASSERT_EQ(CharacterLength(text), LengthByIcu(text))
                    << std::hex << bytes << ' ' << third << ' ' << fourth;
            }
}

} // namespace
} // namespace vexaTransferLib::text
