// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/umachine.h>

#include <cstddef>
#include <string_view>

namespace vexagpx {

/// True for what a terminal obeys instead of showing it, or shows as nothing: control characters (U+0000 to
/// U+001F, U+007F to U+009F), line and paragraph separators, and format characters such as marks that turn the
/// direction of writing, the soft hyphen and the byte order mark. Not for the two joiners U+200C and U+200D,
/// which hold emoji and some scripts together. Whatever the tool prints is held against this one list.
bool IsTerminalControl(UChar32 character);

/// The character at a place in a text, which moves to the next one. What is no UTF-8 is a character below 0 of
/// one byte.
UChar32 NextCharacter(std::string_view utf8, std::size_t& at);

} // namespace vexagpx
