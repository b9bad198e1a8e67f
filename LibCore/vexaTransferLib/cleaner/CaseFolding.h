// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstddef>
#include <string_view>

namespace vexaTransferLib::cleaner {

/// Where `name`, in lower-case ASCII, ends that begins at `begin` of the text in any case; npos when it does
/// not stand there. As in the engine two texts are equal when their full case foldings are, and half of a
/// character that folds to two letters is no match.
std::size_t EndOfName(std::u16string_view text, std::size_t begin, std::u16string_view name);

} // namespace vexaTransferLib::cleaner
