// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/report/DocumentCounts.h>

#include <vexaTrackLib/Bounds.h>
#include <vexaTrackLib/TimeSpan.h>
#include <vexaTransferLib/GpxDocument.h>

#include <string>
#include <string_view>
#include <vector>

namespace vexagpx {

/// What an index says of a document.
struct IndexEntry {
    std::string file;
    std::string entry; ///< of an archive; empty for a file
    std::string error; ///< why it could not be read; the rest is then empty
    std::string
        content; ///< text of its ContentHash; empty when it is not wanted, or nothing is there to compare
    DocumentCounts counts;
    vexaTrackLib::Bounds bounds;
    vexaTrackLib::TimeSpan times; ///< of all points

    /// For a person: "walk.gpx", "query.zip: 1.gpx".
    std::string Name() const { return entry.empty() ? file : file + ": " + entry; }
};

/// Counts everything but the content.
IndexEntry IndexEntryOf(const vexaTransferLib::GpxDocument& document);

/// The kinds of objects that there are: "geocaches", "waypoints", "routes", "tracks". Waypoints are those that are no
/// geocaches.
std::vector<std::string_view> KindsOf(const DocumentCounts& counts);

} // namespace vexagpx
