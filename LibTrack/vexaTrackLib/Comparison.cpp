// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Comparison.h>

#include <vexaTrackLib/comparing/FieldNames.h>
#include <vexaTrackLib/comparing/Keys.h>
#include <vexaTrackLib/comparing/PointComparison.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxMetadata.h>
#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>

#include <algorithm>
#include <utility>

namespace vexaTrackLib {

using comparing::Key;
using comparing::Pairing;
using content::Hasher;
using vexaTransferLib::GpxDocument;
using vexaTransferLib::GpxElement;
using vexaTransferLib::GpxMetadata;
using vexaTransferLib::GpxPerson;
using vexaTransferLib::GpxPoint;
using vexaTransferLib::GpxRoute;
using vexaTransferLib::GpxTrack;

namespace {

using Points = std::vector<const GpxPoint*>;

template <class Object>
icu::UnicodeString NameOf(const Object& object) {
    icu::UnicodeString name;
    object.GetName(name);
    return name;
}

Points PointsOf(const GpxRoute& route) {
    Points points;
    for (const GpxPoint& point : route.GetPoints())
        points.push_back(&point);
    return points;
}

Points PointsOf(const GpxTrack& track) {
    Points points;
    for (const GpxTrack::Segment& segment : track.GetSegments())
        for (const GpxPoint& point : segment)
            points.push_back(&point);
    return points;
}

Key ContentKey(const GpxPoint& point) {
    return comparing::ContentKey(point);
}

// Where segments end counts, too.
Key ContentKey(const GpxTrack& track) {
    Hasher hasher;
    content::AddTrack(track, hasher);
    for (const GpxTrack::Segment& segment : track.GetSegments()) {
        if (segment.empty())
            continue;
        hasher.Add(static_cast<std::uint64_t>(segment.size()));
        for (const GpxPoint& point : segment)
            content::AddPoint(point, hasher);
    }
    return Key::Of(hasher);
}

Key ContentKey(const GpxRoute& route) {
    Hasher hasher;
    content::AddRoute(route, hasher);
    for (const GpxPoint& point : route.GetPoints())
        content::AddPoint(point, hasher);
    return Key::Of(hasher);
}

/// How many points each segment has that is not empty.
std::vector<std::size_t> SegmentSizes(const GpxTrack& track) {
    std::vector<std::size_t> sizes;
    for (const GpxTrack::Segment& points : track.GetSegments())
        if (!points.empty())
            sizes.push_back(points.size());
    return sizes;
}

void CompareObjects(const GpxPoint& oldPoint, const GpxPoint& newPoint, Difference& difference) {
    comparing::CompareWaypoints(oldPoint, newPoint, difference);
}

template <class Path>
void ComparePaths(const Path& oldPath, const Path& newPath, const std::vector<std::string_view>& leftOut,
                  Difference& difference) {
    if (NameOf(oldPath) != difference.name)
        difference.oldName = NameOf(oldPath);
    difference.values = comparing::DifferentFields(oldPath.GetElement(), newPath.GetElement(), leftOut);
    comparing::ComparePathPoints(PointsOf(oldPath), PointsOf(newPath), difference);
}

void CompareObjects(const GpxRoute& oldRoute, const GpxRoute& newRoute, Difference& difference) {
    ComparePaths(oldRoute, newRoute, {"name", "rtept"}, difference);
}

void CompareObjects(const GpxTrack& oldTrack, const GpxTrack& newTrack, Difference& difference) {
    ComparePaths(oldTrack, newTrack, {"name", "trkseg"}, difference);
    const bool hasOtherPoints = difference.addedPoints + difference.removedPoints > 0;
    const std::vector<std::size_t> oldSizes = SegmentSizes(oldTrack);
    const std::vector<std::size_t> newSizes = SegmentSizes(newTrack);
    if (hasOtherPoints ? oldSizes.size() != newSizes.size() : oldSizes != newSizes)
        difference.values.emplace_back("trkseg");
}

std::optional<Key> PlaceOf(const GpxPoint& point) {
    return comparing::PlaceKey(point);
}

// The place and the time of the first point.
template <class Path>
std::optional<Key> PlaceOf(const Path& path) {
    const Points points = PointsOf(path);
    if (points.empty())
        return std::nullopt;
    Hasher hasher;
    content::AddPoint(*points.front(), hasher);
    return Key::Of(hasher);
}

/// Compares two lists of objects of one kind.
template <class Object>
class ListComparison {
public:
    ListComparison(const std::vector<Object>& olds, const std::vector<Object>& news, Difference::Object kind,
                   std::vector<Difference>& differences)
        : olds_(olds), news_(news), kind_(kind), differences_(differences),
          pairing_(olds.size(), news.size()) {}

