// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Round numbers for the marks of an axis.

#include <common/Export.h>

#include <vector>

namespace vexaTrackLib {

/// The marks of an axis: round numbers at equal steps of 1, 2 or 5 times a power of ten.
struct VEXATRANSFERLIB_API Ticks {
    std::vector<double> values; ///< rising
    double step = 0.0;          ///< from one to the next
    int decimals = 0;           ///< digits after the point that tell each from the next
};

/// The marks between two numbers, these included. Nothing is thrown but std::bad_alloc. May run on several threads at
/// once.
/// \param low, high none when these are not finite, or `high` is less than `low`; one at most when they are equal
/// \param most how many marks there may be, at least 2: the smallest step with so many is taken
VEXATRANSFERLIB_API Ticks RoundTicks(double low, double high, int most);

} // namespace vexaTrackLib
