// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

namespace vexagpx {

/// To thousandths: no computed figure is more exact, and more digits would differ between processors.
inline double Rounded(double number) {
    return std::round(number * 1000.0) / 1000.0;
}

} // namespace vexagpx
