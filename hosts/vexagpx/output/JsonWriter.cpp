// SPDX-License-Identifier: MIT
#include <vexagpx/output/JsonWriter.h>

#include <vexagpx/process/TerminalControl.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

namespace vexagpx {

namespace {

/// Two escapes for a character beyond U+FFFF.
void AppendEscape(UChar32 character, std::string& out) {
    constexpr char kDigits[] = "0123456789abcdef";
    const icu::UnicodeString units(character);
    for (std::int32_t i = 0; i < units.length(); ++i) {
        out += "\\u";
        for (int shift = 12; shift >= 0; shift -= 4)
            out += kDigits[(units[i] >> shift) & 0xF];
    }
}

bool IsPlain(char byte) {
    return byte >= ' ' && byte <= '~';
}

/// Whether a string of these bytes needs no escape.
bool NeedsNoEscape(std::string_view utf8) {
    return std::all_of(utf8.begin(), utf8.end(),
                       [](char byte) { return IsPlain(byte) && byte != '"' && byte != '\\'; });
}

/// \param json only its strings contain such characters
std::string WithoutTerminalControls(const std::string& json) {
    if (std::all_of(json.begin(), json.end(), IsPlain))
        return json;
    std::string escaped;
    escaped.reserve(json.size());
    for (std::size_t at = 0; at < json.size();) {
        const std::size_t start = at;
        const UChar32 character = NextCharacter(json, at);
        if (IsTerminalControl(character))
            AppendEscape(character, escaped);
        else
            escaped.append(json, start, at - start);
    }
    return escaped;
}

} // namespace

void JsonWriter::Key(std::string_view name) {
    Separate();
    out_.Write("\"");
    out_.Write(name);
    out_.Write("\":");
    needsComma_ = false;
}

void JsonWriter::AnyKey(std::string_view name) {
    String(name);
    out_.Write(":");
    needsComma_ = false;
}

void JsonWriter::String(const icu::UnicodeString& text) {
    std::string utf8;
    text.toUTF8String(utf8);
    if (NeedsNoEscape(utf8))
        return PlainString(utf8);
    Value(WithoutTerminalControls(nlohmann::json(utf8).dump()));
}

void JsonWriter::String(std::string_view utf8) {
    if (NeedsNoEscape(utf8))
        return PlainString(utf8);
    if (utf8.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        throw std::runtime_error("A text is too long to be written as JSON.");
    String(icu::UnicodeString::fromUTF8({utf8.data(), static_cast<std::int32_t>(utf8.size())}));
}

void JsonWriter::PlainString(std::string_view text) {
    Separate();
    out_.Write("\"");
    out_.Write(text);
    out_.Write("\"");
    needsComma_ = true;
}

void JsonWriter::Number(double number) {
    if (std::isnan(number))
        return String(std::string_view("NaN"));
    if (std::isinf(number))
        return String(std::string_view(number > 0 ? "Infinity" : "-Infinity"));
    std::array<char, 32> digits;
    const std::to_chars_result result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    Value({digits.data(), static_cast<std::size_t>(result.ptr - digits.data())});
}

void JsonWriter::Number(std::int32_t number) {
    Value(std::to_string(number));
}

void JsonWriter::Number(std::int64_t number) {
    Value(std::to_string(number));
}

void JsonWriter::Number(std::uint64_t number) {
    Value(std::to_string(number));
}

void JsonWriter::Bool(bool value) {
    Value(value ? "true" : "false");
}

void JsonWriter::BreakLine() {
    Separate();
    out_.Write("\n");
    needsComma_ = false;
}

void JsonWriter::Begin(char bracket) {
    Separate();
    out_.Write({&bracket, 1});
    needsComma_ = false;
}

void JsonWriter::End(char bracket) {
    out_.Write({&bracket, 1});
    needsComma_ = true;
}

void JsonWriter::Value(std::string_view text) {
    Separate();
    out_.Write(text);
    needsComma_ = true;
}

void JsonWriter::Separate() {
    if (needsComma_)
        out_.Write(",");
}

} // namespace vexagpx
