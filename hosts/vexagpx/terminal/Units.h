// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/unistr.h>

#include <optional>
#include <string_view>

namespace vexagpx {

/// What lengths, heights and speeds are shown in.
enum class Units {
    kMetric,  ///< metres, kilometres, kilometres an hour
    kImperial ///< feet, miles, miles an hour
};

/// "850 m", "12.3 km"; "850 ft", "7.64 mi".
icu::UnicodeString LengthText(double metres, Units units);
/// "35 m"; "115 ft".
icu::UnicodeString HeightText(double metres, Units units);
/// "4.2 km/h"; "2.6 mph".
icu::UnicodeString SpeedText(double metresPerSecond, Units units);

/// The metres of a length that a person wrote: "5m", "2.5 km", "15ft", "1mi". Nothing for another text.
std::optional<double> ParseLength(std::string_view text);
/// The seconds of a duration that a person wrote: "90s", "2min", "1.5 h". Nothing for another text.
std::optional<double> ParseDuration(std::string_view text);
/// A number of degrees that is at most `limit` to either side of 0: "-8.25". Nothing for another text.
std::optional<double> ParseDegrees(std::string_view text, double limit);

} // namespace vexagpx
