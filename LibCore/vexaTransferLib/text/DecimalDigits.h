// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <string_view>

namespace vexaTransferLib::text {

inline bool IsDecimalDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

/// Reads a text of decimal digits only; false, with the number unchanged, when it has anything else. An empty text is
/// 0. The caller limits the length to what the number can hold.
template <class Number>
bool ReadDecimalDigits(std::string_view text, Number& number) {
    Number read = 0;
    for (const char byte : text) {
        if (!IsDecimalDigit(byte))
            return false;
        read = read * 10 + (byte - '0');
    }
    number = read;
    return true;
}

} // namespace vexaTransferLib::text
