// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/report/LossReport.h>
#include <vexagpx/report/SchemaReport.h>
#include <vexagpx/report/WritingCheck.h>

#include <vector>

namespace vexagpx {

/// What was found out about one document.
struct Findings {
    const LossReport& losses;
    const std::vector<WritingCheck>* writing =
        nullptr; ///< of a document that was read completely, when it was written again
    const SchemaReport* schema = nullptr; ///< when it was checked by its schema
};

} // namespace vexagpx
