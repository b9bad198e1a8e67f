// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/Units.h>

#include <vexagpx/terminal/DisplayText.h>

#include <charconv>
#include <cmath>
#include <cstddef>
#include <span>
#include <system_error>

namespace vexagpx {

namespace {

constexpr double kFoot = 0.3048;
constexpr double kMile = 5280.0 * kFoot;

struct Unit {
    std::string_view name;
    double size;
};

constexpr Unit kLengths[] = {{"m", 1.0}, {"km", 1000.0}, {"ft", kFoot}, {"mi", kMile}};
constexpr Unit kDurations[] = {{"s", 1.0}, {"min", 60.0}, {"h", 3600.0}};

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

/// The number at the start of a text, which is cut off: digits, and a point with more digits. No locale changes it.
std::optional<double> TakeNumber(std::string_view& text) {
    constexpr std::size_t kMostDigits = 15;
    double number = 0.0;
    double scale = 1.0;
    std::size_t digits = 0;
    bool isFraction = false;
    while (!text.empty() && (IsDigit(text.front()) || (text.front() == '.' && !isFraction && digits > 0))) {
        if (text.front() == '.') {
            isFraction = true;
        } else {
            number = number * 10.0 + (text.front() - '0');
            scale *= isFraction ? 10.0 : 1.0;
            ++digits;
        }
        text.remove_prefix(1);
    }
    if (digits == 0 || digits > kMostDigits || (isFraction && scale == 1.0))
        return std::nullopt;
    return number / scale;
}

std::optional<double> Parse(std::string_view text, std::span<const Unit> units) {
    const std::optional<double> number = TakeNumber(text);
    if (!number)
        return std::nullopt;
    if (text.starts_with(' '))
        text.remove_prefix(1);
    for (const Unit& unit : units) {
        if (text == unit.name)
            return *number * unit.size;
    }
    return std::nullopt;
}

} // namespace

icu::UnicodeString LengthText(double metres, Units units) {
    if (units == Units::kMetric)
        return LengthText(metres);
    const double feet = metres / kFoot;
    if (feet < 999.5)
        return FixedText(feet, 0) + u" ft";
    const double miles = metres / kMile;
    return FixedText(miles, miles < 9.995 ? 2 : miles < 999.95 ? 1 : 0) + u" mi";
}

icu::UnicodeString HeightText(double metres, Units units) {
    if (units == Units::kMetric)
        return HeightText(metres);
    icu::UnicodeString text = HeightText(metres / kFoot);
    text.truncate(text.length() - 1);
    return text + u"ft";
}

icu::UnicodeString SpeedText(double metresPerSecond, Units units) {
    const double number = metresPerSecond * 3600.0 / (units == Units::kMetric ? 1000.0 : kMile);
    return FixedText(number, number < 99.95 ? 1 : 0) + (units == Units::kMetric ? u" km/h" : u" mph");
}

std::optional<double> ParseLength(std::string_view text) {
    return Parse(text, kLengths);
}

std::optional<double> ParseDuration(std::string_view text) {
    return Parse(text, kDurations);
}

std::optional<double> ParseDegrees(std::string_view text, double limit) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    double degrees = 0.0;
    const std::from_chars_result read = std::from_chars(text.data(), text.data() + text.size(), degrees);
    const bool isNumber = read.ec == std::errc() && read.ptr == text.data() + text.size();
    return isNumber && std::abs(degrees) <= limit ? std::optional(degrees) : std::nullopt;
}

} // namespace vexagpx
