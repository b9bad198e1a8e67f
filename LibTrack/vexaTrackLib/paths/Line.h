// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTrackLib/MapProjection.h>
#include <vexaTransferLib/GpxListEditor.h>
#include <vexaTransferLib/GpxPoint.h>

#include <cstddef>
#include <vector>

namespace vexaTrackLib::paths {

/// The places of a segment or a route in metres: in stretches, each on a map of its own on which lengths are right. The
/// last place of a stretch is the first one of the next.
class Line {
public:
    explicit Line(const vexaTransferLib::GpxListEditor<vexaTransferLib::GpxPoint>& points);

    std::size_t GetCount() const { return count_; }

    /// The indexes of the points that show where it goes, rising. The ends of stretches are among them.
    /// \param error in metres; see Simplify()
    std::vector<std::size_t> Simplified(double error) const;

    /// How far the farthest point is from the line through these ones.
    double FarthestFrom(const std::vector<std::size_t>& kept) const;

    /// An error by which only the ends of stretches are left.
    double Reach() const;

private:
    struct Stretch {
        std::size_t first; ///< the index of its first point
        MapProjection map;
        std::vector<MapProjection::Place> places;
    };

    void Add(double latitude, double longitude);
    void Start(double latitude, double longitude);
    double FarthestFrom(const Stretch& stretch, const std::vector<std::size_t>& kept) const;

    std::vector<Stretch> stretches_;
    std::size_t count_ = 0;
};

} // namespace vexaTrackLib::paths
