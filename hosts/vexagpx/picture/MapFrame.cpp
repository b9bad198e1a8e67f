// SPDX-License-Identifier: MIT
#include <vexagpx/picture/MapFrame.h>

#include <vexagpx/picture/MapChoice.h>

#include <algorithm>
#include <cmath>

namespace vexagpx {

using vexaTrackLib::MapProjection;

namespace {

// A single point has so many metres around it.
constexpr double kLeastSpan = 200.0;

struct Range {
    double low = 1e300;
    double high = -1e300;

    void Add(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    double Middle() const { return (low + high) / 2.0; }
};

} // namespace

MapFrame::MapFrame(const PathData& data, const Box& box)
    : box_(box), projection_(MapProjection::OfRegion(0.0, 0.0)) {
    const MapChoice choice = ChooseMap(data);
    projection_ = choice.projection;
    middleLongitude_ = choice.longitude;
    Fit(data);
}

void MapFrame::Fit(const PathData& data) {
    Range x;
    Range y;
    data.ForEachPlace([&](double latitude, double longitude) {
        const MapProjection::Place place = projection_.Project(latitude, longitude);
        x.Add(place.x);
        y.Add(place.y);
    });
    middle_ = {x.Middle(), y.Middle()};
    const double margin = std::clamp(std::min(box_.Width(), box_.Height()) * 0.09, 4.0, 60.0);
    const double width = std::max(box_.Width() - 2.0 * margin, 1.0);
    const double height = std::max(box_.Height() - 2.0 * margin, 1.0);
    scale_ =
        std::min(width / std::max(x.high - x.low, kLeastSpan), height / std::max(y.high - y.low, kLeastSpan));
}

Spot MapFrame::SpotOf(double latitude, double longitude) const {
    const MapProjection::Place place = projection_.Project(latitude, longitude);
    return {(box_.left + box_.right) / 2.0 + (place.x - middle_.x) * scale_,
            (box_.top + box_.bottom) / 2.0 - (place.y - middle_.y) * scale_};
}

MapProjection::Place MapFrame::ProjectedPlaceOf(Spot spot) const {
    return {middle_.x + (spot.x - (box_.left + box_.right) / 2.0) / scale_,
            middle_.y - (spot.y - (box_.top + box_.bottom) / 2.0) / scale_};
}

void MapFrame::PlaceOf(Spot spot, double& latitude, double& longitude) const {
    projection_.Reverse(ProjectedPlaceOf(spot), latitude, longitude);
}

double MapFrame::FromMiddle(double longitude) const {
    return std::remainder(longitude - middleLongitude_, 360.0);
}

void MapFrame::CutAtEdge(const PathSegment& segment, std::size_t i, std::vector<Part>& parts) const {
    const PathPoint& from = segment[i - 1];
    const PathPoint& to = segment[i];
    const double before = FromMiddle(from.longitude);
    const double after = FromMiddle(to.longitude);
    if (std::abs(after - before) <= 180.0)
        return;
    const double edge = before > 0.0 ? 179.9999 : -179.9999;
    const double whole = 360.0 - std::abs(after - before);
    const double part = whole > 0.0 ? (180.0 - std::abs(before)) / whole : 0.5;
    const double latitude = from.latitude + part * (to.latitude - from.latitude);
    parts.back().spots.push_back(SpotOf(latitude, middleLongitude_ + edge));
    parts.back().points.push_back(i - 1);
    parts.push_back({{SpotOf(latitude, middleLongitude_ - edge)}, {i}});
}

std::vector<MapFrame::Part> MapFrame::PartsOf(const PathSegment& segment) const {
    std::vector<Part> parts(1);
    for (std::size_t i = 0; i < segment.size(); ++i) {
        if (i > 0 && projection_.IsOfWorld())
            CutAtEdge(segment, i, parts);
        parts.back().spots.push_back(SpotOf(segment[i].latitude, segment[i].longitude));
        parts.back().points.push_back(i);
    }
    return parts;
}

} // namespace vexagpx
