// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/export/Position.h>

#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace vexagpx {

/// Consecutive points of a route or of a segment of a track that do not cross the 180th meridian.
class PathLine {
public:
    using Iterator = std::vector<vexaTransferLib::GpxPoint>::const_iterator;

    /// Has no point until the end is set.
    explicit PathLine(Iterator begin) : begin_(begin), end_(begin) {}

    void SetEnd(Iterator end) { end_ = end; }
    /// \{
    /// Adds a position on the 180th meridian before the first or after the last point, where a line was cut.
    void StartAt(const Position& position) { start_ = position; }
    void StopAt(const Position& position) { stop_ = position; }
    /// \}

    std::size_t PositionCount() const {
        return static_cast<std::size_t>(end_ - begin_) + (start_ ? 1 : 0) + (stop_ ? 1 : 0);
    }

    /// Calls `take` with each position. The position of a line that has only one comes twice when a line is asked for.
    template <class Take>
    void ForEachPosition(bool asLine, Take take) const {
        if (start_)
            take(*start_);
        for (auto point = begin_; point != end_; ++point)
            take(PositionOf(*point));
        if (stop_)
            take(*stop_);
        if (asLine && PositionCount() == 1)
            take(PositionOf(*begin_));
    }

private:
    Iterator begin_;
    Iterator end_;
    std::optional<Position> start_;
    std::optional<Position> stop_;
};

/// The lines of a route or track, cut where they cross the 180th meridian, as formats want them that know no other side
/// of it. It is made in one pass over the points, and keeps none of them: it is valid as long as the route or track.
class PathGeometry {
public:
    explicit PathGeometry(const vexaTransferLib::GpxRoute& route);
    explicit PathGeometry(const vexaTransferLib::GpxTrack& track);

    const std::vector<PathLine>& Lines() const { return lines_; }
    /// True when no line has more than one position, so that there is nothing to draw but points.
    bool IsPoints() const { return isPoints_; }

    std::uint64_t PointCount() const { return points_; }
    std::uint64_t TimeCount() const { return times_; }
    std::uint64_t SegmentCount() const { return segments_; }
    /// \{
    /// The earliest and the latest time; empty when no point has one.
    std::optional<double> FirstTime() const { return first_; }
    std::optional<double> LastTime() const { return last_; }
    /// \}

private:
    void AddSegment(PathLine::Iterator begin, PathLine::Iterator end);
    PathLine Cut(PathLine line, PathLine::Iterator point, const Position& from, const Position& to);
    void AddTime(const std::optional<double>& time);
    void AddLine(const PathLine& line, bool wasCut);

    std::vector<PathLine> lines_;
    std::optional<double> first_;
    std::optional<double> last_;
    std::uint64_t points_ = 0;
    std::uint64_t times_ = 0;
    std::uint64_t segments_ = 0;
    bool isPoints_ = true;
};

} // namespace vexagpx
