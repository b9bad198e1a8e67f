// SPDX-License-Identifier: MIT Compares the cleaner's linear steps with the regular expressions that define
// them.
#include <vexaTransferLib/CleanText.h>

#include <vexaTransferLib/cleaner/Steps.h>

#include "support/RegexCleaner.h"

#include <gtest/gtest.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace vexaTransferLib {

namespace {

using testing_support::PlainStep;
using testing_support::RegexCleaner;

#if defined(__SANITIZE_ADDRESS__)
constexpr int kSlowdown = 10;
#else
constexpr int kSlowdown = 1;
#endif

RegexCleaner& Plain() {
    static RegexCleaner cleaner;
    return cleaner;
}

// Written unit by unit, because a lone surrogate has no UTF-8.
std::string Shown(const icu::UnicodeString& text) {
    std::string shown;
    for (std::int32_t index = 0; index < text.length(); ++index) {
        const char16_t unit = text[index];
        char piece[8] = {};
        std::snprintf(piece, sizeof(piece), unit >= 0x20 && unit < 0x7F ? "%c" : "\\u%04X", unsigned{unit});
        shown += piece;
    }
    return shown;
}

struct Step {
    const char* name;
    bool (*linear)(icu::UnicodeString&);
    PlainStep plain;
};

constexpr Step kComments{"comments", cleaner::RemoveComments, PlainStep::kHtmlComments};
constexpr Step kScripts{"scripts", cleaner::RemoveStylesAndScripts, PlainStep::kHtmlScripts};
constexpr Step kTabs{"tabs", cleaner::ReplaceTabs, PlainStep::kTabRuns};
constexpr Step kBlockTags{"block tags", cleaner::ReplaceBlockTags, PlainStep::kHtmlBlockTags};
constexpr Step kBreakTags{"break tags", cleaner::ReplaceBreakTags, PlainStep::kHtmlBreakTags};
constexpr Step kTags{"tags", cleaner::RemoveTags, PlainStep::kHtmlTags};
constexpr Step kNumbers{"numbers", cleaner::ReplaceNumericReferences, PlainStep::kNumericReferences};
constexpr Step kSymbols{"names", cleaner::ReplaceNamedReferences, PlainStep::kNamedSymbols};
constexpr Step kReturns{"CR", cleaner::RemoveLoneCarriageReturns, PlainStep::kLoneCarriageReturns};
constexpr Step kLineFeeds{"LF", cleaner::CompleteLineFeeds, PlainStep::kLoneLineFeeds};
constexpr Step kLineEdges{"line edges", cleaner::TrimLines, PlainStep::kLineEdgeSpaces};
constexpr Step kSpaces{"spaces", cleaner::CollapseSpaces, PlainStep::kSpaceRuns};
constexpr Step kLineBreaks{"line breaks", cleaner::CollapseLineBreaks, PlainStep::kLineBreakRuns};
constexpr Step kBBCode{"BBCode", cleaner::RemoveBBCodeTags, PlainStep::kBBCodeTags};
constexpr Step kSingleQuotes{"single quotes", cleaner::StraightenSingleQuotes, PlainStep::kSingleQuotes};
constexpr Step kDoubleQuotes{"double quotes", cleaner::StraightenDoubleQuotes, PlainStep::kDoubleQuotes};
constexpr Step kTextEdges{"text edges", cleaner::TrimText, PlainStep::kTextEdgeSpaces};

constexpr Step kSteps[] = {kComments,   kScripts, kTabs,         kBlockTags,    kBreakTags, kTags,
                           kNumbers,    kSymbols, kReturns,      kLineFeeds,    kLineEdges, kSpaces,
                           kLineBreaks, kBBCode,  kSingleQuotes, kDoubleQuotes, kTextEdges};

struct Pipeline {
    const char* name;
    void (CleanText::*linear)(icu::UnicodeString&);
    void (RegexCleaner::*plain)(icu::UnicodeString&);
};

constexpr Pipeline kPipelines[] = {
    {"CleanWebTextForTova", &CleanText::CleanWebTextForTova, &RegexCleaner::CleanWebTextForTova},
    {"HTMLToPlainText", &CleanText::HTMLToPlainText, &RegexCleaner::HTMLToPlainText},
    {"StripBBCode", &CleanText::StripBBCode, &RegexCleaner::StripBBCode},
    {"CleanPlainTextForTova", &CleanText::CleanPlainTextForTova, &RegexCleaner::CleanPlainTextForTova},
    {"ConvertToDosLineBreaks", &CleanText::ConvertToDosLineBreaks, &RegexCleaner::ConvertToDosLineBreaks},
    {"ReplaceHTMLSymbols", &CleanText::ReplaceHTMLSymbols, &RegexCleaner::ReplaceHTMLSymbols},
};

// Counts the texts for which the results differ, and those that the step changes.
class Comparison {
public:
    void Of(const Step& step, const icu::UnicodeString& text) {
        linear_ = text;
        plain_ = text;
        EXPECT_TRUE(step.linear(linear_)) << step.name;
        Plain().Apply(step.plain, plain_);
        Compare(step.name, text);
    }

