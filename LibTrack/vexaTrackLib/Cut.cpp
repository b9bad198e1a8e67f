// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Cut.h>

#include <vexaTrackLib/Corrections.h>
#include <vexaTrackLib/cutting/Traces.h>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace vexaTrackLib {

using vexaTransferLib::GpxDocument;
using vexaTransferLib::GpxListEditor;
using vexaTransferLib::GpxPoint;
using vexaTransferLib::GpxRoute;
using vexaTransferLib::GpxTrack;

namespace {

struct Place {
    double latitude;
    double longitude;
};

Place PlaceOf(const GpxPoint& point) {
    Place place{};
    point.GetPoint(place.latitude, place.longitude);
    return place;
}

/// Cuts the lists of a document.
class Cutting {
public:
    Cutting(const CutArea& area, bool keepsInside, CutResult& result)
        : area_(area), keepsInside_(keepsInside),
          dividesLines_(!keepsInside && area.HasPlaces() && !area.HasSpan()), result_(result) {}

    void Cut(GpxDocument& document) {
        result_.waypoints =
            document.EditWaypoints().RemoveIf([this](const GpxPoint& point) { return !IsKept(point); });
        CutRoutes(document);
        for (GpxTrack& track : document.EditTracks())
            CutTrack(track);
        result_.tracks = document.EditTracks().RemoveIf(
            [this, index = std::size_t{0}](const GpxTrack&) mutable { return isGone_[index++]; });
    }

private:
    /// Points of a line that stay, one after another.
    struct Run {
        std::size_t begin;
        std::size_t end;
    };

    bool IsKept(const GpxPoint& point) {
        double time = 0.0;
        if (area_.HasSpan() && !point.GetTime(time))
            ++result_.withoutTime;
        return area_.Contains(point) == keepsInside_;
    }

    std::vector<Run> FindRuns(const std::vector<GpxPoint>& points) {
        std::vector<Run> runs;
        for (std::size_t i = 0; i < points.size(); ++i) {
            if (!IsKept(points[i]))
                continue;
            if (runs.empty() || runs.back().end != i || IsDivided(points[i - 1], points[i]))
                runs.push_back({i, i});
            runs.back().end = i + 1;
        }
        return runs;
    }
    bool IsDivided(const GpxPoint& from, const GpxPoint& to) const {
        if (!dividesLines_)
            return false;
        const Place one = PlaceOf(from);
        const Place other = PlaceOf(to);
        return area_.Crosses(one.latitude, one.longitude, other.latitude, other.longitude);
    }
    static std::size_t CountOf(const std::vector<Run>& runs) {
        std::size_t count = 0;
        for (const Run& run : runs)
            count += run.end - run.begin;
        return count;
    }

    // The first run of a segment stays in its element, with what else is in it.
    void CutTrack(GpxTrack& track) {
        std::vector<GpxTrack::Place> places;
        std::vector<std::vector<bool>> isRemoved;
        std::size_t removed = 0;
        for (const auto& points : track.GetSegments()) {
            const std::vector<Run> runs = FindRuns(points);
            removed += points.size() - CountOf(runs);
            AddParts(places, isRemoved, runs, points.size());
        }
        result_.trackPoints += removed;
        result_.holes += places.size();
        if (removed + places.size() > 0)
            Divide(track, places, isRemoved);
        isGone_.push_back(removed > 0 && CountPoints(track) == 0);
    }
    // Segments that were empty before stay.
    static void Divide(GpxTrack& track, const std::vector<GpxTrack::Place>& places,
                       const std::vector<std::vector<bool>>& isRemoved) {
        track.SplitSegments(places);
        for (std::size_t i = 0; i < track.GetSegmentCount(); ++i)
            track.EditPoints(i).RemoveIf(
                [&, index = std::size_t{0}](const GpxPoint&) mutable { return isRemoved[i][index++]; });
        track.RemoveSegmentsIf([&, index = std::size_t{0}](const GpxTrack::Segment& segment) mutable {
            return !isRemoved[index++].empty() && segment.empty();
        });
    }
    static std::size_t CountPoints(const GpxTrack& track) {
        std::size_t count = 0;
        for (const auto& points : track.GetSegments())
            count += points.size();
        return count;
    }
    // Of each part of the segment which of its points are removed.
    static void AddParts(std::vector<GpxTrack::Place>& places, std::vector<std::vector<bool>>& isRemoved,
                         const std::vector<Run>& runs, std::size_t count) {
        const std::size_t segment = isRemoved.size() - places.size();
        std::size_t begin = 0;
        for (std::size_t i = 0; i < std::max<std::size_t>(runs.size(), 1); ++i) {
            const std::size_t end = i + 1 < runs.size() ? runs[i + 1].begin : count;
            std::vector<bool>& part = isRemoved.emplace_back(end - begin, true);
            if (i < runs.size())
                std::fill(part.begin() + static_cast<std::ptrdiff_t>(runs[i].begin - begin),
                          part.begin() + static_cast<std::ptrdiff_t>(runs[i].end - begin), false);
            if (i + 1 < runs.size())
                places.push_back({segment, end});
            begin = end;
        }
    }

    // A route has no segments: it becomes several.
    void CutRoutes(GpxDocument& document) {
        std::vector<GpxRoute> routes;
        for (GpxRoute& route : document.EditRoutes()) {
            const std::vector<Run> runs = FindRuns(route.GetPoints());
            const std::size_t count = CountOf(runs);
            result_.routePoints += route.GetPointCount() - count;
            if (runs.size() == 1 && count == route.GetPointCount()) {
                routes.push_back(std::move(route));
                continue;
            }
            const bool isEmpty = route.GetPointCount() == 0;
            result_.routes += runs.empty() && !isEmpty ? 1 : 0;
            result_.holes += runs.empty() ? 0 : runs.size() - 1;
            if (isEmpty)
                routes.push_back(std::move(route));
            else
                Divide(std::move(route), runs, routes);
        }
        const std::size_t count = document.GetRouteCount();
        for (GpxRoute& route : routes)
            document.AddRoute(std::move(route));
        document.EditRoutes().Remove(0, count);
    }
    static void Divide(GpxRoute route, const std::vector<Run>& runs, std::vector<GpxRoute>& routes) {
        const GpxListEditor<GpxPoint> editor = route.EditPoints();
        std::vector<GpxPoint> points(std::make_move_iterator(editor.begin()),
                                     std::make_move_iterator(editor.end()));
        editor.Remove(0, editor.GetCount());
        for (const Run& run : runs) {
            GpxRoute& part = routes.emplace_back(route);
            for (std::size_t i = run.begin; i < run.end; ++i)
                part.AddPoint(std::move(points[i]));
        }
    }

    const CutArea& area_;
    bool keepsInside_;
    bool dividesLines_;
    CutResult& result_;
    /// Of each track.
    std::vector<bool> isGone_;
};

CutResult Cut(GpxDocument& document, const CutArea& area, bool keepsInside) {
    CutResult result;
    Cutting(area, keepsInside, result).Cut(document);
    if (!keepsInside && area.HasPlaces() && !area.HasSpan())
        result.traces = cutting::RemoveTraces(document, area);
    if (!result.IsNothing())
        CorrectBounds(document);
    return result;
}

} // namespace

CutResult CutOut(GpxDocument& document, const CutArea& area) {
    return Cut(document, area, false);
}

CutResult CutTo(GpxDocument& document, const CutArea& area) {
    return Cut(document, area, true);
}

} // namespace vexaTrackLib
