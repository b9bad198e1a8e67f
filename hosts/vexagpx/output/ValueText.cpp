// SPDX-License-Identifier: MIT
#include <vexagpx/output/ValueText.h>

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>

namespace vexagpx {

namespace {

constexpr double kLeastFixed = 1e-7;
constexpr double kMostFixed = 1e15;
constexpr double kMicrosOfSecond = 1e6;
constexpr int kMostWholeDigits = 6;

// The first and the last second of the years 0 to 9999.
constexpr double kFirstSecond = -62167219200.0;
constexpr double kLastSecond = 253402300799.0;

/// Writes digits from a place on.
class DigitWriter {
public:
    explicit DigitWriter(char* at) : at_(at) {}

    void Letter(char letter) { *at_++ = letter; }
    void TwoDigits(std::uint64_t number) {
        Letter(static_cast<char>('0' + number / 10));
        Letter(static_cast<char>('0' + number % 10));
    }
    /// A point and as many digits as `size`, without zeros at their end; nothing for 0.
    void Fraction(std::uint64_t number, std::size_t size) {
        if (number == 0)
            return;
        Letter('.');
        for (std::size_t i = size; i != 0; number /= 10)
            at_[--i] = static_cast<char>('0' + number % 10);
        at_ += size;
        while (at_[-1] == '0')
            --at_;
    }
    char* End() const { return at_; }

private:
    char* at_;
};

void WriteDate(std::int64_t days, DigitWriter& digits) {
    const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(days))};
    const auto year = static_cast<std::uint64_t>(static_cast<int>(date.year()));
    digits.TwoDigits(year / 100);
    digits.TwoDigits(year % 100);
    digits.Letter('-');
    digits.TwoDigits(static_cast<unsigned>(date.month()));
    digits.Letter('-');
    digits.TwoDigits(static_cast<unsigned>(date.day()));
}

void WriteClock(std::uint64_t seconds, DigitWriter& digits) {
    digits.TwoDigits(seconds / 3600);
    digits.Letter(':');
    digits.TwoDigits(seconds / 60 % 60);
    digits.Letter(':');
    digits.TwoDigits(seconds % 60);
}

/// \return the digits, or nothing when the number has more decimals or is too large
std::size_t WriteShortDecimal(double number, char* text) {
    constexpr double kScale = 1e9;
    constexpr double kMost = 1e6;
    const double size = std::fabs(number);
    if (!(size < kMost) || size == 0.0)
        return 0;
    // The quotient of two exact numbers is what the decimal number reads back as. Decimal numbers of at most 15 digits
    // all read back differently, so there is no shorter one.
    const double scaled = size * kScale;
    auto digits = static_cast<std::uint64_t>(scaled);
    digits += scaled - static_cast<double>(digits) >= 0.5 ? 1 : 0;
    if (static_cast<double>(digits) / kScale != size)
        return 0;
    constexpr std::uint64_t kWhole = 1000000000;
    char* at = text;
    if (number < 0.0)
        *at++ = '-';
    at = std::to_chars(at, at + kMostWholeDigits, digits / kWhole).ptr;
    DigitWriter writer(at);
    writer.Fraction(digits % kWhole, 9);
    return static_cast<std::size_t>(writer.End() - text);
}

} // namespace

NumberDigits::NumberDigits(double number) {
    size_ = WriteShortDecimal(number, text_.data());
    if (size_ != 0 || !std::isfinite(number))
        return;
    const double size = std::fabs(number);
    const bool isFixed = size == 0.0 || (size >= kLeastFixed && size < kMostFixed);
    char* const end = text_.data() + text_.size();
    const std::to_chars_result result =
        isFixed ? std::to_chars(text_.data(), end, number, std::chars_format::fixed)
                : std::to_chars(text_.data(), end, number);
    size_ = static_cast<std::size_t>(result.ptr - text_.data());
}

TimeDigits::TimeDigits(double millis) {
    constexpr std::int64_t kSecondsOfDay = 86400;
    double second = std::floor(millis / 1000.0);
    double micros = std::round((millis - second * 1000.0) * 1000.0);
    if (micros >= kMicrosOfSecond) {
        micros = 0.0;
        second += 1.0;
    }
    if (!(second >= kFirstSecond && second <= kLastSecond))
        return;
    // Days before 1970 are negative, and the clock never is.
    const std::int64_t days = static_cast<std::int64_t>(std::floor(second / kSecondsOfDay));
    DigitWriter digits(text_.data());
    WriteDate(days, digits);
    digits.Letter('T');
    WriteClock(static_cast<std::uint64_t>(static_cast<std::int64_t>(second) - days * kSecondsOfDay), digits);
    digits.Fraction(static_cast<std::uint64_t>(micros), 6);
    digits.Letter('Z');
    size_ = static_cast<std::size_t>(digits.End() - text_.data());
}

} // namespace vexagpx
