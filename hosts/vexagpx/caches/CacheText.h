// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/caches/CacheDetails.h>
#include <vexagpx/process/Output.h>

#include <cstddef>

namespace vexagpx {

/// What the text tells of.
struct CacheTextContent {
    const std::vector<vexaTrackLib::Geocache>& caches;
    const std::vector<vexaTrackLib::GeocacheCompanion>& orphans;
    std::size_t allCaches;      ///< also those that were filtered out
    std::size_t otherWaypoints; ///< that have nothing to do with geocaches
};

/// Writes a table of the geocaches; with descriptions, a paragraph for each geocache instead.
void WriteCachesText(const CacheTextContent& content, const CacheDetailsWanted& details, Output& out);

} // namespace vexagpx
