// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxTrack.h>

#include <vexaTransferLib/text/ContractSources.h>
#include <vexaTransferLib/text/OptionalText.h>
#include <vexaTransferLib/writer/Elements.h>

#include <common/dbc.h>

#include <utility>

namespace vexaTransferLib {

GpxTrack::GpxTrack() = default;

GpxTrack::GpxTrack(const GpxTrack& other)
    : name_(other.name_), description_(other.description_), source_(other.source_), type_(other.type_),
      color_(other.color_), segments_(other.segments_) {
    AssignAutoPtrValue(url_, other.url_);
}

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

void GpxTrack::AppendToString(const GpxVersion& version, icu::UnicodeString& out) const {
    writer::UnicodeSink sink(out);
    AppendTo(version, sink);
    writer::RequireNotBogus(out, text::kGpxTrackSource);
}

void GpxTrack::AppendTo(const GpxVersion& version, writer::TextSink& sink) const {
    dbc::Require(version.IsGpx10() || version.IsGpx11(), text::kGpxTrackSource,
                 "GPX tracks can only be written to version 1.0 or 1.1 files.");
    sink.Ascii("<trk>\r\n");
    writer::AppendTextElement(sink, "name", name_);
    writer::AppendTextElement(sink, "desc", description_);
    writer::AppendTextElement(sink, "src", source_);
    if (url_)
        url_->AppendTo(version, sink);
    if (version.IsGpx11())
        writer::AppendTextElement(sink, "type", type_);
    // In GPX 1.0 too, which has no extensions: that is where other readers of the vendor look for it.
    if (color_ >= 0) {
        sink.Ascii("<extensions>\r\n");
        writer::AppendGroupedElement(sink, "\t", "tarvik:color", std::int32_t{color_});
        sink.Ascii("</extensions>\r\n");
    }
    for (const Segment& segment : segments_) {
        sink.Ascii("<trkseg>\r\n");
        for (const GpxPoint& point : segment)
            point.AppendTo(version, sink);
        sink.Ascii("</trkseg>\r\n");
    }
    sink.Ascii("</trk>\r\n");
}

} // namespace vexaTransferLib
