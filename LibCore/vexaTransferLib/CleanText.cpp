// SPDX-License-Identifier: MIT
#include <vexaTransferLib/CleanText.h>

#include <vexaTransferLib/text/ContractSources.h>

#include <common/dbc.h>

#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <new>
#include <utility>

namespace vexaTransferLib {

namespace {

constexpr char16_t kNothing[] = u"";
constexpr char16_t kSpace[] = u" ";
constexpr char16_t kLineBreak[] = u"\r\n";
constexpr char16_t kParagraphBreak[] = u"\r\n\r\n";

constexpr char16_t kEnDash[] = u"\u2013";
constexpr char16_t kEmDash[] = u"\u2014";
constexpr char16_t kEllipsis[] = u"\u2026";
constexpr char16_t kPlainEnDash[] = u"-";
constexpr char16_t kPlainEmDash[] = u"--";
constexpr char16_t kPlainEllipsis[] = u"...";
constexpr char16_t kPlainSingleQuote[] = u"'";
constexpr char16_t kPlainDoubleQuote[] = u"\"";

constexpr char kHtmlNotConverted[] =
    "The HTML could not be converted to plain text because a replace operation failed.";
constexpr char kSymbolsNotReplaced[] =
    "The HTML symbols could not be replaced because a replace operation failed.";
constexpr char kBBCodeNotReplaced[] = "Unable to replace the BBCode inside a string.";
constexpr char kCarriageReturnsNotRemoved[] = "Unable to remove extra carriage returns.";
constexpr char kCarriageReturnsNotInserted[] = "Unable to insert carriage returns.";
constexpr char kTabsNotReplaced[] = "Unable to replace tab characters.";
constexpr char kLinesNotTrimmed[] = "Unable to remove leading and trailing spaces.";
constexpr char kSpacesNotRemoved[] = "Unable to remove redundant spaces.";
constexpr char kLineBreaksNotRemoved[] = "Unable to remove extra line breaks.";
constexpr char kSingleQuotesNotReplaced[] = "Unable to replace single quotes.";
constexpr char kDoubleQuotesNotReplaced[] = "Unable to replace double quotes.";
constexpr char kTextNotTrimmed[] = "Unable to trim spaces.";

// Places in the table of patterns.
enum PatternIndex : std::size_t {
    kNumericReference,
    kBBCodeTag,
    kLineEdgeSpaces,
    kTextEdgeSpaces,
    kSpaceRun,
    kTabRun,
    kSingleQuote,
    kDoubleQuote,
    kLoneLineFeed,
    kLoneCarriageReturn,
    kLineBreakRun,
    kHtmlComment,
    kHtmlScript,
    kHtmlBlockTag,
    kHtmlBreakTag,
    kHtmlTag
};

constexpr std::uint32_t kLines = UREGEX_MULTILINE | UREGEX_DOTALL;
constexpr std::uint32_t kNames = kLines | UREGEX_CASE_INSENSITIVE;

// Line edges and text edges differ in the flags only.
constexpr char16_t kEdgeSpaces[] = u"(^ +)|( +$)";

struct Pattern {
    const char16_t* expression;
    std::uint32_t flags;
    const char* message;
};

// Element names are prefixes: "<param>" opens a block as "<p>" does.
constexpr Pattern kPatterns[] = {
    {uR"(&#(([\d]{1,10})|([xX][\da-fA-F]{1,8}));)", kLines,
     "Unable to create a regex pattern for HTML numeric character references."},
    {uR"(\[[/]?(b|i|u|\*|code|color|email|img|list|quote|size|url)(=[^\]]+\]|\]))", kNames,
     "Unable to create a regex pattern to remove BBCode."},
    {kEdgeSpaces, kLines, "Unable to create a regex pattern to remove extra spaces."},
    {kEdgeSpaces, UREGEX_DOTALL, "Unable to create a regex pattern to trim spaces."},
    {u" {2,}", kLines, "Unable to create a regex pattern to remove redundant spaces."},
    {uR"([\t]+)", kLines, "Unable to create a regex pattern to replace tab characters."},
    {u"[\u2018\u2019]", kLines, "Unable to create a regex pattern to replace single quotes."},
    {u"[\u201C\u201D]", kLines, "Unable to create a regex pattern to replace double quotes."},
    {uR"((?<!\r)\n)", kLines, "Unable to create a regex pattern to insert carriage returns."},
    {uR"(\r(?!\n))", kLines, "Unable to create a regex pattern to remove carriage returns."},
    {uR"((\r\n){2,})", kLines, "Unable to create a regex pattern to remove line breaks."},
    {uR"(<!--.+?--[\s]*>)", kLines, "Unable to create a regex pattern for HTML comments."},
    {uR"(<(style|script)[^\w>]*[^>]*>.*?</\1[^\w>]*[^>]*>)", kNames,
     "Unable to create a regex pattern for HTML scripts."},
    {uR"(<(blockquote|div|hr|p|pre)[^\w>]*[^>]*>)", kNames,
     "Unable to create a regex pattern for HTML block tags."},
    {uR"(<(/blockquote|br|dd|dl|dt|/div|h1|/h1|h2|/h2|h3|/h3|h4|/h4|h5|/h5|h6|/h6)"
     uR"(|li|ol|/ol|/pre|tr|ul|/ul)[^\w>]*[^>]*>)",
     kNames, "Unable to create a regex pattern for HTML break tags."},
    {uR"(<[^\s<>]*[^<>]*>)", kLines, "Unable to create a regex pattern for HTML tags."},
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
    {0x2013, kPlainEnDash},      {0x2014, kPlainEmDash},      {0x2018, kPlainSingleQuote},
    {0x2019, kPlainSingleQuote}, {0x201C, kPlainDoubleQuote}, {0x201D, kPlainDoubleQuote},
    {0x2026, kPlainEllipsis},
};

constexpr int kNoCodePoint = -1;

bool IsShownAsIs(int codePoint) {
    const bool printableAscii = codePoint >= 0x20 && codePoint <= 0x7E;
    const bool printableLatin1 = codePoint >= 0xA0 && codePoint <= 0xFF;
    return printableAscii || printableLatin1;
}

// -1 for everything that is no ASCII digit.
int DigitValue(char16_t unit) {
    if (unit >= u'0' && unit <= u'9')
        return unit - u'0';
    if (unit >= u'a' && unit <= u'f')
        return unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'F')
        return unit - u'A' + 10;
    return -1;
}

// Reads the number up to the first unit that is no ASCII digit: the engine takes the digits of all scripts. A
// number that does not fit an int is no code point.
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

struct Replaced {
    icu::UnicodeString text; // bogus when memory ran out
    UErrorCode status;
};

// The text with its matches replaced; after a failure, with those that came before it. This is not the
// engine's replaceAll, which passes a failed match off as the end of the matches.
Replaced ReplaceMatches(icu::RegexMatcher& matcher, const icu::UnicodeString& text,
                        const icu::UnicodeString& replacement) {
    Replaced replaced{icu::UnicodeString(), U_ZERO_ERROR};
    std::int32_t taken = 0;
    matcher.reset(text);
    while (matcher.find(replaced.status)) {
        const std::int32_t length = replaced.text.length();
        matcher.appendReplacement(replaced.text, replacement, replaced.status);
        if (replaced.text.isBogus())
            break;
        if (U_FAILURE(replaced.status)) {
            replaced.text.truncate(length);
            break;
        }
        taken = matcher.end(replaced.status);
    }
    replaced.text.append(text, taken, text.length() - taken);
    if (replaced.text.isBogus())
        replaced.status = U_MEMORY_ALLOCATION_ERROR;
    return replaced;
}

// Builds a new string, since replacing in place moves the rest of the text with every change of length.
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
    if (result.isBogus())
        throw std::bad_alloc();
    text = std::move(result);
}

} // namespace

