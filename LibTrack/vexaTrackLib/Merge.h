// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Puts several documents together, each thing once.

#include <common/Export.h>
#include <vexaTransferLib/GpxPoint.h>

#include <cstddef>
#include <vector>

namespace vexaTransferLib {
class GpxDocument;
} // namespace vexaTransferLib

namespace vexaTrackLib {

/// How tracks are put together.
enum class MergeTracks {
    kWhole, ///< a track that is new comes behind the others
    kByTime ///< and then all tracks with times are brought into the order of their first points
};

/// What a merge did to the document. Plain data.
struct VEXATRANSFERLIB_API MergeResult {
    std::size_t addedWaypoints = 0;    ///< waypoints that were not there
    std::size_t replacedWaypoints = 0; ///< waypoints of which the other document had a newer version
    std::size_t addedLogs = 0;         ///< logs that geocaches got
    std::size_t replacedLogs = 0;      ///< logs of which the other document had a newer version
    std::size_t addedRoutes = 0;       ///< routes that were not there
    std::size_t addedTracks = 0;       ///< tracks that were not there, or of which some points were not
    std::size_t addedPoints = 0;       ///< points of these tracks
    std::size_t sameObjects = 0;       ///< waypoints, routes and tracks that were there already
    bool isReordered = false;          ///< tracks were brought into another order
    /// Waypoints that were left out for another version of the same. One that only has other logs is none, but one that
    /// has another version of a log is.
    std::vector<vexaTransferLib::GpxPoint> losers;

    /// Whether the document is as it was.
    bool IsNothing() const {
        return addedWaypoints + replacedWaypoints + addedLogs + replacedLogs + addedRoutes + addedTracks ==
                   0 &&
               !isReordered;
    }
};

/// Puts what other documents have into a document. The same merge twice changes nothing.
///
/// **Waypoints** are the same when they have the same name and are within ten metres, or one of them is a geocache,
/// whose name is its code; without names, when they have the same place and time. Of two versions the newer one stays:
/// by the time of the waypoint, for geocaches by the time of the documents that they come from; when that does not
/// tell, the one that is there. Logs of geocaches are united by their identifiers, the newest first; of two versions of
/// a log that of the newer document stays.
///
/// **Routes and tracks** are the same when all their content is. Of any other track with times the points are added
/// that no track has at the same place and time, in segments of their own: what lies between is not bridged.
///
/// Metadata is that of the document. Objects bring their XML along when both documents were read completely. Time and
/// memory are linear in all documents.
///
///     const MergeResult result = Merge(document, {&second, &third});
///
/// \throws std::bad_alloc, and then some of it may be merged already
/// \param others one after another; not null
VEXATRANSFERLIB_API MergeResult Merge(vexaTransferLib::GpxDocument& document,
                                      const std::vector<const vexaTransferLib::GpxDocument*>& others,
                                      MergeTracks tracks = MergeTracks::kWhole);

} // namespace vexaTrackLib
