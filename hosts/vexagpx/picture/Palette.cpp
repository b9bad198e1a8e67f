// SPDX-License-Identifier: MIT
#include <vexagpx/picture/Palette.h>

#include <algorithm>
#include <array>

namespace vexagpx {

Colour RampColour(int step) {
    static constexpr std::array<Colour, 5> kStops = {
        {{0.17, 0.20, 0.60}, {0.05, 0.50, 0.62}, {0.20, 0.62, 0.28}, {0.93, 0.60, 0.08}, {0.75, 0.08, 0.12}}};
    const double place = std::clamp(step, 0, kRampSteps - 1) * (kStops.size() - 1.0) / (kRampSteps - 1.0);
    const std::size_t below = std::min(static_cast<std::size_t>(place), kStops.size() - 2);
    const double part = place - static_cast<double>(below);
    const Colour& from = kStops[below];
    const Colour& to = kStops[below + 1];
    return {from.red + part * (to.red - from.red), from.green + part * (to.green - from.green),
            from.blue + part * (to.blue - from.blue)};
}

Colour PathColour(std::size_t index) {
    static constexpr std::array<Colour, 8> kColours = {{{0.78, 0.15, 0.20},
                                                        {0.10, 0.38, 0.75},
                                                        {0.90, 0.50, 0.05},
                                                        {0.45, 0.20, 0.65},
                                                        {0.05, 0.55, 0.55},
                                                        {0.80, 0.25, 0.60},
                                                        {0.40, 0.50, 0.10},
                                                        {0.45, 0.30, 0.15}}};
    return kColours[index % kColours.size()];
}

Colour Lighter(const Colour& colour, double part) {
    return {1.0 - part * (1.0 - colour.red), 1.0 - part * (1.0 - colour.green),
            1.0 - part * (1.0 - colour.blue)};
}

} // namespace vexagpx
