// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/SourceValues.h>

#include <vexaTransferLib/text/NumberText.h>
#include <vexaTransferLib/text/TimeText.h>
#include <vexaTransferLib/text/ValueText.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string>

namespace vexaTransferLib {

// An empty text may be no place in a source.
std::optional<double> NumberIn(std::string_view text) {
    if (text.empty())
        return std::nullopt;
    double number = 0.0;
    if (text::ReadShortDecimal(text, number))
        return number;
    return text::ReadSchemaNumber(text);
}

namespace {

// What GpxUtils takes for misuse by its caller, and reports: no text at all, and a long rest after a point.
bool IsReadableTime(std::string_view text) {
    constexpr std::size_t kLongestFraction = 29;
    const std::size_t point = text.find('.');
    return !text.empty() && (point == std::string_view::npos || text.size() - point - 1 <= kLongestFraction);
}

} // namespace

// What a schema allows comes first: the other function reads some of it differently, such as "24:00:00".
std::optional<double> TimeIn(std::string_view text) {
    if (text.empty())
        return std::nullopt;
    double time = 0.0;
    if (text::ReadPlainTime(text, time))
        return time;
    if (const std::optional<double> read = text::ReadSchemaTime(text))
        return read;
    const std::string_view trimmed = text::Trimmed(text);
    if (!IsReadableTime(trimmed) || !text::ReadTime(std::string(trimmed), time))
        return std::nullopt;
    return time;
}

std::optional<std::int32_t> IntegerIn(std::string_view text) {
    std::string digits(text);
    digits.erase(std::remove(digits.begin(), digits.end(), ','), digits.end());
    return PlainIntegerIn(digits);
}

std::optional<std::int32_t> PlainIntegerIn(std::string_view text) {
    std::string_view digits = text::Trimmed(text);
    if (digits.size() > 1 && digits[0] == '+' && digits[1] != '-')
        digits.remove_prefix(1);
    std::int32_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

} // namespace vexaTransferLib
