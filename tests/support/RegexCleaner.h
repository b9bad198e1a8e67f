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

/// The cleaner as it is defined: it runs one regular expression after the other. The library's linear steps
/// must give the same results. It is slow on any text, and takes quadratic time or worse on some.
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
