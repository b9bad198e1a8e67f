// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/ValueText.h>

#include <vexaTransferLib/text/CivilDate.h>
#include <vexaTransferLib/text/DecimalDigits.h>
#include <vexaTransferLib/text/NumberText.h>
#include <vexaTransferLib/text/XmlBlank.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

namespace vexaTransferLib::text {

namespace {

std::size_t TakeDigits(std::string_view& text) {
    std::size_t count = 0;
    while (count < text.size() && IsDecimalDigit(text[count]))
        ++count;
    text.remove_prefix(count);
    return count;
}

bool Take(std::string_view& text, char wanted) {
    if (text.empty() || text.front() != wanted)
        return false;
    text.remove_prefix(1);
    return true;
}

bool TakeSign(std::string_view& text) {
    return Take(text, '-') || Take(text, '+');
}

// Digits with a point among them or not, and an exponent or none.
bool IsNumber(std::string_view text) {
    TakeSign(text);
    std::size_t digits = TakeDigits(text);
    if (Take(text, '.'))
        digits += TakeDigits(text);
    if (digits == 0)
        return false;
    if (Take(text, 'e') || Take(text, 'E')) {
        TakeSign(text);
        if (TakeDigits(text) == 0)
            return false;
    }
    return text.empty();
}

bool TakeNumber(std::string_view& text, std::size_t digits, int& number) {
    if (text.size() < digits || !ReadDecimalDigits(text.substr(0, digits), number))
        return false;
    text.remove_prefix(digits);
    return true;
}

struct DateTime {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    double fraction = 0.0; // of a second
    int offsetMinutes = 0;
};

bool TakeDate(std::string_view& text, DateTime& time) {
    return TakeNumber(text, 4, time.year) && Take(text, '-') && TakeNumber(text, 2, time.month) &&
           Take(text, '-') && TakeNumber(text, 2, time.day) && time.year >= 1 && time.month >= 1 &&
           time.month <= 12 && time.day >= 1 && time.day <= DaysInMonth(time.year, time.month);
}

bool TakeFraction(std::string_view& text, double& fraction) {
    if (!Take(text, '.'))
        return true;
    const std::string_view digits = text.substr(0, text.find_first_not_of("0123456789"));
    text.remove_prefix(digits.size());
    if (digits.empty())
        return false;
    ReadDouble(("0." + std::string(digits)).c_str(), fraction);
    return true;
}

bool TakeClock(std::string_view& text, DateTime& time) {
    if (!TakeNumber(text, 2, time.hour) || !Take(text, ':') || !TakeNumber(text, 2, time.minute) ||
        !Take(text, ':') || !TakeNumber(text, 2, time.second) || !TakeFraction(text, time.fraction))
        return false;
    const bool isEndOfDay = time.hour == 24 && time.minute == 0 && time.second == 0 && time.fraction == 0.0;
    return (time.hour <= 23 || isEndOfDay) && time.minute <= 59 && time.second <= 59;
}

bool TakeZone(std::string_view& text, DateTime& time) {
    if (text.empty() || Take(text, 'Z'))
        return true;
    const int sign = text.front() == '-' ? -1 : 1;
    int hours = 0;
    int minutes = 0;
    if (!TakeSign(text) || !TakeNumber(text, 2, hours) || !Take(text, ':') || !TakeNumber(text, 2, minutes))
        return false;
    time.offsetMinutes = sign * (hours * 60 + minutes);
    return minutes <= 59 && hours * 60 + minutes <= 14 * 60;
}

double MillisOf(const DateTime& time) {
    const std::int64_t days = DaysFromCivil(time.year, time.month, time.day);
    const std::int64_t seconds =
        ((days * 24 + time.hour) * 60 + time.minute - time.offsetMinutes) * 60 + time.second;
    return Add(static_cast<double>(seconds * 1000), Multiply(time.fraction, 1000.0));
}

// The digits of a whole number without its sign.
std::optional<std::uint64_t> MagnitudeOf(std::string_view digits) {
    std::uint64_t magnitude = 0;
    const char* const end = digits.data() + digits.size();
    const auto [at, error] = std::from_chars(digits.data(), end, magnitude);
    return error == std::errc() && at == end ? std::optional(magnitude) : std::nullopt;
}

// The number without its commas; empty when these are not where they belong.
std::optional<std::string> WithoutGroups(std::string_view text) {
    std::string_view rest = Trimmed(text);
    std::string plain;
    if (Take(rest, '-'))
        plain = "-";
    const std::string_view whole = rest.substr(0, rest.find('.'));
    std::size_t group = std::min(whole.find(','), whole.size());
    if (group != whole.size() && (group == 0 || group > 3))
        return std::nullopt;
    plain += whole.substr(0, group);
    for (; group != whole.size(); group += 4) {
        const std::string_view digits = whole.substr(group).substr(1, 3);
        if (whole[group] != ',' || digits.size() != 3 ||
            !std::all_of(digits.begin(), digits.end(), IsDecimalDigit))
            return std::nullopt;
        plain += digits;
    }
    return plain.append(rest.substr(whole.size()));
}

char Lowered(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

void AppendDigits(std::string& out, std::int64_t number, std::size_t digits) {
    const std::string text = std::to_string(number);
    out.append(digits - std::min(digits, text.size()), '0').append(text);
}

// "2009-01-15T10:20:30"
std::string WholeSeconds(std::int64_t seconds) {
    constexpr std::int64_t kDay = 86400;
    const std::int64_t days = (seconds >= 0 ? seconds : seconds - (kDay - 1)) / kDay;
    const std::int64_t clock = seconds - days * kDay;
    const CivilDate date = CivilFromDays(days);
    std::string text;
    AppendDigits(text, date.year, 4);
    AppendDigits(text.append(1, '-'), date.month, 2);
    AppendDigits(text.append(1, '-'), date.day, 2);
    AppendDigits(text.append(1, 'T'), clock / 3600, 2);
    AppendDigits(text.append(1, ':'), clock / 60 % 60, 2);
    AppendDigits(text.append(1, ':'), clock % 60, 2);
    return text;
}

} // namespace

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::optional<double> ReadSchemaNumber(std::string_view text) {
    const std::string trimmed(Trimmed(text));
    double number = 0.0;
    if (!IsNumber(trimmed))
        return std::nullopt;
    ReadDouble(trimmed.c_str(), number);
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<std::int64_t> ReadSchemaInteger(std::string_view text) {
    std::string_view rest = Trimmed(text);
    const bool isNegative = !rest.empty() && rest.front() == '-';
    TakeSign(rest);
    const std::optional<std::uint64_t> magnitude = MagnitudeOf(rest);
    constexpr std::uint64_t kMost = std::numeric_limits<std::int64_t>::max();
    if (!magnitude || *magnitude > kMost + (isNegative ? 1 : 0))
        return std::nullopt;
    return static_cast<std::int64_t>(isNegative ? 0 - *magnitude : *magnitude);
}

std::optional<std::uint64_t> ReadSchemaUnsigned(std::string_view text) {
    std::string_view rest = Trimmed(text);
    const bool isNegative = !rest.empty() && rest.front() == '-';
    TakeSign(rest);
    const std::optional<std::uint64_t> magnitude = MagnitudeOf(rest);
    // "-0" is a number that is not negative.
    return isNegative && magnitude != std::optional<std::uint64_t>(0) ? std::nullopt : magnitude;
}

std::optional<bool> ReadBoolean(std::string_view text) {
    const std::string_view word = Trimmed(text);
    if (word == "1" || EqualsIgnoringCase(word, "true"))
        return true;
    if (word == "0" || EqualsIgnoringCase(word, "false"))
        return false;
    return std::nullopt;
}

std::optional<std::int32_t> ReadGroupedInteger(std::string_view text) {
    using Limits = std::numeric_limits<std::int32_t>;
    const std::optional<std::string> plain = WithoutGroups(text);
    const std::optional<std::int64_t> number = plain ? ReadSchemaInteger(*plain) : std::nullopt;
    if (!number || *number < Limits::min() || *number > Limits::max())
        return std::nullopt;
    return static_cast<std::int32_t>(*number);
}

std::optional<double> ReadGroupedNumber(std::string_view text) {
    const std::optional<std::string> plain = WithoutGroups(text);
    return plain ? ReadSchemaNumber(*plain) : std::nullopt;
}

bool EqualsIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return Lowered(a) == Lowered(b); });
}

