// SPDX-License-Identifier: MIT
#include <vexagpx/process/TerminalControl.h>

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <cstdint>
#include <string>

namespace vexagpx {

bool IsTerminalControl(UChar32 character) {
    constexpr UChar32 kZeroWidthNonJoiner = 0x200C;
    constexpr UChar32 kZeroWidthJoiner = 0x200D;
    const int type = u_charType(character);
    return type == U_CONTROL_CHAR || type == U_LINE_SEPARATOR || type == U_PARAGRAPH_SEPARATOR ||
           (type == U_FORMAT_CHAR && character != kZeroWidthNonJoiner && character != kZeroWidthJoiner);
}

UChar32 NextCharacter(std::string_view utf8, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(utf8[at]);
    if (lead < 0x80) {
        ++at;
        return lead;
    }
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    const std::string bytes(utf8.substr(at, length));
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(bytes);
    std::string back;
    // Bytes that are not UTF-8 change when they are converted to text and back.
    const bool isUtf8 = text.countChar32() == 1 && text.toUTF8String(back) == bytes;
    at += isUtf8 ? length : 1;
    return isUtf8 ? text.char32At(0) : -1;
}

} // namespace vexagpx
