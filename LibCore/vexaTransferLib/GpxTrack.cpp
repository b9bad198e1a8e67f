// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxTrack.h>

#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ContractSources.h>
#include <vexaTransferLib/text/OptionalText.h>

#include <common/dbc.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <tuple>
#include <utility>

namespace vexaTransferLib {

// Contract reports name these lines for the checks of the writers (in writer/), which run on behalf of this class.
namespace text::sites {

static constexpr CheckSiteMaker Here{kGpxTrackSource};

constinit const CheckSite kTrackVersion = Here(); // TrackWriter.cpp: neither GPX 1.0 nor 1.1
constinit const CheckSite kTrackOutput = Here();  // TrackWriter.cpp: the text is too large

} // namespace text::sites

GpxTrack::GpxTrack() = default;

GpxTrack::GpxTrack(const GpxTrack& other) = default;

GpxTrack& GpxTrack::operator=(const GpxTrack& other) {
    if (this != &other)
        *this = GpxTrack(other);
    return *this;
}

GpxTrack::~GpxTrack() = default;

bool GpxTrack::GetName(icu::UnicodeString& name) const {
    return text::CopyText(name, name_);
}

bool GpxTrack::GetDescription(icu::UnicodeString& description) const {
    return text::CopyText(description, description_);
}

bool GpxTrack::GetSource(icu::UnicodeString& source) const {
    return text::CopyText(source, source_);
}

bool GpxTrack::GetType(icu::UnicodeString& type) const {
    return text::CopyText(type, type_);
}

void GpxTrack::SetName(const icu::UnicodeString& name) {
    text::AssignText("The GPX track name cannot be empty.", name_, name);
}

void GpxTrack::SetDescription(const icu::UnicodeString& description) {
    text::AssignText("The GPX track description cannot be empty.", description_, description);
}

void GpxTrack::SetSource(const icu::UnicodeString& source) {
    text::AssignText("The GPX track source cannot be empty.", source_, source);
}

void GpxTrack::SetType(const icu::UnicodeString& type) {
    text::AssignText("The GPX track type cannot be empty.", type_, type);
}

bool GpxTrack::GetURL(GpxUrl& url) const {
    return GetAutoPtrValue(url, url_);
}

void GpxTrack::SetURL(const GpxUrl& url) {
    SetAutoPtrValue(url_, url);
}

void GpxTrack::AddSegment() {
    segments_.emplace_back();
}

void GpxTrack::CheckPoint(const GpxPoint& point) const {
    dbc::Require(point.GetPointType() == kGpxTrackPoint, text::kGpxTrackSource,
                 "Only track points can be added to GPX tracks.");
    dbc::Require(!segments_.empty(), text::kGpxTrackSource,
                 "A GPX track needs a segment before points can be added.");
}

void GpxTrack::AddPoint(const GpxPoint& point) {
    CheckPoint(point);
    segments_.back().push_back(point);
}

void GpxTrack::AddPoint(GpxPoint&& point) {
    CheckPoint(point);
    segments_.back().push_back(std::move(point));
}

GpxTrack::SegmentIterator GpxTrack::GetSegmentIter() const {
    return segments_.begin();
}

GpxTrack::SegmentIterator GpxTrack::GetSegmentEndIter() const {
    return segments_.end();
}

std::size_t GpxTrack::GetSegmentCount() const {
    return segments_.size();
}

GpxTrack::PointIterator GpxTrack::GetPointIter(SegmentIterator segment) const {
    return segment->begin();
}

GpxTrack::PointIterator GpxTrack::GetPointEndIter(SegmentIterator segment) const {
    return segment->end();
}

std::size_t GpxTrack::GetPointCount(SegmentIterator segment) const {
    return segment->size();
}

GpxElement GpxTrack::GetSegmentElement(SegmentIterator segment) const {
    const auto index = static_cast<std::size_t>(segment - segments_.begin());
    return index < origins_.size() ? origins_[index].element : GpxElement();
}

void GpxTrack::RequireSegments(std::size_t index, std::size_t count) const {
    dbc::Require(index <= segments_.size() && count <= segments_.size() - index, text::kGpxTrackSource,
                 "There is no such segment in the GPX track.");
}

// After this, each segment has an origin, and there is room for more of both, so that nothing throws any more.
void GpxTrack::CompleteOrigins(std::size_t room) {
    segments_.reserve(segments_.size() + room);
    origins_.reserve(segments_.size() + room);
    origins_.resize(segments_.size());
}

namespace {

template <class List>
auto PlaceIn(List& list, std::size_t index) {
    return list.begin() + static_cast<std::ptrdiff_t>(index);
}

template <class List>
void MoveWithin(List& list, std::size_t from, std::size_t to) {
    if (from < to)
        std::rotate(PlaceIn(list, from), PlaceIn(list, from + 1), PlaceIn(list, to + 1));
    else
        std::rotate(PlaceIn(list, to), PlaceIn(list, from), PlaceIn(list, from + 1));
}

template <class Value>
void AppendMoved(std::vector<Value>& list, std::vector<Value>&& others) {
    list.insert(list.end(), std::make_move_iterator(others.begin()), std::make_move_iterator(others.end()));
}

} // namespace

GpxListEditor<GpxPoint> GpxTrack::EditPoints(std::size_t segment) {
    RequireSegments(segment, 1);
    return {segments_[segment], GpxListChecks::kTrack};
}

void GpxTrack::InsertSegment(std::size_t index, Segment points) {
    for (const GpxPoint& point : points)
        dbc::Require(point.GetPointType() == kGpxTrackPoint, text::kGpxTrackSource,
                     "Only track points can be added to GPX tracks.");
    RequireSegments(index, 0);
    CompleteOrigins(1);
    segments_.insert(PlaceIn(segments_, index), std::move(points));
    origins_.insert(PlaceIn(origins_, index), SegmentOrigin());
}

void GpxTrack::RemoveSegments(std::size_t index, std::size_t count) {
    RequireSegments(index, count);
    CompleteOrigins(0);
    segments_.erase(PlaceIn(segments_, index), PlaceIn(segments_, index + count));
    origins_.erase(PlaceIn(origins_, index), PlaceIn(origins_, index + count));
}

void GpxTrack::MoveSegment(std::size_t from, std::size_t to) {
    RequireSegments(from, 1);
    RequireSegments(to, 1);
    CompleteOrigins(0);
    MoveWithin(segments_, from, to);
    MoveWithin(origins_, from, to);
}

void GpxTrack::SplitSegment(std::size_t index, std::size_t point) {
    RequireSegments(index, 1);
    GpxListChecks::RequirePlace(point <= segments_[index].size());
    CompleteOrigins(1);
    Segment& first = segments_[index];
    const auto place = PlaceIn(first, point);
    Segment second;
    second.reserve(static_cast<std::size_t>(first.end() - place));
    second.assign(std::make_move_iterator(place), std::make_move_iterator(first.end()));
    first.erase(place, first.end());
    segments_.insert(PlaceIn(segments_, index + 1), std::move(second));
    origins_.insert(PlaceIn(origins_, index + 1), SegmentOrigin());
}

namespace {

/// Takes what comes from each place up to the next one, or to the end of the segment. All memory is taken before the
/// first change.
GpxTrack::Segments TakeParts(GpxTrack::Segments& segments, const std::vector<GpxTrack::Place>& places) {
    std::vector<std::size_t> ends(places.size());
    GpxTrack::Segments parts(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const bool isLast = i + 1 == places.size() || places[i + 1].segment != places[i].segment;
        ends[i] = isLast ? segments[places[i].segment].size() : places[i + 1].point;
        parts[i].reserve(ends[i] - places[i].point);
    }
    for (std::size_t i = places.size(); i-- > 0;) {
        GpxTrack::Segment& segment = segments[places[i].segment];
        const auto begin = PlaceIn(segment, places[i].point);
        parts[i].assign(std::make_move_iterator(begin), std::make_move_iterator(PlaceIn(segment, ends[i])));
        segment.erase(begin, segment.end());
    }
    return parts;
}

} // namespace

void GpxTrack::SplitSegments(const std::vector<Place>& places) {
    const auto comesBefore = [](const Place& left, const Place& right) {
        return std::tie(left.segment, left.point) < std::tie(right.segment, right.point);
    };
    dbc::Require(std::is_sorted(places.begin(), places.end(), comesBefore), text::kGpxTrackSource,
                 "The places to split at must rise.");
    for (const Place& place : places)
        GpxListChecks::RequirePlace(place.segment < segments_.size() &&
                                    place.point <= segments_[place.segment].size());
    CompleteOrigins(0);
    Segments segments;
    segments.reserve(segments_.size() + places.size());
    std::vector<SegmentOrigin> origins;
    origins.reserve(segments_.size() + places.size());
    Segments parts = TakeParts(segments_, places);
    for (std::size_t index = 0, part = 0; index < segments_.size(); ++index) {
        segments.push_back(std::move(segments_[index]));
        origins.push_back(std::move(origins_[index]));
        for (; part < places.size() && places[part].segment == index; ++part) {
            segments.push_back(std::move(parts[part]));
            origins.emplace_back();
        }
    }
    segments_ = std::move(segments);
    origins_ = std::move(origins);
}

std::size_t GpxTrack::RemoveSegmentsIf(const std::function<bool(const Segment&)>& condition) {
    std::vector<bool> isRemoved;
    isRemoved.reserve(segments_.size());
    for (const Segment& segment : segments_)
        isRemoved.push_back(condition(segment));
    CompleteOrigins(0);
    std::size_t kept = 0;
    for (std::size_t i = 0; i < isRemoved.size(); ++i) {
        if (isRemoved[i])
            continue;
        if (kept != i) {
            segments_[kept] = std::move(segments_[i]);
            origins_[kept] = std::move(origins_[i]);
        }
        ++kept;
    }
    segments_.resize(kept);
    origins_.resize(kept);
    return isRemoved.size() - kept;
}

// All memory is taken before the first change.
void GpxTrack::JoinSegments(std::size_t index) {
    RequireSegments(index, 2);
    CompleteOrigins(0);
    SegmentOrigin& first = origins_[index];
    SegmentOrigin& second = origins_[index + 1];
    OwnedValue<SegmentExtras> extras = first.extras;
    if (second.element || second.extras) {
        SegmentOrigin joined{first.element, std::move(extras), first.readPoints};
        if (second.extras)
            joined.Extras() = Joined(joined.Extras(), *second.extras);
        if (second.element)
            joined.Extras().joined.push_back(second.element);
        extras = std::move(joined.extras);
    }
    segments_[index].reserve(segments_[index].size() + segments_[index + 1].size());
    AppendMoved(segments_[index], std::move(segments_[index + 1]));
    first.extras = std::move(extras);
    segments_.erase(PlaceIn(segments_, index + 1));
    origins_.erase(PlaceIn(origins_, index + 1));
}

GpxTrack::SegmentExtras GpxTrack::Joined(const SegmentExtras& first, const SegmentExtras& second) {
    SegmentExtras joined = first;
    joined.fields.insert(joined.fields.end(), second.fields.begin(), second.fields.end());
    joined.joined.insert(joined.joined.end(), second.joined.begin(), second.joined.end());
    return joined;
}

GpxTrack GpxTrack::SplitOff(std::size_t index) {
    RequireSegments(index, 0);
    CompleteOrigins(0);
    GpxTrack rest;
    rest.name_ = text::Copied(name_);
    rest.description_ = text::Copied(description_);
    rest.source_ = text::Copied(source_);
    rest.url_ = url_;
    rest.type_ = text::Copied(type_);
    rest.color_ = color_;
    rest.element_ = element_;
    rest.fields_ = fields_;
    rest.unread_ = unread_;
    rest.readSegments_ = readSegments_;
    rest.segments_.reserve(segments_.size() - index);
    rest.origins_.reserve(segments_.size() - index);
    AppendMoved(rest.segments_, {std::make_move_iterator(PlaceIn(segments_, index)),
                                 std::make_move_iterator(segments_.end())});
    AppendMoved(rest.origins_,
                {std::make_move_iterator(PlaceIn(origins_, index)), std::make_move_iterator(origins_.end())});
    segments_.erase(PlaceIn(segments_, index), segments_.end());
    origins_.erase(PlaceIn(origins_, index), origins_.end());
    return rest;
}

void GpxTrack::AppendSegments(GpxTrack other) {
    std::vector<GpxElement> unread = unread_;
    unread.insert(unread.end(), other.unread_.begin(), other.unread_.end());
    other.CompleteOrigins(0);
    CompleteOrigins(other.segments_.size());
    AppendMoved(segments_, std::move(other.segments_));
    AppendMoved(origins_, std::move(other.origins_));
    unread_ = std::move(unread);
}

void GpxTrack::Reverse() {
    CompleteOrigins(0);
    std::reverse(segments_.begin(), segments_.end());
    std::reverse(origins_.begin(), origins_.end());
    for (Segment& segment : segments_)
        std::reverse(segment.begin(), segment.end());
}

bool operator==(const GpxTrack& left, const GpxTrack& right) {
    const bool hasSameLink = left.url_ && right.url_ ? *left.url_ == *right.url_ : !left.url_ == !right.url_;
    return left.name_ == right.name_ && left.description_ == right.description_ &&
           left.source_ == right.source_ && left.type_ == right.type_ && hasSameLink &&
           left.color_ == right.color_ && left.segments_ == right.segments_;
}

} // namespace vexaTransferLib
