// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/editing/EditOptions.h>
#include <vexagpx/editing/PathChoice.h>
#include <vexagpx/process/Output.h>

namespace vexagpx {

struct ReverseOptions {
    EditOptions edit;
    PathChoice paths;
    bool keepsTimes = false; ///< which then go backwards
};

/// The `reverse` command: turns tracks and routes around. Nobody went that way at those times, so their points lose
/// them. False after a failure, which has been reported.
bool Reverse(const ReverseOptions& options, Output& standardOutput);

} // namespace vexagpx
