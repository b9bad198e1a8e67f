// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/Drawing.h>
#include <vexagpx/picture/PathColours.h>
#include <vexagpx/picture/PathData.h>

#include <cstddef>
#include <vector>

namespace vexagpx {

/// Whether there is a path with a length and heights.
bool HasProfile(const PathData& data);

/// Draws the heights over the distance into a box: those paths that have both, one after another. The line is
/// interrupted between segments and where heights are missing over more than a fiftieth of the whole.
void LayOutProfile(const PathData& data, const PathColours& colours, const Box& box, double unit,
                   const MeasureText& measure, Drawing& drawing);

/// The horizontal axis of a profile: where a distance along the paths is. Between segments is a gap of some width.
class ProfileAxis {
public:
    /// \param gap the width of a gap; less when there are so many that they would take an eighth of the axis
    ProfileAxis(const PathData& data, double left, double right, double gap);

    /// \param path, segment of the path in the data
    /// \param distance metres along the path
    double PlaceOf(std::size_t path, std::size_t segment, double distance) const;
    /// \param distance metres along all paths
    double PlaceOf(double distance) const;

    double Length() const { return length_; } ///< metres of all paths
    bool Has(std::size_t path) const { return firstPieces_[path] != kNone; }

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    double left_;
    double scale_ = 1.0;
    double gap_ = 0.0;
    double length_ = 0.0;
    std::vector<std::size_t> firstPieces_; ///< of each path, in the list of all segments
    std::vector<double> pathStarts_;       ///< of each path, in metres along all
    std::vector<double> pieceStarts_;      ///< of each segment, in metres along all
};

} // namespace vexagpx
