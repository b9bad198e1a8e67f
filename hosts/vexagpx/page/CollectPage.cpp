// SPDX-License-Identifier: MIT
#include <vexagpx/page/CollectPage.h>

#include <vexagpx/page/PageFigures.h>
#include <vexagpx/page/PathThinning.h>
#include <vexagpx/picture/MapChoice.h>
#include <vexagpx/picture/PathData.h>
#include <vexagpx/terminal/DisplayText.h>

#include <vexaTrackLib/PathStatistics.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vexagpx {

using namespace vexaTransferLib;
using vexaTrackLib::MapProjection;

namespace {

constexpr std::size_t kPathLimit = 300;
constexpr std::size_t kWaypointLimit = 2000;

std::string PrintableUtf8(const icu::UnicodeString& text) {
    std::string utf8;
    Printable(text).toUTF8String(utf8);
    return utf8;
}

/// "Cache name (Traditional Cache, Small, 1.5/2)", or the description of any other waypoint.
std::string NoteOf(const GpxPoint& waypoint) {
    constexpr std::int32_t kLongest = 200;
    icu::UnicodeString note;
    GpxGroundspeakCache cache;
    if (waypoint.GetGroundspeakCache(cache)) {
        note = cache.name + u" (" + cache.type + u", " + cache.container + u", " + cache.difficulty + u'/' +
               cache.terrain + u')';
    } else if (!waypoint.GetDescription(note) || note.isEmpty()) {
        waypoint.GetComment(note);
    }
    if (note.countChar32() > kLongest)
        note = note.tempSubString(0, note.moveIndex32(0, kLongest)) + u'\u2026';
    return PrintableUtf8(note);
}

/// "Track 2: over the hills", "Route 1".
std::string TitleOf(const PathOfPoints& path) {
    const std::string number = std::to_string(path.number);
    const std::string title = (path.isRoute ? "Route " : "Track ") + number;
    const bool hasName = path.name != (path.isRoute ? "route " : "track ") + number;
    return hasName ? title + ": " + path.name : title;
}

/// Takes the figures and the pauses of a path.
void TakeFigures(PagePath& path, const vexaTrackLib::PathStatistics& statistics) {
    constexpr std::size_t kMarkedPauses = 200;
    path.figures = PathFigures(statistics, path.segments.size());
    for (const vexaTrackLib::Pause& pause : statistics.pauses) {
        if (path.pauses.size() == kMarkedPauses)
            break;
        path.pauses.push_back({pause.start, pause.seconds});
    }
}

/// Fills in what is missing between two points of a segment that are near to each other, so that a value that some
/// points lack does not interrupt the profile.
void Bridge(PageSegment& segment, double PagePoint::*value, double reach) {
    std::size_t last = segment.size();
    for (std::size_t i = 0; i < segment.size(); ++i) {
        if (std::isnan(segment[i].*value))
            continue;
        if (last + 1 < i && segment[i].distance - segment[last].distance <= reach) {
            const PagePoint start = segment[last];
            const double steps = static_cast<double>(i - last);
            const double rise = segment[i].*value - start.*value;
            for (std::size_t k = last + 1; k < i; ++k)
                segment[k].*value = start.*value + rise * static_cast<double>(k - last) / steps;
        }
        last = i;
    }
}

/// The same for heights and times of a path, over a fiftieth of its length.
void BridgeGaps(PagePath& path) {
    if (path.segments.empty())
        return;
    const double reach = path.segments.back().back().distance / 50.0;
    for (PageSegment& segment : path.segments) {
        Bridge(segment, &PagePoint::height, reach);
        Bridge(segment, &PagePoint::time, reach);
    }
}

/// Turns the data of one document into what the page shows of it.
class Collector {
public:
    Collector(const GpxDocument& document, const std::string& source);

    PageDocument Collect() &&;

private:
    void TakePath(PathOfPoints& path);
    void TakeStatistics();
    void TakeWaypoints();
    /// Places of the page are seen from above, so y is downwards.
    template <class Placed>
    void Project(double latitude, double longitude, Placed& placed);

