// SPDX-License-Identifier: MIT
#include "support/RegexCleaner.h"

#include <unicode/uregex.h>

#include <cstdint>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <utility>

namespace vexaTransferLib::testing_support {

namespace {

constexpr char16_t kNothing[] = u"";
constexpr char16_t kSpace[] = u" ";
constexpr char16_t kLineBreak[] = u"\r\n";
constexpr char16_t kParagraphBreak[] = u"\r\n\r\n";

// The regular expression of the text that a step replaces, and the replacement. The library's steps scan the
// text instead, because the engine needs quadratic time on some texts and gives up on others.
struct Pattern {
    const char16_t* expression;
    std::uint32_t flags;
    const char16_t* replacement;
};

constexpr std::uint32_t kLineFlags = UREGEX_MULTILINE | UREGEX_DOTALL;
constexpr std::uint32_t kNameFlags = kLineFlags | UREGEX_CASE_INSENSITIVE;

// The spaces at the edges of lines and those at the edges of the text differ in the flags only.
constexpr char16_t kEdgeSpaces[] = u"(^ +)|( +$)";

// In the order of the enumeration. Each numeric reference has a replacement of its own. Element names are
// prefixes: "<param>" opens a block as "<p>" does.
constexpr Pattern kPatterns[] = {
    {uR"(&#(([\d]{1,10})|([xX][\da-fA-F]{1,8}));)", kLineFlags, nullptr},
    {uR"(\[[/]?(b|i|u|\*|code|color|email|img|list|quote|size|url)(=[^\]]+\]|\]))", kNameFlags, kNothing},
    {kEdgeSpaces, kLineFlags, kNothing},
    {kEdgeSpaces, UREGEX_DOTALL, kNothing},
    {u" {2,}", kLineFlags, kSpace},
    {uR"([\t]+)", kLineFlags, kSpace},
    {u"[\u2018\u2019]", kLineFlags, u"'"},
    {u"[\u201C\u201D]", kLineFlags, u"\""},
    {uR"((?<!\r)\n)", kLineFlags, kLineBreak},
    {uR"(\r(?!\n))", kLineFlags, kNothing},
    {uR"((\r\n){2,})", kLineFlags, kParagraphBreak},
    {uR"(<!--.+?--[\s]*>)", kLineFlags, kNothing},
    {uR"(<(style|script)[^\w>]*[^>]*>.*?</\1[^\w>]*[^>]*>)", kNameFlags, kNothing},
    {uR"(<(blockquote|div|hr|p|pre)[^\w>]*[^>]*>)", kNameFlags, kParagraphBreak},
    {uR"(<(/blockquote|br|dd|dl|dt|/div|h1|/h1|h2|/h2|h3|/h3|h4|/h4|h5|/h5|h6|/h6)"
     uR"(|li|ol|/ol|/pre|tr|ul|/ul)[^\w>]*[^>]*>)",
     kNameFlags, kLineBreak},
    {uR"(<[^\s<>]*[^<>]*>)", kLineFlags, kNothing},
};

struct NamedSymbol {
    const char16_t* reference;
    const char16_t* character;
};

// In the order of replacement; "&amp;" comes last, so that "&amp;lt;" gives "&lt;".
constexpr NamedSymbol kNamedSymbols[] = {
    {u"&trade;", u"\u2122"}, {u"&reg;", u"\u00AE"}, {u"&copy;", u"\u00A9"}, {u"&deg;", u"\u00B0"},
    {u"&nbsp;", kSpace},     {u"&lt;", u"<"},       {u"&gt;", u">"},        {u"&amp;", u"&"},
};

struct Substitute {
    int codePoint;
    const char16_t* text;
};

constexpr Substitute kSubstitutes[] = {
    {0x2013, u"-"},  {0x2014, u"--"}, {0x2018, u"'"},   {0x2019, u"'"},
    {0x201C, u"\""}, {0x201D, u"\""}, {0x2026, u"..."},
};

constexpr int kNoCodePoint = -1;

bool IsShownAsIs(int codePoint) {
    const bool printableAscii = codePoint >= 0x20 && codePoint <= 0x7E;
    const bool printableLatin1 = codePoint >= 0xA0 && codePoint <= 0xFF;
    return printableAscii || printableLatin1;
}

icu::UnicodeString ReplacementFor(int codePoint) {
    if (IsShownAsIs(codePoint))
        return icu::UnicodeString(static_cast<char16_t>(codePoint));
    for (const Substitute& substitute : kSubstitutes) {
        if (substitute.codePoint == codePoint)
            return icu::UnicodeString(substitute.text);
    }
    return icu::UnicodeString();
}

// -1 for any unit that is not an ASCII digit.
int DigitValue(char16_t unit) {
    if (unit >= u'0' && unit <= u'9')
        return unit - u'0';
    if (unit >= u'a' && unit <= u'f')
        return unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'F')
        return unit - u'A' + 10;
    return -1;
}

// Reads the number up to the first unit that is not an ASCII digit, because "\d" matches the digits of all scripts. A
// number that does not fit into an int is no code point.
int ParseCodePoint(const icu::UnicodeString& reference) {
    const bool hexadecimal = reference.startsWith(u"x", 1) || reference.startsWith(u"X", 1);
    const std::int64_t base = hexadecimal ? 16 : 10;
    const std::int32_t first = hexadecimal ? 1 : 0;
    std::int64_t number = 0;
    std::int32_t index = first;
    for (; index < reference.length(); ++index) {
        const int digit = DigitValue(reference[index]);
        if (digit < 0)
            break;
        number = number * base + digit;
    }
    if (index == first || number > std::numeric_limits<int>::max())
        return kNoCodePoint;
    return static_cast<int>(number);
}

void Ensure(bool held) {
    if (!held)
        throw std::runtime_error("The regular expression engine gave up.");
}

void ReplaceMatches(icu::RegexMatcher& matcher, icu::UnicodeString& text,
                    const icu::UnicodeString& replacement) {
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString result;
    std::int32_t taken = 0;
    matcher.reset(text);
    while (matcher.find(status)) {
        matcher.appendReplacement(result, replacement, status);
        taken = matcher.end(status);
    }
    result.append(text, taken, text.length() - taken);
    Ensure(U_SUCCESS(status) && !result.isBogus());
    text = std::move(result);
}

void ReplaceNumbers(icu::RegexMatcher& matcher, icu::UnicodeString& text) {
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString result;
    std::int32_t taken = 0;
    matcher.reset(text);
    while (matcher.find(status)) {
        const icu::UnicodeString reference = matcher.group(1, status);
        result.append(text, taken, matcher.start(status) - taken);
        result.append(ReplacementFor(ParseCodePoint(reference)));
        taken = matcher.end(status);
    }
    result.append(text, taken, text.length() - taken);
    Ensure(U_SUCCESS(status) && !result.isBogus());
    text = std::move(result);
}

void ReplaceLiterally(icu::UnicodeString& text, const icu::UnicodeString& from,
                      const icu::UnicodeString& to) {
    std::int32_t found = text.indexOf(from);
    if (found < 0)
        return;
    icu::UnicodeString result;
    std::int32_t taken = 0;
    for (; found >= 0; found = text.indexOf(from, taken)) {
        result.append(text, taken, found - taken).append(to);
        taken = found + from.length();
    }
    result.append(text, taken, text.length() - taken);
    text = std::move(result);
}

} // namespace

