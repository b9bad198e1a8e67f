// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <bitset>
#include <string>

namespace vexaTransferLib::reader {

/// How an encoding writes the ASCII characters that XML's markup consists of, as far as the XML parser's converter
/// shows it.
struct EncodingShape {
    enum class Markup {
        kUnknown, ///< the XML parser has no such encoding
        kBytes,   ///< each is one byte with its ASCII number, and such a byte is nothing else
        kWide,    ///< each is one unit of more than one byte
        kOther    ///< otherwise: by other numbers, or after bytes that change the meaning of others
    };

    Markup markup = Markup::kUnknown;
    /// The bytes that form one character together with a "]" after them, so that the "]" is not a bracket.
    std::bitset<256> leads;
};

/// Costs some thousand conversions, but nothing for UTF-8, US-ASCII and ISO-8859-1.
EncodingShape ShapeOf(const std::u16string& encoding);

} // namespace vexaTransferLib::reader
