// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The figures of a path: how far, how high, how long, how fast.

#include <common/Export.h>
#include <vexaTrackLib/Bounds.h>
#include <vexaTrackLib/TimeSpan.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace vexaTrackLib {

/// What the figures of a path depend on besides the path.
struct StatisticsOptions {
    /// In metres, 0 or more. Ascent and descent are counted between valleys and peaks whose heights differ by this at
    /// least; 0 counts every difference.
    double climb = 5.0;
    /// In seconds, 1 or more: a shorter stay is no pause.
    double pause = 120.0;
    /// So many pauses of one path are listed at most, the first ones. The others still count.
    std::size_t listedPauses = 10'000;
};

/// A stay at one place.
struct Pause {
    double start = 0.0;     ///< in milliseconds since 1970 UTC
    double seconds = 0.0;   ///< how long it took
    double latitude = 0.0;  ///< of the place where it started, in degrees
    double longitude = 0.0; ///< of the place where it started, in degrees
};

/// The figures of a path, or the sums of those of several paths. The manual's page on statistics defines each of them.
///
/// A time that is not finite or more than 275,000 years from 1970 counts as none, and so does a height that is not
/// finite or above a million kilometres. So no figure is infinite or NaN, whatever a file contains.
struct VEXATRANSFERLIB_API PathStatistics {
    std::size_t points = 0;              ///< all points
    std::size_t pointsWithoutTime = 0;   ///< those without a time
    std::size_t pointsWithoutHeight = 0; ///< those without a height
    /// Points whose time is before that of the last point in the segment that has one.
    std::size_t backwardTimes = 0;

    double metres = 0.0;           ///< the length of all segments, without what is between them
    double metresWithHeight = 0.0; ///< the same in space: climbing makes it longer

    double ascent = 0.0;     ///< in metres, between valleys and peaks
    double descent = 0.0;    ///< in metres, 0 or more
    double rawAscent = 0.0;  ///< in metres: all differences of height upwards
    double rawDescent = 0.0; ///< in metres, 0 or more

    std::optional<double> lowest;  ///< height in metres
    std::optional<double> highest; ///< height in metres

    TimeSpan times;              ///< from the earliest to the latest time
    double elapsedSeconds = 0.0; ///< the length of `times`, or the sum for several paths
    double movingSeconds = 0.0;  ///< the time in segments without the pauses
    double pausedSeconds = 0.0;  ///< the length of all pauses
    std::size_t pauseCount = 0;  ///< all pauses, those that are not listed included
    /// The first pauses, in the order of the points. Empty in sums of several paths.
    std::vector<Pause> pauses;

    /// \{
    /// The way and the time that the mean speed is computed from: without pauses and without the receiver's outliers.
    double speedMetres = 0.0;
    double speedSeconds = 0.0;
    /// \}
    /// In metres a second: the highest mean speed over at least ten seconds and three steps. Nothing when no part of
    /// the path is so long; FastestSpeed() is what to show.
    std::optional<double> fastest;

    Bounds bounds; ///< of all points

    /// In metres a second, while moving; nothing when no time passed.
    std::optional<double> MeanSpeed() const;

    /// In metres a second: `fastest`, but nothing when the points are so far apart that it is below the mean speed.
    std::optional<double> FastestSpeed() const;

    /// Adds the figures of another path: sums, and the extremes of both.
    void Add(const PathStatistics& other);
};

/// \{
/// The figures of a track, a route, and the sums of all tracks or routes of a document. Linear time; the memory is that
/// of the listed pauses. Const operations on one document may run on several threads at once.
/// \throws dbc::precondition_error as PathMeter does
VEXATRANSFERLIB_API PathStatistics StatisticsOf(const vexaTransferLib::GpxTrack& track,
                                                const StatisticsOptions& options = {});
VEXATRANSFERLIB_API PathStatistics StatisticsOf(const vexaTransferLib::GpxRoute& route,
                                                const StatisticsOptions& options = {});
VEXATRANSFERLIB_API PathStatistics StatisticsOfTracks(const vexaTransferLib::GpxDocument& document,
                                                      const StatisticsOptions& options = {});
VEXATRANSFERLIB_API PathStatistics StatisticsOfRoutes(const vexaTransferLib::GpxDocument& document,
                                                      const StatisticsOptions& options = {});
/// \}

} // namespace vexaTrackLib
