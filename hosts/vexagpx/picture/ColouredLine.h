// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/Drawing.h>

#include <cstdint>
#include <vector>

namespace vexagpx {

/// A stretch of a line that has one colour.
struct ColouredRun {
    std::vector<Spot> spots;
    std::uint8_t step = 0;
};

/// A line whose pieces have colours, without the spots that do not show: what is left out is less than a third of a
/// unit away. Each run starts where the one before ends, and is two units long at least if another follows. Linear
/// time.
/// \param steps for each spot, the colour of the piece that ends there
std::vector<ColouredRun> SimplifiedRuns(const std::vector<Spot>& spots,
                                        const std::vector<std::uint8_t>& steps);

} // namespace vexagpx
