// SPDX-License-Identifier: MIT
#include <vexaTrackLib/GeocacheList.h>

#include <vexaTrackLib/Distance.h>
#include <vexaTrackLib/geocaches/CacheScan.h>

#include <GeographicLib/Geodesic.hpp>

#include <algorithm>
#include <set>
#include <utility>

namespace vexaTrackLib {

using vexaTransferLib::GpxCacheDetails;
using vexaTransferLib::GpxDocument;
using vexaTransferLib::GpxElement;
using vexaTransferLib::GpxPoint;

namespace {

constexpr std::int32_t kPrefixLength = 2;

icu::UnicodeString TextOf(const GpxPoint& point, bool (GpxPoint::*get)(icu::UnicodeString&) const) {
    icu::UnicodeString text;
    (point.*get)(text);
    return text;
}

GeocachePlace PlaceOf(const GpxPoint& point) {
    GeocachePlace place;
    point.GetPoint(place.latitude, place.longitude);
    return place;
}

/// What the code of a geocache and those of its companions have in common; empty for a code that is too short.
icu::UnicodeString TailOf(const icu::UnicodeString& code) {
    return code.length() > kPrefixLength ? icu::UnicodeString(code, kPrefixLength) : icu::UnicodeString();
}

bool IsCompanionType(const icu::UnicodeString& type) {
    return type.startsWith(u"Waypoint|");
}

GeocacheCompanion CompanionOf(const GpxPoint& waypoint, double time) {
    GeocacheCompanion companion;
    companion.code = TextOf(waypoint, &GpxPoint::GetName);
    companion.name = TextOf(waypoint, &GpxPoint::GetDescription);
    if (companion.name.isEmpty())
        companion.name = companion.code;
    companion.type = TextOf(waypoint, &GpxPoint::GetType);
    companion.type.remove(0, companion.type.indexOf(u'|') + 1);
    companion.comment = TextOf(waypoint, &GpxPoint::GetComment);
    const GeocachePlace place = PlaceOf(waypoint);
    if (place.latitude != 0.0 || place.longitude != 0.0)
        companion.place = place;
    companion.documentTime = time;
    return companion;
}

} // namespace

GeocacheList::GeocacheList() = default;

GeocacheList::GeocacheList(const GeocachePlace& origin) : origin_(origin) {}

GeocacheList::~GeocacheList() = default;

void GeocacheList::Add(const GpxDocument& document) {
    double time = 0.0;
    document.GetDocumentTime(time);
    for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point) {
        const GpxElement element = point->GetElement();
        if (!element)
            continue;
        if (const GpxElement cache = GpxCacheDetails::FindCache(element))
            AddCache(*point, cache, time);
        else
            AddCompanion(*point, time);
    }
}

void GeocacheList::AddCache(const GpxPoint& waypoint, const GpxElement& element, double time) {
    const icu::UnicodeString code = TextOf(waypoint, &GpxPoint::GetName);
    // Geocaches without a code are all different.
    auto known = code.isEmpty() ? indexes_.end() : indexes_.find(code);
    const bool isNew = known == indexes_.end();
    if (isNew) {
        entries_.emplace_back();
        if (!code.isEmpty())
            known = indexes_.emplace(code, entries_.size() - 1).first;
    }
    Entry& entry = isNew ? entries_.back() : entries_[known->second];
    entry.versions.push_back({time, element});
    if (isNew || time >= entry.cache.documentTime)
        Describe(waypoint, element, time, entry);
    else
        ScanLogs(element, entry.logs, entry.cache);
}

// The newest document says everything but what is in the logs of all.
void GeocacheList::Describe(const GpxPoint& waypoint, const GpxElement& element, double time,
                            Entry& entry) const {
    Geocache cache;
    cache.code = TextOf(waypoint, &GpxPoint::GetName);
    cache.logCount = entry.cache.logCount;
    cache.foundTime = entry.cache.foundTime;
    cache.place = PlaceOf(waypoint);
    cache.documentTime = time;
    double placed = 0.0;
    if (waypoint.GetTime(placed))
        cache.placedTime = placed;
    ScanCache(element, entry.logs, cache);
    Measure(cache);
    entry.cache = std::move(cache);
}

void GeocacheList::SortVersions(Entry& entry) {
    // Of equally new ones, that which was added last comes first.
    std::reverse(entry.versions.begin(), entry.versions.end());
    std::stable_sort(entry.versions.begin(), entry.versions.end(),
                     [](const Version& left, const Version& right) { return left.time > right.time; });
    for (Version& version : entry.versions)
        entry.cache.elements.push_back(std::move(version.element));
}

void GeocacheList::Measure(Geocache& cache) const {
    if (!origin_)
        return;
    double metres = 0.0;
    double azimuth = 0.0;
    double azimuthThere = 0.0;
    GeographicLib::Geodesic::WGS84().Inverse(origin_->latitude, origin_->longitude, cache.place.latitude,
                                             cache.place.longitude, metres, azimuth, azimuthThere);
    cache.metres = metres;
    cache.bearing = azimuth < 0.0 ? azimuth + 360.0 : azimuth;
}

void GeocacheList::AddCompanion(const GpxPoint& waypoint, double time) {
    GeocacheCompanion companion = CompanionOf(waypoint, time);
    if (TailOf(companion.code).isEmpty()) {
        ++others_;
        return;
    }
    const bool isOne = IsCompanionType(TextOf(waypoint, &GpxPoint::GetType));
    const auto [place, isNew] = companions_.try_emplace(companion.code, Candidate{companion, isOne});
    if (!isNew && place->second.companion.documentTime <= time)
        place->second = {std::move(companion), isOne};
}

std::vector<Geocache> GeocacheList::Finish() {
    std::map<icu::UnicodeString, std::size_t> tails;
    for (const auto& [code, index] : indexes_)
        if (const icu::UnicodeString tail = TailOf(code); !tail.isEmpty())
            tails.emplace(tail, index);
    for (auto& [code, candidate] : companions_) {
        const auto found = tails.find(TailOf(code));
        // A waypoint with the code of a geocache itself is another waypoint.
        const bool isCacheItself = indexes_.find(code) != indexes_.end();
        if (found != tails.end() && !isCacheItself)
            entries_[found->second].cache.companions.push_back(std::move(candidate.companion));
        else if (candidate.isCompanion && !isCacheItself)
            orphans_.push_back(std::move(candidate.companion));
        else
            ++others_;
    }
    companions_.clear();
    std::vector<Geocache> caches;
    caches.reserve(entries_.size());
    for (Entry& entry : entries_) {
        SortVersions(entry);
        caches.push_back(std::move(entry.cache));
    }
    entries_.clear();
    indexes_.clear();
    return caches;
}

} // namespace vexaTrackLib
