// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

// Each step is false when there is no memory for its result; the text is then unchanged.

namespace vexaTransferLib::cleaner {

/// What stands for a code point, see CleanText::GetCharReplacementString.
icu::UnicodeString CharacterFor(int codePoint);

/// Replaces every decimal reference of 1 to 10 digits and every hexadecimal one of 1 to 8 digits by
/// CharacterFor its number. Digits are those of all scripts; the first that is not ASCII ends the number, and
/// a reference without a number is removed.
[[nodiscard]] bool ReplaceNumericReferences(icu::UnicodeString& text);

/// Replaces the eight named references. Their names are case-sensitive.
[[nodiscard]] bool ReplaceNamedReferences(icu::UnicodeString& text);

} // namespace vexaTransferLib::cleaner
