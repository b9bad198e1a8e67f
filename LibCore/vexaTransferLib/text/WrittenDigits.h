// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

namespace vexaTransferLib::text {

/// What is left of the digits of a number's text.
enum class DigitsLeft {
    kAll,     ///< all but zeros at its start and end
    kRounded, ///< as many decimals as are written
    kOther    ///< another number
};

/// Compares the text of a number, as ReadDouble reads it, with the number that a document has for it, written with
/// so many decimals. Exact, and linear in the length of the text.
DigitsLeft CompareDigits(const char* text, double kept, int decimals);

} // namespace vexaTransferLib::text
