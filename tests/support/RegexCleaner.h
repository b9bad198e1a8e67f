// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/regex.h>
#include <unicode/unistr.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace vexaTransferLib::testing_support {

/// The steps of the cleaning: one for each regular expression, then one for the named references.
enum class PlainStep : std::size_t {
    kNumericReferences,
    kBBCodeTags,
    kLineEdgeSpaces,
    kTextEdgeSpaces,
    kSpaceRuns,
    kTabRuns,
    kSingleQuotes,
    kDoubleQuotes,
    kLoneLineFeeds,
    kLoneCarriageReturns,
    kLineBreakRuns,
    kHtmlComments,
    kHtmlScripts,
    kHtmlBlockTags,
    kHtmlBreakTags,
    kHtmlTags,
    kNamedSymbols,
};

/// The cleaner as it is defined: one regular expression after the other. Slow on any text and quadratic or
/// worse on some; what the library's linear steps must agree with.
///
/// Throws std::runtime_error when the engine gives up on a text.
class RegexCleaner {
public:
    RegexCleaner();

    void Apply(PlainStep step, icu::UnicodeString& text);

    void CleanWebTextForTova(icu::UnicodeString& text);
    void HTMLToPlainText(icu::UnicodeString& text);
    void StripBBCode(icu::UnicodeString& text);
    void CleanPlainTextForTova(icu::UnicodeString& text);
    void ConvertToDosLineBreaks(icu::UnicodeString& text);
    void ReplaceHTMLSymbols(icu::UnicodeString& text);
    void ReplaceNumericCharacterReferences(icu::UnicodeString& text);

private:
    std::vector<std::unique_ptr<icu::RegexMatcher>> matchers_;
};

} // namespace vexaTransferLib::testing_support
