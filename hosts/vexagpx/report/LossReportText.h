// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>
#include <vexagpx/report/DocumentCounts.h>
#include <vexagpx/report/LossReport.h>
#include <vexagpx/report/WritingCheck.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vexagpx {

/// Writes for a person what was read of a document, and what was skipped or changed.
/// \param counts null for a document that could not be read: then only the XML parser's messages are written
/// \param writing of a document that was read completely; null for any other
void WriteLossReportText(const std::string& heading, const DocumentCounts* counts, const LossReport& report,
                         const std::vector<WritingCheck>* writing, Output& out);

/// The sums over several documents.
struct CheckTotals {
    std::uint64_t documents = 0; ///< that were read
    std::uint64_t failures = 0;  ///< files and entries of archives that could not be read
    std::uint64_t skipped = 0;   ///< or changed
    std::uint64_t lost = 0;      ///< those that are losses
};

/// In one or two sentences.
std::string SummaryText(const CheckTotals& totals);
/// The same for documents that were read completely and written again.
std::string KeepSummaryText(const CheckTotals& totals);

} // namespace vexagpx
