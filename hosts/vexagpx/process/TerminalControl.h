// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/umachine.h>

#include <cstddef>
#include <string_view>

namespace vexagpx {

/// True for characters that control a terminal or have no shape: control characters (U+0000 to U+001F, U+007F to
/// U+009F), line and paragraph separators, and format characters such as marks that turn the direction of writing, the
/// soft hyphen and the byte order mark. False for the two joiners U+200C and U+200D, which some scripts and emoji need.
/// Everything that the tool prints is checked with this one function.
bool IsTerminalControl(UChar32 character);

/// The character at an index of a text; the index moves to the next character. A byte that is not UTF-8 gives a
/// negative value.
UChar32 NextCharacter(std::string_view utf8, std::size_t& at);

} // namespace vexagpx
