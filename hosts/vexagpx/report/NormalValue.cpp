// SPDX-License-Identifier: MIT
#include <vexagpx/report/NormalValue.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>

namespace vexagpx {

namespace {

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t start = text.find_first_not_of(kBlanks);
    return start == std::string_view::npos ? std::string_view()
                                           : text.substr(start, text.find_last_not_of(kBlanks) + 1 - start);
}

std::string_view TakeDigits(std::string_view& text) {
    const std::string_view digits = text.substr(0, text.find_first_not_of("0123456789"));
    text.remove_prefix(digits.size());
    return digits;
}

bool Take(std::string_view& text, char wanted) {
    if (!text.starts_with(wanted))
        return false;
    text.remove_prefix(1);
    return true;
}

bool TakeMinus(std::string_view& text) {
    const bool isNegative = Take(text, '-');
    if (!isNegative)
        Take(text, '+');
    return isNegative;
}

/// The number after an "e", which ends the text; 0 when nothing is left.
std::optional<std::int64_t> TakeExponent(std::string_view text) {
    if (text.empty())
        return 0;
    if (!Take(text, 'e') && !Take(text, 'E'))
        return std::nullopt;
    const bool isNegative = TakeMinus(text);
    std::int64_t value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    constexpr std::int64_t kLargest = 1'000'000'000'000;
    if (text.empty() || text.front() == '-' || read.ec != std::errc() ||
        read.ptr != text.data() + text.size() || value > kLargest)
        return std::nullopt;
    return isNegative ? -value : value;
}

} // namespace

std::string NormalNumber(std::string_view text) {
    std::string_view rest = Trimmed(text);
    const bool isNegative = TakeMinus(rest);
    std::string digits(TakeDigits(rest));
    const std::string_view fraction = Take(rest, '.') ? TakeDigits(rest) : std::string_view();
    digits += fraction;
    const std::optional<std::int64_t> exponent = TakeExponent(rest);
    if (digits.empty() || !exponent)
        return std::string(text);
    digits.erase(0, digits.find_first_not_of('0'));
    if (digits.empty())
        return "0";
    const std::size_t used = digits.find_last_not_of('0') + 1;
    const std::int64_t power = *exponent - static_cast<std::int64_t>(fraction.size()) +
                               static_cast<std::int64_t>(digits.size() - used);
    digits.resize(used);
    return (isNegative ? "-" : "") + digits + "e" + std::to_string(power);
}

std::string NormalTime(const vexaTransferLib::GpxElement& element, const std::string& text) {
    const std::optional<double> millis = element.GetTime();
    if (!millis)
        return text;
    const std::size_t point = text.find('.');
    std::string_view rest =
        point == std::string::npos ? std::string_view() : std::string_view(text).substr(point + 1);
    std::string_view fraction = TakeDigits(rest);
    fraction = fraction.substr(0, fraction.find_last_not_of('0') + 1);
    return std::to_string(static_cast<std::int64_t>(std::floor(*millis))) + " " + std::string(fraction);
}

} // namespace vexagpx
