// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/SourceValues.h>

#include <vexaTransferLib/text/NumberText.h>
#include <vexaTransferLib/text/TimeText.h>
#include <vexaTransferLib/text/ValueText.h>

#include <algorithm>
#include <charconv>
#include <string>

namespace vexaTransferLib {

std::optional<double> NumberIn(std::string_view text) {
    double number = 0.0;
    if (text::ReadShortDecimal(text, number))
        return number;
    return text::ReadSchemaNumber(text);
}

// What a schema allows comes first: the other function reads some of it differently, such as "24:00:00".
std::optional<double> TimeIn(std::string_view text) {
    double time = 0.0;
    if (text::ReadPlainTime(text, time))
        return time;
    if (const std::optional<double> read = text::ReadSchemaTime(text))
        return read;
    return text::ReadTime(std::string(text::Trimmed(text)), time) ? std::optional(time) : std::nullopt;
}

std::optional<std::int32_t> IntegerIn(std::string_view text) {
    std::string digits(text);
    digits.erase(std::remove(digits.begin(), digits.end(), ','), digits.end());
    return PlainIntegerIn(digits);
}

std::optional<std::int32_t> PlainIntegerIn(std::string_view text) {
    const std::string_view digits = text::Trimmed(text);
    std::int32_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

} // namespace vexaTransferLib
