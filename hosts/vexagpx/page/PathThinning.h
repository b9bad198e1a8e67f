// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/page/PageDocument.h>

#include <cstddef>
#include <vector>

namespace vexagpx {

/// How far a thinned path may be from the whole one.
struct ThinningTolerance {
    double map = 0.0;      ///< metres on the map
    double height = 0.0;   ///< metres
    double distance = 0.0; ///< metres along the path at any time
    bool keepsGaps =
        true; ///< keeps the ends of stretches without heights or times, and where the time goes back

    void Double() {
        map *= 2.0;
        height *= 2.0;
        distance *= 2.0;
    }
};

/// Leaves out the points that are near enough to the straight lines between the others, on the map, of the heights over
/// the distance and of the distance over the time. First and last point stay. Time and memory are linear.
void ThinSegment(PageSegment& segment, const ThinningTolerance& tolerance);

/// Thins all paths of a document to what a screen shows, and further until they have at most `limit` points. There are
/// more only if the segments are that many.
void ThinPaths(PageDocument& document, std::size_t limit);

/// The same for several documents, which have at most `limit` points in all.
void ThinDocuments(std::vector<PageDocument>& documents, std::size_t limit);

} // namespace vexagpx
