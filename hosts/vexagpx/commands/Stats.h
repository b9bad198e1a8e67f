// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>
#include <vexagpx/terminal/Units.h>

#include <vexaTrackLib/PathStatistics.h>

#include <string>
#include <vector>

namespace vexagpx {

struct StatsOptions {
    std::vector<std::string> files;
    InputRules rules;
    vexaTrackLib::StatisticsOptions figures;
    Units units = Units::kMetric; ///< of the text; JSON has metres and seconds
    bool total = false;           ///< the sums of all files follow
    bool json = false;
};

/// The `stats` command: how far, how high, how long and how fast tracks and routes go. False when a file could not be
/// read.
bool Stats(const StatsOptions& options, Output& out);

} // namespace vexagpx
