// SPDX-License-Identifier: MIT
#include <vexaTransferLib/CleanText.h>

#include "support/ContractChecks.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace vexaTransferLib {

namespace {

using testing_support::Utf8;

using Operation = void (CleanText::*)(icu::UnicodeString&);

struct Row {
    const char16_t* text;
    const char16_t* expected;
    const char* reason;
};

template <std::size_t N>
void ExpectRows(Operation operation, const Row (&rows)[N]) {
    for (const Row& row : rows) {
        icu::UnicodeString text(row.text);
        (CleanText().*operation)(text);
        EXPECT_EQ(Utf8(text), Utf8(row.expected)) << row.reason << ": " << Utf8(row.text);
    }
}

TEST(CleanTextTest, ACleanerCanBeNeitherCopiedNorMoved) {
    EXPECT_FALSE(std::is_copy_constructible_v<CleanText>);
    EXPECT_FALSE(std::is_copy_assignable_v<CleanText>);
    EXPECT_FALSE(std::is_move_constructible_v<CleanText>);
    EXPECT_FALSE(std::is_move_assignable_v<CleanText>);
}

TEST(CleanTextTest, AnEmptyTextStaysEmpty) {
    for (const Operation operation :
         {&CleanText::CleanWebTextForTova, &CleanText::HTMLToPlainText, &CleanText::StripBBCode,
          &CleanText::CleanPlainTextForTova, &CleanText::ConvertToDosLineBreaks,
          &CleanText::ReplaceHTMLSymbols, &CleanText::ReplaceNumericCharacterReferences}) {
        icu::UnicodeString text;
        (CleanText().*operation)(text);
        EXPECT_TRUE(text.isEmpty());
        EXPECT_FALSE(text.isBogus());
    }
}

// A bogus text counts as empty; a regular expression would make it an ordinary empty text.
TEST(CleanTextTest, OperationsWithATestForEmptinessTouchNoMatcherThen) {
    for (const Operation operation : {&CleanText::HTMLToPlainText, &CleanText::StripBBCode,
                                      &CleanText::CleanPlainTextForTova, &CleanText::ReplaceHTMLSymbols}) {
        icu::UnicodeString text;
        text.setToBogus();
        (CleanText().*operation)(text);
        EXPECT_TRUE(text.isBogus());
    }
}

TEST(CleanTextTest, ConvertToDosLineBreaksMakesEveryLineBreakCrLf) {
    static constexpr Row kRows[] = {
        {u"a\rb", u"ab", "a lone CR is deleted"},
        {u"a\nb", u"a\r\nb", "a lone LF gets its CR"},
        {u"a\r\nb", u"a\r\nb", "CR LF stays"},
        {u"\n", u"\r\n", "nothing but LF"},
        {u"\r", u"", "nothing but CR"},
        {u"\n\n", u"\r\n\r\n", "each LF on its own"},
        {u"\r\r\n", u"\r\n", "only the first CR is lone"},
        {u"a\n\rb", u"a\r\nb", "LF CR is a LF and a lone CR"},
        {u"\r\r\r", u"", "a run of CR"},
        {u"\r\n\r\n", u"\r\n\r\n", "two CR LF"},
        {u"a\u2028b\u0085c\fd", u"a\u2028b\u0085c\fd", "other line ends stay"},
        {u"<br>&lt;[b]", u"<br>&lt;[b]", "nothing else is changed"},
    };
    ExpectRows(&CleanText::ConvertToDosLineBreaks, kRows);
}

TEST(CleanTextTest, HtmlToPlainTextRemovesCommentsStylesAndScripts) {
    static constexpr Row kRows[] = {
        {u"<!-- a --  >b", u"b", "blanks before the closing bracket"},
        {u"<!-- a --\r\n>b", u"b", "so is a line break there"},
        {u"a<!-- x\n<p>y -->b", u"ab", "a comment spans lines and hides tags"},
        {u"a<!--x-->b<!--y-->c", u"abc", "each comment ends at its first end"},
        {u"<!---->b", u"b", "an empty comment falls as a tag"},
        {u"<!---->a-->b", u"b", "a comment has at least one character"},
        {u"a<!-- x -- y", u"a<!-- x -- y", "a comment without end stays"},
        {u"<script type=x>alert(1)</SCRIPT>text", u"text", "case does not matter"},
        {u"<style>p > a {}</style>text", u"text", "the content may hold brackets"},
        {u"<style\n>a\n</style\n>b", u"b", "elements span lines"},
        {u"<style>a", u"a", "without closing tag only the opening tag goes"},
        {u"<script>a<b>b</b>", u"ab", "so for scripts"},
        {u"<style>a</script>b", u"ab", "the closing tag must have the same name"},
        {u"<style>a</style>b</style>c", u"bc", "the element ends at the first closing tag"},
        {u"<scripts>a</scriptum x>b", u"b", "names are prefixes at both ends"},
        {u"<\u017Ftyle>a</style>b", u"b", "the long s is an s"},
        {u"<STYLE>a</\u017Ftyle>b", u"b", "at the closing tag too"},
        {u"<\uFB06yle>a</\uFB06yle>b", u"b", "the st ligature is st"},
        {u"<\u017Fcript>a</SCRIPT>b", u"b", "a script with a long s"},
        {u"<b>x</b><script>y</script>", u"x", "an element before it does not save it"},
        {u"<b>x</b><style>y</style>", u"x", "so for styles"},
    };
    ExpectRows(&CleanText::HTMLToPlainText, kRows);
}

TEST(CleanTextTest, HtmlToPlainTextTurnsTagsIntoBreaks) {
    static constexpr Row kRows[] = {
        {u"<P>one</P><p>two", u"\r\n\r\none\r\n\r\ntwo", "a block tag is a paragraph break"},
        {u"x<blockquote>y", u"x\r\n\r\ny", "blockquote opens a block"},
        {u"x<div class='a'>y", u"x\r\n\r\ny", "div with an attribute"},
        {u"x<hr/>y", u"x\r\n\r\ny", "hr"},
        {u"x<PRE>y", u"x\r\n\r\ny", "pre"},
        {u"x<param>y", u"x\r\n\r\ny", "the name is a prefix: p"},
        {u"x<p\n>y", u"x\r\n\r\ny", "a tag spans lines"},
        {u"x<br/>y", u"x\r\ny", "br"},
        {u"x<BR>y", u"x\r\ny", "case does not matter"},
        {u"x<li>y", u"x\r\ny", "li"},
        {u"x<brz>y", u"x\r\ny", "the name is a prefix: br"},
        {u"x<link rel=a>y", u"x\r\ny", "the name is a prefix: li"},
        {u"x<track>y", u"x\r\ny", "the name is a prefix: tr"},
        {u"x<h3>y</h3>z", u"x\r\ny\r\nz", "headings break at both ends"},
        {u"x</h1>y<h2>z</h2>", u"x\r\ny\r\nz\r\n", "headings"},
        {u"x<h4>y</h4>z<h5>a</h5>b<h6>c</h6>d", u"x\r\ny\r\nz\r\na\r\nb\r\nc\r\nd", "headings"},
        {u"x<h7>y", u"xy", "there is no h7"},
        {u"x<dl>y<dt>z<dd>a", u"x\r\ny\r\nz\r\na", "definition lists"},
        {u"x<ol>y</ol>z<ul>a</ul>b", u"x\r\ny\r\nz\r\na\r\nb", "lists break at both ends"},
        {u"x</blockquote>y</div>z</pre>a", u"x\r\ny\r\nz\r\na", "closing tags that break"},
        {u"x<h1><ul>y", u"x\r\n\r\ny", "two line breaks make a paragraph break"},
        {u"x<\u017Ftrong>y", u"xy", "any other tag goes without a break"},
    };
    ExpectRows(&CleanText::HTMLToPlainText, kRows);
}

TEST(CleanTextTest, HtmlToPlainTextDeletesAllOtherTags) {
    static constexpr Row kRows[] = {
        {u"x<b>y", u"xy", "an inline tag"},
        {u"x</p>y", u"xy", "a closing block tag"},
        {u"x</li>y</td>z</tr>a", u"xyza", "closing tags that do not break"},
        {u"x<a\nhref='q'>y", u"xy", "a tag spans lines"},
        {u"a < b > c", u"a c", "a blank after the bracket does not save it"},
        {u"a<>b", u"ab", "an empty tag"},
        {u"a<b", u"a<b", "no closing bracket"},
        {u"a>b", u"a>b", "no opening bracket"},
        {u"a<b<i>c", u"a<bc", "only the last opening bracket counts"},
        {u"<<b>p>x", u"<p>x", "tags are not looked for again"},
        {u"&lt;b&gt;x&#60;p&#62;", u"<b>x<p>", "references come after the tags"},
        {u"[b]x[/b]", u"[b]x[/b]", "BBCode is left alone"},
    };
    ExpectRows(&CleanText::HTMLToPlainText, kRows);
}

TEST(CleanTextTest, HtmlToPlainTextTidiesSpacesAndLineBreaks) {
    static constexpr Row kRows[] = {
        {u"a\tb", u"a b", "a tab is a space"},
        {u"a\t\t \tb", u"a b", "a run of tabs and spaces is one space"},
        {u"  a  \n  b  ", u"a\r\nb", "each line is trimmed"},
        {u"\ta\t\n\tb", u"a\r\nb", "tabs too: they are spaces by then"},
        {u"a\u2028 b", u"a\u2028b", "a line separator ends a line"},
        {u"a\u0085 b", u"a\u0085b", "the next-line control does"},
        {u"a   b", u"a b", "a run of spaces"},
        {u"a&nbsp;&nbsp;b&nbsp;", u"a b", "so for named spaces"},
        {u"a\u00A0\u00A0b", u"a\u00A0\u00A0b", "a no-break space is no space"},
        {u"a&#160;&#32;&#32;b", u"a\u00A0 b", "neither by its number"},
        {u"a\rb\nc", u"ab\r\nc", "line breaks become CR LF"},
        {u"a\r\n\r\n\r\n\r\n\r\nb", u"a\r\n\r\nb", "five CR LF become two"},
        {u"\r\n\r\n\r\n\r\n\r\n", u"\r\n\r\n", "exactly two"},
        {u"a\n \n\t\nb", u"a\r\n\r\nb", "blank lines are empty lines"},
        {u"a\r\nb", u"a\r\nb", "one stays one"},
        {u"<p>a</p>\n<p>b</p>", u"\r\n\r\na\r\n\r\nb", "breaks of tags and text together"},
        {u" <br> a", u"\r\na", "a leading break stays"},
    };
    ExpectRows(&CleanText::HTMLToPlainText, kRows);
}

TEST(CleanTextTest, StripBBCodeRemovesTagsAndKeepsWhatTheyEnclose) {
    static constexpr Row kRows[] = {
        {u"[b]bold[/b]", u"bold", "a simple tag"},
        {u"[url=x]site[/url]", u"site", "a tag with a parameter"},
        {u"[B]x[/b] [color=red]y[/color] [size]z", u"x y z", "case, parameter, no closing tag"},
        {u"[u]a[/u][i]b[/i][*]c[code]d[/code]", u"abcd", "short names"},
        {u"[email]a[/email][img]b[/IMG][list]c[/list]", u"abc", "longer names"},
        {u"[quote=me]a[/quote][size=3]b[/size=3]", u"ab", "a parameter at the closing tag"},
        {u"[url=a\nb]c", u"c", "a parameter spans lines"},
        {u"[url=a[b]c", u"c", "a parameter holds opening brackets"},
        {u"[url=a]b]c", u"b]c", "it ends at the first closing one"},
        {u"[\u017Fize]x[li\u017Ft]y", u"xy", "the long s is an s"},
        {u"[color=]y", u"[color=]y", "an empty parameter"},
        {u"[color=]]y", u"[color=]]y", "a parameter cannot begin with the bracket"},
        {u"[bold]x[b ]y[ b]z[b =1]", u"[bold]x[b ]y[ b]z[b =1]", "no such tags"},
        {u"[]x[/]y[//b]", u"[]x[/]y[//b]", "no name"},
        {u"[b", u"[b", "no closing bracket"},
        {u"[[b]]", u"[]", "the inner tag goes"},
        {u"[[b]b]", u"[b]", "tags are not looked for again"},
        {u"a  b\r\n<p>&lt;", u"a  b\r\n<p>&lt;", "nothing else is changed"},
    };
    ExpectRows(&CleanText::StripBBCode, kRows);
}

TEST(CleanTextTest, CleanPlainTextForTovaStraightensPunctuationAndSpacing) {
    static constexpr Row kRows[] = {
        {u"\u201Ca\u201D", u"\"a\"", "double quotes"},
        {u"\u2018a\u2019", u"'a'", "single quotes"},
        {u"\u201C\u201C\u2019\u2018", u"\"\"''", "runs of quotes: one for one"},
        {u"1\u20132", u"1-2", "en dash"},
        {u"a\u2014b\u2014", u"a--b--", "em dash"},
        {u"\u2026a\u2026\u2026", u"...a......", "ellipsis"},
        {u"\u201A\u201E\u2015\u2022\u2122", u"\u201A\u201E\u2015\u2022\u2122", "their neighbours stay"},
        {u"a  \t  b", u"a b", "tabs and spaces"},
        {u"  a  ", u"a", "spaces at the ends"},
        {u"\ta\t", u"a", "tabs at the ends"},
        {u" a \n b ", u"a\nb", "spaces at line edges; line breaks stay as they are"},
        {u"\ta\n\tb", u"a\n b", "a line that began with a tab keeps one space"},
        {u"\t \ta\n\t \tb", u"a\n b", "however many"},
        {u"a\t\n", u"a\n", "before a final line end the text ends too"},
        {u"a\t\r\n", u"a\r\n", "CR LF is one line end"},
        {u"a\t\n\n", u"a \n\n", "but not before two"},
        {u"\n\ta", u"\n a", "a text that begins with a line end does not begin with a space"},
        {u"   ", u"", "nothing but spaces"},
        {u"\t", u"", "nothing but a tab"},
        {u"a\r\n\r\n\r\nb", u"a\r\n\r\n\r\nb", "empty lines stay"},
        {u"[b]<p>&lt;", u"[b]<p>&lt;", "markup stays"},
        {u"\U0001F600 \U0001F601", u"\U0001F600 \U0001F601", "characters of two units stay whole"},
    };
    ExpectRows(&CleanText::CleanPlainTextForTova, kRows);
}

TEST(CleanTextTest, CleanWebTextForTovaRunsTheThreeOneAfterTheOther) {
    static constexpr Row kRows[] = {
        {u"<p>Hello&nbsp;&amp; welcome</p>", u"\r\n\r\nHello & welcome", "a description"},
        {u"<p>Hello&nbsp;&amp; [b]welcome[/b]</p>", u"\r\n\r\nHello & welcome", "with BBCode"},
        {u"&#91;b&#93;x", u"x", "references make BBCode"},
        {u"[<i>b]x", u"x", "tags go before BBCode"},
        {u"<[b]p>x", u"x", "a tag that holds BBCode is a tag"},
        {u"&amp;lt;b&amp;gt;", u"&lt;b&gt;", "one level of escaping goes"},
        {u"&amp;#65;", u"&#65;", "also of numbers"},
        {u"&#8220;a&#8221; \u2013 b\u2026", u"\"a\" - b...", "by number and by character"},
        {u"a[b] [/b]b", u"a b", "spaces around BBCode"},
        {u"a [b] [/b] b", u"a b", "run together after it has gone"},
        {u"[b] a [/b]", u"a", "and are trimmed"},
        {u"a&trade;&reg;", u"a\u2122\u00AE", "named symbols stay what they are"},
        {u"a\r\n\r\n\r\n\r\nb", u"a\r\n\r\nb", "one empty line remains"},
        {u"\u00FCber \u4E2D\U0001F600", u"\u00FCber \u4E2D\U0001F600", "any other character stays"},
    };
    ExpectRows(&CleanText::CleanWebTextForTova, kRows);
}

TEST(CleanTextTest, ZeroUnitsAndLoneSurrogatesPassThrough) {
    static constexpr char16_t kUnits[] = {u'a', 0, 0xD83D, u'<', u'b', u'>', 0xDE00, 0, u'b'};
    static constexpr char16_t kExpected[] = {u'a', 0, 0xD83D, 0xDE00, 0, u'b'};
    icu::UnicodeString text(kUnits, static_cast<std::int32_t>(std::size(kUnits)));
    CleanText().CleanWebTextForTova(text);
    EXPECT_TRUE(text == icu::UnicodeString(kExpected, static_cast<std::int32_t>(std::size(kExpected))));
}

TEST(CleanTextTest, NoStateIsCarriedFromOneTextToTheNext) {
    CleanText cleaner;
    for (int round = 0; round < 3; ++round) {
        auto text = std::make_unique<icu::UnicodeString>(u"<p>a&#65;</p><br>[b]b[/b]\t c");
        cleaner.CleanWebTextForTova(*text);
        EXPECT_EQ(Utf8(*text), "\r\n\r\naA\r\nb c");
        text.reset();
        icu::UnicodeString shorter(u"<i>x</i>");
        cleaner.CleanWebTextForTova(shorter);
        EXPECT_EQ(Utf8(shorter), "x");
    }
}

// A second implementation of the pipeline, as simple as possible.
class PlainPipeline {
public:
    PlainPipeline() {
        for (const auto& [expression, flags] : kExpressions) {
            UErrorCode status = U_ZERO_ERROR;
            matchers_.push_back(std::make_unique<icu::RegexMatcher>(expression, flags, status));
            EXPECT_TRUE(U_SUCCESS(status)) << Utf8(expression);
        }
    }

