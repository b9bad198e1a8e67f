// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Merge.h>

#include <vexaTrackLib/comparing/Keys.h>
#include <vexaTrackLib/merging/LogUnion.h>
#include <vexaTrackLib/merging/WaypointIndex.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace vexaTrackLib {

using comparing::Key;
using comparing::KeyHash;
using content::Hasher;
using merging::LogUnion;
using merging::WaypointIndex;
using vexaTransferLib::GpxDocument;
using vexaTransferLib::GpxGroundspeakCache;
using vexaTransferLib::GpxListEditor;
using vexaTransferLib::GpxPoint;
using vexaTransferLib::GpxRoute;
using vexaTransferLib::GpxTrack;

namespace {

using Time = std::optional<double>;

Time TimeOf(const GpxDocument& document) {
    double time = 0.0;
    return document.GetDocumentTime(time) ? Time(time) : std::nullopt;
}

bool HasTime(const GpxPoint& point) {
    double time = 0.0;
    return point.GetTime(time);
}

Key PlaceAndTimeKey(const GpxPoint& point) {
    const Key place = comparing::PlaceKey(point);
    double time = 0.0;
    const bool hasTime = point.GetTime(time);
    Hasher hasher;
    hasher.Add(place.high);
    hasher.Add(place.low);
    hasher.Add(std::uint64_t{hasTime ? 1U : 0U});
    hasher.Add(time);
    return Key::Of(hasher);
}

/// By all but the logs.
Key VersionKey(const GpxPoint& waypoint) {
    Hasher hasher;
    content::AddPointWithoutLogs(waypoint, hasher);
    return Key::Of(hasher);
}

Key KeyOf(const GpxRoute& route) {
    Hasher hasher;
    content::AddRoute(route, hasher);
    for (const GpxPoint& point : route.GetPoints())
        content::AddPoint(point, hasher);
    return Key::Of(hasher);
}

Key KeyOf(const GpxTrack& track) {
    Hasher hasher;
    content::AddTrack(track, hasher);
    for (const GpxTrack::Segment& points : track.GetSegments()) {
        hasher.Add(std::uint64_t{points.size()});
        for (const GpxPoint& point : points)
            content::AddPoint(point, hasher);
    }
    return Key::Of(hasher);
}

Time StartOf(const GpxTrack& track) {
    for (const GpxTrack::Segment& points : track.GetSegments())
        for (const GpxPoint& point : points) {
            double time = 0.0;
            if (point.GetTime(time))
                return time;
        }
    return std::nullopt;
}

/// Puts waypoints into a document.
class WaypointMerging {
public:
    WaypointMerging(GpxDocument& document, MergeResult& result) : document_(document), result_(result) {
        for (const GpxPoint& waypoint : document.GetWaypoints())
            Know(waypoint, TimeOf(document));
    }

    // What is also in a newer document is as new as that: the order of the documents makes no difference.
    void Observe(const GpxDocument& other) {
        const Time time = TimeOf(other);
        for (const GpxPoint& waypoint : other.GetWaypoints()) {
            const std::optional<std::size_t> index = index_.Find(waypoint, document_.GetWaypoints());
            if (!index)
                continue;
            if (KeyAt(*index) == VersionKey(waypoint))
                Renew(*index, time);
            ForEachLog(*index, waypoint, [&](LogUnion& logs, const Log& log) { logs.Observe(log, time); });
        }
    }
    void Add(const GpxDocument& other) {
        for (const GpxPoint& waypoint : other.GetWaypoints())
            if (const std::optional<std::size_t> index = index_.Find(waypoint, document_.GetWaypoints())) {
                Merge(*index, waypoint, TimeOf(other));
            } else {
                Know(waypoint, TimeOf(other));
                document_.AddWaypoint(waypoint);
                ++result_.addedWaypoints;
            }
    }
    // The logs of each geocache are written at the end, however often it was there.
    void Finish() {
        for (auto& [index, logs] : logs_) {
            GpxGroundspeakCache cache;
            GpxPoint& waypoint = document_.EditWaypoints()[index];
            if (!waypoint.GetGroundspeakCache(cache) || !logs.IsMoreThan(cache.logs))
                continue;
            cache.logs = logs.TakeLogs();
            waypoint.SetGroundspeakCache(cache);
        }
    }

private:
    using Log = LogUnion::Log;

    struct Known {
        bool isGeocache;
        Time documentTime; ///< of the document that it comes from
        Time time;         ///< of the newest document that has this version
        std::optional<Key> version;
    };

