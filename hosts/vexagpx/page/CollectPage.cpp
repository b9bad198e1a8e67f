// SPDX-License-Identifier: MIT
#include <vexagpx/page/CollectPage.h>

#include <vexagpx/output/HiddenFields.h>
#include <vexagpx/page/PageFigures.h>
#include <vexagpx/page/PathThinning.h>
#include <vexagpx/page/PlaceBox.h>
#include <vexagpx/terminal/DisplayText.h>

#include <vexaTrackLib/MapProjection.h>
#include <vexaTrackLib/PathLength.h>
#include <vexaTrackLib/PathStatistics.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

constexpr std::size_t kPathLimit = 300;
constexpr std::size_t kWaypointLimit = 2000;
// The latest time that scripts know, in milliseconds since 1970 UTC.
constexpr double kLastTime = 8.64e15;
constexpr double kGreatestHeight = 1e7;

std::string Utf8(const icu::UnicodeString& text) {
    std::string utf8;
    Printable(text).toUTF8String(utf8);
    return utf8;
}

template <class Owner>
std::string NameOf(const Owner& owner) {
    icu::UnicodeString text;
    owner.GetName(text);
    return Utf8(text);
}

bool GetPlace(const GpxPoint& point, double& latitude, double& longitude) {
    point.GetPoint(latitude, longitude);
    return std::abs(latitude) <= 90.0 && std::isfinite(longitude);
}

double HeightOf(const GpxPoint& point) {
    double height = 0.0;
    return point.GetElevation(height) && std::abs(height) < kGreatestHeight ? height : kMissing;
}

double TimeOf(const GpxPoint& point) {
    double time = 0.0;
    return point.GetTime(time) && std::abs(time) < kLastTime ? time : kMissing;
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
    return Utf8(note);
}

/// Takes the figures and the pauses of a path.
void TakeStatistics(PagePath& path, const vexaTrackLib::PathStatistics& statistics) {
    constexpr std::size_t kMarkedPauses = 200;
    path.figures = PathFigures(statistics, path.segments.size());
    for (const vexaTrackLib::Pause& pause : statistics.pauses) {
        if (path.pauses.size() == kMarkedPauses)
            break;
        path.pauses.push_back({pause.start, pause.seconds});
    }
}

/// Fills in what is missing between two points of a segment that are near to each other, so that a value that some points
/// lack does not interrupt the profile.
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

/// Takes the points of one document; projects them when all places are known.
class Collector {
public:
    PageDocument Collect(const GpxDocument& document);

private:
    void TakeWaypoint(const GpxPoint& point);
    void TakeRoutes(const GpxDocument& document);
    void TakeTracks(const GpxDocument& document);
    PagePath* AddPath(const std::string& kind, std::size_t number, const std::string& name);
    void StartSegment(PagePath& path);
    void TakePoint(PagePath& path, const GpxPoint& point);
    template <class Visit>
    void ForEachPlace(const Visit& visit);
    vexaTrackLib::MapProjection ChooseProjection(double latitude, double longitude);
    void Project();

    PageDocument page_;
    PlaceBox box_;
    vexaTrackLib::PathLength length_;
};

void Collector::TakeWaypoint(const GpxPoint& point) {
    PageWaypoint waypoint;
    if (!GetPlace(point, waypoint.latitude, waypoint.longitude))
        return;
    if (page_.waypoints.size() == kWaypointLimit) {
        ++page_.omittedWaypoints;
        return;
    }
    box_.Add(waypoint.latitude, waypoint.longitude);
    waypoint.name = NameOf(point);
    waypoint.note = NoteOf(point);
    waypoint.height = HeightOf(point);
    page_.waypoints.push_back(std::move(waypoint));
}

/// \returns null when the page has as many paths as it can show
PagePath* Collector::AddPath(const std::string& kind, std::size_t number, const std::string& name) {
    if (page_.paths.size() == kPathLimit) {
        ++page_.omittedPaths;
        return nullptr;
    }
    length_ = vexaTrackLib::PathLength();
    PagePath& path = page_.paths.emplace_back();
    path.name = kind + ' ' + std::to_string(number) + (name.empty() ? "" : ": " + name);
    return &path;
}

void Collector::StartSegment(PagePath& path) {
    length_.Break();
    if (path.segments.empty() || !path.segments.back().empty())
        path.segments.emplace_back();
}