    void Clean(icu::UnicodeString& text) {
        for (const int comments : {12, 13})
            Replace(comments, text, u"");
        Replace(6, text, u" ");
        Replace(14, text, u"\r\n\r\n");
        Replace(15, text, u"\r\n");
        Replace(16, text, u"");
        ReplaceNumbers(text);
        ReplaceNames(text);
        Replace(10, text, u"");
        Replace(9, text, u"\r\n");
        Replace(3, text, u"");
        Replace(5, text, u" ");
        Replace(11, text, u"\r\n\r\n");
        Replace(2, text, u"");
        Replace(3, text, u"");
        text.findAndReplace(u"\u2026", u"...");
        Replace(7, text, u"'");
        Replace(8, text, u"\"");
        text.findAndReplace(u"\u2013", u"-");
        text.findAndReplace(u"\u2014", u"--");
        Replace(6, text, u" ");
        Replace(5, text, u" ");
        Replace(4, text, u"");
    }

private:
    struct Expression {
        const char16_t* expression;
        std::uint32_t flags;
    };
    static constexpr std::uint32_t kD = UREGEX_DOTALL;
    static constexpr std::uint32_t kMD = UREGEX_MULTILINE | kD;
    static constexpr std::uint32_t kIMD = UREGEX_CASE_INSENSITIVE | kMD;
    static constexpr Expression kExpressions[] = {
        {u"&#(([\\d]{1,10})|([xX][\\da-fA-F]{1,8}));", kMD},
        {u"\\[[/]?(b|i|u|\\*|code|color|email|img|list|quote|size|url)(=[^\\]]+\\]|\\])", kIMD},
        {u"(^ +)|( +$)", kMD},
        {u"(^ +)|( +$)", kD},
        {u" {2,}", kMD},
        {u"[\\t]+", kMD},
        {u"[\x2018\x2019]", kMD},
        {u"[\x201C\x201D]", kMD},
        {u"(?<!\\r)\\n", kMD},
        {u"\\r(?!\\n)", kMD},
        {u"(\\r\\n){2,}", kMD},
        {u"<!--.+?--[\\s]*>", kMD},
        {u"<(style|script)[^\\w>]*[^>]*>.*?</\\1[^\\w>]*[^>]*>", kIMD},
        {u"<(blockquote|div|hr|p|pre)[^\\w>]*[^>]*>", kIMD},
        {u"<(/blockquote|br|dd|dl|dt|/div|h1|/h1|h2|/h2|h3|/h3|h4|/h4|h5|/h5|h6|/h6|li|ol|/ol|/pre|tr|ul|/ul)"
         u"[^\\w>]*[^>]*>",
         kIMD},
        {u"<[^\\s<>]*[^<>]*>", kMD},
    };

