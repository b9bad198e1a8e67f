// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

// Each step is false when there is no memory for its result; the text is then unchanged.

namespace vexaTransferLib::cleaner {

/// Tags that open a block become paragraph breaks. As in the next step names are prefixes: "<param>" opens a
/// block as "<p>" does, and a tag goes from its name to the next ">".
[[nodiscard]] bool ReplaceBlockTags(icu::UnicodeString& text);

/// Tags that break a line become line breaks.
[[nodiscard]] bool ReplaceBreakTags(icu::UnicodeString& text);

/// Removes everything between brackets in which there is no bracket.
[[nodiscard]] bool RemoveTags(icu::UnicodeString& text);

} // namespace vexaTransferLib::cleaner
