// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/editing/EditOptions.h>
#include <vexagpx/process/Output.h>

#include <string>
#include <vector>

namespace vexagpx {

struct MergeOptions {
    std::vector<std::string> files; ///< two or more
    EditOptions edit;               ///< its input is the first of the files
    bool byTime = false;            ///< brings tracks into the order of their times
    /// A GPX file to write, for versions of waypoints that are left out; empty for none.
    std::string conflicts;
};

/// Puts several files together. False after a failure, which has been reported.
bool Merge(const MergeOptions& options, Output& standardOutput);

} // namespace vexagpx