    icu::RegexMatcher& Matcher(int number) { return *matchers_[static_cast<std::size_t>(number - 1)]; }

    void Replace(int number, icu::UnicodeString& text, const char16_t* replacement) {
        UErrorCode status = U_ZERO_ERROR;
        text = Matcher(number).reset(text).replaceAll(icu::UnicodeString(replacement), status);
        EXPECT_TRUE(U_SUCCESS(status)) << number;
    }

    static icu::UnicodeString ForNumber(long long number) {
        if ((number >= 32 && number <= 126) || (number >= 160 && number <= 255))
            return icu::UnicodeString(static_cast<UChar32>(number));
        switch (number) {
        case 8211:
            return u"-";
        case 8212:
            return u"--";
        case 8216:
        case 8217:
            return u"'";
        case 8220:
        case 8221:
            return u"\"";
        case 8230:
            return u"...";
        default:
            return {};
        }
    }

    void ReplaceNumbers(icu::UnicodeString& text) {
        icu::UnicodeString result;
        UErrorCode status = U_ZERO_ERROR;
        icu::RegexMatcher& matcher = Matcher(1);
        matcher.reset(text);
        while (matcher.find()) {
            std::string digits = Utf8(matcher.group(1, status));
            const bool hexadecimal = digits[0] == 'x' || digits[0] == 'X';
            digits.erase(0, hexadecimal ? 1 : 0);
            icu::UnicodeString literal =
                ForNumber(std::strtoll(digits.c_str(), nullptr, hexadecimal ? 16 : 10));
            literal.findAndReplace(u"\\", u"\\\\").findAndReplace(u"$", u"\\$");
            matcher.appendReplacement(result, literal, status);
        }
        matcher.appendTail(result);
        EXPECT_TRUE(U_SUCCESS(status));
        text = result;
    }

