// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Split.h>

#include <common/dbc.h>
#include <vexaTrackLib/Corrections.h>
#include <vexaTrackLib/Distance.h>
#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <utility>

namespace vexaTrackLib {

using vexaTransferLib::GpxDocument;
using vexaTransferLib::GpxListEditor;
using vexaTransferLib::GpxPoint;
using vexaTransferLib::GpxRoute;
using vexaTransferLib::GpxTrack;

namespace {

constexpr char kSource[] = "LibTrack/vexaTrackLib/Split.cpp";
constexpr double kDay = 86400000.0;

/// Decides of each point of all tracks, in their order, which part it is in.
class PartFinder {
public:
    explicit PartFinder(const SplitRule& rule) : rule_(rule) {}

    void StartSegment() { isInSegment_ = false; }

    // True when the point is the first one of a part, or goes on in another one.
    bool Take(const GpxPoint& point) {
        double latitude = 0.0;
        double longitude = 0.0;
        point.GetPoint(latitude, longitude);
        if (isInSegment_)
            length_ += Distance(latitude_, longitude_, latitude, longitude);
        latitude_ = latitude;
        longitude_ = longitude;
        const bool isInSegment = std::exchange(isInSegment_, true);
        endsAtPoint_ = isInSegment && rule_.length && length_ >= *rule_.length;
        double time = 0.0;
        const bool hasTime = point.GetTime(time);
        bool isNew = endsAtPoint_ || !hasPart_;
        if (hasTime && rule_.pause && time_ && time - *time_ >= *rule_.pause)
            isNew = true;
        if (hasTime)
            time_ = time;
        const bool isOtherDay = rule_.byDay && hasTime && DayOf(time) != day_;
        if (isOtherDay)
            day_ = DayOf(time);
        return Enter(isNew, isOtherDay);
    }
    std::size_t Part() const { return part_; }
    std::size_t Count() const { return count_; }
    // Whether the part before ends with the point that was taken last.
    bool EndsAtPoint() const { return endsAtPoint_; }
    double Day() const { return day_.value_or(0.0); }

private:
    double DayOf(double time) const {
        return std::floor((time + (rule_.clocks ? rule_.clocks(time) : 0.0)) / kDay);
    }
    bool Enter(bool isNew, bool isOtherDay) {
        hasPart_ = true;
        if (isOtherDay && !isNew && partOfDay_.count(*day_) != 0) {
            part_ = partOfDay_[*day_];
        } else if (isNew || isOtherDay) {
            part_ = count_++;
        } else {
            return false;
        }
        if (day_)
            partOfDay_[*day_] = part_;
        length_ = 0.0;
        return true;
    }

    const SplitRule& rule_;
    bool isInSegment_ = false;
    bool hasPart_ = false;
    bool endsAtPoint_ = false;
    double latitude_ = 0.0;
    double longitude_ = 0.0;
    double length_ = 0.0;
    std::optional<double> time_;
    std::optional<double> day_;
    std::map<double, std::size_t> partOfDay_;
    std::size_t part_ = 0;
    std::size_t count_ = 0;
};

/// The objects of a list, which is empty then.
template <class Object>
std::vector<Object> TakeAll(const GpxListEditor<Object>& list) {
    std::vector<Object> objects(std::make_move_iterator(list.begin()), std::make_move_iterator(list.end()));
    list.Remove(0, list.GetCount());
    return objects;
}

/// Splits one document.
class Splitting {
public:
    Splitting(GpxDocument document, const SplitRule& rule) : document_(std::move(document)), finder_(rule) {}

    std::vector<SplitPart> Run() {
        std::vector<GpxTrack> tracks = TakeAll(document_.EditTracks());
        std::vector<GpxRoute> routes = TakeAll(document_.EditRoutes());
        std::vector<GpxPoint> waypoints = TakeAll(document_.EditWaypoints());
        for (GpxTrack& track : tracks)
            TakeTrack(std::move(track));
        RequirePart(0);
        for (GpxRoute& route : routes)
            parts_[0].document.AddRoute(std::move(route));
        for (GpxPoint& waypoint : waypoints)
            parts_[PartOf(waypoint)].document.AddWaypoint(std::move(waypoint));
        for (SplitPart& part : parts_)
            CorrectBounds(part.document);
        return std::move(parts_);
    }

private:
    /// Where a track goes on in another part.
    struct Change {
        GpxTrack::Place place;
        std::size_t part;
        bool isShared; ///< the point is also the last one of what comes before
    };

