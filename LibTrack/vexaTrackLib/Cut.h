// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Cuts a place or a time out of a document.

#include <common/Export.h>
#include <vexaTrackLib/CutArea.h>

#include <cstddef>

namespace vexaTransferLib {
class GpxDocument;
} // namespace vexaTransferLib

namespace vexaTrackLib {

/// What was cut.
struct CutResult {
    std::size_t waypoints = 0;   ///< waypoints that were removed
    std::size_t routePoints = 0; ///< points of routes that were removed
    std::size_t trackPoints = 0; ///< points of tracks that were removed
    std::size_t routes = 0;      ///< routes that lost all their points, and were removed
    std::size_t tracks = 0;      ///< tracks that lost all their points, and were removed
    std::size_t holes = 0;       ///< where a segment or a route was divided
    /// Elements and comments that were removed because they name a place in the area: links, texts, foreign elements.
    std::size_t traces = 0;
    std::size_t withoutTime = 0; ///< points that have no time, when the area has a span: they are not in it

    /// Whether the document is as it was.
    bool IsNothing() const { return waypoints + routePoints + trackPoints + holes + traces == 0; }
};

// Both remove points, and objects that have no points any more. Where points of a segment were removed, a new segment
// starts; a route is divided into several, which all have its texts. The bounds of the metadata, if there are any,
// become those of what is left. What stays keeps all that it has, and GpxSaver keeps it byte for byte.
//
// The document must have been read completely for traces and bounds to be found; any other one is cut without these.
// Time and memory are linear in the document. They throw std::bad_alloc, and then some of it may be cut already.

/// Removes everything in an area. Of an area that has places and no span, no trace is left:
///
/// - A line that passes through it is divided there, even when it has no point in it.
/// - Elements are removed that name a place in it, by attributes or elements for latitude and longitude, or as a text:
///   "46.95123, 7.45123", "N 46° 57.074 E 7° 27.074". These are links, descriptions, and elements of other formats;
///   comments and processing instructions, too.
///
/// A place that is only told in words ("my garden") stays. Save the document with GpxSaver: GpxStandardWriter writes
/// what was read of the elements that are removed.
///
///     const CutResult result = CutOut(document, CutArea::Around(46.95, 7.45, 500.0));
VEXATRANSFERLIB_API CutResult CutOut(vexaTransferLib::GpxDocument& document, const CutArea& area);

/// Removes everything that is not in an area.
VEXATRANSFERLIB_API CutResult CutTo(vexaTransferLib::GpxDocument& document, const CutArea& area);

} // namespace vexaTrackLib
