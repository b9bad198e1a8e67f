// SPDX-License-Identifier: MIT
#include <vexaTrackLib/merging/WaypointIndex.h>

#include <vexaTrackLib/Distance.h>
#include <vexaTrackLib/comparing/Keys.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vexaTrackLib::merging {

using comparing::Key;
using content::Hasher;
using vexaTransferLib::GpxGroundspeakCache;
using vexaTransferLib::GpxPoint;

namespace {

constexpr double kSamePlace = 10.0;
// Two places in one cell are within ten metres, and those within ten metres are in cells that are two apart at most.
constexpr double kCellDegrees = 6.9 / 111700.0;
constexpr int kFarthestCell = 2;

struct Place {
    double latitude;
    double longitude;
};

Place PlaceOf(const GpxPoint& point) {
    Place place{};
    point.GetPoint(place.latitude, place.longitude);
    return place;
}

bool IsNear(const GpxPoint& left, const GpxPoint& right) {
    const Place one = PlaceOf(left);
    const Place other = PlaceOf(right);
    return Distance(one.latitude, one.longitude, other.latitude, other.longitude) <= kSamePlace;
}

std::int64_t RowOf(double latitude) {
    return static_cast<std::int64_t>(std::floor(latitude / kCellDegrees));
}

/// The cells of one row around the earth.
struct Row {
    explicit Row(std::int64_t row) : number(row) {
        constexpr double kRadians = 3.14159265358979323846 / 180.0;
        const double middle = (static_cast<double>(number) + 0.5) * kCellDegrees;
        count = std::max<std::int64_t>(
            1, static_cast<std::int64_t>(std::ceil(360.0 / kCellDegrees * std::cos(middle * kRadians))));
    }
    std::int64_t ColumnOf(double longitude) const {
        return static_cast<std::int64_t>(
            std::floor((longitude + 180.0) / 360.0 * static_cast<double>(count)));
    }

    std::int64_t number;
    std::int64_t count;
};

Key CellKey(const Key& name, const Row& row, std::int64_t column) {
    Hasher hasher;
    hasher.Add(name.high);
    hasher.Add(name.low);
    hasher.Add(static_cast<std::uint64_t>(row.number));
    hasher.Add(static_cast<std::uint64_t>((column % row.count + row.count) % row.count));
    return Key::Of(hasher);
}

Key CellKey(const Key& name, const GpxPoint& point) {
    const Place place = PlaceOf(point);
    const Row row(RowOf(place.latitude));
    return CellKey(name, row, row.ColumnOf(place.longitude));
}

Key PlaceAndTimeKey(const GpxPoint& point) {
    const Key place = comparing::PlaceKey(point);
    const std::optional<Key> time = comparing::TimeKey(point);
    Hasher hasher;
    hasher.Add(place.high);
    hasher.Add(place.low);
    hasher.Add(time ? time->high : 0);
    hasher.Add(time ? time->low : 0);
    return Key::Of(hasher);
}

} // namespace

bool IsGeocache(const GpxPoint& waypoint) {
    GpxGroundspeakCache cache;
    return waypoint.GetGroundspeakCache(cache);
}

void WaypointIndex::Add(const GpxPoint& waypoint, std::size_t index) {
    const std::optional<Key> name = comparing::NameKey(waypoint);
    if (!name) {
        placed_.emplace(PlaceAndTimeKey(waypoint), index);
        return;
    }
    named_.emplace(*name, index);
    placed_.emplace(CellKey(*name, waypoint), index);
    if (IsGeocache(waypoint))
        geocaches_.emplace(*name, index);
}

std::optional<std::size_t> WaypointIndex::Find(const GpxPoint& waypoint,
                                               const std::vector<GpxPoint>& waypoints) const {
    const auto in = [](const Indexes& indexes, const Key& key) {
        const auto found = indexes.find(key);
        return found != indexes.end() ? std::optional(found->second) : std::nullopt;
    };
    const std::optional<Key> name = comparing::NameKey(waypoint);
    if (!name)
        return in(placed_, PlaceAndTimeKey(waypoint));
    if (const std::optional<std::size_t> geocache = in(IsGeocache(waypoint) ? named_ : geocaches_, *name))
        return geocache;
    return FindNear(*name, waypoint, waypoints);
}

std::optional<std::size_t> WaypointIndex::FindNear(const Key& name, const GpxPoint& waypoint,
                                                   const std::vector<GpxPoint>& waypoints) const {
    if (named_.count(name) == 0)
        return std::nullopt;
    if (const auto found = placed_.find(CellKey(name, waypoint)); found != placed_.end())
        return found->second;
    const Place place = PlaceOf(waypoint);
    const std::int64_t middle = RowOf(place.latitude);
    for (std::int64_t number = middle - kFarthestCell; number <= middle + kFarthestCell; ++number) {
        const Row row(number);
        const std::int64_t column = row.ColumnOf(place.longitude);
        for (std::int64_t at = column - kFarthestCell; at <= column + kFarthestCell; ++at) {
            const auto found = placed_.find(CellKey(name, row, at));
            if (found != placed_.end() && IsNear(waypoints[found->second], waypoint))
                return found->second;
        }
    }
    return std::nullopt;
}

} // namespace vexaTrackLib::merging
