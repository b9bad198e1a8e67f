// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/ShellText.h>

#include <vexagpx/process/TerminalControl.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

namespace vexagpx {

namespace {

bool IsPlain(char c) {
    constexpr std::string_view kPlain = "_-./:@%+,=";
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           kPlain.find(c) != std::string_view::npos;
}

/// True for what cannot be typed or pasted into a terminal unchanged.
bool NeedsEscape(UChar32 character) {
    return character < 0 || IsTerminalControl(character);
}

bool NeedsEscapes(const std::string& text) {
    for (std::size_t at = 0; at < text.size();)
        if (NeedsEscape(NextCharacter(text, at)))
            return true;
    return false;
}

std::string InQuotes(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + '\'';
}

void AppendEscape(char byte, std::string& out) {
    std::array<char, 8> digits;
    std::snprintf(digits.data(), digits.size(), "\\%03o", static_cast<unsigned char>(byte));
    out += digits.data();
}

/// The form with escapes, which keeps control characters off the terminal.
std::string Escaped(const std::string& text) {
    std::string escaped = "$'";
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const UChar32 character = NextCharacter(text, at);
        if (NeedsEscape(character)) {
            for (const char byte : text.substr(start, at - start))
                AppendEscape(byte, escaped);
        } else {
            escaped += character == '\'' || character == '\\' ? "\\" : "";
            escaped.append(text, start, at - start);
        }
    }
    return escaped + '\'';
}

} // namespace

std::string ShellText(const std::string& argument) {
    // A name that starts with a dash would be taken for an option.
    const std::string path = argument.size() > 1 && argument.front() == '-' ? "./" + argument : argument;
    if (NeedsEscapes(path))
        return Escaped(path);
    return !path.empty() && std::all_of(path.begin(), path.end(), IsPlain) ? path : InQuotes(path);
}

} // namespace vexagpx
