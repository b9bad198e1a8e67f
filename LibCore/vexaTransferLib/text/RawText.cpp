// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/RawText.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace vexaTransferLib::text {

namespace {

// More digits than the greatest character has, even with a few zeros before it.
constexpr std::ptrdiff_t kMostDigits = 10;

struct Entity {
    std::string_view text;
    char character;
};

constexpr Entity kEntities[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

bool IsAllowed(std::uint64_t character) {
    if (character < 0x20)
        return character == '\t' || character == '\n' || character == '\r';
    return character < 0xD800 || (character >= 0xE000 && character < 0xFFFE) ||
           (character >= 0x10000 && character <= 0x10FFFF);
}

int DigitValue(char digit) {
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 16;
}

Reference ReadNumericReference(const char* text) {
    const char* at = text + 2;
    const bool isHex = *at == 'x';
    const int base = isHex ? 16 : 10;
    at += isHex ? 1 : 0;
    const char* const digits = at;
    std::uint64_t character = 0;
    for (; DigitValue(*at) < base && at - digits < kMostDigits; ++at)
        character = character * static_cast<unsigned>(base) + static_cast<unsigned>(DigitValue(*at));
    if (at == digits || *at != ';' || !IsAllowed(character))
        return {0, 0};
    return {static_cast<unsigned>(at + 1 - text), static_cast<char32_t>(character)};
}

char16_t* Append(char32_t character, char16_t* out) {
    if (character < 0x10000) {
        *out++ = static_cast<char16_t>(character);
        return out;
    }
    const char32_t above = character - 0x10000;
    *out++ = static_cast<char16_t>(0xD800 + (above >> 10));
    *out++ = static_cast<char16_t>(0xDC00 + (above & 0x3FF));
    return out;
}

// Decodes the well-formed character at the start of the text.
char32_t CharacterOf(const char* text, unsigned length) {
    const auto bits = [&](unsigned i) { return static_cast<unsigned char>(text[i]) & 0x3Fu; };
    const auto lead = static_cast<unsigned char>(text[0]);
    if (length == 1)
        return lead;
    if (length == 2)
        return (lead & 0x1Fu) << 6 | bits(1);
    if (length == 3)
        return (lead & 0x0Fu) << 12 | bits(1) << 6 | bits(2);
    return (lead & 0x07u) << 18 | bits(1) << 12 | bits(2) << 6 | bits(3);
}

unsigned LengthByLead(char byte) {
    const auto lead = static_cast<unsigned char>(byte);
    return lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// The character at the start of the text, and how many bytes of the text it takes.
struct Decoded {
    char32_t character;
    std::size_t length;
};

Decoded DecodeNext(std::string_view text, RawText::Form form, TextPlace place) {
    const char* const at = text.data();
    if (*at == '&' && form == RawText::Form::kEncoded) {
        const Reference reference = ReadReference(at);
        return {reference.character, reference.length};
    }
    if (*at == '\r') {
        const std::size_t length = text.size() > 1 && at[1] == '\n' ? 2 : 1;
        return {place == TextPlace::kAttribute ? U' ' : U'\n', length};
    }
    if (place == TextPlace::kAttribute && (*at == '\n' || *at == '\t'))
        return {U' ', 1};
    const unsigned length = LengthByLead(*at);
    return {CharacterOf(at, length), length};
}

} // namespace

unsigned CharacterLength(const char* text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    const auto second = static_cast<unsigned char>(text[1]);
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4 || !IsContinuation(text[1]))
        return 0;
    if (lead < 0xE0)
        return 2;
    if (!IsContinuation(text[2]))
        return 0;
    if (lead < 0xF0) {
        const bool isOverlong = lead == 0xE0 && second < 0xA0;
        const bool isSurrogate = lead == 0xED && second >= 0xA0;
        const bool isExcluded = lead == 0xEF && second == 0xBF && static_cast<unsigned char>(text[2]) >= 0xBE;
        return isOverlong || isSurrogate || isExcluded ? 0 : 3;
    }
    const bool isOverlong = lead == 0xF0 && second < 0x90;
    const bool isTooGreat = lead == 0xF4 && second >= 0x90;
    return isOverlong || isTooGreat || !IsContinuation(text[3]) ? 0 : 4;
}

Reference ReadReference(const char* text) {
    if (text[1] == '#')
        return ReadNumericReference(text);
    for (const Entity& entity : kEntities)
        if (std::strncmp(text, entity.text.data(), entity.text.size()) == 0)
            return {static_cast<unsigned>(entity.text.size()), static_cast<char32_t>(entity.character)};
    return {0, 0};
}

char16_t* Decode(std::string_view text, RawText::Form form, TextPlace place, char16_t* out) {
    if (form == RawText::Form::kAscii)
        return std::copy(text.begin(), text.end(), out);
    while (!text.empty()) {
        const Decoded next = DecodeNext(text, form, place);
        out = Append(next.character, out);
        text.remove_prefix(next.length);
    }
    return out;
}

} // namespace vexaTransferLib::text
