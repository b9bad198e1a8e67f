// SPDX-License-Identifier: MIT
#include <vexaTrackLib/comparing/PointComparison.h>

#include <vexaTrackLib/Distance.h>
#include <vexaTrackLib/comparing/FieldNames.h>
#include <vexaTrackLib/comparing/Keys.h>

#include <vexaTransferLib/GpxCacheDetails.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace vexaTrackLib::comparing {

using vexaTransferLib::GpxCacheDetails;
using vexaTransferLib::GpxCacheLogDetails;
using vexaTransferLib::GpxElement;
using vexaTransferLib::GpxPoint;

namespace {

using TextGetter = bool (GpxPoint::*)(icu::UnicodeString&) const;

struct TextField {
    const char* name;
    TextGetter get;
};

// Of points that have no element.
constexpr TextField kTexts[] = {{"cmt", &GpxPoint::GetComment},
                                {"desc", &GpxPoint::GetDescription},
                                {"src", &GpxPoint::GetSource},
                                {"sym", &GpxPoint::GetSymbol},
                                {"type", &GpxPoint::GetType}};

bool IsSameText(const GpxPoint& left, const GpxPoint& right, TextGetter get) {
    icu::UnicodeString one;
    icu::UnicodeString other;
    return (left.*get)(one) == (right.*get)(other) && one == other;
}

void CompareNumbers(const GpxPoint& oldPoint, const GpxPoint& newPoint, Difference& difference) {
    double oldValue = 0.0;
    double newValue = 0.0;
    const bool hadHeight = oldPoint.GetElevation(oldValue);
    const bool hasHeight = newPoint.GetElevation(newValue);
    if (hadHeight != hasHeight || (hasHeight && oldValue != newValue))
        difference.values.emplace_back("ele");
    const bool hadTime = oldPoint.GetTime(oldValue);
    const bool hasTime = newPoint.GetTime(newValue);
    if (hadTime != hasTime)
        difference.values.emplace_back("time");
    else if (hasTime && oldValue != newValue)
        difference.retimed = newValue - oldValue;
}

void ComparePlaces(const GpxPoint& oldPoint, const GpxPoint& newPoint, Difference& difference) {
    if (PlaceKey(oldPoint) == PlaceKey(newPoint))
        return;
    double oldLatitude = 0.0;
    double oldLongitude = 0.0;
    double latitude = 0.0;
    double longitude = 0.0;
    oldPoint.GetPoint(oldLatitude, oldLongitude);
    newPoint.GetPoint(latitude, longitude);
    difference.moved = Distance(oldLatitude, oldLongitude, latitude, longitude);
}

std::set<std::int64_t> LogsOf(const GpxCacheDetails& cache) {
    std::set<std::int64_t> ids;
    for (const GpxCacheLogDetails& log : cache.GetLogs())
        if (log.id)
            ids.insert(*log.id);
    return ids;
}

std::size_t CountMissing(const std::set<std::int64_t>& ids, const std::set<std::int64_t>& in) {
    return static_cast<std::size_t>(
        std::count_if(ids.begin(), ids.end(), [&in](std::int64_t id) { return in.count(id) == 0; }));
}

void CompareCaches(const GpxElement& oldElement, const GpxElement& newElement, Difference& difference) {
    if (!oldElement || !newElement) {
        if (oldElement || newElement)
            difference.values.emplace_back("cache");
        return;
    }
    const GpxCacheDetails oldCache(oldElement);
    const GpxCacheDetails newCache(newElement);
    if (oldCache.IsAvailable() != newCache.IsAvailable())
        difference.isAvailable = newCache.IsAvailable().value_or(true);
    if (oldCache.IsArchived() != newCache.IsArchived())
        difference.isArchived = newCache.IsArchived().value_or(false);
    const std::set<std::int64_t> oldLogs = LogsOf(oldCache);
    const std::set<std::int64_t> newLogs = LogsOf(newCache);
    difference.addedLogs = CountMissing(newLogs, oldLogs);
    difference.removedLogs = CountMissing(oldLogs, newLogs);
    const bool hasOtherLogs = difference.addedLogs + difference.removedLogs > 0;
    for (std::string& name : DifferentFields(oldElement, newElement, {}))
        if (name != "logs" || !hasOtherLogs)
            difference.values.push_back(std::move(name));
}

/// Which of two lists of points belong together.
Pairing PairPoints(const std::vector<const GpxPoint*>& olds, const std::vector<const GpxPoint*>& news) {
    Pairing pairing(olds.size(), news.size());
    std::size_t same = 0;
    while (same < olds.size() && same < news.size() && ContentKey(*olds[same]) == ContentKey(*news[same])) {
        pairing.Pair(same, same);
        ++same;
    }
    if (same == olds.size() && same == news.size())
        return pairing;
    const auto pairBy = [&](auto key) {
        pairing.PairBy([&](std::size_t i) { return std::optional<Key>(key(*olds[i])); },
                       [&](std::size_t i) { return std::optional<Key>(key(*news[i])); });
    };
    pairBy(ContentKey);
    pairBy(TimeKey);
    pairBy(PlaceKey);
    pairing.PairRestByOrder();
    return pairing;
}

template <class Number>
void KeepLarger(std::optional<Number>& kept, const std::optional<Number>& other) {
    if (other && (!kept || std::abs(*other) > std::abs(*kept)))
        kept = other;
}

} // namespace

