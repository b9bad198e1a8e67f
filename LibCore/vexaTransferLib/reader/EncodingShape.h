// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <bitset>
#include <string>

namespace vexaTransferLib::reader {

/// How an encoding writes the ASCII characters that make up XML's markup, as far as it can be told from the
/// XML parser's converter.
struct EncodingShape {
    enum class Markup {
        kUnknown, ///< the XML parser has no such encoding
        kBytes,   ///< each is one byte with its ASCII number, and such a byte is nothing else
        kWide,    ///< in units of more than one byte
        kOther    ///< otherwise: by other numbers, or after bytes that change the meaning of others
    };

    Markup markup = Markup::kUnknown;
    /// The bytes that form one character with a "]" after them: that bracket is none.
    std::bitset<256> leads;
};

/// Costs some thousand conversions, but nothing for UTF-8, US-ASCII and ISO-8859-1.
EncodingShape ShapeOf(const std::u16string& encoding);

} // namespace vexaTransferLib::reader
