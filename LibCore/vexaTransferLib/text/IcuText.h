// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

#include <cstdint>
#include <new>

namespace vexaTransferLib::text {

/// \throws std::bad_alloc for a text that ICU could not hold: it is bogus, and would pass for an empty one
inline void ThrowIfBogus(const icu::UnicodeString& text) {
    if (text.isBogus())
        throw std::bad_alloc();
}

/// A copy of zero-terminated text.
/// \throws std::bad_alloc when ICU cannot hold it
inline icu::UnicodeString CopyOf(const char16_t* text) {
    icu::UnicodeString copy(text);
    ThrowIfBogus(copy);
    return copy;
}

/// The text itself, not a copy: valid as long as the units are.
inline icu::UnicodeString Alias(const char16_t* text) {
    return icu::UnicodeString(true, text, -1);
}

/// The text's start, of at most \p most units, not copied. Nothing after it is looked at: what a file names once
/// and means a thousand times, as a namespace, may be of any length. Empty for null.
inline icu::UnicodeString AliasOfStart(const char16_t* text, std::int32_t most) {
    std::int32_t length = 0;
    while (text != nullptr && length < most && text[length] != u'\0')
        ++length;
    return icu::UnicodeString(false, text, length);
}

} // namespace vexaTransferLib::text
