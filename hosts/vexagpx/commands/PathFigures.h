// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTrackLib/PathStatistics.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <vector>

namespace vexagpx {

/// The figures of one track or route.
struct PathFigures {
    icu::UnicodeString name;
    std::size_t segments = 1; ///< of a route always one
    vexaTrackLib::PathStatistics figures;
};

/// The figures of all tracks, or of all routes, as one.
struct PathSum {
    std::size_t count = 0;
    std::size_t segments = 0;
    vexaTrackLib::PathStatistics figures;

    void Add(const PathFigures& path) {
        ++count;
        segments += path.segments;
        figures.Add(path.figures);
    }
    void Add(const PathSum& other) {
        count += other.count;
        segments += other.segments;
        figures.Add(other.figures);
    }
};

/// The figures of a document. Tracks and routes have sums of their own: what was travelled, and what is planned.
struct DocumentFigures {
    std::vector<PathFigures> tracks;
    std::vector<PathFigures> routes;
    PathSum allTracks;
    PathSum allRoutes;
};

/// The figures of several documents as one.
struct TotalFigures {
    std::size_t files = 0;
    PathSum allTracks;
    PathSum allRoutes;
};

} // namespace vexagpx