CleanText::CleanText() {
    static_assert(std::size(kPatterns) == kMatcherCount);
    UErrorCode status = U_ZERO_ERROR;
    for (std::size_t index = 0; index < kMatcherCount; ++index) {
        const Pattern& pattern = kPatterns[index];
        matchers_[index].reset(
            new icu::RegexMatcher(icu::UnicodeString(pattern.expression), pattern.flags, status));
        // ICU's operator new gives null when memory runs out.
        dbc::Ensure(matchers_[index].get() != nullptr && U_SUCCESS(status), text::kCleanTextSource,
                    pattern.message);
    }
}

CleanText::~CleanText() = default;

void CleanText::CleanWebTextForTova(icu::UnicodeString& text) {
    HTMLToPlainText(text);
    StripBBCode(text);
    CleanPlainTextForTova(text);
}

void CleanText::HTMLToPlainText(icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    RegexReplaceAll(matchers_[kHtmlComment], text, kNothing, kHtmlNotConverted);
    RegexReplaceAll(matchers_[kHtmlScript], text, kNothing, kHtmlNotConverted);
    RegexReplaceAll(matchers_[kTabRun], text, kSpace, kTabsNotReplaced);
    RegexReplaceAll(matchers_[kHtmlBlockTag], text, kParagraphBreak, kHtmlNotConverted);
    RegexReplaceAll(matchers_[kHtmlBreakTag], text, kLineBreak, kHtmlNotConverted);
    RegexReplaceAll(matchers_[kHtmlTag], text, kNothing, kHtmlNotConverted);
    // After the tags: an escaped tag is text.
    ReplaceHTMLSymbols(text);
    ConvertToDosLineBreaks(text);
    RegexReplaceAll(matchers_[kLineEdgeSpaces], text, kNothing, kLinesNotTrimmed);
    RegexReplaceAll(matchers_[kSpaceRun], text, kSpace, kSpacesNotRemoved);
    RegexReplaceAll(matchers_[kLineBreakRun], text, kParagraphBreak, kLineBreaksNotRemoved);
}

