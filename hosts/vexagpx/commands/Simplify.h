// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/editing/EditOptions.h>
#include <vexagpx/editing/PathChoice.h>
#include <vexagpx/process/Output.h>

#include <cstdint>

namespace vexagpx {

struct SimplifyOptions {
    EditOptions edit;
    PathChoice paths;
    double error = 0.0;       ///< in metres; 0 when the number of points is given
    std::uint64_t points = 0; ///< that each track and route may have; 0 when the error is given
};

/// The `simplify` command: leaves out the points of tracks and routes that do not show. False after a failure, which
/// has been reported.
bool Simplify(const SimplifyOptions& options, Output& standardOutput);

} // namespace vexagpx
