// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/Drawing.h>
#include <vexagpx/picture/PathData.h>

#include <vexaTrackLib/MapProjection.h>

#include <vector>

namespace vexagpx {

/// Fits all points into a box of the picture: chooses the projection and its scale.
class MapFrame {
public:
    /// \param box must have a width and a height
    MapFrame(const PathData& data, const Box& box);

    const Box& Room() const { return box_; }
    const vexaTrackLib::MapProjection& Projection() const { return projection_; }
    /// In the middle of a map of a region.
    double UnitsPerMetre() const { return scale_; }

    Spot SpotOf(double latitude, double longitude) const;
    void PlaceOf(Spot spot, double& latitude, double& longitude) const;
    vexaTrackLib::MapProjection::Place ProjectedPlaceOf(Spot spot) const;

    /// The line through the points of a segment. In the map of the world it is in parts where it leaves the map at one
    /// edge and enters at the other. `points` has the index of a point for each spot.
    struct Part {
        std::vector<Spot> spots;
        std::vector<std::size_t> points;
    };
    std::vector<Part> PartsOf(const PathSegment& segment) const;

private:
    void Fit(const PathData& data);
    void CutAtEdge(const PathSegment& segment, std::size_t i, std::vector<Part>& parts) const;
    double FromMiddle(double longitude) const;

    Box box_;
    vexaTrackLib::MapProjection projection_;
    double middleLongitude_ = 0.0;
    vexaTrackLib::MapProjection::Place middle_;
    double scale_ = 1.0;
};

} // namespace vexagpx
