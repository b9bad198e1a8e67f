// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// A track: a recorded path in segments.

#include <common/Export.h>
#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/GpxUrl.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/OptionalValue.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vexaTransferLib {

/// A list of segments, each an ordered list of track points, with the track's texts and an optional link.
///
/// A new point goes into the last segment: add a segment with AddSegment, then its points in order. A segment may
/// stay empty; segments and points cannot be removed. Text getters return false and leave their output unchanged
/// when the text is absent. The vendor's display colour is read and written but has no accessor. Copies are deep,
/// moves do not throw. An operation that throws leaves the track unchanged. Const operations may run on several
/// threads at once.
///
///     GpxTrack track;
///     track.AddSegment();
///     track.AddPoint(GpxPoint(kGpxTrackPoint, 47.5, -122.25));
///     for (auto segment = track.GetSegmentIter(); segment != track.GetSegmentEndIter(); ++segment)
///         total += track.GetPointCount(segment);
class VEXATRANSFERLIB_API GpxTrack {
public:
    /// \{
    /// The segments of a track, their points, and the iterators.
    typedef std::vector<GpxPoint> Segment;
    typedef std::vector<Segment> Segments;
    typedef Segments::const_iterator SegmentIterator;
    typedef Segment::const_iterator PointIterator;
    /// \}

    GpxTrack();
    /// \{
    /// Copies are deep, moves do not throw.
    GpxTrack(const GpxTrack& other);
    GpxTrack(GpxTrack&&) noexcept = default;
    GpxTrack& operator=(const GpxTrack& other);
    GpxTrack& operator=(GpxTrack&&) noexcept = default;
    /// \}
    virtual ~GpxTrack();

    /// \{
    /// Returns false and leaves the output unchanged when there is no such text.
    bool GetName(icu::UnicodeString& name) const;
    bool GetDescription(icu::UnicodeString& description) const;
    bool GetSource(icu::UnicodeString& source) const;
    bool GetType(icu::UnicodeString& type) const;
    /// \}

    /// \throws dbc::precondition_error "The GPX track name cannot be empty."
    void SetName(const icu::UnicodeString& name);
    /// \throws dbc::precondition_error "The GPX track description cannot be empty."
    void SetDescription(const icu::UnicodeString& description);
    /// \throws dbc::precondition_error "The GPX track source cannot be empty."
    void SetSource(const icu::UnicodeString& source);
    /// \throws dbc::precondition_error "The GPX track type cannot be empty."
    void SetType(const icu::UnicodeString& type);

    /// Returns false and leaves \p url unchanged when there is no link.
    bool GetURL(GpxUrl& url) const;
    /// Replaces the link.
    void SetURL(const GpxUrl& url);

    /// Appends a new, empty segment.
    void AddSegment();
    /// \{
    /// Appends a copy of the point, or the point itself when it is an rvalue, to the last segment.
    /// Amortised constant time.
    /// \throws dbc::precondition_error "Only track points can be added to GPX tracks.", then "A GPX track
    ///         needs a segment before points can be added."
    void AddPoint(const GpxPoint& point);
    void AddPoint(GpxPoint&& point);
    /// \}

    /// \{
    /// The segments in order. Adding a segment or a point invalidates iterators.
    SegmentIterator GetSegmentIter() const;
    SegmentIterator GetSegmentEndIter() const;
    std::size_t GetSegmentCount() const;
    /// \}

    /// \{
    /// The points of the segment that the iterator designates, and their number.
    PointIterator GetPointIter(SegmentIterator segment) const;
    PointIterator GetPointEndIter(SegmentIterator segment) const;
    std::size_t GetPointCount(SegmentIterator segment) const;
    /// \}

    /// Appends the track as GPX text; lines end in CR LF. The colour is written in both versions, the type in
    /// 1.1 only. The rules of GpxPoint::AppendToString apply to the points.
    /// \throws dbc::precondition_error "GPX tracks can only be written to version 1.0 or 1.1 files."
    /// \throws dbc::invariant_error what the points throw, \p out then contains what was written before
    /// \throws dbc::postcondition_error "The GPX text is too large to be held in memory."; \p out is then
    ///         bogus
    void AppendToString(const GpxVersion& version, icu::UnicodeString& out) const;

    /// \{
    /// Of a document that was read completely: the element that this was read from, and those children that should be
    /// objects of the model but could not be read, such as a track point without a position. Otherwise a view of nothing, and none.
    GpxElement GetElement() const { return element_; }
    const std::vector<GpxElement>& GetUnreadElements() const { return unread_; }
    /// \}
    /// The element that a segment was read from, if its document was read completely; otherwise a view of nothing.
    GpxElement GetSegmentElement(SegmentIterator segment) const;

private:
    friend class GpxModelAccess;

    VEXATRANSFERLIB_LOCAL void CheckPoint(const GpxPoint& point) const;

    icu::UnicodeString name_;
    icu::UnicodeString description_;
    icu::UnicodeString source_;
    OwnedValue<GpxUrl> url_;
    icu::UnicodeString type_;
    std::int16_t color_ = -1;
    Segments segments_;
    GpxElement element_;
    /// The children of the element that are no points, segments, routes or tracks of the model, in their order.
    std::vector<GpxElement> fields_;
    /// Of the segments that were read completely, which come first.
    std::vector<GpxElement> segmentElements_;
    /// The same of the elements of the segments.
    std::vector<GpxElement> segmentFields_;
    std::vector<GpxElement> unread_;
};

} // namespace vexaTransferLib
