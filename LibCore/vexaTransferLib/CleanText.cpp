// SPDX-License-Identifier: MIT
#include <vexaTransferLib/CleanText.h>

#include <vexaTransferLib/cleaner/Steps.h>
#include <vexaTransferLib/text/ContractSources.h>

#include <common/dbc.h>

#include <cstdint>
#include <cstdlib>
#include <new>
#include <utility>

namespace vexaTransferLib {

namespace {

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

struct Replaced {
    icu::UnicodeString text; // bogus when ICU had no memory for it
    UErrorCode status;
};

// The text with its matches replaced; after a failure, with those replaced that came before it. ICU's replaceAll
// would not do: it takes a failed search for the end of the matches and reports no error.
Replaced ReplaceMatches(icu::RegexMatcher& matcher, const icu::UnicodeString& text,
                        const icu::UnicodeString& replacement) {
    Replaced replaced{icu::UnicodeString(), U_ZERO_ERROR};
    std::int32_t copied = 0;
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
        copied = matcher.end(replaced.status);
    }
    replaced.text.append(text, copied, text.length() - copied);
    if (replaced.text.isBogus())
        replaced.status = U_MEMORY_ALLOCATION_ERROR;
    return replaced;
}

// A step fails only when there is no memory; the text is then as the steps before left it.
void EnsureDone(bool done, const char* message, int line) {
    dbc::Ensure(done, text::kCleanTextSource, message, line);
}

void EnsureMemory(bool done) {
    if (!done)
        throw std::bad_alloc();
}

} // namespace

CleanText::CleanText() = default;

void CleanText::CleanWebTextForTova(icu::UnicodeString& text) {
    HTMLToPlainText(text);
    StripBBCode(text);
    CleanPlainTextForTova(text);
}

void CleanText::HTMLToPlainText(icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    EnsureDone(cleaner::RemoveComments(text), kHtmlNotConverted, kCommentsLine);
    EnsureDone(cleaner::RemoveStylesAndScripts(text), kHtmlNotConverted, kElementsLine);
    EnsureDone(cleaner::ReplaceTabs(text), kTabsNotReplaced, kHtmlTabsLine);
    EnsureDone(cleaner::ReplaceBlockTags(text), kHtmlNotConverted, kBlockTagsLine);
    EnsureDone(cleaner::ReplaceBreakTags(text), kHtmlNotConverted, kBreakTagsLine);
    EnsureDone(cleaner::RemoveTags(text), kHtmlNotConverted, kTagsLine);
    // The references come after the tags, because an escaped tag is text.
    ReplaceHTMLSymbols(text);
    ConvertToDosLineBreaks(text);
    EnsureDone(cleaner::TrimLines(text), kLinesNotTrimmed, kHtmlLinesLine);
    EnsureDone(cleaner::CollapseSpaces(text), kSpacesNotRemoved, kHtmlSpacesLine);
    EnsureDone(cleaner::CollapseLineBreaks(text), kLineBreaksNotRemoved, kLineBreaksLine);
}

void CleanText::StripBBCode(icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    EnsureDone(cleaner::RemoveBBCodeTags(text), kBBCodeNotReplaced, kBBCodeLine);
}

void CleanText::CleanPlainTextForTova(icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    EnsureDone(cleaner::TrimLines(text), kLinesNotTrimmed, kLinesLine);
    EnsureMemory(cleaner::ReplaceEllipses(text));
    EnsureDone(cleaner::StraightenSingleQuotes(text), kSingleQuotesNotReplaced, kSingleQuotesLine);
    EnsureDone(cleaner::StraightenDoubleQuotes(text), kDoubleQuotesNotReplaced, kDoubleQuotesLine);
    EnsureMemory(cleaner::ReplaceDashes(text));
    EnsureDone(cleaner::ReplaceTabs(text), kTabsNotReplaced, kTabsLine);
    EnsureDone(cleaner::CollapseSpaces(text), kSpacesNotRemoved, kSpacesLine);
    EnsureDone(cleaner::TrimText(text), kTextNotTrimmed, kTextLine);
}

void CleanText::ConvertToDosLineBreaks(icu::UnicodeString& text) {
    EnsureDone(cleaner::RemoveLoneCarriageReturns(text), kCarriageReturnsNotRemoved, kCarriageReturnsLine);
    EnsureDone(cleaner::CompleteLineFeeds(text), kCarriageReturnsNotInserted, kLineFeedsLine);
}

void CleanText::ReplaceHTMLSymbols(icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    ReplaceNumericCharacterReferences(text);
    EnsureMemory(cleaner::ReplaceNamedReferences(text));
}

void CleanText::ReplaceNumericCharacterReferences(icu::UnicodeString& text) {
    EnsureDone(cleaner::ReplaceNumericReferences(text), kSymbolsNotReplaced, kNumericReferencesLine);
}

icu::UnicodeString CleanText::GetCharReplacementString(int codePoint) const {
    return cleaner::CharacterFor(codePoint);
}

void CleanText::RegexReplaceAll(const boost::scoped_ptr<icu::RegexMatcher>& matcher, icu::UnicodeString& text,
                                const icu::UnicodeString& replacement, const char* message) {
    if (matcher.get() == nullptr) {
        dbc::ReportFailure(text::kCleanTextSource, kNoMatcherLine);
        std::abort();
    }
    Replaced replaced = ReplaceMatches(*matcher, text, replacement);
    if (!replaced.text.isBogus())
        text = std::move(replaced.text);
    dbc::Ensure(U_SUCCESS(replaced.status), text::kCleanTextSource, message, kReplaceLine);
}

} // namespace vexaTransferLib