/// Latitude and longitude are in y and x until they are projected.
void Collector::TakePoint(PagePath& path, const GpxPoint& point) {
    PagePoint taken;
    if (!GetPlace(point, taken.y, taken.x))
        return;
    box_.Add(taken.y, taken.x);
    length_.Add(taken.y, taken.x);
    taken.distance = length_.Metres();
    taken.height = HeightOf(point);
    taken.time = TimeOf(point);
    path.segments.back().push_back(taken);
}

void Collector::TakeRoutes(const GpxDocument& document) {
    std::size_t number = 0;
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route) {
        PagePath* const path = AddPath("Route", ++number, NameOf(*route));
        if (path == nullptr)
            continue;
        StartSegment(*path);
        for (auto point = route->GetPointIter(); point != route->GetPointEndIter(); ++point)
            TakePoint(*path, *point);
        TakeStatistics(*path, vexaTrackLib::StatisticsOf(*route));
    }
}

void Collector::TakeTracks(const GpxDocument& document) {
    std::size_t number = 0;
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        PagePath* const path = AddPath("Track", ++number, NameOf(*track));
        if (path == nullptr)
            continue;
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment) {
            StartSegment(*path);
            for (auto point = track->GetPointIter(segment); point != track->GetPointEndIter(segment); ++point)
                TakePoint(*path, *point);
        }
        TakeStatistics(*path, vexaTrackLib::StatisticsOf(*track));
    }
}

/// Calls `visit` with the latitude, the longitude and the two coordinates of each place.
template <class Visit>
void Collector::ForEachPlace(const Visit& visit) {
    for (PagePath& path : page_.paths)
        for (PageSegment& segment : path.segments)
            for (PagePoint& point : segment)
                visit(point.y, point.x, point.x, point.y);
    for (PageWaypoint& waypoint : page_.waypoints)
        visit(waypoint.latitude, waypoint.longitude, waypoint.x, waypoint.y);
}

/// A map of a region, or of the world if the places are in more than a region.
vexaTrackLib::MapProjection Collector::ChooseProjection(double latitude, double longitude) {
    using vexaTrackLib::MapProjection;
    constexpr double kFarthestOfRegion = 8.9e6;
    const MapProjection region = MapProjection::OfRegion(latitude, longitude);
    double farthest = 0.0;
    ForEachPlace([&](double placeLatitude, double placeLongitude, double&, double&) {
        const MapProjection::Place place = region.Project(placeLatitude, placeLongitude);
        farthest = std::max(farthest, std::hypot(place.x, place.y));
    });
    return farthest > kFarthestOfRegion ? MapProjection::OfWorld(longitude) : region;
}

/// Projects all places, and measures what is drawn.
void Collector::Project() {
    constexpr double kGreatestPlane = 4e6;
    constexpr double kNearPole = 88.0;
    double latitude = 0.0;
    double longitude = 0.0;
    box_.Middle(latitude, longitude);
    const vexaTrackLib::MapProjection projection = ChooseProjection(latitude, longitude);
    double reach = 0.0;
    ForEachPlace([&](double placeLatitude, double placeLongitude, double& x, double& y) {
        const vexaTrackLib::MapProjection::Place place = projection.Project(placeLatitude, placeLongitude);
        x = place.x;
        y = -place.y;
        reach = std::max({reach, std::abs(x), std::abs(y)});
    });
    page_.extent = 2.0 * reach;
    page_.isOfWorld = projection.IsOfWorld();
    page_.isNorthUp = page_.extent < kGreatestPlane && std::abs(latitude) < kNearPole;
}

PageDocument Collector::Collect(const GpxDocument& document) {
    TakeTracks(document);
    TakeRoutes(document);
    for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point)
        TakeWaypoint(*point);
    for (PagePath& path : page_.paths) {
        if (!path.segments.empty() && path.segments.back().empty())
            path.segments.pop_back();
        BridgeGaps(path);
    }
    Project();
    ThinPaths(page_, kPagePoints);
    return std::move(page_);
}

} // namespace

PageDocument CollectPage(const GpxDocument& document, const std::string& name) {
    PageDocument page = Collector().Collect(document);
    page.name = Utf8(DocumentName(document));
    if (page.name.empty())
        page.name = Utf8(icu::UnicodeString::fromUTF8(name.substr(name.rfind('/') + 1)));
    return page;
}

} // namespace vexagpx
