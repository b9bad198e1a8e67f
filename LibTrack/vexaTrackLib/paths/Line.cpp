// SPDX-License-Identifier: MIT
#include <vexaTrackLib/paths/Line.h>

#include <vexaTrackLib/Simplify.h>
#include <vexaTrackLib/paths/Length.h>

#include <algorithm>
#include <cmath>

namespace vexaTrackLib::paths {

using Place = MapProjection::Place;

namespace {

// From the middle of a map, where lengths are right to less than a thousandth.
constexpr double kReach = 300000.0;

double DistanceToPiece(Place place, Place start, Place end) {
    const double x = end.x - start.x;
    const double y = end.y - start.y;
    const double square = x * x + y * y;
    const double along = square > 0.0 ? ((place.x - start.x) * x + (place.y - start.y) * y) / square : 0.0;
    const double share = std::clamp(along, 0.0, 1.0);
    return Length(place.x - start.x - share * x, place.y - start.y - share * y);
}

} // namespace

Line::Line(const vexaTransferLib::GpxListEditor<vexaTransferLib::GpxPoint>& points) {
    for (const vexaTransferLib::GpxPoint& point : points) {
        double latitude;
        double longitude;
        point.GetPoint(latitude, longitude);
        Add(latitude, longitude);
    }
}

void Line::Add(double latitude, double longitude) {
    if (stretches_.empty())
        Start(latitude, longitude);
    Stretch& stretch = stretches_.back();
    const Place place = stretch.map.Project(latitude, longitude);
    stretch.places.push_back(place);
    if (Length(place.x, place.y) > kReach) {
        Start(latitude, longitude);
        stretches_.back().places.push_back({});
    }
    ++count_;
}

/// Starts a stretch with the next point.
void Line::Start(double latitude, double longitude) {
    stretches_.push_back({count_, MapProjection::OfRegion(latitude, longitude), {}});
}

std::vector<std::size_t> Line::Simplified(double error) const {
    std::vector<std::size_t> kept;
    for (const Stretch& stretch : stretches_) {
        const bool isFirst = kept.empty();
        for (const std::size_t index : vexaTrackLib::Simplify(stretch.places, error))
            if (isFirst || index != 0)
                kept.push_back(stretch.first + index);
    }
    return kept;
}

double Line::FarthestFrom(const std::vector<std::size_t>& kept) const {
    double farthest = 0.0;
    for (const Stretch& stretch : stretches_)
        farthest = std::max(farthest, FarthestFrom(stretch, kept));
    return farthest;
}

double Line::FarthestFrom(const Stretch& stretch, const std::vector<std::size_t>& kept) const {
    double farthest = 0.0;
    auto next = std::lower_bound(kept.begin(), kept.end(), stretch.first);
    const std::size_t end = stretch.first + stretch.places.size();
    for (std::size_t start = stretch.first; next != kept.end() && *next < end; ++next) {
        const Place from = stretch.places[start - stretch.first];
        const Place to = stretch.places[*next - stretch.first];
        for (std::size_t i = start + 1; i < *next; ++i) {
            const Place place = stretch.places[i - stretch.first];
            farthest = std::max(farthest, DistanceToPiece(place, from, to) / stretch.map.Scale(place));
        }
        start = *next;
    }
    return farthest;
}

double Line::Reach() const {
    double reach = 0.0;
    for (const Stretch& stretch : stretches_)
        for (const Place& place : stretch.places)
            reach = std::max(reach, Length(place.x, place.y));
    // Of a line that comes back, half of it leaves places in between.
    return 2.0 * reach;
}

} // namespace vexaTrackLib::paths
