// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/process/Output.h>
#include <vexagpx/report/DocumentCounts.h>
#include <vexagpx/report/Findings.h>

#include <string>

namespace vexagpx {

/// Writes what was found out as one JSON object on one line.
void WriteLossReportJson(const DocumentSource& source, const DocumentCounts& counts, const Findings& findings,
                         Output& out);

/// The same for what could not be read: the error, the XML parser's messages, and what the schema says.
void WriteFailureJson(const DocumentSource& source, const std::string& error, const Findings& findings,
                      Output& out);

} // namespace vexagpx
