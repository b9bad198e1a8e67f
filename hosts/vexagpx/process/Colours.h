// SPDX-License-Identifier: MIT
#pragma once

namespace vexagpx {

enum class ColourUse {
    kAuto,   ///< on a terminal that can show them, unless the variable NO_COLOR says something
    kAlways, ///< also in a file or a pipe
    kNever
};

/// Sets for the whole program when colours are used; kAuto before.
void SetColourUse(ColourUse use);

/// True when colours are to be written to this descriptor.
bool UsesColours(int fd);

} // namespace vexagpx
