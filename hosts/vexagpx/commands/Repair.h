// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/editing/EditOptions.h>
#include <vexagpx/process/Output.h>

#include <string>

namespace vexagpx {

struct RepairOptions {
    EditOptions edit;
    std::string zone;            ///< of times without one: "Europe/Zurich"; empty leaves them
    bool dropsBadPoints = false; ///< removes points without a place on the earth
};

/// The `repair` command: mends a file that cannot be read. False after a failure, which has been reported.
bool Repair(const RepairOptions& options, Output& standardOutput);

} // namespace vexagpx
