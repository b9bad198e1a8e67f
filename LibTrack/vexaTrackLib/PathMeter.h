// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Takes the figures of a path, point by point.

#include <common/Export.h>
#include <vexaTrackLib/PathStatistics.h>

#include <vexaTransferLib/GpxPoint.h>

#include <memory>

namespace vexaTrackLib {

/// Takes the figures of a path that is given one point after another, so that a segment, or a recording that still goes
/// on, can be measured too. It keeps a few points and the listed pauses, however long the path is.
///
///     PathMeter meter;
///     for (auto point = track.GetPointIter(segment); point != track.GetPointEndIter(segment); ++point)
///         meter.Add(*point);
///     std::cout << meter.Get().metres;
///
/// Moves leave an object that may only be assigned or destroyed. One object may be used by one thread at a time.
class VEXATRANSFERLIB_API PathMeter {
public:
    /// \throws dbc::precondition_error "The climb must be a number of metres, 0 or more." and "The shortest pause must
    ///         be a number of seconds, 1 or more."
    explicit PathMeter(const StatisticsOptions& options = {});
    /// \{
    /// Moves do not throw.
    PathMeter(PathMeter&&) noexcept;
    PathMeter& operator=(PathMeter&&) noexcept;
    /// \}
    ~PathMeter();

    /// Continues the path to a point. Nothing is kept of it by reference.
    void Add(const vexaTransferLib::GpxPoint& point);
    /// Ends a segment: nothing is measured between its last point and the next one but a pause.
    void Break();

    /// The figures so far. More points may follow.
    PathStatistics Get() const;

private:
    class VEXATRANSFERLIB_LOCAL Impl;

    std::unique_ptr<Impl> impl_;
};

} // namespace vexaTrackLib