void CleanText::StripBBCode(icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    Replaced replaced = ReplaceMatches(*matchers_[kBBCodeTag], text, kNothing);
    dbc::Ensure(U_SUCCESS(replaced.status), text::kCleanTextSource, kBBCodeNotReplaced);
    text = std::move(replaced.text);
}

void CleanText::CleanPlainTextForTova(icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    RegexReplaceAll(matchers_[kLineEdgeSpaces], text, kNothing, kLinesNotTrimmed);
    ReplaceLiterally(text, kEllipsis, kPlainEllipsis);
    RegexReplaceAll(matchers_[kSingleQuote], text, kPlainSingleQuote, kSingleQuotesNotReplaced);
    RegexReplaceAll(matchers_[kDoubleQuote], text, kPlainDoubleQuote, kDoubleQuotesNotReplaced);
    ReplaceLiterally(text, kEnDash, kPlainEnDash);
    ReplaceLiterally(text, kEmDash, kPlainEmDash);
    RegexReplaceAll(matchers_[kTabRun], text, kSpace, kTabsNotReplaced);
    RegexReplaceAll(matchers_[kSpaceRun], text, kSpace, kSpacesNotRemoved);
    RegexReplaceAll(matchers_[kTextEdgeSpaces], text, kNothing, kTextNotTrimmed);
}

void CleanText::ConvertToDosLineBreaks(icu::UnicodeString& text) {
    RegexReplaceAll(matchers_[kLoneCarriageReturn], text, kNothing, kCarriageReturnsNotRemoved);
    RegexReplaceAll(matchers_[kLoneLineFeed], text, kLineBreak, kCarriageReturnsNotInserted);
}

void CleanText::ReplaceHTMLSymbols(icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    ReplaceNumericCharacterReferences(text);
    for (const NamedSymbol& symbol : kNamedSymbols)
        ReplaceLiterally(text, symbol.reference, symbol.character);
}

void CleanText::ReplaceNumericCharacterReferences(icu::UnicodeString& text) {
    icu::RegexMatcher& matcher = *matchers_[kNumericReference];
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString result;
    std::int32_t taken = 0;
    matcher.reset(text);
    while (matcher.find(status)) {
        // A warning stays in the status here: the group is not zero-terminated.
        const icu::UnicodeString reference = matcher.group(1, status);
        result.append(text, taken, matcher.start(status) - taken);
        // Appended as it is: in a replacement of the engine "$" and the backslash are no characters.
        result.append(GetCharReplacementString(ParseCodePoint(reference)));
        taken = matcher.end(status);
    }
    result.append(text, taken, text.length() - taken);
    dbc::Ensure(U_SUCCESS(status) && !result.isBogus(), text::kCleanTextSource, kSymbolsNotReplaced);
    text = std::move(result);
}

icu::UnicodeString CleanText::GetCharReplacementString(int codePoint) const {
    if (IsShownAsIs(codePoint))
        return icu::UnicodeString(static_cast<char16_t>(codePoint));
    for (const Substitute& substitute : kSubstitutes) {
        if (substitute.codePoint == codePoint)
            return icu::UnicodeString(substitute.text);
    }
    return icu::UnicodeString();
}

void CleanText::RegexReplaceAll(const boost::scoped_ptr<icu::RegexMatcher>& matcher, icu::UnicodeString& text,
                                const icu::UnicodeString& replacement, const char* message) {
    if (matcher.get() == nullptr) {
        dbc::ReportFailure(text::kCleanTextSource, __LINE__);
        std::abort();
    }
    Replaced replaced = ReplaceMatches(*matcher, text, replacement);
    if (!replaced.text.isBogus())
        text = std::move(replaced.text);
    dbc::Ensure(U_SUCCESS(replaced.status), text::kCleanTextSource, message);
}

} // namespace vexaTransferLib
