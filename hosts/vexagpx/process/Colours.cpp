// SPDX-License-Identifier: MIT
#include <vexagpx/process/Colours.h>

#include <vexagpx/process/Posix.h>

#include <cstdlib>

namespace vexagpx {

namespace {

ColourUse colourUse = ColourUse::kAuto;

bool IsForbidden() {
    const char* const variable = std::getenv("NO_COLOR");
    return variable != nullptr && *variable != '\0';
}

} // namespace

void SetColourUse(ColourUse use) {
    colourUse = use;
}

bool UsesColours(int fd) {
    if (colourUse != ColourUse::kAuto)
        return colourUse == ColourUse::kAlways;
    return !IsForbidden() && IsCapableTerminal(fd);
}

} // namespace vexagpx
