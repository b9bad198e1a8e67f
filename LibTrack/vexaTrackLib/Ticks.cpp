// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Ticks.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace vexaTrackLib {

namespace {

constexpr std::array<double, 3> kFactors = {1.0, 2.0, 5.0};
// A mark may be outside the numbers by this part of a step, because of rounding.
constexpr double kTolerance = 1e-9;

double CountOf(double low, double high, double step) {
    return std::floor(high / step + kTolerance) - std::ceil(low / step - kTolerance) + 1.0;
}

/// Multiplies by a power of ten, exactly where a double can.
double Scaled(double number, int exponent) {
    return exponent < 0 ? number / std::pow(10.0, -exponent) : number * std::pow(10.0, exponent);
}

} // namespace

Ticks RoundTicks(double low, double high, int most) {
    Ticks ticks;
    most = std::max(most, 2);
    // Steps of less than this cannot be told from one another.
    const double least = std::max(std::abs(low), std::abs(high)) * 1e-12;
    if (!std::isfinite(high - low) || high < low || !std::isfinite(least))
        return ticks;
    const double span = std::max({high - low, least, 1e-290});
    int exponent = static_cast<int>(std::floor(std::log10(span / most)));
    std::size_t factor = 0;
    while (CountOf(low, high, Scaled(kFactors[factor], exponent)) > most) {
        factor = (factor + 1) % kFactors.size();
        exponent += factor == 0 ? 1 : 0;
    }
    ticks.step = Scaled(kFactors[factor], exponent);
    ticks.decimals = std::max(0, -exponent);
    const double first = std::ceil(low / ticks.step - kTolerance);
    const double count = CountOf(low, high, ticks.step);
    for (double i = 0.0; i < count; ++i)
        ticks.values.push_back(Scaled((first + i) * kFactors[factor], exponent) + 0.0);
    return ticks;
}

} // namespace vexaTrackLib