    void Know(const GpxPoint& waypoint, Time time) {
        index_.Add(waypoint, known_.size());
        known_.push_back({merging::IsGeocache(waypoint), time, time, std::nullopt});
    }
    Key KeyAt(std::size_t index) {
        std::optional<Key>& version = known_[index].version;
        if (!version)
            version = VersionKey(document_.GetWaypoints()[index]);
        return *version;
    }
    void Renew(std::size_t index, Time time) {
        Time& known = known_[index].time;
        if (time && (!known || *time > *known))
            known = time;
    }

    // Of a geocache that another one is merged with all logs are kept, whichever of both stays.
    template <class Visit>
    void ForEachLog(std::size_t index, const GpxPoint& waypoint, Visit visit) {
        GpxGroundspeakCache cache;
        if (!known_[index].isGeocache || !waypoint.GetGroundspeakCache(cache))
            return;
        auto found = logs_.find(index);
        if (found == logs_.end()) {
            GpxGroundspeakCache present;
            document_.GetWaypoints()[index].GetGroundspeakCache(present);
            found = logs_.emplace(index, LogUnion(present.logs, known_[index].documentTime)).first;
        }
        for (const Log& log : cache.logs)
            visit(found->second, log);
    }

    // The waypoint that is there may be large, and be met often: it is neither copied nor looked through.
    void Merge(std::size_t index, const GpxPoint& waypoint, Time time) {
        const bool isOther = !(KeyAt(index) == VersionKey(waypoint));
        const bool isNewer = isOther && IsNewer(waypoint, time, index);
        const Logs logs = MergeLogs(index, waypoint, time);
        if (!isOther)
            Renew(index, time);
        const bool staysOut = isOther ? !isNewer : logs.isNewLeftOut;
        if (staysOut)
            result_.losers.push_back(waypoint);
        else if (isOther || logs.isOldReplaced)
            result_.losers.push_back(document_.GetWaypoints()[index]);
        if (isNewer)
            Replace(index, waypoint, time);
        else if (!logs.areChanged)
            ++result_.sameObjects;
    }
    bool IsNewer(const GpxPoint& waypoint, Time documentTime, std::size_t index) const {
        const Known& known = known_[index];
        if (known.isGeocache || merging::IsGeocache(waypoint))
            return documentTime && known.time && *documentTime > *known.time;
        double time = 0.0;
        double presentTime = 0.0;
        return waypoint.GetTime(time) && document_.GetWaypoints()[index].GetTime(presentTime) &&
               time > presentTime;
    }
    void Replace(std::size_t index, const GpxPoint& waypoint, Time time) {
        document_.EditWaypoints().Replace(index, waypoint);
        known_[index] = {merging::IsGeocache(waypoint), time, time, VersionKey(waypoint)};
        ++result_.replacedWaypoints;
    }

    struct Logs {
        bool areChanged = false;
        bool isOldReplaced = false; ///< a version of a log that was there is left out
        bool isNewLeftOut = false;  ///< a version of a log that comes is left out
    };
    Logs MergeLogs(std::size_t index, const GpxPoint& waypoint, Time time) {
        Logs logs;
        ForEachLog(index, waypoint, [&](LogUnion& all, const Log& log) {
            const LogUnion::Outcome outcome = all.Add(log, time);
            const bool isAdded = outcome == LogUnion::Outcome::kAdded;
            const bool isReplaced = outcome == LogUnion::Outcome::kReplaced;
            result_.addedLogs += isAdded ? 1 : 0;
            result_.replacedLogs += isReplaced ? 1 : 0;
            logs.areChanged = logs.areChanged || isReplaced || isAdded;
            logs.isOldReplaced = logs.isOldReplaced || isReplaced;
            logs.isNewLeftOut = logs.isNewLeftOut || outcome == LogUnion::Outcome::kLeftOut;
        });
        return logs;
    }

    GpxDocument& document_;
    MergeResult& result_;
    WaypointIndex index_;
    std::vector<Known> known_; ///< of each waypoint
    std::unordered_map<std::size_t, LogUnion> logs_;
};

/// Puts routes and tracks into a document.
class PathMerging {
public:
    PathMerging(GpxDocument& document, MergeResult& result) : document_(document), result_(result) {
        for (const GpxRoute& route : document.GetRoutes())
            routes_.insert(KeyOf(route));
        for (const GpxTrack& track : document.GetTracks()) {
            tracks_.insert(KeyOf(track));
            KnowPoints(track);
        }
    }

    void Add(const GpxDocument& other) {
        for (const GpxRoute& route : other.GetRoutes())
            AddRoute(route);
        for (const GpxTrack& track : other.GetTracks())
            if (!tracks_.insert(KeyOf(track)).second)
                ++result_.sameObjects;
            else
                AddTrack(track);
    }

