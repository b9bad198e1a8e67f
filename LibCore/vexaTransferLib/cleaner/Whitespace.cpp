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

// The characters that end a line for "^" and "$" in ICU's regular expressions.
bool IsLineEnd(char16_t unit) {
    return (unit >= u'\n' && unit <= u'\r') || unit == u'\u0085' || unit == u'\u2028' || unit == u'\u2029';
}

std::size_t EndOfRun(std::u16string_view text, std::size_t start) {
    return std::min(text.find_first_not_of(text[start], start), text.size());
}

bool TouchesLineEdge(std::u16string_view text, std::size_t start, std::size_t end) {
    return start == 0 || end == text.size() || IsLineEnd(text[start - 1]) || IsLineEnd(text[end]);
}

// The position before the line end that ends the text, or the end of the text. CR LF is one line end.
std::size_t EndOfLastLine(std::u16string_view text) {
    if (text.ends_with(kLineBreak))
        return text.size() - kLineBreak.size();
    return text.size() - (!text.empty() && IsLineEnd(text.back()) ? 1 : 0);
}

} // namespace

bool ReplaceTabs(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    std::size_t end = 0;
    for (std::size_t start = 0; (start = units.find(u'\t', end)) != kNpos;) {
        end = EndOfRun(units, start);
        replacements.Replace(start, end, kSpace);
    }
    return replacements.Finish();
}

bool CollapseSpaces(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    std::size_t end = 0;
    for (std::size_t start = 0; (start = units.find(u' ', end)) != kNpos;) {
        end = EndOfRun(units, start);
        if (end - start > 1)
            replacements.Replace(start, end, kSpace);
    }
    return replacements.Finish();
}

bool TrimLines(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    std::size_t end = 0;
    for (std::size_t start = 0; (start = units.find(u' ', end)) != kNpos;) {
        end = EndOfRun(units, start);
        if (TouchesLineEdge(units, start, end))
            replacements.Replace(start, end, {});
    }
    return replacements.Finish();
}

bool TrimText(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    const std::size_t first = std::min(units.find_first_not_of(u' '), units.size());
    if (first > 0)
        replacements.Replace(0, first, {});
    const std::size_t end = EndOfLastLine(units);
    std::size_t start = end;
    while (start > first && units[start - 1] == u' ')
        --start;
    if (start < end)
        replacements.Replace(start, end, {});
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
    for (std::size_t start = 0; (start = units.find(kLineBreak, end)) != kNpos;) {
        end = start;
        while (units.substr(end).starts_with(kLineBreak))
            end += kLineBreak.size();
        if (end - start > kParagraphBreak.size())
            replacements.Replace(start, end, kParagraphBreak);
    }
    return replacements.Finish();
}

} // namespace vexaTransferLib::cleaner
