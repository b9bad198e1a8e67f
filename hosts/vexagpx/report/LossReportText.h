// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>
#include <vexagpx/report/DocumentCounts.h>
#include <vexagpx/report/Findings.h>

#include <cstdint>
#include <string>

namespace vexagpx {

/// Writes for a person what was read of a document, and what was skipped or changed.
/// \param counts null for a document that could not be read: then what was skipped of it is not written
void WriteLossReportText(const std::string& heading, const DocumentCounts* counts, const Findings& findings,
                         Output& out);

/// The sums over several documents.
struct CheckTotals {
    std::uint64_t documents = 0; ///< that were read
    std::uint64_t failures = 0;  ///< files and entries of archives that could not be read
    std::uint64_t skipped = 0;   ///< or changed
    std::uint64_t lost = 0;      ///< those that are losses
    std::uint64_t valid = 0;     ///< documents that were checked by their schema, and are as it says
    std::uint64_t invalid = 0;   ///< those that are not
};

/// In one or two sentences.
std::string SummaryText(const CheckTotals& totals);
/// The same for documents that were read completely and written again.
std::string KeepSummaryText(const CheckTotals& totals);
/// "3 documents are valid by their schema, 1 is not."; empty when none was checked.
std::string SchemaSummaryText(std::uint64_t valid, std::uint64_t invalid);

} // namespace vexagpx
