// SPDX-License-Identifier: MIT
#include <vexagpx/repair/ValueRepair.h>

#include <vexagpx/terminal/TimeValue.h>
#include <vexagpx/terminal/Units.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace vexagpx {

namespace {

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

bool IsDegrees(const std::optional<std::string_view>& value, double limit) {
    if (!value)
        return false;
    std::string_view text = Trimmed(*value);
    if (text.substr(0, 1) == "+")
        text.remove_prefix(1);
    return ParseDegrees(text, limit).has_value();
}

} // namespace

bool HasPlace(const StartTag& tag) {
    return IsDegrees(tag.Find("lat"), 90.0) && IsDegrees(tag.Find("lon"), 180.0);
}

bool LacksZone(std::string_view time) {
    return time.find('T') != std::string_view::npos && time.find_first_of("Zz+") == std::string_view::npos &&
           time.find('-', time.find('T')) == std::string_view::npos && ParseTime(time).has_value();
}

std::string ZoneText(std::string_view time, const icu::TimeZone& zone) {
    std::int32_t raw = 0;
    std::int32_t summer = 0;
    UErrorCode error = U_ZERO_ERROR;
    zone.getOffset(ParseTime(time).value_or(0.0), 1, raw, summer, error);
    const std::int32_t minutes = U_SUCCESS(error) ? (raw + summer) / 60000 : 0;
    if (minutes == 0)
        return "Z";
    char text[16];
    std::snprintf(text, sizeof text, "%c%02d:%02d", minutes < 0 ? '-' : '+', std::abs(minutes) / 60,
                  std::abs(minutes) % 60);
    return text;
}

} // namespace vexagpx
