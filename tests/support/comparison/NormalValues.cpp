// SPDX-License-Identifier: MIT
#include "support/comparison/NormalValues.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <optional>

namespace vexaTransferLib::testing_support {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Takes what it asks for from the start of a text.
class Scan {
public:
    explicit Scan(std::string_view text) : rest_(text) {}

    bool AtEnd() const { return rest_.empty(); }

    bool Take(char wanted) {
        if (rest_.empty() || rest_.front() != wanted)
            return false;
        rest_.remove_prefix(1);
        return true;
    }
    std::string_view Digits() {
        std::size_t count = 0;
        while (count < rest_.size() && IsDigit(rest_[count]))
            ++count;
        const std::string_view digits = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return digits;
    }
    // A number of exactly so many digits, not above the limit.
    std::optional<int> Number(std::size_t digits, int limit) {
        const std::string_view text = rest_.substr(0, digits);
        int value = 0;
        for (const char c : text) {
            if (!IsDigit(c))
                return {};
            value = value * 10 + (c - '0');
        }
        if (text.size() != digits || value > limit)
            return {};
        rest_.remove_prefix(digits);
        return value;
    }

private:
    std::string_view rest_;
};

// A value of digits * 10^exponent; the digits have no zero at either end.
struct Decimal {
    bool negative = false;
    std::string digits;
    long long exponent = 0;
};

std::optional<long long> TakeExponent(Scan& scan) {
    if (!scan.Take('e') && !scan.Take('E'))
        return 0;
    const bool negative = scan.Take('-');
    if (!negative)
        scan.Take('+');
    const std::string_view digits = scan.Digits();
    long long value = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (digits.empty() || read.ec != std::errc() || value > 1'000'000'000'000)
        return {};
    return negative ? -value : value;
}

std::optional<Decimal> ReadDecimal(std::string_view text) {
    Scan scan(TrimmedXml(text));
    Decimal number;
    number.negative = scan.Take('-');
    if (!number.negative)
        scan.Take('+');
    const std::string_view whole = scan.Digits();
    const std::string_view fraction = scan.Take('.') ? scan.Digits() : std::string_view();
    const std::optional<long long> exponent = TakeExponent(scan);
    if ((whole.empty() && fraction.empty()) || !exponent || !scan.AtEnd())
        return {};
    number.digits.append(whole).append(fraction);
    number.digits.erase(0, number.digits.find_first_not_of('0'));
    if (number.digits.empty())
        return Decimal();
    const std::size_t used = number.digits.find_last_not_of('0') + 1;
    const std::size_t zeros = number.digits.size() - used;
    number.digits.resize(used);
    number.exponent = *exponent - static_cast<long long>(fraction.size()) + static_cast<long long>(zeros);
    return number;
}

// Digits with the point in its place; an exponent that would add many zeros stays one.
std::string Print(const Decimal& number) {
    constexpr long long kMostZeros = 400;
    const auto size = static_cast<long long>(number.digits.size());
    std::string text = number.digits;
    if (text.empty())
        return "0";
    if (number.exponent > kMostZeros || number.exponent < -size - kMostZeros)
        text += "E" + std::to_string(number.exponent);
    else if (number.exponent >= 0)
        text.append(static_cast<std::size_t>(number.exponent), '0');
    else if (-number.exponent < size)
        text.insert(static_cast<std::size_t>(size + number.exponent), 1, '.');
    else
        text = "0." + std::string(static_cast<std::size_t>(-number.exponent - size), '0') + text;
    return (number.negative ? "-" : "") + text;
}

long long DaysBeforeYear(long long year) {
    --year;
    return 365 * year + year / 4 - year / 100 + year / 400;
}

bool IsLeap(long long year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DaysIn(int month, long long year) {
    constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return kDays[static_cast<std::size_t>(month - 1)] + (month == 2 && IsLeap(year) ? 1 : 0);
}

struct Instant {
    long long minutes = 0; // since the first of January of the year 1, in UTC
    int seconds = 0;
    std::string_view fraction; // without zeros at its end
};

std::optional<long long> TakeDate(Scan& scan) {
    const std::string_view yearText = scan.Digits();
    int year = 0;
    if (yearText.size() < 4 || yearText.size() > 9 || (yearText.size() > 4 && yearText.front() == '0'))
        return {};
    std::from_chars(yearText.data(), yearText.data() + yearText.size(), year);
    if (year == 0 || !scan.Take('-'))
        return {};
    const std::optional<int> month = scan.Number(2, 12);
    if (!month || *month == 0 || !scan.Take('-'))
        return {};
    const std::optional<int> day = scan.Number(2, DaysIn(*month, year));
    if (!day || *day == 0)
        return {};
    long long days = DaysBeforeYear(year) + *day - 1;
    for (int before = 1; before < *month; ++before)
        days += DaysIn(before, year);
    return days;
}

// The minutes to subtract for UTC.
std::optional<int> TakeZone(Scan& scan) {
    if (scan.AtEnd() || scan.Take('Z'))
        return 0;
    const bool west = scan.Take('-');
    if (!west && !scan.Take('+'))
        return {};
    const std::optional<int> hours = scan.Number(2, 14);
    if (!hours || !scan.Take(':'))
        return {};
    const std::optional<int> minutes = scan.Number(2, 59);
    if (!minutes || (*hours == 14 && *minutes != 0))
        return {};
    return (*hours * 60 + *minutes) * (west ? -1 : 1);
}

std::optional<Instant> ReadInstant(std::string_view text) {
    Scan scan(TrimmedXml(text));
    const std::optional<long long> days = TakeDate(scan);
    if (!days || !scan.Take('T'))
        return {};
    const std::optional<int> hours = scan.Number(2, 24);
    if (!hours || !scan.Take(':'))
        return {};
    const std::optional<int> minutes = scan.Number(2, 59);
    if (!minutes || !scan.Take(':'))
        return {};
    const std::optional<int> seconds = scan.Number(2, 59);
    const bool point = seconds && scan.Take('.');
    std::string_view fraction = point ? scan.Digits() : std::string_view();
    if (!seconds || (point && fraction.empty()))
        return {};
    fraction = fraction.substr(0, fraction.find_last_not_of('0') + 1);
    if (*hours == 24 && (*minutes != 0 || *seconds != 0 || !fraction.empty()))
        return {};
    const std::optional<int> zone = TakeZone(scan);
    if (!zone || !scan.AtEnd())
        return {};
    return Instant{*days * 1440 + *hours * 60 + *minutes - *zone, *seconds, fraction};
}

std::string Print(const Instant& instant) {
    long long days = instant.minutes / 1440;
    const long long minutes = instant.minutes % 1440;
    long long year = days * 400 / 146097;
    while (DaysBeforeYear(year + 1) <= days)
        ++year;
    days -= DaysBeforeYear(year);
    int month = 1;
    for (; days >= DaysIn(month, year); ++month)
        days -= DaysIn(month, year);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04lld-%02d-%02lldT%02lld:%02lld:%02d", year, month, days + 1,
                  minutes / 60, minutes % 60, instant.seconds);
    return text.data() + (instant.fraction.empty() ? "" : "." + std::string(instant.fraction)) + "Z";
}

} // namespace

std::string_view TrimmedXml(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t start = text.find_first_not_of(kBlanks);
    if (start == std::string_view::npos)
        return {};
    return text.substr(start, text.find_last_not_of(kBlanks) + 1 - start);
}

std::string NormalNumber(std::string_view text) {
    const std::optional<Decimal> number = ReadDecimal(text);
    return number ? Print(*number) : std::string(text);
}

std::string NormalTime(std::string_view text) {
    const std::optional<Instant> instant = ReadInstant(text);
    return instant && instant->minutes >= 0 ? Print(*instant) : std::string(text);
}

} // namespace vexaTransferLib::testing_support
