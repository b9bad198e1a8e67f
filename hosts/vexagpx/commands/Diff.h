// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <string>

namespace vexagpx {

struct DiffOptions {
    std::string oldFile;
    std::string newFile;
    bool json = false;
    InputRules rules;
};

/// Tells what differs between two files. False when something does, and after a failure, which has been reported.
bool Diff(const DiffOptions& options, Output& standardOutput);

} // namespace vexagpx
