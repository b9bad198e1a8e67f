// SPDX-License-Identifier: MIT
#include <vexaTrackLib/CutArea.h>

#include <common/dbc.h>
#include <vexaTrackLib/Distance.h>
#include <vexaTransferLib/GpxPoint.h>

#include <algorithm>
#include <cmath>

namespace vexaTrackLib {

using vexaTransferLib::GpxBounds;
using vexaTransferLib::GpxPoint;

namespace {

constexpr char kSource[] = "LibTrack/vexaTrackLib/CutArea.cpp";

bool IsLatitude(double latitude) {
    return std::abs(latitude) <= 90.0;
}

bool IsLongitude(double longitude) {
    return std::abs(longitude) <= 180.0;
}

/// How far to the east a longitude is, from 0 to 360.
double EastOf(double west, double longitude) {
    const double east = std::fmod(longitude - west, 360.0);
    return east < 0.0 ? east + 360.0 : east;
}

double WidthOf(const GpxBounds& box) {
    const double width = box.maxLongitude - box.minLongitude;
    return width < 0.0 ? width + 360.0 : width;
}

/// Narrows the part of a line from `begin` to `end` to where start + t * change is between two numbers.
void Narrow(double start, double change, double low, double high, double& begin, double& end) {
    if (change == 0.0) {
        if (start < low || start > high)
            end = -1.0;
        return;
    }
    const double one = (low - start) / change;
    const double other = (high - start) / change;
    begin = std::max(begin, std::min(one, other));
    end = std::min(end, std::max(one, other));
}

/// The distance of the origin from a line on a map.
double DistanceFromLine(const MapProjection::Place& from, const MapProjection::Place& to) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double square = dx * dx + dy * dy;
    const double part = square > 0.0 ? std::clamp(-(from.x * dx + from.y * dy) / square, 0.0, 1.0) : 0.0;
    return std::hypot(from.x + part * dx, from.y + part * dy);
}

} // namespace

CutArea CutArea::Around(double latitude, double longitude, double radius) {
    dbc::Require(IsLatitude(latitude) && IsLongitude(longitude), kSource,
                 "The place must be a latitude from -90 to 90 and a longitude from -180 to 180.");
    dbc::Require(std::isfinite(radius) && radius > 0.0, kSource,
                 "The radius must be a number of metres above 0.");
    CutArea area;
    area.circle_ = Circle{latitude, longitude, radius, MapProjection::OfRegion(latitude, longitude)};
    return area;
}

CutArea CutArea::Box(const GpxBounds& box) {
    dbc::Require(
        IsLatitude(box.minLatitude) && IsLatitude(box.maxLatitude) && IsLongitude(box.minLongitude) &&
            IsLongitude(box.maxLongitude) && box.minLatitude <= box.maxLatitude,
        kSource,
        "The box must have latitudes from -90 to 90, the southern one first, and longitudes from -180 to "
        "180.");
    CutArea area;
    area.box_ = box;
    return area;
}

bool CutArea::Contains(const GpxPoint& point) const {
    if (span_) {
        double time = 0.0;
        if (!point.GetTime(time) || (span_->from && time < *span_->from) || (span_->to && time > *span_->to))
            return false;
    }
    double latitude = 0.0;
    double longitude = 0.0;
    point.GetPoint(latitude, longitude);
    return !HasPlaces() || ContainsPlace(latitude, longitude);
}

bool CutArea::ContainsPlace(double latitude, double longitude) const {
    constexpr double kLeastMetresOfADegree = 110574.0;
    if (circle_)
        return std::abs(latitude - circle_->latitude) * kLeastMetresOfADegree <= circle_->radius &&
               Distance(circle_->latitude, circle_->longitude, latitude, longitude) <= circle_->radius;
    return box_ && latitude >= box_->minLatitude && latitude <= box_->maxLatitude &&
           std::isfinite(longitude) && EastOf(box_->minLongitude, longitude) <= WidthOf(*box_);
}

bool CutArea::Crosses(double latitude1, double longitude1, double latitude2, double longitude2) const {
    if (ContainsPlace(latitude1, longitude1) || ContainsPlace(latitude2, longitude2))
        return true;
    if (circle_)
        return CrossesCircle(latitude1, longitude1, latitude2, longitude2);
    return box_ && CrossesBox(latitude1, longitude1, latitude2, longitude2);
}

// On the map around the middle, lines that come near it are nearly straight.
bool CutArea::CrossesCircle(double latitude1, double longitude1, double latitude2, double longitude2) const {
    const MapProjection::Place from = circle_->map.Project(latitude1, longitude1);
    const MapProjection::Place to = circle_->map.Project(latitude2, longitude2);
    return DistanceFromLine(from, to) <= circle_->radius;
}

// Between the latitudes and longitudes of its ends, which short lines do not leave by much.
bool CutArea::CrossesBox(double latitude1, double longitude1, double latitude2, double longitude2) const {
    double change = std::remainder(longitude2 - longitude1, 360.0);
    const double width = WidthOf(*box_);
    const double start = EastOf(box_->minLongitude, longitude1);
    // A line may reach the box from either side.
    for (const double turn : {0.0, -360.0, 360.0}) {
        double begin = 0.0;
        double end = 1.0;
        Narrow(latitude1, latitude2 - latitude1, box_->minLatitude, box_->maxLatitude, begin, end);
        Narrow(start + turn, change, 0.0, width, begin, end);
        if (begin <= end)
            return true;
    }
    return false;
}

} // namespace vexaTrackLib
