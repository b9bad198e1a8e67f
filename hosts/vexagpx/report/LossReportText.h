// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>
#include <vexagpx/report/DocumentCounts.h>
#include <vexagpx/report/LossReport.h>

#include <cstdint>
#include <string>

namespace vexagpx {

/// For a person: what was read of a document, and what was skipped.
/// \param counts null for a document that could not be read: then only the messages of the XML parser
void WriteLossReportText(const std::string& heading, const DocumentCounts* counts, const LossReport& report,
                         Output& out);

/// What the reports of several documents come to.
struct CheckTotals {
    std::uint64_t documents = 0; ///< that were read
    std::uint64_t failures = 0;  ///< files and entries of archives that could not be read
    std::uint64_t skipped = 0;
    std::uint64_t lost = 0; ///< of which a document could have held
};

/// In one or two sentences.
std::string SummaryText(const CheckTotals& totals);

} // namespace vexagpx