    void Of(const Pipeline& pipeline, const icu::UnicodeString& text) {
        linear_ = text;
        plain_ = text;
        (CleanText().*pipeline.linear)(linear_);
        (Plain().*pipeline.plain)(plain_);
        Compare(pipeline.name, text);
    }

    int Different() const { return different_; }
    int Changed() const { return changed_; }

private:
    void Compare(const char* what, const icu::UnicodeString& text) {
        constexpr int kShown = 5;
        changed_ += plain_ == text ? 0 : 1;
        if (linear_ == plain_ || ++different_ > kShown)
            return;
        ADD_FAILURE() << what << " of  " << Shown(text) << "\nmakes    " << Shown(linear_) << "\nand not  "
                      << Shown(plain_);
    }

    icu::UnicodeString linear_;
    icu::UnicodeString plain_;
    int different_ = 0;
    int changed_ = 0;
};

icu::UnicodeString Piece(const char16_t* units) {
    return icu::UnicodeString(units);
}

// Texts that the steps search for, one row for each step: whole, in parts, in other cases, and similar texts.
const std::vector<std::vector<icu::UnicodeString>>& Alphabets() {
    static const std::vector<std::vector<icu::UnicodeString>> alphabets = {
        {u"<!--", u"<!-", u"<", u"!", u"-", u"--", u"-->", u"-- >", u"--\r\n>", u"--\u2003>", u">", u" ",
         u"\u0085", u"\u200B", u"\r\n", u"x", Piece(u"\xD83D"), u"\U0001F600"},
        {u"<style",
         u"<STYLE",
         u"<script",
         u"</style",
         u"</style>",
         u"</ScRiPt",
         u"</script>",
         u"<",
         u"</",
         u">",
         u"/",
         u" ",
         u"style",
         u"script",
         u"\uFB06yle",
         u"\uFB05yle",
         u"\u017Ftyle",
         u"\u017Fcript",
         u"</\uFB06yle>",
         u"</\u017Ft",
         u"<s",
         u"t",
         u"yle",
         u"x",
         u"\r\n",
         Piece(u"\xDE00")},
        {u"<p",
         u"<P>",
         u"<pre",
         u"<div",
         u"</div",
         u"<br",
         u"<br/>",
         u"<bloc",
         u"kquote",
         u"\u212Aquote",
         u"</blockquote",
         u"<hr",
         u"<h1",
         u"</h6",
         u"<h7",
         u"<li",
         u"<ul",
         u"</OL",
         u"<tr",
         u"<dd",
         u"<dt",
         u"<d\u0307",
         u"<",
         u">",
         u"/",
         u" ",
         u"x",
         u"\n",
         u"<i",
         u"\u0130",
         u"\u0131"},
        {u"[b",
         u"[/b]",
         u"[",
         u"]",
         u"=",
         u"/",
         u"b",
         u"i",
         u"img",
         u"[IMG]",
         u"[\u0130mg]",
         u"u",
         u"url",
         u"[url=",
         u"*",
         u"[*]",
         u"code",
         u"color",
         u"[/COLOR=",
         u"email",
         u"li\uFB06",
         u"li\uFB05",
         u"list",
         u"quote",
         u"\u017Fize",
         u"size",
         u" ",
         u"x",
         u"]]",
         u"[size=]",
         Piece(u"\xD83D"),
         u"\U0001F600"},
        {u" ",      u" ",        u"  ",   u"    ", u"\t",   u"\t\t",   u"\r",     u"\n",
         u"\r\n",   u"\r\n\r\n", u"\n\n", u"\v",   u"\f",   u"\u0085", u"\u2028", u"\u2029",
         u"\u00A0", u"\u2003",   u"x",    u"y",    u"\x1E", u"\u200A"},
        {u"&",          u"#",        u"&#",         u"&#x",    u"x",      u"X",
         u";",          u";",        u"65",         u"0",      u"3C",     u"ffffffff",
         u"2147483647", u"\u0665",   u"\U0001D7CF", u"\uFF16", u"\u2167", u"&lt;",
         u"&gt",        u"&amp;",    u"amp;",       u"lt;",    u"&nbsp;", u"&TRADE;",
         u"&trade;",    u"&reg;",    u"&copy;",     u"&deg;",  u"&#36;",  u"&#92;",
         u"&#8211;",    u"&#x201c;", u"$",          u"\\",     u"-",      Piece(u"\xD835")},
        {u"\u2026", u"\u2013", u"\u2014", u"\u2018", u"\u2019", u"\u201A", u"\u201C", u"\u201D", u"\u2012",
         u"-", u"--", u".", u"'", u"\"", u" ", u"x", u"\t"},
    };
    return alphabets;
}

class Texts {
public:
    explicit Texts(std::uint32_t seed) : random_(seed) {}

