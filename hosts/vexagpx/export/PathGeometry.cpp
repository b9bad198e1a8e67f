// SPDX-License-Identifier: MIT
#include <vexagpx/export/PathGeometry.h>

#include <algorithm>
#include <cmath>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

constexpr double kHalfOfWorld = 180.0;

Position OnOtherSide(Position position) {
    position.longitude = -position.longitude;
    return position;
}

} // namespace

PathGeometry::PathGeometry(const GpxRoute& route) {
    AddSegment(route.GetPointIter(), route.GetPointEndIter());
}

PathGeometry::PathGeometry(const GpxTrack& track) {
    for (auto segment = track.GetSegmentIter(); segment != track.GetSegmentEndIter(); ++segment)
        AddSegment(segment->begin(), segment->end());
}

void PathGeometry::AddSegment(PathLine::Iterator begin, PathLine::Iterator end) {
    ++segments_;
    points_ += static_cast<std::uint64_t>(end - begin);
    if (begin == end)
        return;
    PathLine line(begin);
    bool wasCut = false;
    Position before = PositionOf(*begin);
    AddTime(before.time);
    for (auto point = begin + 1; point != end; ++point) {
        const Position position = PositionOf(*point);
        AddTime(position.time);
        if (std::fabs(position.longitude - before.longitude) > kHalfOfWorld) {
            line = Cut(line, point, before, position);
            wasCut = true;
        }
        before = position;
    }
    line.SetEnd(end);
    AddLine(line, wasCut);
}

/// Ends the line before the point, which is on the other side of the 180th meridian.
/// \return the line that starts there
PathLine PathGeometry::Cut(PathLine line, PathLine::Iterator point, const Position& from,
                           const Position& to) {
    const Position crossing = CrossingOf180(from, to);
    const bool isFromThere = from.longitude == crossing.longitude;
    const bool isToThere = to.longitude == -crossing.longitude;
    line.SetEnd(point);
    if (!isFromThere || isToThere)
        line.StopAt(isFromThere ? OnOtherSide(to) : crossing);
    AddLine(line, true);
    PathLine next(point);
    if (!isToThere)
        next.StartAt(OnOtherSide(crossing));
    return next;
}

/// A single position at a cut is also the start or the end of the line on the other side.
void PathGeometry::AddLine(const PathLine& line, bool wasCut) {
    const bool isLine = line.PositionCount() > 1;
    if (!isLine && wasCut)
        return;
    isPoints_ = isPoints_ && !isLine;
    lines_.push_back(line);
}

void PathGeometry::AddTime(const std::optional<double>& time) {
    if (!time)
        return;
    ++times_;
    first_ = first_ ? std::min(*first_, *time) : *time;
    last_ = last_ ? std::max(*last_, *time) : *time;
}

} // namespace vexagpx
