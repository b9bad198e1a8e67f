// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstddef>
#include <string_view>

namespace vexaTransferLib::cleaner {

/// What a search of a text returns when it finds nothing.
inline constexpr std::size_t kNpos = std::u16string_view::npos;

inline constexpr std::u16string_view kLineBreak = u"\r\n";
inline constexpr std::u16string_view kParagraphBreak = u"\r\n\r\n";

} // namespace vexaTransferLib::cleaner
