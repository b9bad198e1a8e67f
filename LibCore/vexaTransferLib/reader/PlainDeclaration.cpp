// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/PlainDeclaration.h>

#include <algorithm>

namespace vexaTransferLib::reader {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kOpen = "<?xml";
constexpr std::string_view kClose = "?>";
// The XML parser does not count the line ends in a declaration, so that one with several lines is left to it.
constexpr std::string_view kBlanks = " \t";

bool Skip(std::string_view& text, std::string_view expected) {
    if (!text.starts_with(expected))
        return false;
    text.remove_prefix(expected.size());
    return true;
}

/// Returns true when there were any.
bool SkipBlanks(std::string_view& text) {
    const std::size_t count = std::min(text.find_first_not_of(kBlanks), text.size());
    text.remove_prefix(count);
    return count != 0;
}

bool EqualsUncased(std::string_view text, std::string_view lower) {
    return std::equal(text.begin(), text.end(), lower.begin(), lower.end(), [](char character, char wanted) {
        return (character >= 'A' && character <= 'Z' ? static_cast<char>(character | 0x20) : character) ==
               wanted;
    });
}

/// Reads `name="value"`; empty when the text does not start with it.
std::optional<std::string_view> TakeValue(std::string_view& text, std::string_view name) {
    std::string_view rest = text;
    if (!Skip(rest, name))
        return std::nullopt;
    SkipBlanks(rest);
    if (!Skip(rest, "="))
        return std::nullopt;
    SkipBlanks(rest);
    if (rest.empty() || (rest.front() != '"' && rest.front() != '\''))
        return std::nullopt;
    const std::size_t close = rest.find(rest.front(), 1);
    if (close == std::string_view::npos)
        return std::nullopt;
    text = rest.substr(close + 1);
    return rest.substr(1, close - 1);
}

/// Skips a part that may be missing; false when it is there and its value is not accepted.
template <class IsAccepted>
bool SkipOptional(std::string_view& text, bool& hasBlank, std::string_view name, IsAccepted isAccepted) {
    if (!text.starts_with(name))
        return true;
    if (!hasBlank)
        return false;
    const std::optional<std::string_view> value = TakeValue(text, name);
    hasBlank = SkipBlanks(text);
    return value && isAccepted(*value);
}

/// \param text from after "<?xml"; left after "?>"
bool SkipDeclaration(std::string_view& text) {
    if (!SkipBlanks(text) || TakeValue(text, "version") != "1.0")
        return false;
    bool hasBlank = SkipBlanks(text);
    return SkipOptional(text, hasBlank, "encoding",
                        [](std::string_view value) { return EqualsUncased(value, "utf-8"); }) &&
           SkipOptional(text, hasBlank, "standalone",
                        [](std::string_view value) { return value == "yes" || value == "no"; }) &&
           Skip(text, kClose);
}

} // namespace

std::optional<std::size_t> PlainDeclarationLength(std::string_view start) {
    start = start.substr(0, kLongestPlainDeclaration);
    std::string_view rest = start;
    Skip(rest, kByteOrderMark);
    // The name of a processing instruction may start in the same way.
    const bool hasDeclaration =
        rest.starts_with(kOpen) && rest.find_first_of(" \t\r\n", kOpen.size()) == kOpen.size();
    if (hasDeclaration) {
        rest.remove_prefix(kOpen.size());
        if (!SkipDeclaration(rest))
            return std::nullopt;
    }
    return start.size() - rest.size();
}

} // namespace vexaTransferLib::reader
