// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>

#include <string>

namespace vexagpx {

/// What all commands take that change a document.
struct EditOptions {
    std::string in;
    std::string out;      ///< empty when the input is to be changed, or nothing to be written
    bool inPlace = false; ///< replaces the input
    bool dryRun = false;  ///< only tells what would change
    bool json = false;    ///< tells it as a line of JSON
    InputRules rules;
};

} // namespace vexagpx
