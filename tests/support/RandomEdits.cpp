// SPDX-License-Identifier: MIT
#include "support/RandomEdits.h"

#include <algorithm>
#include <cstddef>
#include <random>
#include <utility>
#include <vector>

namespace vexaTransferLib::testing_support {

namespace {

/// The edits of one document.
class Editing {
public:
    Editing(GpxDocument& document, const GpxDocument& other, std::uint64_t seed)
        : document_(document), other_(other), random_(seed) {}

    void EditOnce() {
        switch (Below(12)) {
        case 0:
            return EditHead();
        case 1:
            return EditPaths();
        case 2:
            return EditSegments();
        case 3:
            return TakeFromOther();
        case 4:
            return EditList(document_.EditWaypoints(), kGpxWaypoint);
        case 5:
            return EditCaches();
        default:
            return WithPoints([&](auto list, GpxPointType type) {
                if (Below(3) == 0)
                    EditList(list, type);
                else if (list.GetCount() != 0)
                    EditPoint(list[Below(list.GetCount())]);
            });
        }
    }

private:
    std::size_t Below(std::size_t bound) { return static_cast<std::size_t>(random_() % bound); }

    icu::UnicodeString Text() {
        static const std::vector<icu::UnicodeString> kTexts = {
            u"a", u"<b> & 'c' \"d\"", u"]]>", u" \t\n\r x ", u"\u00E9\U0001F600", u"0", u"-->"};
        return kTexts[Below(kTexts.size())];
    }
    double Number() {
        constexpr double kNumbers[] = {0.0, -0.125, 359.999, 1e-9, -12345.678901234567, 8848};
        return kNumbers[Below(std::size(kNumbers))];
    }
    // In whole milliseconds, as times are read.
    double Time() {
        constexpr double kTimes[] = {0.0, 1e12, 1234567890123.0, -1.0, 253402300799999.0};
        return kTimes[Below(std::size(kTimes))];
    }
    GpxUrl Link() {
        GpxUrl link(Text() + u"x");
        if (Below(2) == 0)
            link.SetUrlText(Text());
        return link;
    }

    void EditHead() {
        switch (Below(4)) {
        case 0:
            return document_.SetName(Text());
        case 1:
            return document_.ClearName();
        case 2:
            return document_.SetDocumentTime(Time());
        default:
            return document_.ClearDocumentTime();
        }
    }

    void EditPoint(GpxPoint& point) {
        switch (Below(16)) {
        case 0:
            return point.SetPoint(Number() / 1000, Number() / 1000);
        case 1:
            return point.SetElevation(Number());
        case 2:
            return point.ClearElevation();
        case 3:
            return point.SetTime(Time());
        case 4:
            return point.ClearTime();
        case 5:
            return point.SetName(Text());
        case 6:
            return point.ClearName();
        case 7:
            return point.SetComment(Text());
        case 8:
            return point.SetDescription(Text());
        case 9:
            return point.ClearDescription();
        case 10:
            return point.SetSymbol(Text());
        case 11:
            return point.SetType(Text());
        case 12:
            return point.SetMagneticVariation(12.5);
        case 13:
            return point.SetFix(kGpxFixDGPS);
        case 14:
            return point.SetURL(Link());
        default:
            return EditForm(point);
        }
    }
    // Complete readings read forms of waypoints only.
    void EditForm(GpxPoint& point) {
        if (point.GetPointType() == kGpxWaypoint && Below(2) == 0)
            point.SetFormAttribute(Text(), Text(), Below(2) == 0 ? 0.0 : 1e12);
        else if (point.GetPointType() == kGpxWaypoint)
            point.ClearFormAttributes();
    }

    template <class Act>
    void WithPoints(Act act) {
        const std::size_t kind = Below(3);
        if (kind == 0)
            return act(document_.EditWaypoints(), kGpxWaypoint);
        if (kind == 1 && document_.GetRouteCount() != 0)
            return act(AnyRoute().EditPoints(), kGpxRoutePoint);
        if (document_.GetTrackCount() == 0)
            return;
        GpxTrack& track = AnyTrack();
        if (track.GetSegmentCount() != 0)
            act(track.EditPoints(Below(track.GetSegmentCount())), kGpxTrackPoint);
    }
    GpxRoute& AnyRoute() { return document_.EditRoutes()[Below(document_.GetRouteCount())]; }
    GpxTrack& AnyTrack() { return document_.EditTracks()[Below(document_.GetTrackCount())]; }

    GpxPoint NewPoint(GpxPointType type) {
        GpxPoint point(type, Number() / 1000, Number() / 1000);
        if (type == kGpxRoutePoint)
            point.SetTarvikRoutePointType(kTarvikRoutePointVia);
        for (std::size_t i = Below(4); i != 0; --i)
            EditPoint(point);
        return point;
    }
    void EditList(const GpxListEditor<GpxPoint>& list, GpxPointType type) {
        const std::size_t count = list.GetCount();
        switch (count == 0 ? 0 : Below(7)) {
        case 0:
            return list.Insert(Below(count + 1), NewPoint(type));
        case 1:
            return list.Remove(Below(count));
        case 2:
            return list.Move(Below(count), Below(count));
        case 3:
            return list.Append(list[Below(count)]);
        case 4:
            return list.Replace(Below(count), NewPoint(type));
        case 5:
            return list.Reverse();
        default:
            list.RemoveIf([&](const GpxPoint&) { return Below(3) == 0; });
        }
    }

