// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTrackLib/Bounds.h>
#include <vexaTrackLib/PathLength.h>
#include <vexaTrackLib/TimeSpan.h>

#include <vexaTransferLib/GpxPoint.h>

#include <cstddef>

namespace vexagpx {

/// Number of points, length and times of a path. Its points also extend the bounds of the whole document.
class PathSummary {
public:
    explicit PathSummary(vexaTrackLib::Bounds& bounds) : bounds_(bounds) {}

    void Add(const vexaTransferLib::GpxPoint& point) {
        double latitude;
        double longitude;
        point.GetPoint(latitude, longitude);
        bounds_.Add(latitude, longitude);
        length_.Add(latitude, longitude);
        if (double time; point.GetTime(time))
            times_.Add(time);
        ++points_;
    }
    /// The next point is not connected to the one before.
    void Break() { length_.Break(); }

    std::size_t Points() const { return points_; }
    double Metres() const { return length_.Metres(); }
    const vexaTrackLib::TimeSpan& Times() const { return times_; }

private:
    vexaTrackLib::Bounds& bounds_;
    vexaTrackLib::TimeSpan times_;
    vexaTrackLib::PathLength length_;
    std::size_t points_ = 0;
};

} // namespace vexagpx