    // Tracks without times stay behind the others.
    void OrderTracks() {
        std::vector<std::pair<Time, std::size_t>> order;
        for (const GpxTrack& track : document_.GetTracks())
            order.emplace_back(StartOf(track), order.size());
        const auto comesBefore = [](const auto& left, const auto& right) {
            return left.first && (!right.first || *left.first < *right.first);
        };
        if (std::is_sorted(order.begin(), order.end(), comesBefore))
            return;
        std::stable_sort(order.begin(), order.end(), comesBefore);
        const GpxListEditor<GpxTrack> editor = document_.EditTracks();
        std::vector<GpxTrack> tracks;
        tracks.reserve(order.size());
        for (const auto& [time, index] : order)
            tracks.push_back(std::move(editor[index]));
        std::move(tracks.begin(), tracks.end(), editor.begin());
        result_.isReordered = true;
    }

private:
    void KnowPoints(const GpxTrack& track) {
        for (const GpxTrack::Segment& points : track.GetSegments())
            for (const GpxPoint& point : points)
                points_.insert(PlaceAndTimeKey(point));
    }
    void AddRoute(const GpxRoute& route) {
        if (!routes_.insert(KeyOf(route)).second) {
            ++result_.sameObjects;
            return;
        }
        document_.AddRoute(route);
        ++result_.addedRoutes;
    }

    // Whoever plans tracks without times may lead them along the same way: they stay whole.
    static bool HasTimes(const GpxTrack& track) {
        for (const GpxTrack::Segment& points : track.GetSegments())
            for (const GpxPoint& point : points)
                if (HasTime(point))
                    return true;
        return false;
    }
    void AddTrack(GpxTrack track) {
        const std::vector<bool> isPresent =
            HasTimes(track) ? FindPresent(track) : std::vector<bool>(CountPoints(track));
        const auto added = static_cast<std::size_t>(std::count(isPresent.begin(), isPresent.end(), false));
        if (added == 0 && !isPresent.empty()) {
            ++result_.sameObjects;
            return;
        }
        KnowPoints(track);
        if (added < isPresent.size())
            RemovePoints(track, isPresent);
        document_.AddTrack(std::move(track));
        ++result_.addedTracks;
        result_.addedPoints += added;
    }
    static std::size_t CountPoints(const GpxTrack& track) {
        std::size_t count = 0;
        for (const GpxTrack::Segment& points : track.GetSegments())
            count += points.size();
        return count;
    }
    std::vector<bool> FindPresent(const GpxTrack& track) const {
        std::vector<bool> isPresent;
        for (const GpxTrack::Segment& points : track.GetSegments())
            for (const GpxPoint& point : points)
                isPresent.push_back(points_.count(PlaceAndTimeKey(point)) != 0);
        return isPresent;
    }
    // Where points were, a new segment starts.
    static void RemovePoints(GpxTrack& track, const std::vector<bool>& isRemoved) {
        std::vector<GpxTrack::Place> places;
        std::size_t segment = 0;
        std::size_t first = 0;
        for (const GpxTrack::Segment& points : track.GetSegments()) {
            for (std::size_t i = 1; i < points.size(); ++i)
                if (isRemoved[first + i - 1] && !isRemoved[first + i])
                    places.push_back({segment, i});
            first += points.size();
            ++segment;
        }
        track.SplitSegments(places);
        std::size_t index = 0;
        for (std::size_t i = 0; i < track.GetSegmentCount(); ++i)
            track.EditPoints(i).RemoveIf([&](const GpxPoint&) { return isRemoved[index++]; });
        track.RemoveSegmentsIf([](const GpxTrack::Segment& points) { return points.empty(); });
    }

    GpxDocument& document_;
    MergeResult& result_;
    std::unordered_set<Key, KeyHash> routes_;
    std::unordered_set<Key, KeyHash> tracks_;
    std::unordered_set<Key, KeyHash> points_; ///< places and times
};

} // namespace

MergeResult Merge(GpxDocument& document, const std::vector<const GpxDocument*>& others, MergeTracks tracks) {
    MergeResult result;
    WaypointMerging waypoints(document, result);
    PathMerging paths(document, result);
    for (const GpxDocument* const other : others)
        waypoints.Observe(*other);
    for (const GpxDocument* const other : others) {
        waypoints.Add(*other);
        paths.Add(*other);
    }
    waypoints.Finish();
    if (tracks == MergeTracks::kByTime)
        paths.OrderTracks();
    return result;
}

} // namespace vexaTrackLib
