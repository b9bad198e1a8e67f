// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Leaves out the points of a line that do not show.

#include <common/Export.h>
#include <vexaTrackLib/MapProjection.h>

#include <cstddef>
#include <vector>

namespace vexaTrackLib {

/// Which places of a line to keep so that the line through them is near to all: each place that is left out is at most
/// `error` from the piece between the two kept ones around it. The first and the last place are kept. Time and memory
/// are linear in the places, whatever their order.
///
/// Nothing is thrown but std::bad_alloc. May run on several threads at once.
///
/// \param places in metres of a map; all must be finite
/// \param error in metres, above 0; otherwise all places are kept
/// \returns their indexes, rising
VEXATRANSFERLIB_API std::vector<std::size_t> Simplify(const std::vector<MapProjection::Place>& places,
                                                      double error);

/// The same with as few places as are wanted: finds a small error that leaves at most that many. Takes some 20 times as
/// long.
/// \param most 2 or more; a line of one or two places is kept
VEXATRANSFERLIB_API std::vector<std::size_t> SimplifyTo(const std::vector<MapProjection::Place>& places,
                                                        std::size_t most);

} // namespace vexaTrackLib
