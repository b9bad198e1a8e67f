// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <string>
#include <vector>

namespace vexagpx {

struct InfoOptions {
    std::vector<std::string> files;
    InputRules rules;
    bool json = false; ///< a line of JSON for each document instead of lines for a person
};

/// The `info` command: reads only the heads of the files. False when a file could not be opened or was refused. When
/// a head is not well-formed XML, its first line of text says so, and that is no failure.
bool Info(const InfoOptions& options, Output& out);

} // namespace vexagpx