RegexCleaner::RegexCleaner() {
    static_assert(std::size(kPatterns) == static_cast<std::size_t>(PlainStep::kNamedSymbols));
    UErrorCode status = U_ZERO_ERROR;
    for (const Pattern& pattern : kPatterns) {
        matchers_.push_back(std::make_unique<icu::RegexMatcher>(icu::UnicodeString(pattern.expression),
                                                                pattern.flags, status));
        if (U_FAILURE(status))
            throw std::runtime_error("A regular expression could not be built.");
    }
}

void RegexCleaner::Apply(PlainStep step, icu::UnicodeString& text) {
    const auto index = static_cast<std::size_t>(step);
    if (step == PlainStep::kNamedSymbols) {
        for (const NamedSymbol& symbol : kNamedSymbols)
            ReplaceLiterally(text, symbol.reference, symbol.character);
    } else if (step == PlainStep::kNumericReferences) {
        ReplaceNumbers(*matchers_[index], text);
    } else {
        ReplaceMatches(*matchers_[index], text, kPatterns[index].replacement);
    }
}

void RegexCleaner::CleanWebTextForTova(icu::UnicodeString& text) {
    HTMLToPlainText(text);
    StripBBCode(text);
    CleanPlainTextForTova(text);
}

void RegexCleaner::HTMLToPlainText(icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    Apply(PlainStep::kHtmlComments, text);
    Apply(PlainStep::kHtmlScripts, text);
    Apply(PlainStep::kTabRuns, text);
    Apply(PlainStep::kHtmlBlockTags, text);
    Apply(PlainStep::kHtmlBreakTags, text);
    Apply(PlainStep::kHtmlTags, text);
    ReplaceHTMLSymbols(text);
    ConvertToDosLineBreaks(text);
    Apply(PlainStep::kLineEdgeSpaces, text);
    Apply(PlainStep::kSpaceRuns, text);
    Apply(PlainStep::kLineBreakRuns, text);
}

void RegexCleaner::StripBBCode(icu::UnicodeString& text) {
    if (!text.isEmpty())
        Apply(PlainStep::kBBCodeTags, text);
}

void RegexCleaner::CleanPlainTextForTova(icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    Apply(PlainStep::kLineEdgeSpaces, text);
    ReplaceLiterally(text, u"\u2026", u"...");
    Apply(PlainStep::kSingleQuotes, text);
    Apply(PlainStep::kDoubleQuotes, text);
    ReplaceLiterally(text, u"\u2013", u"-");
    ReplaceLiterally(text, u"\u2014", u"--");
    Apply(PlainStep::kTabRuns, text);
    Apply(PlainStep::kSpaceRuns, text);
    Apply(PlainStep::kTextEdgeSpaces, text);
}

void RegexCleaner::ConvertToDosLineBreaks(icu::UnicodeString& text) {
    Apply(PlainStep::kLoneCarriageReturns, text);
    Apply(PlainStep::kLoneLineFeeds, text);
}

void RegexCleaner::ReplaceHTMLSymbols(icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    ReplaceNumericCharacterReferences(text);
    Apply(PlainStep::kNamedSymbols, text);
}

void RegexCleaner::ReplaceNumericCharacterReferences(icu::UnicodeString& text) {
    Apply(PlainStep::kNumericReferences, text);
}

} // namespace vexaTransferLib::testing_support
