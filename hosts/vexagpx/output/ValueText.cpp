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

// The first and the last second of the years 0 to 9999.
constexpr double kFirstSecond = -62167219200.0;
constexpr double kLastSecond = 253402300799.0;

/// Writes digits from a place on.
class DigitWriter {
public:
    explicit DigitWriter(char* at) : at_(at) {}

    /// As many digits as `power`, a power of ten, says: 1000 stands for four.
    void Number(std::uint64_t number, std::uint64_t power) {
        for (; power != 0; power /= 10)
            Letter(static_cast<char>('0' + number / power % 10));
    }
    void Letter(char letter) { *at_++ = letter; }
    /// The digits after a point, without zeros at their end.
    void Fraction(std::uint64_t micros) {
        if (micros == 0)
            return;
        Letter('.');
        std::uint64_t power = 100000;
        for (; micros % 10 == 0; power /= 10)
            micros /= 10;
        Number(micros, power);
    }
    char* End() const { return at_; }

private:
    char* at_;
};

void WriteDate(std::int64_t days, DigitWriter& digits) {
    const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(days))};
    digits.Number(static_cast<std::uint64_t>(static_cast<int>(date.year())), 1000);
    digits.Letter('-');
    digits.Number(static_cast<unsigned>(date.month()), 10);
    digits.Letter('-');
    digits.Number(static_cast<unsigned>(date.day()), 10);
}

void WriteClock(std::uint64_t seconds, DigitWriter& digits) {
    digits.Number(seconds / 3600, 10);
    digits.Letter(':');
    digits.Number(seconds / 60 % 60, 10);
    digits.Letter(':');
    digits.Number(seconds % 60, 10);
}

} // namespace

NumberDigits::NumberDigits(double number) {
    if (!std::isfinite(number))
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
    digits.Fraction(static_cast<std::uint64_t>(micros));
    digits.Letter('Z');
    size_ = static_cast<std::size_t>(digits.End() - text_.data());
}

} // namespace vexagpx
