// SPDX-License-Identifier: MIT
#include <vexaTransferLib/CleanText.h>

#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <map>
#include <string>

namespace vexaTransferLib {

namespace {

using testing_support::Utf8;

struct Row {
    const char16_t* text;
    const char16_t* expected;
    const char* reason;
};

icu::UnicodeString NumbersReplaced(icu::UnicodeString text) {
    CleanText().ReplaceNumericCharacterReferences(text);
    return text;
}

icu::UnicodeString SymbolsReplaced(icu::UnicodeString text) {
    CleanText().ReplaceHTMLSymbols(text);
    return text;
}

std::string Padded(const std::string& digits, std::size_t length) {
    return std::string(length - digits.size(), '0') + digits;
}

TEST(CleanTextReferencesTest, NumbersBecomeCharacters) {
    static constexpr Row kRows[] = {
        {u"&#65;&#x42;&#X43;", u"ABC", "decimal, hexadecimal, with either x"},
        {u"&#233;&#xe9;&#xE9;", u"\u00E9\u00E9\u00E9", "Latin-1; digits in either case"},
        {u"&#8211;&#x2014;", u"---", "dashes"},
        {u"&#8220;x&#8221;", u"\"x\"", "double quotes"},
        {u"&#8216;x&#8217;", u"'x'", "single quotes"},
        {u"&#8230;", u"...", "ellipsis"},
        {u"&#0000000065;", u"A", "ten digits with leading zeros"},
        {u"&#x00000041;", u"A", "eight digits with leading zeros"},
        {u"a&#65;b&#66;c", u"aAbBc", "the text around stays"},
        {u"&#65;&#66;", u"AB", "references side by side"},
        {u"&#32;|&#126;|&#160;|&#255;", u" |~|\u00A0|\u00FF", "the ends of what is shown"},
        {u"&#38;#65;", u"&#65;", "what a reference makes is not looked at again"},
        {u"&&#65;;", u"&A;", "a reference between its own characters"},
        {u"&#&#65;", u"&#A", "the second beginning counts"},
        {u"no reference", u"no reference", "nothing to replace"},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(Utf8(NumbersReplaced(row.text)), Utf8(row.expected)) << row.reason;
}

TEST(CleanTextReferencesTest, TheEnginesReplacementCharactersAreCharacters) {
    EXPECT_EQ(Utf8(NumbersReplaced(u"&#36;1 &#x24;")), "$1 $");
    EXPECT_EQ(Utf8(NumbersReplaced(u"&#92;n &#x5C;&#x5c;")), "\\n \\\\");
    EXPECT_EQ(Utf8(NumbersReplaced(u"$1\\n &#65;")), "$1\\n A") << "in the text around too";
    EXPECT_EQ(Utf8(NumbersReplaced(u"&#36;&#123;1&#125;")), "${1}");
}

TEST(CleanTextReferencesTest, NumbersThatAreNotShownAreRemoved) {
    static constexpr const char16_t* kReferences[] = {
        u"&#9;",         u"&#10;",        u"&#13;",        u"&#127;",       u"&#8364;",    u"&#x1F600;",
        u"&#0;",         u"&#x0;",        u"&#31;",        u"&#128;",       u"&#159;",     u"&#256;",
        u"&#8482;",      u"&#8210;",      u"&#8213;",      u"&#65601;",     u"&#1114112;", u"&#2147483647;",
        u"&#x7FFFFFFF;", u"&#x80000000;", u"&#xFFFFFFFF;", u"&#xFFFFFFDF;",
    };
    for (const char16_t* reference : kReferences) {
        icu::UnicodeString text(u"a");
        text.append(reference, -1).append(u'b');
        EXPECT_EQ(Utf8(NumbersReplaced(text)), "ab") << Utf8(reference);
    }
}

// A number that exceeds a multiple of 2^32 by 65 would become the letter A if it wrapped.
TEST(CleanTextReferencesTest, DecimalNumbersTooLargeForAnIntAreRemoved) {
    for (const char16_t* reference :
         {u"&#2147483648;", u"&#4294967295;", u"&#4294967361;", u"&#8589934657;", u"&#9999999999;"})
        EXPECT_EQ(Utf8(NumbersReplaced(reference)), "") << Utf8(reference);
}

TEST(CleanTextReferencesTest, ATextThatIsNoReferenceIsKept) {
    static constexpr const char16_t* kTexts[] = {
        u"&#12345678901;",
        u"&#00000000065;",
        u"&#x123456789;",
        u"&#x000000041;",
        u"&#65",
        u"&#65 ;",
        u"&#;",
        u"&#x;",
        u"&#X;",
        u"&# 65;",
        u"&#-65;",
        u"&#+65;",
        u"& #65;",
        u"#65;",
        u"&65;",
        u"&#4A;",
        u"&#xG;",
        u"&#xx41;",
        u"&#0x41;",
        u"&#6\n5;",
        u"&",
        u"&#",
    };
    for (const char16_t* text : kTexts)
        EXPECT_EQ(Utf8(NumbersReplaced(text)), Utf8(text));
}

TEST(CleanTextReferencesTest, DigitsOfOtherScriptsEndTheNumber) {
    static constexpr Row kRows[] = {
        {u"a&#\u0666\u0665;b", u"ab", "no ASCII digit: removed"},
        {u"a&#x\u0664\u0661;b", u"ab", "so for hexadecimal ones"},
        {u"a&#\uFF16\uFF15;b", u"ab", "full-width digits"},
        {u"a&#\U0001D7CF;b", u"ab", "digits of two units"},
        {u"a&#65\u0665;b", u"aAb", "the number before them counts"},
        {u"a&#\u06665;b", u"ab", "the number after them does not"},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(Utf8(NumbersReplaced(row.text)), Utf8(row.expected)) << row.reason;
}

TEST(CleanTextReferencesTest, EveryNumberIsReplacedByItsReplacementString) {
    constexpr std::size_t kDecimalDigits = 10;
    for (int codePoint = 0; codePoint <= 0x2100; ++codePoint) {
        const std::string decimal = Padded(std::to_string(codePoint), kDecimalDigits);
        const icu::UnicodeString text = icu::UnicodeString::fromUTF8("<&#" + decimal + ";>");
        const std::string expected = "<" + Utf8(CleanText().GetCharReplacementString(codePoint)) + ">";
        ASSERT_EQ(Utf8(NumbersReplaced(text)), expected) << codePoint;
    }
}

icu::UnicodeString ExpectedReplacement(int codePoint) {
    static const std::map<int, const char16_t*> kReplaced = {
        {0x2013, u"-"},  {0x2014, u"--"}, {0x2018, u"'"},  {0x2019, u"'"},
        {0x201C, u"\""}, {0x201D, u"\""}, {0x2026, u"..."}};
    const auto found = kReplaced.find(codePoint);
    if (found != kReplaced.end())
        return icu::UnicodeString(found->second);
    if ((codePoint >= 32 && codePoint < 127) || (codePoint >= 160 && codePoint < 256))
        return icu::UnicodeString(static_cast<UChar32>(codePoint));
    return icu::UnicodeString();
}

TEST(CleanTextReferencesTest, TheReplacementStringsOfAllCodePoints) {
    constexpr int kAfterTheLast = 0x110000;
    for (int codePoint = -1; codePoint <= kAfterTheLast; ++codePoint)
        ASSERT_TRUE(CleanText().GetCharReplacementString(codePoint) == ExpectedReplacement(codePoint))
            << codePoint;
    const CleanText query;
    for (const int outside :
         {std::numeric_limits<int>::min(), -65, 65 - 0x10000, 0x10000 + 65, std::numeric_limits<int>::max()})
        EXPECT_TRUE(query.GetCharReplacementString(outside).isEmpty()) << outside;
}

TEST(CleanTextReferencesTest, NamedSymbolsBecomeCharacters) {
    static constexpr Row kRows[] = {
        {u"&trade;", u"\u2122", "kept although its number is removed"},
        {u"&reg;&copy;&deg;", u"\u00AE\u00A9\u00B0", "Latin-1"},
        {u"&nbsp;&nbsp;x", u"  x", "plain spaces; runs are collapsed later"},
        {u"&lt;b&gt;", u"<b>", "brackets"},
        {u"&amp;&amp;", u"&&", "ampersands"},
        {u"a&lt;b&lt;c", u"a<b<c", "all occurrences, the text around stays"},
        {u"&#65;&amp;&#66;", u"A&B", "numbers too"},
        {u"&AMP;&Lt;&NBSP;&Trade;", u"&AMP;&Lt;&NBSP;&Trade;", "names are case-sensitive"},
        {u"&quot;&apos;&eacute;&hellip;&euro;", u"&quot;&apos;&eacute;&hellip;&euro;", "no other name"},
        {u"&lt&gt &amp", u"&lt&gt &amp", "no semicolon"},
        {u"& lt;&l t;", u"& lt;&l t;", "no blanks inside"},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(Utf8(SymbolsReplaced(row.text)), Utf8(row.expected)) << row.reason;
}

TEST(CleanTextReferencesTest, EachPassRunsOnceNumbersFirstAndAmpersandLast) {
    static constexpr Row kRows[] = {
        {u"&amp;lt;", u"&lt;", "the ampersand comes after lt"},
        {u"&amp;amp;", u"&amp;", "and is not looked at again"},
        {u"&amp;#65;", u"&#65;", "it comes after the numbers"},
        {u"&#38;lt;", u"<", "a number makes a name"},
        {u"&#38;amp;", u"&", "that is replaced in its turn"},
        {u"&#38;#65;", u"&#65;", "but no further number"},
        {u"&#38;amp;lt;", u"&lt;", "three levels"},
        {u"&l&#116;;", u"<", "a number inside a name"},
        {u"&n&deg;bsp;", u"&n\u00B0bsp;", "no name arises from a symbol"},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(Utf8(SymbolsReplaced(row.text)), Utf8(row.expected)) << row.reason;
}

TEST(CleanTextReferencesTest, AnEmptyTextIsReturnedUntouched) {
    EXPECT_TRUE(SymbolsReplaced(u"").isEmpty());
    EXPECT_TRUE(NumbersReplaced(u"").isEmpty());
}

// Replacing in place would move the rest of the text each time and take half a minute for these texts.
TEST(CleanTextReferencesTest, HundredsOfThousandsOfSymbolsAreReplaced) {
    constexpr std::int32_t kCount = 400'000;
    for (const char16_t* reference : {u"&amp;", u"&#38;"}) {
        const icu::UnicodeString unit(reference);
        icu::UnicodeString text;
        icu::UnicodeString expected;
        for (std::int32_t index = 0; index < kCount; ++index) {
            text.append(unit);
            expected.append(u'&');
        }
        EXPECT_TRUE(SymbolsReplaced(text) == expected) << Utf8(unit);
    }
}

} // namespace

} // namespace vexaTransferLib
