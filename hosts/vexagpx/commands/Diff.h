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

/// What Diff returns for a file that cannot be read, as others of its kind do: that it differs is no failure.
inline constexpr int kCannotCompare = 2;

/// Tells what differs between two files. Returns the exit status: 0 when nothing does, 1 when something does, kCannotCompare
/// after a failure, which has been reported.
int Diff(const DiffOptions& options, Output& standardOutput);

} // namespace vexagpx
