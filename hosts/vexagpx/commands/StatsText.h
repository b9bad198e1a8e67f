// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/commands/PathFigures.h>
#include <vexagpx/process/Output.h>
#include <vexagpx/terminal/Units.h>

#include <string>

namespace vexagpx {

/// \{
/// Write figures for a person: a block of lines for each track and route, and for their sums where there are several.
void WriteStatsText(const DocumentFigures& document, const std::string& heading, Units units, Output& out);
void WriteStatsText(const TotalFigures& total, Units units, Output& out);
/// \}

} // namespace vexagpx
