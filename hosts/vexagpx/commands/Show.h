// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <string>
#include <vector>

namespace vexagpx {

struct ShowOptions {
    std::vector<std::string> files;
    InputRules rules;
    bool all = false;  ///< lists every waypoint, route, track and geocache instead of the first few
    bool json = false; ///< prints a line of JSON for each document, with everything
};

/// The `show` command: shows what is in documents, for a person at a terminal or as JSON. False when a file could not
/// be read.
bool Show(const ShowOptions& options, Output& out);

} // namespace vexagpx
