// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

#include <cstdint>
#include <new>

namespace vexaTransferLib::text {

/// A text for which ICU had no memory is bogus and would otherwise be taken for an empty one.
/// \throws std::bad_alloc when the text is bogus
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

/// The text itself, not a copy: valid as long as its units are.
inline icu::UnicodeString Alias(const char16_t* text) {
    return icu::UnicodeString(true, text, -1);
}

/// The first \p most units of the text, or the whole of a shorter one; not copied. Empty for null. Looks at no unit
/// after them: a namespace that is written once and holds for thousands of elements may have any length.
inline icu::UnicodeString AliasOfStart(const char16_t* text, std::int32_t most) {
    std::int32_t length = 0;
    while (text != nullptr && length < most && text[length] != u'\0')
        ++length;
    return icu::UnicodeString(false, text, length);
}

} // namespace vexaTransferLib::text
