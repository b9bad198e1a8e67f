// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/ByteScan.h>
#include <vexaTransferLib/text/XmlBlank.h>

#include <array>
#include <cstddef>
#include <string_view>

namespace vexaTransferLib::reader {

// The kinds of bytes in a plain file.

using ByteSet = std::array<bool, 256>;

constexpr std::size_t Index(char byte) {
    return static_cast<unsigned char>(byte);
}

// What needs a closer look in a text, in the value of an attribute, and in all other parts.
using TextScan = ByteScan<'<', '&', ']'>;
using ValueScan = ByteScan<'"', '\'', '<', '&'>;
using OtherScan = ByteScan<'-', ']', '?'>;

// The bytes of names: the first, the others, and the byte after a name.
inline constexpr ByteSet kStartsName = [] {
    ByteSet set{};
    for (std::size_t letter = 0; letter < 26; ++letter)
        set['a' + letter] = set['A' + letter] = true;
    set[Index('_')] = true;
    return set;
}();

inline constexpr ByteSet kInName = [] {
    ByteSet set = kStartsName;
    for (std::size_t digit = 0; digit < 10; ++digit)
        set['0' + digit] = true;
    set[Index('-')] = set[Index('.')] = true;
    return set;
}();

inline constexpr ByteSet kEndsName = [] {
    ByteSet set{};
    for (const char byte : {' ', '\t', '\n', '\r', '=', '/', '>'})
        set[Index(byte)] = true;
    return set;
}();

using text::IsBlank;

inline const char* SkipBlanks(const char* at) {
    while (IsBlank(*at))
        ++at;
    return at;
}

/// True for U+0085 and U+2028. The XML parser gives them a column of their own in texts only.
inline bool IsOtherLineEnd(const char* at) {
    return (at[0] == '\xC2' && at[1] == '\x85') || (at[0] == '\xE2' && at[1] == '\x80' && at[2] == '\xA8');
}

/// True for "xml" in any case.
inline bool IsXml(std::string_view name) {
    return name.size() == 3 && (name[0] | 0x20) == 'x' && (name[1] | 0x20) == 'm' && (name[2] | 0x20) == 'l';
}

} // namespace vexaTransferLib::reader
