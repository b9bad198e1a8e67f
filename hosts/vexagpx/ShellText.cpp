// SPDX-License-Identifier: MIT
#include <vexagpx/ShellText.h>

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

/// True for bytes that terminals act on: those of ASCII, and those that UTF-8 writes as C2 80 to C2 9F.
bool IsControl(const std::string& text, std::size_t at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    return byte < 0x20 || byte == 0x7F ||
           (byte >= 0x80 && byte < 0xA0 && at > 0 && static_cast<unsigned char>(text[at - 1]) == 0xC2);
}

bool HasControls(const std::string& text) {
    for (std::size_t i = 0; i < text.size(); ++i)
        if (IsControl(text, i))
            return true;
    return false;
}

std::string InQuotes(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + '\'';
}

/// The form with escapes, which keeps control characters off the terminal.
std::string Escaped(const std::string& text) {
    std::string escaped = "$'";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        // Both bytes of a control character of UTF-8.
        if (IsControl(text, i) || (i + 1 < text.size() && c == '\xC2' && IsControl(text, i + 1))) {
            std::array<char, 8> digits;
            std::snprintf(digits.data(), digits.size(), "\\%03o", static_cast<unsigned char>(c));
            escaped += digits.data();
        } else if (c == '\'' || c == '\\') {
            escaped += '\\';
            escaped += c;
        } else {
            escaped += c;
        }
    }
    return escaped + '\'';
}

} // namespace

std::string ShellText(const std::string& argument) {
    // Otherwise an option.
    const std::string path = argument.size() > 1 && argument.front() == '-' ? "./" + argument : argument;
    if (HasControls(path))
        return Escaped(path);
    return !path.empty() && std::all_of(path.begin(), path.end(), IsPlain) ? path : InQuotes(path);
}

} // namespace vexagpx