    const GpxDocument& document_;
    PathData data_;
    MapChoice map_;
    PageDocument page_;
};

Collector::Collector(const GpxDocument& document, const std::string& source)
    : document_(document), map_{MapProjection::OfRegion(0.0, 0.0)} {
    data_.Add(document, source);
    if (!data_.IsEmpty())
        map_ = ChooseMap(data_);
}

template <class Placed>
void Collector::Project(double latitude, double longitude, Placed& placed) {
    const MapProjection::Place place = map_.projection.Project(latitude, longitude);
    placed.x = place.x;
    placed.y = -place.y;
    page_.extent = std::max({page_.extent, 2.0 * std::abs(place.x), 2.0 * std::abs(place.y)});
}

/// Takes the points, and frees the memory that they had.
void Collector::TakePath(PathOfPoints& path) {
    PagePath& taken = page_.paths.emplace_back();
    taken.name = TitleOf(path);
    for (PathSegment& segment : path.segments) {
        PageSegment& points = taken.segments.emplace_back();
        points.reserve(segment.size());
        for (const PathPoint& point : segment) {
            PagePoint& added = points.emplace_back();
            Project(point.latitude, point.longitude, added);
            added.distance = point.distance;
            added.height = point.height;
            added.time = point.time;
        }
        segment = PathSegment();
    }
    BridgeGaps(taken);
}

/// Paths without points are not in the data.
void Collector::TakeStatistics() {
    std::size_t taken = 0;
    const auto take = [&](bool isRoute, std::size_t number, const auto& measured) {
        if (taken == page_.paths.size())
            return;
        const PathOfPoints& path = data_.paths[taken];
        if (path.isRoute == isRoute && path.number == number)
            TakeFigures(page_.paths[taken++], vexaTrackLib::StatisticsOf(measured));
    };
    std::size_t number = 0;
    for (auto track = document_.GetTrackIter(); track != document_.GetTrackEndIter(); ++track)
        take(false, ++number, *track);
    number = 0;
    for (auto route = document_.GetRouteIter(); route != document_.GetRouteEndIter(); ++route)
        take(true, ++number, *route);
}

/// The data has their places, and the document the rest.
void Collector::TakeWaypoints() {
    for (auto point = document_.GetWaypointIter(); point != document_.GetWaypointEndIter(); ++point) {
        PageWaypoint waypoint;
        point->GetPoint(waypoint.latitude, waypoint.longitude);
        if (!(std::abs(waypoint.latitude) <= 90.0) || !std::isfinite(waypoint.longitude))
            continue;
        if (page_.waypoints.size() == kWaypointLimit) {
            ++page_.omittedWaypoints;
            continue;
        }
        Project(waypoint.latitude, waypoint.longitude, waypoint);
        icu::UnicodeString name;
        point->GetName(name);
        waypoint.name = PrintableUtf8(name);
        waypoint.note = NoteOf(*point);
        if (double height = 0.0; point->GetElevation(height) && std::isfinite(height))
            waypoint.height = height;
        page_.waypoints.push_back(std::move(waypoint));
    }
}

PageDocument Collector::Collect() && {
    constexpr double kGreatestPlane = 4e6;
    constexpr double kNearPole = 88.0;
    page_.name = data_.title;
    for (PathOfPoints& path : data_.paths) {
        if (page_.paths.size() < kPathLimit)
            TakePath(path);
        else
            ++page_.omittedPaths;
    }
    TakeStatistics();
    TakeWaypoints();
    page_.isOfWorld = map_.projection.IsOfWorld();
    page_.isNorthUp =
        !page_.isOfWorld && page_.extent < kGreatestPlane && std::abs(map_.latitude) < kNearPole;
    ThinPaths(page_, kPagePoints);
    return std::move(page_);
}

} // namespace

PageDocument CollectPage(const GpxDocument& document, const std::string& source) {
    return Collector(document, source).Collect();
}

} // namespace vexagpx
