// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/caches/CacheDetails.h>
#include <vexagpx/process/Output.h>

#include <cstddef>

namespace vexagpx {

/// Writes a row for each geocache. Companions are a cell with their codes; orphans and logs have no place in the table,
/// and the number of orphans is told on standard error.
void WriteCachesCsv(const std::vector<vexaTrackLib::Geocache>& caches, std::size_t orphanCount,
                    const CacheDetailsWanted& details, Output& out);

} // namespace vexagpx
