// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>

#include <limits>
#include <string>
#include <vector>

namespace vexagpx {

/// A number that a point does not have.
inline constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();

/// A point of a route or track.
struct PathPoint {
    double latitude = 0.0;  ///< in degrees, -90 to 90
    double longitude = 0.0; ///< in degrees, finite
    double distance = 0.0;  ///< metres from the start of the path, without the gaps between segments
    double height = kNoValue;
    double time = kNoValue; ///< milliseconds since 1970 UTC
};

using PathSegment = std::vector<PathPoint>;

/// A route or a track.
struct PathOfPoints {
    std::string name; ///< UTF-8, on one line; never empty
    bool isRoute = false;
    std::size_t number = 0;            ///< among the tracks or the routes of its document, from 1
    std::vector<PathSegment> segments; ///< none is empty

    double Length() const { return segments.empty() ? 0.0 : segments.back().back().distance; }
};

struct MarkedPlace {
    std::string name; ///< UTF-8, on one line; may be empty
    bool isCache = false;
    double latitude = 0.0;
    double longitude = 0.0;
};

/// What a picture shows of one document or more.
struct PathData {
    std::string title; ///< UTF-8, on one line
    std::vector<PathOfPoints> paths;
    std::vector<MarkedPlace> places;

    /// Calls `visit` with latitude and longitude of each point and place.
    template <class Visit>
    void ForEachPlace(const Visit& visit) const {
        for (const PathOfPoints& path : paths)
            for (const PathSegment& segment : path.segments)
                for (const PathPoint& point : segment)
                    visit(point.latitude, point.longitude);
        for (const MarkedPlace& place : places)
            visit(place.latitude, place.longitude);
    }

    bool IsEmpty() const { return paths.empty() && places.empty(); }

    /// Adds what a document contains: tracks, routes, waypoints. A point without a place on the earth is left out, and
    /// so is a path without points.
    /// \param source names the document in the title if it has no name
    void Add(const vexaTransferLib::GpxDocument& document, const std::string& source);
};

} // namespace vexagpx
