// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/caches/CacheDetails.h>
#include <vexagpx/process/Output.h>

namespace vexagpx {

/// Writes a line of JSON for each geocache, and one for each orphan: {"orphan":{...}}.
void WriteCachesJson(const std::vector<vexaTrackLib::Geocache>& caches,
                     const std::vector<vexaTrackLib::GeocacheCompanion>& orphans,
                     const CacheDetailsWanted& details, Output& out);

} // namespace vexagpx
