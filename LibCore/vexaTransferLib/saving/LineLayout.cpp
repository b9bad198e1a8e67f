// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/LineLayout.h>

#include <cstddef>

namespace vexaTransferLib::saving {

namespace {

constexpr std::string_view kUsualIndent = "  ";

bool IsIndent(char c) {
    return c == ' ' || c == '\t';
}

bool IsLineEnd(char c) {
    return c == '\n' || c == '\r';
}

// Where the blanks start that end at a place.
std::size_t IndentStart(std::string_view text, std::size_t place) {
    while (place != 0 && IsIndent(text[place - 1]))
        --place;
    return place;
}

} // namespace

std::string_view SeparatorBefore(std::string_view text, std::uint64_t begin) {
    const std::size_t indent = IndentStart(text, static_cast<std::size_t>(begin));
    if (indent == 0 || !IsLineEnd(text[indent - 1]))
        return {};
    const bool isPair = indent >= 2 && text.substr(indent - 2, 2) == "\r\n";
    const std::size_t start = indent - (isPair ? 2 : 1);
    return text.substr(start, static_cast<std::size_t>(begin) - start);
}

TextPart LinesOf(std::string_view text, TextPart element) {
    const std::size_t separator = SeparatorBefore(text, element.begin).size();
    std::size_t end = static_cast<std::size_t>(element.end);
    while (end != text.size() && IsIndent(text[end]))
        ++end;
    if (separator == 0 || end == text.size() || !IsLineEnd(text[end]))
        return element;
    return {element.begin - separator, end};
}

std::uint64_t PlaceAfter(std::string_view text, std::uint64_t elementEnd) {
    constexpr std::string_view kOpen = "<!--";
    constexpr std::string_view kClose = "-->";
    std::size_t commentsEnd = static_cast<std::size_t>(elementEnd);
    for (std::size_t at = commentsEnd;;) {
        while (at != text.size() && IsIndent(text[at]))
            ++at;
        if (at == text.size() || IsLineEnd(text[at]))
            return commentsEnd;
        if (!text.substr(at).starts_with(kOpen))
            return elementEnd;
        const std::size_t close = text.find_first_of("\r\n>", at + kOpen.size());
        if (close == std::string_view::npos || !text.substr(0, close + 1).ends_with(kClose))
            return elementEnd;
        at = close + 1;
        commentsEnd = at;
    }
}

std::string IndentBetween(std::string_view outerSeparator, std::string_view innerSeparator) {
    if (outerSeparator.empty() || innerSeparator.size() <= outerSeparator.size() ||
        !innerSeparator.starts_with(outerSeparator))
        return std::string(kUsualIndent);
    return std::string(innerSeparator.substr(outerSeparator.size()));
}

} // namespace vexaTransferLib::saving
