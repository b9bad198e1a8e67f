// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <optional>
#include <string>

namespace vexagpx {

struct SplitOptions {
    std::string in;
    std::string folder;          ///< made when there is none
    std::optional<double> pause; ///< in seconds
    std::optional<double> every; ///< in metres
    bool byDay = false;
    std::string zone; ///< whose days they are, such as "Europe/Zurich"; empty for UTC
    bool dryRun = false;
    bool json = false;
    InputRules rules;
};

/// True for the name of a time zone, such as "Europe/Zurich".
bool IsTimeZone(const std::string& name);

/// Splits the tracks of a file into several files. False after a failure, which has been reported.
bool Split(const SplitOptions& options, Output& standardOutput);

} // namespace vexagpx
