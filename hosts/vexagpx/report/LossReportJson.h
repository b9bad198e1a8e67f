// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/process/Output.h>
#include <vexagpx/report/DocumentCounts.h>
#include <vexagpx/report/LossReport.h>
#include <vexagpx/report/WritingCheck.h>

#include <string>
#include <vector>

namespace vexagpx {

/// Writes a report as one JSON object on one line.
/// \param writing of a document that was read completely; null for any other
void WriteLossReportJson(const DocumentSource& source, const DocumentCounts& counts, const LossReport& report,
                         const std::vector<WritingCheck>* writing, Output& out);

/// The same for what could not be read: the error, and the XML parser's messages.
void WriteFailureJson(const DocumentSource& source, const std::string& error, const LossReport& report,
                      Output& out);

} // namespace vexagpx