    void RequirePart(std::size_t part) {
        while (parts_.size() <= part)
            parts_.push_back({document_, std::nullopt, 0.0, 0});
    }

    void TakeTrack(GpxTrack track) {
        std::size_t first = finder_.Part();
        std::vector<Change> changes;
        bool hasPoint = false;
        std::size_t segment = 0;
        for (const GpxTrack::Segment& points : track.GetSegments()) {
            finder_.StartSegment();
            for (std::size_t i = 0; i < points.size(); ++i) {
                const bool isChange = finder_.Take(points[i]);
                if (!std::exchange(hasPoint, true))
                    first = finder_.Part();
                else if (isChange)
                    changes.push_back({{segment, i}, finder_.Part(), finder_.EndsAtPoint()});
                Count(points[i]);
            }
            ++segment;
        }
        Divide(std::move(track), first, changes);
    }
    void Count(const GpxPoint& point) {
        RequirePart(finder_.Part());
        SplitPart& part = parts_[finder_.Part()];
        ++part.points;
        double time = 0.0;
        if (part.start || !point.GetTime(time))
            return;
        part.start = time;
        part.day = finder_.Day();
    }

    // From the end, so that each piece is moved once.
    void Divide(GpxTrack track, std::size_t first, const std::vector<Change>& changes) {
        std::vector<GpxTrack::Place> places;
        std::vector<std::size_t> segments;
        for (const Change& change : changes) {
            if (change.place.point != 0)
                places.push_back(change.place);
            segments.push_back(change.place.segment + places.size());
        }
        const std::vector<GpxPoint> shared = SharedPoints(track, changes);
        track.SplitSegments(places);
        std::vector<GpxTrack> pieces;
        for (std::size_t i = changes.size(); i-- > 0;)
            pieces.push_back(track.SplitOff(segments[i]));
        pieces.push_back(std::move(track));
        std::reverse(pieces.begin(), pieces.end());
        std::size_t nextShared = 0;
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            const std::size_t index = i == 0 ? first : changes[i - 1].part;
            RequirePart(index);
            SplitPart& part = parts_[index];
            if (i < changes.size() && changes[i].isShared) {
                pieces[i].EditPoints(pieces[i].GetSegmentCount() - 1).Append(shared[nextShared++]);
                ++part.points;
            }
            part.document.AddTrack(std::move(pieces[i]));
        }
    }
    static std::vector<GpxPoint> SharedPoints(const GpxTrack& track, const std::vector<Change>& changes) {
        std::vector<GpxPoint> points;
        for (const Change& change : changes)
            if (change.isShared)
                points.push_back(track.GetSegments()[change.place.segment][change.place.point]);
        return points;
    }

    std::size_t PartOf(const GpxPoint& waypoint) const {
        double time = 0.0;
        if (!waypoint.GetTime(time))
            return 0;
        if (starts_.empty())
            for (std::size_t i = 0; i < parts_.size(); ++i)
                if (parts_[i].start)
                    starts_.emplace(*parts_[i].start, i);
        const auto after = starts_.upper_bound(time);
        return after == starts_.begin() ? 0 : std::prev(after)->second;
    }

    GpxDocument document_;
    PartFinder finder_;
    std::vector<SplitPart> parts_;
    mutable std::map<double, std::size_t> starts_;
};

} // namespace

std::vector<SplitPart> Split(GpxDocument document, const SplitRule& rule) {
    dbc::Require(rule.pause || rule.byDay || rule.length, kSource,
                 "A document is split by a pause, by days or by a length.");
    dbc::Require(rule.pause.value_or(1.0) > 0.0 && rule.length.value_or(1.0) > 0.0, kSource,
                 "Pauses and lengths must be above 0.");
    return Splitting(std::move(document), rule).Run();
}

} // namespace vexaTrackLib
