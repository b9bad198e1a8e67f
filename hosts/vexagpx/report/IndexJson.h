// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>
#include <vexagpx/report/IndexEntry.h>

namespace vexagpx {

/// Writes an entry of an index as a line of JSON.
void WriteIndexJson(const IndexEntry& entry, Output& out);

} // namespace vexagpx
