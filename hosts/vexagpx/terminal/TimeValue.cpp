// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/TimeValue.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <string>
#include <system_error>

namespace vexagpx {

namespace {

/// Takes a text apart from its start.
class TimeReader {
public:
    explicit TimeReader(std::string_view text) : rest_(text) {}

    bool IsAtEnd() const { return rest_.empty(); }

    bool Take(char c) {
        if (!rest_.starts_with(c))
            return false;
        rest_.remove_prefix(1);
        return true;
    }
    // A number with exactly so many digits.
    std::optional<int> TakeNumber(std::size_t digits) {
        int number = 0;
        const std::size_t count = digits <= rest_.size() ? digits : rest_.size();
        const std::from_chars_result result = std::from_chars(rest_.data(), rest_.data() + count, number);
        if (count != digits || result.ec != std::errc() || result.ptr != rest_.data() + count ||
            rest_[0] == '-')
            return std::nullopt;
        rest_.remove_prefix(digits);
        return number;
    }
    // "." and digits, in milliseconds; 0 when there is no point.
    std::optional<double> TakeFraction() {
        if (!Take('.'))
            return 0.0;
        const std::size_t digits = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
        if (digits == 0)
            return std::nullopt;
        const std::string text = "0." + std::string(rest_.substr(0, digits));
        double fraction = 0.0; // as it stays for one that is too small for a number
        std::from_chars(text.data(), text.data() + text.size(), fraction);
        rest_.remove_prefix(digits);
        return std::round(fraction * 1000.0);
    }

private:
    std::string_view rest_;
};

constexpr double kMinute = 60000.0;
constexpr double kDay = 24.0 * 60.0 * kMinute;

std::optional<double> TakeDate(TimeReader& reader) {
    const std::optional<int> year = reader.TakeNumber(4);
    if (!year || !reader.Take('-'))
        return std::nullopt;
    const std::optional<int> month = reader.TakeNumber(2);
    if (!month || !reader.Take('-'))
        return std::nullopt;
    const std::optional<int> day = reader.TakeNumber(2);
    if (!day)
        return std::nullopt;
    const std::chrono::year_month_day date(std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day)));
    if (!date.ok())
        return std::nullopt;
    return static_cast<double>(std::chrono::sys_days(date).time_since_epoch().count()) * kDay;
}

std::optional<double> TakeHourAndMinute(TimeReader& reader, int mostHours) {
    const std::optional<int> hour = reader.TakeNumber(2);
    if (!hour || *hour > mostHours || !reader.Take(':'))
        return std::nullopt;
    const std::optional<int> minute = reader.TakeNumber(2);
    if (!minute || *minute > 59)
        return std::nullopt;
    return (*hour * 60 + *minute) * kMinute;
}

std::optional<double> TakeSecond(TimeReader& reader) {
    const std::optional<int> second = reader.TakeNumber(2);
    if (!second || *second > 59)
        return std::nullopt;
    const std::optional<double> fraction = reader.TakeFraction();
    return fraction ? std::optional(*second * 1000.0 + *fraction) : std::nullopt;
}

// How far the clocks of the zone are ahead.
std::optional<double> TakeZone(TimeReader& reader) {
    if (reader.IsAtEnd() || reader.Take('Z'))
        return 0.0;
    const double sign = reader.Take('-') ? -1.0 : 1.0;
    if (sign > 0.0 && !reader.Take('+'))
        return std::nullopt;
    const std::optional<double> ahead = TakeHourAndMinute(reader, 14);
    return ahead ? std::optional(sign * *ahead) : std::nullopt;
}

} // namespace

std::optional<double> ParseTime(std::string_view text, TimePart part) {
    TimeReader reader(text);
    const std::optional<double> date = TakeDate(reader);
    if (!date)
        return std::nullopt;
    const double last = part == TimePart::kEnd ? 1.0 : 0.0;
    if (reader.IsAtEnd())
        return *date + last * (kDay - 1.0);
    if (!reader.Take('T'))
        return std::nullopt;
    const std::optional<double> minute = TakeHourAndMinute(reader, 23);
    if (!minute)
        return std::nullopt;
    std::optional<double> second = last * (kMinute - 1.0);
    if (reader.Take(':'))
        second = TakeSecond(reader);
    const std::optional<double> ahead = TakeZone(reader);
    if (!second || !ahead || !reader.IsAtEnd())
        return std::nullopt;
    return *date + *minute + *second - *ahead;
}

} // namespace vexagpx
