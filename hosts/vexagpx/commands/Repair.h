// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/editing/EditOptions.h>
#include <vexagpx/process/Output.h>

namespace vexagpx {

struct RepairOptions {
    EditOptions edit;
};

/// The `repair` command: mends a file that cannot be read. False after a failure, which has been reported.
bool Repair(const RepairOptions& options, Output& standardOutput);

} // namespace vexagpx
