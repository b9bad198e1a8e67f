// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>

#include <string>

namespace vexagpx {

struct CleanOptions {
    std::string file = "-";
};

/// The `clean` command. False after a failure, which has been reported on standard error.
bool Clean(const CleanOptions& options, Output& out);

} // namespace vexagpx
