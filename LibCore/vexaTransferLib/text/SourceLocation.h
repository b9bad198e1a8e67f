// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstdint>

namespace vexaTransferLib::text {

/// A place of a file, from 1; zeros when it is not known.
struct SourceLocation {
    std::uint64_t line = 0;
    std::uint64_t column = 0;
};

} // namespace vexaTransferLib::text