    void Run() {
        const std::vector<Key> oldKeys = KeysOf(olds_);
        const std::vector<Key> newKeys = KeysOf(news_);
        pairing_.PairBy([&](std::size_t i) { return std::optional(oldKeys[i]); },
                        [&](std::size_t i) { return std::optional(newKeys[i]); });
        PairBy([](const Object& object) { return comparing::NameKey(object); });
        PairBy([](const Object& object) { return PlaceOf(object); });
        for (std::size_t i = 0; i < news_.size(); ++i) {
            const std::size_t old = pairing_.OldOf(i);
            if (old == Pairing::kNone)
                differences_.push_back(Made(0, i + 1, news_[i]));
            else if (!(oldKeys[old] == newKeys[i]))
                AddChanged(old, i);
        }
        for (std::size_t i = 0; i < olds_.size(); ++i)
            if (pairing_.NewOf(i) == Pairing::kNone)
                differences_.push_back(Made(i + 1, 0, olds_[i]));
    }

private:
    static std::vector<Key> KeysOf(const std::vector<Object>& objects) {
        std::vector<Key> keys;
        keys.reserve(objects.size());
        for (const Object& object : objects)
            keys.push_back(ContentKey(object));
        return keys;
    }
    template <class KeyOf>
    void PairBy(KeyOf keyOf) {
        pairing_.PairBy([&](std::size_t i) { return keyOf(olds_[i]); },
                        [&](std::size_t i) { return keyOf(news_[i]); });
    }
    Difference Made(std::size_t oldNumber, std::size_t newNumber, const Object& object) const {
        Difference difference;
        difference.object = kind_;
        difference.oldNumber = oldNumber;
        difference.newNumber = newNumber;
        difference.name = NameOf(object);
        return difference;
    }
    void AddChanged(std::size_t old, std::size_t index) {
        Difference difference = Made(old + 1, index + 1, news_[index]);
        CompareObjects(olds_[old], news_[index], difference);
        differences_.push_back(std::move(difference));
    }

    const std::vector<Object>& olds_;
    const std::vector<Object>& news_;
    Difference::Object kind_;
    std::vector<Difference>& differences_;
    Pairing pairing_;
};

/// The element that has the metadata: the root in GPX 1.0.
GpxElement HeadOf(const GpxDocument& document) {
    const GpxElement root = document.GetElement();
    for (const GpxElement& child : root.GetChildren())
        if (child.GetName() == "metadata")
            return child;
    return GpxMetadata(root).GetVersion() == u"1.0" ? root : GpxElement();
}

// The versions of GPX write it in different ways.
bool HaveSameAuthor(const GpxDocument& left, const GpxDocument& right) {
    const GpxPerson one = GpxMetadata(left.GetElement()).GetAuthor().value_or(GpxPerson());
    const GpxPerson other = GpxMetadata(right.GetElement()).GetAuthor().value_or(GpxPerson());
    return one.name == other.name && one.email == other.email &&
           one.link.has_value() == other.link.has_value() &&
           (!one.link || (one.link->href == other.link->href && one.link->text == other.link->text));
}

std::vector<std::string> DifferentMetadata(const GpxDocument& oldDocument, const GpxDocument& newDocument) {
    std::vector<std::string> names =
        comparing::DifferentFields(HeadOf(oldDocument), HeadOf(newDocument),
                                   {"name", "time", "bounds", "wpt", "rte", "trk", "author", "email"});
    if (!HaveSameAuthor(oldDocument, newDocument))
        names.emplace_back("author");
    // What is beside them in the root.
    for (std::string& name : comparing::DifferentFields(oldDocument.GetElement(), newDocument.GetElement(),
                                                        {"metadata", "wpt", "rte", "trk", "name", "desc",
                                                         "author", "email", "time", "keywords", "bounds"}))
        if (name != "link")
            names.push_back(std::move(name));
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

void CompareHeads(const GpxDocument& oldDocument, const GpxDocument& newDocument,
                  std::vector<Difference>& differences) {
    Difference difference;
    difference.name = NameOf(newDocument);
    if (NameOf(oldDocument) != difference.name)
        difference.oldName = NameOf(oldDocument);
    double oldTime = 0.0;
    double newTime = 0.0;
    const bool hadTime = oldDocument.GetDocumentTime(oldTime);
    const bool hasTime = newDocument.GetDocumentTime(newTime);
    difference.values = DifferentMetadata(oldDocument, newDocument);
    if (hadTime != hasTime)
        difference.values.emplace_back("time");
    else if (hasTime && oldTime != newTime)
        difference.retimed = newTime - oldTime;
    if (difference.oldName || difference.retimed || !difference.values.empty())
        differences.push_back(std::move(difference));
}

} // namespace

std::vector<Difference> Compare(const GpxDocument& oldDocument, const GpxDocument& newDocument) {
    std::vector<Difference> differences;
    CompareHeads(oldDocument, newDocument, differences);
    ListComparison<GpxPoint>(oldDocument.GetWaypoints(), newDocument.GetWaypoints(),
                             Difference::Object::kWaypoint, differences)
        .Run();
    ListComparison<GpxRoute>(oldDocument.GetRoutes(), newDocument.GetRoutes(), Difference::Object::kRoute,
                             differences)
        .Run();
    ListComparison<GpxTrack>(oldDocument.GetTracks(), newDocument.GetTracks(), Difference::Object::kTrack,
                             differences)
        .Run();
    return differences;
}

} // namespace vexaTrackLib
