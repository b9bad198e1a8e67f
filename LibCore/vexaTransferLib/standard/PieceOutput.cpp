// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/PieceOutput.h>

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <array>
#include <charconv>
#include <cstdint>

namespace vexaTransferLib::standard {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

std::string_view EscapeOf(char32_t character, PieceOutput::Place place) {
    const bool isAttribute = place == PieceOutput::Place::kAttribute;
    switch (character) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '\r': // A reader of XML makes a line feed of the character itself.
        return "&#13;";
    case '"':
        return isAttribute ? "&quot;" : "";
    case '\n':
        return isAttribute ? "&#10;" : "";
    case '\t':
        return isAttribute ? "&#9;" : "";
    default:
        return "";
    }
}

} // namespace

bool IsXmlCharacter(char32_t character) {
    if (character < 0x20)
        return character == '\t' || character == '\n' || character == '\r';
    return character < 0xD800 || (character > 0xDFFF && character != 0xFFFE && character != 0xFFFF);
}

void PieceOutput::Flush() {
    if (used_ != 0)
        receive_({buffer_.get(), used_});
    passedOn_ += used_;
    used_ = 0;
}

void PieceOutput::AppendLong(std::string_view text) {
    Flush();
    if (text.size() > kSize) {
        receive_(text);
        passedOn_ += text.size();
        return;
    }
    Append(text);
}

void PieceOutput::AppendEscaped(const icu::UnicodeString& text, Place place) {
    const char16_t* const units = text.getBuffer();
    const std::int32_t length = text.length();
    for (std::int32_t i = 0; i < length;) {
        char32_t character = 0;
        U16_NEXT(units, i, length, character);
        const std::string_view escape = EscapeOf(character, place);
        if (!escape.empty()) {
            Append(escape);
            continue;
        }
        std::array<char, 4> bytes;
        std::size_t size = 0;
        U8_APPEND_UNSAFE(bytes.data(), size, IsXmlCharacter(character) ? character : kReplacement);
        Append({bytes.data(), size});
    }
}

void PieceOutput::AppendNumber(double number) {
    // The smallest double has 1074 decimals, of which the shortest form needs 326 at most.
    std::array<char, 400> text;
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed).ptr;
    Append({text.data(), static_cast<std::size_t>(end - text.data())});
}

void PieceOutput::AppendInteger(long long number) {
    std::array<char, 24> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    Append({text.data(), static_cast<std::size_t>(end - text.data())});
}

} // namespace vexaTransferLib::standard