void ComparePoints(const GpxPoint& oldPoint, const GpxPoint& newPoint, Difference& difference) {
    ComparePlaces(oldPoint, newPoint, difference);
    CompareNumbers(oldPoint, newPoint, difference);
    const std::vector<std::string> fields =
        DifferentFields(oldPoint.GetElement(), newPoint.GetElement(), {"name", "ele", "time", "cache"});
    difference.values.insert(difference.values.end(), fields.begin(), fields.end());
    if (!oldPoint.GetElement() || !newPoint.GetElement()) {
        difference.values.clear();
        CompareNumbers(oldPoint, newPoint, difference);
        for (const TextField& field : kTexts)
            if (!IsSameText(oldPoint, newPoint, field.get))
                difference.values.emplace_back(field.name);
    }
    std::sort(difference.values.begin(), difference.values.end());
}

void CompareWaypoints(const GpxPoint& oldPoint, const GpxPoint& newPoint, Difference& difference) {
    ComparePoints(oldPoint, newPoint, difference);
    icu::UnicodeString oldName;
    oldPoint.GetName(oldName);
    if (oldName != difference.name)
        difference.oldName = oldName;
    CompareCaches(GpxCacheDetails::FindCache(oldPoint.GetElement()),
                  GpxCacheDetails::FindCache(newPoint.GetElement()), difference);
    std::sort(difference.values.begin(), difference.values.end());
}

void ComparePathPoints(const std::vector<const GpxPoint*>& oldPoints,
                       const std::vector<const GpxPoint*>& newPoints, Difference& difference) {
    const Pairing pairing = PairPoints(oldPoints, newPoints);
    for (std::size_t i = 0; i < oldPoints.size(); ++i)
        difference.removedPoints += pairing.NewOf(i) == Pairing::kNone ? 1 : 0;
    std::size_t last = 0;
    bool isInOrder = true;
    for (std::size_t i = 0; i < newPoints.size(); ++i) {
        const std::size_t old = pairing.OldOf(i);
        if (old == Pairing::kNone) {
            ++difference.addedPoints;
            continue;
        }
        isInOrder = isInOrder && old >= last;
        last = old;
        if (ContentKey(*oldPoints[old]) == ContentKey(*newPoints[i]))
            continue;
        Difference one;
        ComparePoints(*oldPoints[old], *newPoints[i], one);
        difference.movedPoints += one.moved ? 1 : 0;
        difference.retimedPoints += one.retimed ? 1 : 0;
        difference.changedPoints += !one.moved && !one.retimed ? 1 : 0;
        KeepLarger(difference.moved, one.moved);
        KeepLarger(difference.retimed, one.retimed);
    }
    if (!isInOrder)
        difference.values.emplace_back("order");
}

} // namespace vexaTrackLib::comparing
