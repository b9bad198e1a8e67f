// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

// Each step is false when there is no memory for its result; the text is then unchanged.

namespace vexaTransferLib::cleaner {

/// Ellipses become three dots.
[[nodiscard]] bool ReplaceEllipses(icu::UnicodeString& text);

/// Curly single quotes become straight ones.
[[nodiscard]] bool StraightenSingleQuotes(icu::UnicodeString& text);

/// Curly double quotes become straight ones.
[[nodiscard]] bool StraightenDoubleQuotes(icu::UnicodeString& text);

/// En dashes become one hyphen, em dashes two.
[[nodiscard]] bool ReplaceDashes(icu::UnicodeString& text);

} // namespace vexaTransferLib::cleaner
