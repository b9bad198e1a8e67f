// SPDX-License-Identifier: MIT
#include <vexagpx/JsonWriter.h>

#include <nlohmann/json.hpp>

#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace vexagpx {

void JsonWriter::Key(std::string_view name) {
    Separate();
    out_.Write("\"");
    out_.Write(name);
    out_.Write("\":");
    separate_ = false;
}

void JsonWriter::String(const icu::UnicodeString& text) {
    std::string utf8;
    text.toUTF8String(utf8);
    String(utf8);
}

void JsonWriter::String(std::string_view utf8) {
    Value(nlohmann::json(utf8).dump());
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

void JsonWriter::Number(std::uint64_t number) {
    Value(std::to_string(number));
}

void JsonWriter::Bool(bool value) {
    Value(value ? "true" : "false");
}

void JsonWriter::Begin(char bracket) {
    Separate();
    out_.Write({&bracket, 1});
    separate_ = false;
}

void JsonWriter::End(char bracket) {
    out_.Write({&bracket, 1});
    separate_ = true;
}

void JsonWriter::Value(std::string_view text) {
    Separate();
    out_.Write(text);
    separate_ = true;
}

void JsonWriter::Separate() {
    if (separate_)
        out_.Write(",");
}

} // namespace vexagpx
