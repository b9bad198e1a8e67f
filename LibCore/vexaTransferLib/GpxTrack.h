// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// A track: a recorded path in segments.

#include <common/Export.h>
#include <vexaTransferLib/GpxListEditor.h>
#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/GpxUrl.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/OptionalValue.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace vexaTransferLib {

/// A list of segments, each an ordered list of track points, with the track's texts and an optional link.
///
/// A new point goes into the last segment: add a segment with AddSegment, then its points in order. A segment may
/// stay empty. EditPoints changes the points of one segment, the operations beside it the list of segments. Text
/// getters return false and leave their output unchanged when the text is absent. The vendor's display colour is read
/// and written but has no accessor. Copies are deep, moves do not throw. An operation that throws leaves the track
/// unchanged. Const operations may run on several threads at once.
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

    /// \{
    /// Removes the text or the link; nothing happens when there is none.
    void ClearName() noexcept { name_.remove(); }
    void ClearDescription() noexcept { description_.remove(); }
    void ClearSource() noexcept { source_.remove(); }
    void ClearType() noexcept { type_.remove(); }
    void ClearURL() noexcept { url_.reset(); }
    /// \}

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

    /// All segments, for a range-based `for`.
    const Segments& GetSegments() const { return segments_; }

    // Segments are counted from 0. These operations make all iterators of the track invalid; those that take an index
    // throw dbc::precondition_error "There is no such segment in the GPX track." They throw std::bad_alloc too.

    /// For changing the points of a segment.
    GpxListEditor<GpxPoint> EditPoints(std::size_t segment);
    /// Inserts a segment before the one at \p index, or at the end. Costs a move of every segment after it.
    /// \throws dbc::precondition_error "Only track points can be added to GPX tracks.", checked first
    void InsertSegment(std::size_t index, Segment points);
    /// Removes the segment at \p index and those after it, \p count in all, with what a file had in them.
    void RemoveSegments(std::size_t index, std::size_t count = 1);
    /// Moves the segment at \p from to the place \p to; those between move up by one.
    void MoveSegment(std::size_t from, std::size_t to);
    /// Splits a segment: its points from \p point on become a segment of their own after it. What else a file had in
    /// the segment, such as extensions, stays in the first part. Either part may be empty.
    /// \throws dbc::precondition_error "There is no such place in the list." when it has fewer points
    void SplitSegment(std::size_t index, std::size_t point);
    /// A point of a track, both counted from 0.
    struct Place {
        std::size_t segment; ///< of the track
        std::size_t point;   ///< of the segment; may be behind the last one
    };
    /// The same for many places at once, which are those of the track as it is before. Linear in segments and points.
    /// \throws dbc::precondition_error "The places to split at must rise.", then "There is no such place in the list."
    void SplitSegments(const std::vector<Place>& places);
    /// Removes all segments that the condition holds for, with what a file had in them. Linear. The condition is asked
    /// once for each, in order, before anything is changed.
    /// \returns how many were removed
    std::size_t RemoveSegmentsIf(const std::function<bool(const Segment&)>& condition);
    /// Joins the segment at \p index and the one after it, which is appended to it with everything that a file had in
    /// it.
    void JoinSegments(std::size_t index);
    /// Splits the track: its segments from \p index on become the track that is returned, which has the same texts,
    /// link, colour and foreign elements. GetUnreadElements of both has those of the whole track.
    ///
    ///     document.EditTracks().Insert(1, document.EditTracks()[0].SplitOff(3));
    GpxTrack SplitOff(std::size_t index);
    /// Appends the segments of another track with everything that a file had in them. What else the other has, such as
    /// texts and a link, is left out.
    void AppendSegments(GpxTrack other);
    /// Reverses the track: its segments, and the points of each.
    void Reverse();

    /// \{
    /// Whether texts, link, colour and points are equal, segment by segment (see GpxPoint).
    VEXATRANSFERLIB_API friend bool operator==(const GpxTrack& left, const GpxTrack& right);
    friend bool operator!=(const GpxTrack& left, const GpxTrack& right) { return !(left == right); }
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
    /// objects of the model but could not be read, such as a track point without a position. Otherwise a view of
    /// nothing, and none.
    GpxElement GetElement() const { return element_; }
    const std::vector<GpxElement>& GetUnreadElements() const { return unread_; }
    /// \}
    /// The element that a segment was read from, if its document was read completely; otherwise a view of nothing.
    GpxElement GetSegmentElement(SegmentIterator segment) const;

private:
    friend class GpxModelAccess;

    /// What few segments have that were read completely.
    struct SegmentExtras {
        std::vector<GpxElement> fields; ///< children of the element that are no points
        std::vector<GpxElement> joined; ///< elements of segments that were joined to this one
    };
    /// Where a segment was read.
    struct SegmentOrigin {
        GpxElement element;
        OwnedValue<SegmentExtras> extras;
        std::size_t readPoints = 0; ///< how many were read completely

        SegmentExtras& Extras() {
            if (!extras)
                extras = std::make_unique<SegmentExtras>();
            return *extras;
        }
    };

    VEXATRANSFERLIB_LOCAL void CheckPoint(const GpxPoint& point) const;
    VEXATRANSFERLIB_LOCAL void RequireSegments(std::size_t index, std::size_t count) const;
    VEXATRANSFERLIB_LOCAL void CompleteOrigins(std::size_t room);
    VEXATRANSFERLIB_LOCAL static SegmentExtras Joined(const SegmentExtras& first,
                                                      const SegmentExtras& second);

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
    /// Of the first segments; those after them were not read completely.
    std::vector<SegmentOrigin> origins_;
    std::vector<GpxElement> unread_;
    std::size_t readSegments_ = 0; ///< how many were read completely
};

} // namespace vexaTransferLib
