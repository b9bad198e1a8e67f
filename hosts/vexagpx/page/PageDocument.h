// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/PathData.h>

#include <cstddef>
#include <string>
#include <vector>

namespace vexagpx {

/// A point of a route or track, as the page draws it.
struct PagePoint {
    double x = 0.0;        ///< metres from the middle of the map towards the right
    double y = 0.0;        ///< metres from the middle of the map downwards
    double distance = 0.0; ///< metres along the path, without the gaps between segments
    double height = kNoValue;
    double time = kNoValue; ///< milliseconds since 1970 UTC
};

using PageSegment = std::vector<PagePoint>;

/// A line of a table of figures; both in UTF-8.
struct PageFigure {
    std::string label;
    std::string value;
};

/// A part of a path without movement.
struct PagePause {
    double start = 0.0;   ///< milliseconds since 1970 UTC
    double seconds = 0.0; ///< how long it took
};

/// A route or a track.
struct PagePath {
    std::string name; ///< UTF-8, never empty
    std::vector<PageSegment> segments;
    std::vector<PageFigure> figures;
    std::vector<PagePause> pauses;
};

struct PageWaypoint {
    std::string name; ///< UTF-8; may be empty
    std::string note; ///< what it is, in UTF-8; may be empty
    double x = 0.0;
    double y = 0.0;
    double latitude = 0.0;
    double longitude = 0.0;
    double height = kNoValue;
};

/// What the page shows of a document.
struct PageDocument {
    std::string name; ///< UTF-8
    std::vector<PagePath> paths;
    std::vector<PageWaypoint> waypoints;
    std::size_t omittedPaths = 0;     ///< routes and tracks beyond those that the page can show
    std::size_t omittedWaypoints = 0; ///< the same of waypoints
    double extent = 0.0;              ///< the greater of width and height of what is drawn, in metres
    bool isOfWorld = false;           ///< the left and the right edge of the map are the same meridian
    bool isNorthUp = true;            ///< false near a pole and for continents
};

} // namespace vexagpx
