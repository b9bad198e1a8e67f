// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/ValueChecks.h>

#include <vexagpx/commands/Caches.h>
#include <vexagpx/commands/Split.h>
#include <vexagpx/terminal/TimeValue.h>
#include <vexagpx/terminal/Units.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <system_error>

namespace vexagpx {

std::string RequireText(const std::string& text) {
    return text.empty() ? "must not be empty" : "";
}

std::string RequireSize(const std::string& text) {
    std::uint64_t number = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && number > 0 ? "" : "must be a number above 0";
}

std::string RequireLength(const std::string& text) {
    return ParseLength(text) ? "" : "must be a length, such as 500m, 2km or 15ft";
}

std::string RequireLengthAboveZero(const std::string& text) {
    return ParseLength(text).value_or(0.0) > 0.0 ? "" : "must be a length above 0, such as 5m or 15ft";
}

std::string RequireTime(const std::string& text) {
    return ParseTime(text) ? "" : "must be a time, such as 2024-05-01 or 2024-05-01T08:30Z";
}

std::string RequirePause(const std::string& text) {
    const std::optional<double> seconds = ParseDuration(text);
    if (!seconds)
        return "must be a duration such as 90s or 2min (s, min, h)";
    return *seconds >= 1.0 ? "" : "must be a second or more";
}

std::string RequireNumber(const std::string& text) {
    const bool isNumber = std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    return isNumber ? RequireSize(text) : "must be a number above 0";
}

std::string RequireTwo(const std::string& text) {
    return RequireNumber(text).empty() && text != "1" ? "" : "must be a number of 2 or more";
}

std::string RequireZone(const std::string& text) {
    return IsTimeZone(text) ? "" : "must be the name of a time zone, such as Europe/Zurich";
}

std::string RequirePlace(const std::string& text) {
    return ParsePlace(text) ? "" : "must be a latitude and a longitude, such as 47.5,8.25";
}

} // namespace vexagpx