    static void ReplaceNames(icu::UnicodeString& text) {
        static constexpr const char16_t* kNames[][2] = {
            {u"&trade;", u"\u2122"}, {u"&reg;", u"\u00AE"}, {u"&copy;", u"\u00A9"}, {u"&deg;", u"\u00B0"},
            {u"&nbsp;", u" "},       {u"&lt;", u"<"},       {u"&gt;", u">"},        {u"&amp;", u"&"}};
        for (const auto& [name, character] : kNames)
            text.findAndReplace(name, character);
    }

    std::vector<std::unique_ptr<icu::RegexMatcher>> matchers_;
};

icu::UnicodeString HostileText(std::mt19937& random) {
    static constexpr const char16_t* kPieces[] = {
        u"<",       u">",        u"/",       u"!--",        u"--",     u"-->",        u"<!--",   u"style",
        u"<style>", u"</style",  u"<script", u"</SCRIPT",   u"p",      u"<p>",        u"</p>",   u"<br",
        u"<li",     u"</div>",   u"pre",     u"h1",         u"a",      u"b",          u"[",      u"]",
        u"[b]",     u"[/",       u"[url",    u"=",          u"*",      u"color",      u" ",      u" ",
        u"  ",      u"\t",       u"\r",      u"\n",         u"\r\n",   u"&",          u"#",      u"&#",
        u"&#x",     u"65",       u"3C",      u"x",          u";",      u";",          u"lt",     u"&amp;",
        u"&lt;",    u"&gt;",     u"&nbsp;",  u"&#36;",      u"&#92;",  u"$",          u"\\",     u"\u2026",
        u"\u2013",  u"\u2014",   u"\u2018",  u"\u2019",     u"\u201C", u"\u201D",     u"\u017F", u"\uFB06",
        u"\u0663",  u"\u2028",   u"\u0085",  u"\v",         u"\f",     u"\U0001F600", u"\u00A0", u"\u0130",
        u"&#8211;", u"&#x201c;", u"&copy;",  u"9999999999", u"K",      u"\u212A",
    };
    std::uniform_int_distribution<std::size_t> piece(0, std::size(kPieces) - 1);
    std::uniform_int_distribution<int> count(0, 24);
    icu::UnicodeString text;
    for (int left = count(random); left > 0; --left)
        text.append(kPieces[piece(random)], -1);
    return text;
}

TEST(CleanTextTest, HostileTextsComeOutAsFromThePlainPipeline) {
    constexpr int kTexts = 40'000;
    constexpr int kFailuresShown = 5;
    std::mt19937 random(20240229);
    PlainPipeline pipeline;
    int different = 0;
    int changed = 0;
    for (int index = 0; index < kTexts; ++index) {
        const icu::UnicodeString hostile = HostileText(random);
        icu::UnicodeString cleaned(hostile);
        icu::UnicodeString expected(hostile);
        CleanText().CleanWebTextForTova(cleaned);
        pipeline.Clean(expected);
        changed += cleaned != hostile ? 1 : 0;
        if (cleaned != expected && ++different <= kFailuresShown)
            ADD_FAILURE() << "cleaned: " << testing::PrintToString(Utf8(cleaned))
                          << "\nexpected: " << testing::PrintToString(Utf8(expected))
                          << "\nof: " << testing::PrintToString(Utf8(hostile));
    }
    EXPECT_EQ(different, 0);
    EXPECT_GT(changed, kTexts * 3 / 4) << "the texts are not hostile enough";
}

} // namespace

} // namespace vexaTransferLib
