// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxTrack.h>

#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ContractSources.h>
#include <vexaTransferLib/text/OptionalText.h>

#include <common/dbc.h>

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
    return index < segmentElements_.size() ? segmentElements_[index] : GpxElement();
}

} // namespace vexaTransferLib