    void EditPaths() {
        switch (Below(8)) {
        case 0:
            return document_.AddTrack(GpxTrack());
        case 1:
            return document_.AddRoute(GpxRoute(kTarvikRouteStandard));
        case 2:
            return document_.EditTracks().Reverse();
        case 3:
            return document_.EditRoutes().Reverse();
        default:
            if (document_.GetTrackCount() != 0)
                EditTrack(Below(document_.GetTrackCount()));
            if (document_.GetRouteCount() != 0)
                EditRoute(Below(document_.GetRouteCount()));
        }
    }
    void EditTrack(std::size_t index) {
        GpxTrack& track = document_.EditTracks()[index];
        switch (Below(7)) {
        case 0:
            return track.SetName(Text());
        case 1:
            return track.ClearName();
        case 2:
            return track.SetDescription(Text());
        case 3:
            return track.SetURL(Link());
        case 4:
            return document_.EditTracks().Remove(index);
        case 5:
            return document_.EditTracks().Append(track);
        default:
            track.ClearSource();
        }
    }
    void EditRoute(std::size_t index) {
        GpxRoute& route = document_.EditRoutes()[index];
        switch (Below(4)) {
        case 0:
            return route.SetName(Text());
        case 1:
            return route.SetSource(Text());
        case 2:
            return document_.EditRoutes().Remove(index);
        default:
            return document_.EditRoutes().Insert(0, route);
        }
    }
    void EditSegments() {
        if (document_.GetTrackCount() == 0)
            return;
        const std::size_t index = Below(document_.GetTrackCount());
        GpxTrack& track = document_.EditTracks()[index];
        const std::size_t count = track.GetSegmentCount();
        switch (count == 0 ? 0 : Below(9)) {
        case 0:
            return track.InsertSegment(Below(count + 1), {NewPoint(kGpxTrackPoint)});
        case 1:
            return track.RemoveSegments(Below(count));
        case 2:
            return track.MoveSegment(Below(count), Below(count));
        case 3:
            return Split(track, Below(count));
        case 4:
            return count > 1 ? track.JoinSegments(Below(count - 1)) : void();
        case 5:
            return document_.EditTracks().Insert(index + 1, track.SplitOff(Below(count + 1)));
        case 6:
            return track.AppendSegments(GpxTrack(AnyTrack()));
        case 7:
            return track.Reverse();
        default:
            return track.AddSegment();
        }
    }
    void Split(GpxTrack& track, std::size_t segment) {
        track.SplitSegment(segment, Below(track.GetSegments()[segment].size() + 1));
    }

    void EditCaches() {
        if (document_.GetWaypointCount() == 0)
            return;
        GpxPoint& point = document_.EditWaypoints()[Below(document_.GetWaypointCount())];
        GpxGroundspeakCache cache;
        point.GetGroundspeakCache(cache);
        if (Below(8) == 0)
            return point.ClearGroundspeakCache();
        for (std::size_t i = Below(4); i != 0; --i)
            EditCache(cache);
        point.SetGroundspeakCache(cache);
    }
    void EditCache(GpxGroundspeakCache& cache) {
        switch (Below(7)) {
        case 0:
            cache.name = Text();
            return;
        case 1:
            cache.long_description = Text();
            return;
        case 2:
            return cache.encoded_hints.remove(), void();
        case 3:
            return std::reverse(cache.logs.begin(), cache.logs.end());
        case 4:
            cache.travelbugs.insert(cache.travelbugs.begin(), Text());
            return;
        case 5:
            if (!cache.travelbugs.empty())
                cache.travelbugs.pop_back();
            return;
        default:
            return EditLogs(cache.logs);
        }
    }
    void EditLogs(std::vector<GpxGroundspeakCacheLog>& logs) {
        const std::size_t kind = Below(3);
        if (kind == 0 || logs.empty()) {
            GpxGroundspeakCacheLog log;
            log.id = static_cast<std::int32_t>(Below(3));
            log.text = Text();
            logs.insert(logs.begin() + static_cast<std::ptrdiff_t>(Below(logs.size() + 1)), log);
        } else if (kind == 1) {
            logs.erase(logs.begin() + static_cast<std::ptrdiff_t>(Below(logs.size())));
        } else {
            GpxGroundspeakCacheLog& log = logs[Below(logs.size())];
            log.finder = Text();
            log.id = static_cast<std::int32_t>(Below(3));
        }
    }

    void TakeFromOther() {
        const std::size_t kind = Below(3);
        if (kind == 0 && other_.GetWaypointCount() != 0)
            document_.EditWaypoints().Insert(Below(document_.GetWaypointCount() + 1),
                                             other_.GetWaypoints()[Below(other_.GetWaypointCount())]);
        else if (kind == 1 && other_.GetTrackCount() != 0)
            document_.AddTrack(other_.GetTracks()[Below(other_.GetTrackCount())]);
        else if (other_.GetRouteCount() != 0)
            document_.AddRoute(other_.GetRoutes()[Below(other_.GetRouteCount())]);
    }

    GpxDocument& document_;
    const GpxDocument& other_;
    std::mt19937_64 random_;
};

} // namespace

void EditAtRandom(GpxDocument& document, const GpxDocument& other, std::uint64_t seed, int edits) {
    Editing editing(document, other, seed);
    for (int i = 0; i < edits; ++i)
        editing.EditOnce();
}

} // namespace vexaTransferLib::testing_support
