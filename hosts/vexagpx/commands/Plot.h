// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <string>
#include <vector>

namespace vexagpx {

struct PlotOptions {
    std::vector<std::string> files;
    std::string out; ///< its ending says what is written
    InputRules rules;
};

/// The `plot` command: writes a page of HTML that shows the documents. False after a failure, which has been reported. A
/// file that cannot be read is left out; without any document nothing is written.
bool Plot(const PlotOptions& options, Output& standardOutput);

} // namespace vexagpx
