// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/unistr.h>

namespace vexagpx {

/// A printable text in ASCII that takes the same columns: a letter without its accents, a plain sign for one that is
/// like it, and a question mark for each column of anything else.
icu::UnicodeString InAscii(const icu::UnicodeString& text);

} // namespace vexagpx
