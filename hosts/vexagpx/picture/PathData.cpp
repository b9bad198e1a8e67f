// SPDX-License-Identifier: MIT
#include <vexagpx/picture/PathData.h>

#include <vexagpx/output/HiddenFields.h>
#include <vexagpx/terminal/DisplayText.h>

#include <vexaTrackLib/PathLength.h>

#include <cmath>
#include <utility>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

constexpr double kGreatestHeight = 1e7;
constexpr double kLatestTime = 8.64e15;

std::string OneLine(const icu::UnicodeString& text) {
    std::string utf8;
    Printable(text).toUTF8String(utf8);
    return utf8;
}

template <class Named>
std::string NameOf(const Named& object) {
    icu::UnicodeString name;
    object.GetName(name);
    return OneLine(name);
}

/// Puts the points of a route or track into segments.
class PathBuilder {
public:
    PathBuilder(const std::string& name, std::size_t number, bool isRoute) {
        path_.name = !name.empty() ? name : (isRoute ? "route " : "track ") + std::to_string(number);
        path_.number = number;
        path_.isRoute = isRoute;
    }

    void StartSegment() {
        length_.Break();
        if (path_.segments.empty() || !path_.segments.back().empty())
            path_.segments.emplace_back();
    }

    void Add(const GpxPoint& point) {
        PathPoint taken;
        point.GetPoint(taken.latitude, taken.longitude);
        if (!(std::abs(taken.latitude) <= 90.0) || !std::isfinite(taken.longitude))
            return;
        length_.Add(taken.latitude, taken.longitude);
        taken.distance = length_.Metres();
        double value = 0.0;
        if (point.GetElevation(value) && std::abs(value) < kGreatestHeight)
            taken.height = value;
        if (point.GetTime(value) && std::abs(value) < kLatestTime)
            taken.time = value;
        path_.segments.back().push_back(taken);
    }

    void AddTo(std::vector<PathOfPoints>& paths) {
        if (!path_.segments.empty() && path_.segments.back().empty())
            path_.segments.pop_back();
        if (!path_.segments.empty())
            paths.push_back(std::move(path_));
    }

private:
    PathOfPoints path_;
    vexaTrackLib::PathLength length_;
};

void AddTracks(const GpxDocument& document, std::vector<PathOfPoints>& paths) {
    std::size_t number = 0;
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        PathBuilder builder(NameOf(*track), ++number, false);
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment) {
            builder.StartSegment();
            for (auto point = track->GetPointIter(segment); point != track->GetPointEndIter(segment); ++point)
                builder.Add(*point);
        }
        builder.AddTo(paths);
    }
}

void AddRoutes(const GpxDocument& document, std::vector<PathOfPoints>& paths) {
    std::size_t number = 0;
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route) {
        PathBuilder builder(NameOf(*route), ++number, true);
        builder.StartSegment();
        for (auto point = route->GetPointIter(); point != route->GetPointEndIter(); ++point)
            builder.Add(*point);
        builder.AddTo(paths);
    }
}

void AddWaypoints(const GpxDocument& document, std::vector<MarkedPlace>& places) {
    for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point) {
        MarkedPlace place;
        point->GetPoint(place.latitude, place.longitude);
        if (!(std::abs(place.latitude) <= 90.0) || !std::isfinite(place.longitude))
            continue;
        GpxGroundspeakCache cache;
        place.isCache = point->GetGroundspeakCache(cache);
        if (place.isCache)
            place.name = OneLine(cache.name);
        if (place.name.empty())
            place.name = NameOf(*point);
        places.push_back(std::move(place));
    }
}

} // namespace

void PathData::Add(const GpxDocument& document, const std::string& source) {
    AddTracks(document, paths);
    AddRoutes(document, paths);
    AddWaypoints(document, places);
    std::string name = OneLine(DocumentName(document));
    if (name.empty())
        name = OneLine(icu::UnicodeString::fromUTF8(source.substr(source.rfind('/') + 1)));
    title += (title.empty() ? "" : ", ") + name;
}

} // namespace vexagpx
