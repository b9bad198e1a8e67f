// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

namespace vexaTransferLib::cleaner {

/// Removes the tags of BBCode, "[name]" and "[name=parameter]" with or without "/", where the parameter is
/// not empty. False when there is no memory for the result; the text is then unchanged.
[[nodiscard]] bool RemoveBBCodeTags(icu::UnicodeString& text);

} // namespace vexaTransferLib::cleaner
