// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstddef>
#include <string_view>

namespace vexaTransferLib::cleaner {

/// The end of `name` in the text when the text contains it at `start`, in any case; otherwise npos. The name is in
/// lower-case ASCII. As in ICU's regular expressions two texts are equal when their full case foldings are, and
/// half of a character that folds to two letters is no match.
std::size_t EndOfName(std::u16string_view text, std::size_t start, std::u16string_view name);

} // namespace vexaTransferLib::cleaner
