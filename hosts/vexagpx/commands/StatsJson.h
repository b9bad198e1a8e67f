// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/commands/PathFigures.h>
#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/process/Output.h>

namespace vexagpx {

/// \{
/// Write a line of JSON. Lengths are in metres, durations in seconds, speeds in metres a second, times as RFC 3339 has
/// them. What there is no value for has no member.
void WriteStatsJson(const DocumentFigures& document, const DocumentSource& source, Output& out);
void WriteStatsJson(const TotalFigures& total, Output& out);
/// \}

} // namespace vexagpx