    // Some texts have the pieces of one step, some those of all steps, and some any units between them.
    icu::UnicodeString Next() {
        const std::size_t count = Alphabets().size();
        const std::size_t alphabet = Below(count + 1);
        const std::size_t longest = Below(16) == 0 ? 120 : 18;
        icu::UnicodeString text;
        for (std::size_t left = Below(longest); left > 0; --left) {
            AppendPiece(text, alphabet < count ? alphabet : Below(count));
            if (Below(64) == 0)
                text.append(static_cast<char16_t>(Below(0x10000)));
        }
        return text;
    }

private:
    void AppendPiece(icu::UnicodeString& text, std::size_t alphabet) {
        const std::vector<icu::UnicodeString>& pieces = Alphabets()[alphabet];
        icu::UnicodeString piece = pieces[Below(pieces.size())];
        if (Below(8) == 0)
            piece.toUpper(icu::Locale::getRoot());
        text.append(piece);
    }

    std::size_t Below(std::size_t limit) { return random_() % limit; }

    std::mt19937 random_;
};

// The number of random texts for each test; VEXA_CLEAN_TEXTS in the environment raises it.
int TextCount() {
    constexpr int kTexts = 100'000;
    const char* const wanted = std::getenv("VEXA_CLEAN_TEXTS");
    return wanted == nullptr ? kTexts / kSlowdown : std::atoi(wanted);
}

std::uint32_t Seed() {
    const char* const wanted = std::getenv("VEXA_CLEAN_SEED");
    return wanted == nullptr ? 20240229 : static_cast<std::uint32_t>(std::atoi(wanted));
}

TEST(CleanTextDifferenceTest, EveryStepMakesOfRandomTextsWhatItsExpressionMakes) {
    Texts texts(Seed());
    Comparison steps;
    const int count = TextCount();
    for (int index = 0; index < count; ++index) {
        const icu::UnicodeString text = texts.Next();
        for (const Step& step : kSteps)
            steps.Of(step, text);
    }
    EXPECT_EQ(steps.Different(), 0);
    EXPECT_GT(steps.Changed(), count) << "the texts have too little to clean";
}

TEST(CleanTextDifferenceTest, EveryPipelineMakesOfRandomTextsWhatThePlainOneMakes) {
    Texts texts(Seed() + 1);
    Comparison pipelines;
    const int count = TextCount();
    for (int index = 0; index < count; ++index) {
        const icu::UnicodeString text = texts.Next();
        for (const Pipeline& pipeline : kPipelines)
            pipelines.Of(pipeline, text);
    }
    EXPECT_EQ(pipelines.Different(), 0);
    EXPECT_GT(pipelines.Changed(), 2 * count) << "the texts have too little to clean";
}

// All texts of up to the given number of pieces.
void CompareAll(Comparison& comparison, const Step& step, std::span<const char16_t* const> pieces,
                int longest, const icu::UnicodeString& text) {
    comparison.Of(step, text);
    if (longest == 0)
        return;
    for (const char16_t* const piece : pieces)
        CompareAll(comparison, step, pieces, longest - 1, text + piece);
}

TEST(CleanTextDifferenceTest, EveryStepMakesOfAllShortTextsWhatItsExpressionMakes) {
    struct Row {
        Step step;
        std::vector<const char16_t*> pieces;
        int longest;
    };
    const Row rows[] = {
        {kComments, {u"<!--", u"-", u">", u" ", u"x"}, 7},
        {kComments, {u"<", u"!-", u"--", u">"}, 7},
        {kScripts, {u"<style", u"</style", u"</script", u"<script", u">", u"x"}, 6},
        {kScripts, {u"<", u"</", u"\uFB06yle", u"\u017Ftyle", u">"}, 6},
        {kBlockTags, {u"<", u"p", u">", u" ", u"/", u"hr"}, 6},
        {kBreakTags, {u"<", u"/", u"br", u"h1", u">", u"x"}, 6},
        {kTags, {u"<", u">", u" ", u"x"}, 7},
        {kBBCode, {u"[", u"]", u"=", u"/", u"i", u"mg"}, 6},
        {kLineEdges, {u" ", u"x", u"\r", u"\n", u"\u2028"}, 7},
        {kTextEdges, {u" ", u"x", u"\r", u"\n", u"\u0085"}, 7},
        {kSpaces, {u" ", u"x", u"\n"}, 8},
        {kTabs, {u"\t", u"x", u" "}, 8},
        {kReturns, {u"\r", u"\n", u"x"}, 8},
        {kLineFeeds, {u"\r", u"\n", u"x"}, 8},
        {kLineBreaks, {u"\r", u"\n", u"\r\n", u"x"}, 8},
        {kNumbers, {u"&", u"#", u"x", u"6", u";", u"\u0665"}, 6},
        {kNumbers, {u"&#", u"x", u"00000", u"41", u"1", u";"}, 6},
        {kSymbols, {u"&", u"amp", u"lt", u";", u"&nbsp;"}, 6},
    };
    for (const Row& row : rows) {
        Comparison comparison;
        CompareAll(comparison, row.step, row.pieces, row.longest, {});
        EXPECT_EQ(comparison.Different(), 0) << row.step.name;
        EXPECT_GT(comparison.Changed(), 0) << row.step.name;
    }
}

struct Template {
    Step step;
    const char16_t* text; // with an "@" in place of the character
};

void ComparePutIn(Comparison& comparison, std::span<const Template> templates, UChar32 character) {
    for (const Template& row : templates) {
        icu::UnicodeString text(row.text);
        comparison.Of(row.step, text.findAndReplace(u"@", icu::UnicodeString(character)));
    }
}

// Texts in which a step tests what kind of character it has, with an "@" for that character.
TEST(CleanTextDifferenceTest, CharactersOfAllKindsAreWhatTheEngineTakesThemFor) {
    static constexpr Template kTemplates[] = {
        {kComments, u"<!--x--@>"},
        {kComments, u"<!--@-->"},
        {kTags, u"<@>"},
        {kTags, u"<x@ @>"},
        {kScripts, u"<style@>@</style@>"},
        {kLineEdges, u"x @ x"},
        {kTextEdges, u" @x @"},
        {kNumbers, u"&#@;"},
        {kNumbers, u"&#x4@;"},
        {kSpaces, u"@ @"},
        {kBlockTags, u"<p@>"},
        {kBBCode, u"[url=@]"},
        {kBreakTags, u"<br@>"},
    };
    constexpr UChar32 kBehindTheDigits = 0x20000;
    Comparison comparison;
    for (UChar32 character = 0; character < kBehindTheDigits; character += kSlowdown)
        ComparePutIn(comparison, kTemplates, character);
    EXPECT_EQ(comparison.Different(), 0);
}

// The name whole, without its last letter, and with one letter more.
void CompareNames(Comparison& comparison, std::span<const Step> steps, const icu::UnicodeString& name) {
    const icu::UnicodeString shorter(name, 0, name.length() - 1);
    for (const icu::UnicodeString& written : {name, shorter, name + u"x"}) {
        for (const Step& step : steps) {
            for (const char16_t* const form : {u"<@>", u"</@ x>", u"[@]", u"[/@=x]", u"<@>x</@>"}) {
                icu::UnicodeString text(form);
                comparison.Of(step, text.findAndReplace(u"@", written));
            }
        }
    }
}

TEST(CleanTextDifferenceTest, TheSameNamesAreTagsAsInTheExpressions) {
    static constexpr const char16_t* kNames[] = {
        u"b",      u"blockquote", u"br",    u"code", u"color", u"dd", u"div", u"dl",    u"dt",
        u"email",  u"h1",         u"h2",    u"h3",   u"h4",    u"h5", u"h6",  u"h7",    u"hr",
        u"i",      u"img",        u"li",    u"list", u"ol",    u"p",  u"pre", u"quote", u"size",
        u"script", u"style",      u"table", u"td",   u"tr",    u"u",  u"ul",  u"url",   u"*",
    };
    static constexpr Step kTagSteps[] = {kScripts, kBlockTags, kBreakTags, kBBCode};
    Comparison comparison;
    for (const icu::UnicodeString name : kNames)
        CompareNames(comparison, kTagSteps, name);
    EXPECT_EQ(comparison.Different(), 0);
    EXPECT_GT(comparison.Changed(), 0);
}

bool ChangesWhenFolded(UChar32 character) {
    const icu::UnicodeString whole(character);
    icu::UnicodeString folded(whole);
    return folded.foldCase(U_FOLD_CASE_DEFAULT) != whole;
}

// Every character that folding changes, and all of ASCII, for every letter or two letters of a name.
TEST(CleanTextDifferenceTest, NamesFoldAsInTheEngine) {
    static constexpr Template kTemplates[] = {
        {kScripts, u"<@tyle>x</style>"},
        {kScripts, u"<style>x</@tyle>"},
        {kScripts, u"<@yle>x</@yle>"},
        {kScripts, u"<s@yle>x</style>"},
        {kScripts, u"<sty@e>x</style>"},
        {kScripts, u"<scr@pt>x</script>"},
        {kScripts, u"<script>x</scrip@>"},
        {kScripts, u"<s@ript>x</script>"},
        {kBlockTags, u"<@>"},
        {kBlockTags, u"<@r>"},
        {kBlockTags, u"<h@>"},
        {kBlockTags, u"<bloc@quote>"},
        {kBlockTags, u"<@lockquote>"},
        {kBlockTags, u"<d@v>"},
        {kBlockTags, u"<di@>"},
        {kBlockTags, u"<block@uote>"},
        {kBlockTags, u"<blockqu@te>"},
        {kBreakTags, u"<@r>"},
        {kBreakTags, u"<b@>"},
        {kBreakTags, u"<@1>"},
        {kBreakTags, u"<h@>"},
        {kBreakTags, u"<l@>"},
        {kBreakTags, u"<@l>"},
        {kBreakTags, u"<d@>"},
        {kBreakTags, u"<@>"},
        {kBreakTags, u"<@d>"},
        {kBBCode, u"[@]"},
        {kBBCode, u"[/@=x]"},
        {kBBCode, u"[@mg]"},
        {kBBCode, u"[li@]"},
        {kBBCode, u"[lis@]"},
        {kBBCode, u"[l@t]"},
        {kBBCode, u"[@ize]"},
        {kBBCode, u"[si@e]"},
        {kBBCode, u"[em@l]"},
        {kBBCode, u"[@uote]"},
        {kBBCode, u"[@rl]"},
        {kBBCode, u"[im@]"},
        {kBBCode, u"[co@or]"},
        {kBBCode, u"[u@"},
        {kBBCode, u"[b@]"},
    };
    constexpr UChar32 kBehindAscii = 0x80;
    constexpr UChar32 kAfterTheLast = 0x110000;
    Comparison comparison;
    for (UChar32 character = 0; character < kAfterTheLast; ++character) {
        if (character < kBehindAscii || ChangesWhenFolded(character))
            ComparePutIn(comparison, kTemplates, character);
    }
    EXPECT_EQ(comparison.Different(), 0);
    EXPECT_GT(comparison.Changed(), 0);
}

} // namespace

} // namespace vexaTransferLib
