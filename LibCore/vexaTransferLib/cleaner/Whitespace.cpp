// SPDX-License-Identifier: MIT
#include <vexaTransferLib/cleaner/Steps.h>

#include <vexaTransferLib/cleaner/Replacements.h>
#include <vexaTransferLib/cleaner/Scanning.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace vexaTransferLib::cleaner {

namespace {

constexpr std::u16string_view kSpace = u" ";

// The line ends of the regular expression engine's "^" and "$".
bool IsLineEnd(char16_t unit) {
    return (unit >= u'\n' && unit <= u'\r') || unit == u'\u0085' || unit == u'\u2028' || unit == u'\u2029';
}

std::size_t EndOfRun(std::u16string_view text, std::size_t begin) {
    return std::min(text.find_first_not_of(text[begin], begin), text.size());
}

bool StandsAtLineEdge(std::u16string_view text, std::size_t begin, std::size_t end) {
    return begin == 0 || end == text.size() || IsLineEnd(text[begin - 1]) || IsLineEnd(text[end]);
}

// Where the spaces end that are the last but for one line end. A CR LF is one.
std::size_t EndOfLastSpaces(std::u16string_view text) {
    if (text.ends_with(kLineBreak))
        return text.size() - kLineBreak.size();
    return text.size() - (!text.empty() && IsLineEnd(text.back()) ? 1 : 0);
}

} // namespace

bool ReplaceTabs(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    std::size_t end = 0;
    for (std::size_t begin = 0; (begin = units.find(u'\t', end)) != kNpos;) {
        end = EndOfRun(units, begin);
        replacements.Replace(begin, end, kSpace);
    }
    return replacements.Finish();
}

bool CollapseSpaces(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    std::size_t end = 0;
    for (std::size_t begin = 0; (begin = units.find(u' ', end)) != kNpos;) {
        end = EndOfRun(units, begin);
        if (end - begin > 1)
            replacements.Replace(begin, end, kSpace);
    }
    return replacements.Finish();
}

bool TrimLines(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    std::size_t end = 0;
    for (std::size_t begin = 0; (begin = units.find(u' ', end)) != kNpos;) {
        end = EndOfRun(units, begin);
        if (StandsAtLineEdge(units, begin, end))
            replacements.Replace(begin, end, {});
    }
    return replacements.Finish();
}

bool TrimText(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    const std::size_t first = std::min(units.find_first_not_of(u' '), units.size());
    if (first > 0)
        replacements.Replace(0, first, {});
    const std::size_t end = EndOfLastSpaces(units);
    std::size_t begin = end;
    while (begin > first && units[begin - 1] == u' ')
        --begin;
    if (begin < end)
        replacements.Replace(begin, end, {});
    return replacements.Finish();
}

bool RemoveLoneCarriageReturns(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    for (std::size_t at = units.find(u'\r'); at != kNpos; at = units.find(u'\r', at + 1)) {
        if (!units.substr(at).starts_with(kLineBreak))
            replacements.Replace(at, at + 1, {});
    }
    return replacements.Finish();
}

bool CompleteLineFeeds(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    for (std::size_t at = units.find(u'\n'); at != kNpos; at = units.find(u'\n', at + 1)) {
        if (at == 0 || units[at - 1] != u'\r')
            replacements.Replace(at, at + 1, kLineBreak);
    }
    return replacements.Finish();
}

bool CollapseLineBreaks(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    std::size_t end = 0;
    for (std::size_t begin = 0; (begin = units.find(kLineBreak, end)) != kNpos;) {
        end = begin;
        while (units.substr(end).starts_with(kLineBreak))
            end += kLineBreak.size();
        if (end - begin > kParagraphBreak.size())
            replacements.Replace(begin, end, kParagraphBreak);
    }
    return replacements.Finish();
}

} // namespace vexaTransferLib::cleaner