std::optional<double> ReadSchemaTime(std::string_view text) {
    std::string_view rest = Trimmed(text);
    DateTime time;
    if (!TakeDate(rest, time) || !Take(rest, 'T') || !TakeClock(rest, time) || !TakeZone(rest, time) ||
        !rest.empty())
        return std::nullopt;
    return MillisOf(time);
}

std::string SchemaTime(double millis) {
    constexpr double kFirst = -62135596800000.0; // 0001-01-01
    constexpr double kEnd = 253402300800000.0;   // 10000-01-01
    constexpr int kMostDigits = 12;
    if (!(millis >= kFirst && millis < kEnd))
        return {};
    const auto seconds = static_cast<std::int64_t>(std::floor(millis / 1000.0));
    const double fraction = (millis - static_cast<double>(seconds * 1000)) / 1000.0;
    std::string whole = WholeSeconds(seconds);
    if (fraction == 0.0)
        return whole + 'Z';
    for (int digits = 3;; ++digits) {
        // Rounded up, the fraction would be a second; cut off, it is the nearest that stays one.
        const FixedText text(fraction, digits);
        std::string time = whole + std::string(text.View().substr(1)) + 'Z';
        if (digits == kMostDigits || (text.View().front() == '0' && ReadSchemaTime(time) == millis))
            return time;
    }
}

} // namespace vexaTransferLib::text
