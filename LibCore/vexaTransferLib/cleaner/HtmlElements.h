// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

// Each step is false when there is no memory for its result; the text is then unchanged.

namespace vexaTransferLib::cleaner {

/// Removes the comments: from "<!--" over at least one character to the next "--" that white space, if
/// anything, parts from its ">".
[[nodiscard]] bool RemoveComments(icu::UnicodeString& text);

/// Removes the elements whose name begins with "style" or "script", with their content. An element ends with
/// the first closing tag whose name begins so too.
[[nodiscard]] bool RemoveStylesAndScripts(icu::UnicodeString& text);

} // namespace vexaTransferLib::cleaner
