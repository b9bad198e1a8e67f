// SPDX-License-Identifier: MIT
#include <vexagpx/picture/MapChoice.h>

#include <vexaTrackLib/Bounds.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vexagpx {

using vexaTrackLib::MapProjection;

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;
// A map of a region is at most so far from its middle, in metres of the map: some 70 degrees of the earth.
constexpr double kFarthestOfRegion = 8.9e6;

struct Range {
    double low = 1e300;
    double high = -1e300;

    void Add(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    double Middle() const { return (low + high) / 2.0; }
};

/// The middle of the directions from the centre of the earth to all places.
void FindMiddle(const PathData& data, double& latitude, double& longitude) {
    Range x;
    Range y;
    Range z;
    data.ForEachPlace([&](double placeLatitude, double placeLongitude) {
        const double cosine = std::cos(placeLatitude * kDegree);
        x.Add(cosine * std::cos(placeLongitude * kDegree));
        y.Add(cosine * std::sin(placeLongitude * kDegree));
        z.Add(std::sin(placeLatitude * kDegree));
    });
    latitude = std::atan2(z.Middle(), std::hypot(x.Middle(), y.Middle())) / kDegree;
    longitude = std::atan2(y.Middle(), x.Middle()) / kDegree;
}

double MiddleLongitude(const PathData& data) {
    vexaTrackLib::Bounds bounds;
    data.ForEachPlace(
        [&](double latitude, double longitude) { bounds.Add(latitude, std::remainder(longitude, 360.0)); });
    const double width = bounds.East() - bounds.West() + (bounds.West() > bounds.East() ? 360.0 : 0.0);
    return width > 300.0 ? 0.0 : bounds.West() + width / 2.0;
}

} // namespace

MapChoice ChooseMap(const PathData& data) {
    double latitude = 0.0;
    double longitude = 0.0;
    FindMiddle(data, latitude, longitude);
    const MapProjection region = MapProjection::OfRegion(latitude, longitude);
    double farthest = 0.0;
    data.ForEachPlace([&](double placeLatitude, double placeLongitude) {
        const MapProjection::Place place = region.Project(placeLatitude, placeLongitude);
        farthest = std::max(farthest, std::hypot(place.x, place.y));
    });
    if (farthest <= kFarthestOfRegion)
        return {region, latitude, longitude};
    longitude = MiddleLongitude(data);
    return {MapProjection::OfWorld(longitude), 0.0, longitude};
}

} // namespace vexagpx
