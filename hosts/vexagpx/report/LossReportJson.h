// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/process/Output.h>
#include <vexagpx/report/DocumentCounts.h>
#include <vexagpx/report/LossReport.h>

#include <string>

namespace vexagpx {

/// Writes a report as one JSON object on one line.
void WriteLossReportJson(const DocumentSource& source, const DocumentCounts& counts, const LossReport& report,
                         Output& out);

/// The same for what could not be read: the error, and the XML parser's messages.
void WriteFailureJson(const DocumentSource& source, const std::string& error, const LossReport& report,
                      Output& out);

} // namespace vexagpx
