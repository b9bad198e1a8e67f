// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>
#include <vexagpx/report/Contents.h>
#include <vexagpx/report/Receipt.h>

#include <cstdint>
#include <string>

namespace vexagpx {

/// For a person: what was read of a document, and what was passed over.
/// \param contents null for a document that could not be read: then only the messages of the XML parser
void WriteReceiptText(const std::string& heading, const Contents* contents, const Receipt& receipt,
                      Output& out);

/// What the receipts of several documents come to.
struct CheckTotals {
    std::uint64_t documents = 0; ///< that were read
    std::uint64_t failures = 0;  ///< files and entries of archives that could not be read
    std::uint64_t passed = 0;
    std::uint64_t lost = 0; ///< of which a document could have held
};

/// In one or two sentences.
std::string SummaryText(const CheckTotals& totals);

} // namespace vexagpx
