// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/page/PageDocument.h>

#include <vexaTrackLib/PathStatistics.h>

#include <cstddef>
#include <string>
#include <vector>

namespace vexagpx {

/// The table of figures of a path.
/// \param segments their number
std::vector<PageFigure> PathFigures(const vexaTrackLib::PathStatistics& statistics, std::size_t segments);

/// The height of a waypoint as text, "512 m"; empty when it has none.
std::string HeightOrNothing(double height);

} // namespace vexagpx
