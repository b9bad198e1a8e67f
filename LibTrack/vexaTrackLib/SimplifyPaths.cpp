// SPDX-License-Identifier: MIT
#include <vexaTrackLib/SimplifyPaths.h>

#include <common/dbc.h>
#include <vexaTrackLib/paths/Line.h>
#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace vexaTrackLib {

using paths::Line;
using vexaTransferLib::GpxListEditor;
using vexaTransferLib::GpxPoint;
using vexaTransferLib::GpxRoute;
using vexaTransferLib::GpxTrack;

namespace {

constexpr char kSource[] = "LibTrack/vexaTrackLib/SimplifyPaths.cpp";

void RequireError(double error) {
    dbc::Require(std::isfinite(error) && error > 0.0, kSource,
                 "The error must be a number of metres above 0.");
}

void RequirePoints(std::size_t points) {
    dbc::Require(points >= 2, kSource, "A path must keep two points or more.");
}

std::vector<Line> LinesOf(GpxTrack& track) {
    std::vector<Line> lines;
    lines.reserve(track.GetSegmentCount());
    for (std::size_t i = 0; i < track.GetSegmentCount(); ++i)
        lines.emplace_back(track.EditPoints(i));
    return lines;
}

std::vector<Line> LinesOf(GpxRoute& route) {
    std::vector<Line> lines;
    lines.emplace_back(route.EditPoints());
    return lines;
}

std::size_t CountKept(const std::vector<Line>& lines, double error) {
    std::size_t count = 0;
    for (const Line& line : lines)
        count += line.Simplified(error).size();
    return count;
}

std::size_t CountPoints(const std::vector<Line>& lines) {
    std::size_t count = 0;
    for (const Line& line : lines)
        count += line.GetCount();
    return count;
}

/// The smallest error, nearly, that leaves so few points; 0 when there are no more.
double ErrorFor(const std::vector<Line>& lines, std::size_t points) {
    if (CountPoints(lines) <= points)
        return 0.0;
    double high = 1e-3;
    for (const Line& line : lines)
        high = std::max(high, line.Reach());
    double low = high * 1e-12;
    while (high > low * 1.01) {
        const double middle = std::sqrt(low * high);
        (CountKept(lines, middle) <= points ? high : low) = middle;
    }
    return high;
}

void KeepOnly(const GpxListEditor<GpxPoint>& points, const std::vector<std::size_t>& kept) {
    std::size_t index = 0;
    auto next = kept.begin();
    points.RemoveIf([&](const GpxPoint&) {
        const bool isKept = next != kept.end() && *next == index;
        ++index;
        if (isKept)
            ++next;
        return !isKept;
    });
}

/// \param points gives the list of points of a line by its number
template <class Points>
SimplifiedPath Simplify(const std::vector<Line>& lines, double error, Points points) {
    SimplifiedPath path;
    path.before = CountPoints(lines);
    path.after = path.before;
    if (error == 0.0)
        return path;
    path.after = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::vector<std::size_t> kept = lines[i].Simplified(error);
        path.after += kept.size();
        path.farthest = std::max(path.farthest, lines[i].FarthestFrom(kept));
        if (kept.size() != lines[i].GetCount())
            KeepOnly(points(i), kept);
    }
    return path;
}

SimplifiedPath Simplify(GpxTrack& track, const std::vector<Line>& lines, double error) {
    return Simplify(lines, error, [&track](std::size_t segment) { return track.EditPoints(segment); });
}

SimplifiedPath Simplify(GpxRoute& route, const std::vector<Line>& lines, double error) {
    return Simplify(lines, error, [&route](std::size_t) { return route.EditPoints(); });
}

} // namespace

SimplifiedPath SimplifyTrack(GpxTrack& track, double error) {
    RequireError(error);
    return Simplify(track, LinesOf(track), error);
}

SimplifiedPath SimplifyRoute(GpxRoute& route, double error) {
    RequireError(error);
    return Simplify(route, LinesOf(route), error);
}

SimplifiedPath SimplifyTrackTo(GpxTrack& track, std::size_t points) {
    RequirePoints(points);
    const std::vector<Line> lines = LinesOf(track);
    return Simplify(track, lines, ErrorFor(lines, points));
}

SimplifiedPath SimplifyRouteTo(GpxRoute& route, std::size_t points) {
    RequirePoints(points);
    const std::vector<Line> lines = LinesOf(route);
    return Simplify(route, lines, ErrorFor(lines, points));
}

} // namespace vexaTrackLib
