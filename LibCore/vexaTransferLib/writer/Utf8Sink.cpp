// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/Utf8Sink.h>

#include <vexaTransferLib/writer/XmlEntities.h>

#include <unicode/utf16.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace vexaTransferLib::writer {

namespace {

constexpr std::size_t kZeros = 4;
constexpr std::size_t kFirstCapacity = 4096;
constexpr std::size_t kMostBytesPerUnit = 3;
constexpr UChar32 kReplacement = 0xFFFD;

char Byte(UChar32 value) {
    return static_cast<char>(value);
}

char* AppendCharacter(char* out, UChar32 character) {
    if (character < 0x80) {
        *out++ = Byte(character);
    } else if (character < 0x800) {
        *out++ = Byte(0xC0 | (character >> 6));
        *out++ = Byte(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        *out++ = Byte(0xE0 | (character >> 12));
        *out++ = Byte(0x80 | ((character >> 6) & 0x3F));
        *out++ = Byte(0x80 | (character & 0x3F));
    } else {
        *out++ = Byte(0xF0 | (character >> 18));
        *out++ = Byte(0x80 | ((character >> 12) & 0x3F));
        *out++ = Byte(0x80 | ((character >> 6) & 0x3F));
        *out++ = Byte(0x80 | (character & 0x3F));
    }
    return out;
}

} // namespace

void Utf8Sink::Reserve(std::size_t count) {
    if (Room() < count)
        Grow(count);
}

void Utf8Sink::Grow(std::size_t count) {
    const std::size_t length = Length();
    RequireRoom(length <= limit_);
    const std::size_t capacity =
        std::max({length + count + kZeros, (length + Room() + kZeros) * 2, kFirstCapacity});
    char* const grown = static_cast<char*>(std::realloc(bytes_.get(), capacity));
    RequireRoom(grown != nullptr);
    static_cast<void>(bytes_.release());
    bytes_.reset(grown);
    next_ = grown + length;
    end_ = grown + capacity - kZeros;
}

void Utf8Sink::RequireRoom(bool hasRoom) const {
    text::Ensure(hasRoom, site_, "The GPX text is too large to be held in memory.");
}

void Utf8Sink::AppendAscii(std::string_view text) {
    Reserve(text.size());
    next_ += text.copy(next_, text.size());
}

void Utf8Sink::Append(const char16_t* units, std::size_t count) {
    Reserve(count * kMostBytesPerUnit);
    char* out = next_;
    for (std::size_t i = 0; i < count; ++i) {
        UChar32 character = units[i];
        if (U16_IS_SURROGATE(character)) {
            const bool isPair = U16_IS_LEAD(character) && i + 1 < count && U16_IS_TRAIL(units[i + 1]);
            character = isPair ? U16_GET_SUPPLEMENTARY(character, units[i + 1]) : kReplacement;
            i += isPair ? 1 : 0;
        }
        out = AppendCharacter(out, character);
    }
    next_ = out;
}

void Utf8Sink::Raw(const icu::UnicodeString& text) {
    if (!text.isEmpty())
        Append(text.getBuffer(), static_cast<std::size_t>(text.length()));
}

// Special characters are no surrogates, so that the runs between them can be converted one by one.
void Utf8Sink::Escaped(const icu::UnicodeString& text) {
    const char16_t* units = text.getBuffer();
    const char16_t* const end = units + text.length();
    while (units != end) {
        const char16_t* const special = std::find_if(units, end, IsSpecial);
        if (special != units)
            Append(units, static_cast<std::size_t>(special - units));
        if (special == end)
            return;
        Ascii(EntityOf(*special));
        units = special + 1;
    }
}

UnicodeStrUtils::ByteString Utf8Sink::Take() {
    if (bytes_ == nullptr)
        Grow(0);
    const std::size_t length = Length();
    RequireRoom(length <= limit_);
    std::memset(next_, 0, kZeros);
    UnicodeStrUtils::ByteString result{icu::UnicodeString()};
    result.length = static_cast<std::uint32_t>(length);
    result.buffer = boost::shared_array<char>(bytes_.release(), Free());
    next_ = nullptr;
    end_ = nullptr;
    return result;
}

} // namespace vexaTransferLib::writer
