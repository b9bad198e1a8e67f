// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace vexaTransferLib::testing_support {

/// A number's text (UTF-8, nothing to trim) and the 64 bits that ICU's number format stores for it.
struct StoredNumber {
    std::string text;
    std::int64_t stored;
    const char* reason;
};

inline std::int64_t BitsOf(double number) {
    return std::bit_cast<std::int64_t>(number);
}

inline std::vector<StoredNumber> StoredNumbers() {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    const std::string zeros(399, '0');
    return {
        {"12", 12, "an integer"},
        {"0", 0, "an integer"},
        {"-12", -12, "a negative integer"},
        {"12.0", 12, "integral: an integer"},
        {"0.0", 0, "integral: an integer"},
        {"1,234", 1234, "grouped"},
        {"1,234,567", 1234567, "grouped twice"},
        {"1E3", 1000, "an exponent"},
        {"12abc", 12, "the rest does not matter"},
        {"1 234", 1234, "a blank groups too"},
        {"12 34", 0, "a group of two"},
        {"12,", 12, "the rest does not matter"},
        {"1,,2", 1, "the number ends at an empty group"},
        {"7.9", BitsOf(7.9), "a fraction"},
        {"-7.9", BitsOf(-7.9), "a negative fraction"},
        {".5", BitsOf(0.5), "a fraction alone"},
        {"1,234.568", BitsOf(1234.568), "grouped, with a fraction"},
        {"12.345 km", BitsOf(12.345), "the rest does not matter"},
        {"1E-3", BitsOf(0.001), "a negative exponent"},
        {"1e-400", 0, "too small for a double: an integer"},
        {"-0", BitsOf(-0.0), "negative zero is a double"},
        {"-0.0", BitsOf(-0.0), "negative zero is a double"},
        {"2147483647", 2147483647, "the highest of 32 bits"},
        {"2147483648", 2147483648, "above 32 bits"},
        {"-2147483648", -2147483648, "the lowest of 32 bits"},
        {"-2147483649", -2147483649, "below 32 bits"},
        {"4294967296", 4294967296, "above 32 bits"},
        {"4294967301", 4294967301, "above 32 bits"},
        {"9223372036854775807", std::numeric_limits<std::int64_t>::max(), "the highest of 64 bits"},
        {"-9223372036854775808", std::numeric_limits<std::int64_t>::min(), "the lowest of 64 bits"},
        {"9223372036854775808", BitsOf(9223372036854775808.0), "above 64 bits: a double"},
        {"-9223372036854775809", BitsOf(-9223372036854775808.0), "below 64 bits: a double"},
        {"1e20", BitsOf(1e20), "above 64 bits: a double"},
        {"1E20", BitsOf(1e20), "above 64 bits: a double"},
        {"-1E20", BitsOf(-1e20), "below 64 bits: a double"},
        {"1e400", BitsOf(kInfinity), "above every double"},
        {"\u221E", BitsOf(kInfinity), "the sign for infinity"},
        {"-\u221E", BitsOf(-kInfinity), "the sign for infinity"},
        {"NaN", BitsOf(kNaN), "not a number"},
        {"", 0, "nothing"},
        {"abc", 0, "no number"},
        {"+12", 0, "no plus sign"},
        {"(12)", 0, "no accountant's minus"},
        {"12,34", 0, "a group of two"},
        {"1,23,4", 0, "groups of two and one"},
        {"INF", 0, "no number"},
        {"0x10", 0, "a zero and the rest"},
        {"\u0661\u0662", 12, "digits of another script"},
        {zeros + "7", 7, "400 units"},
        {zeros + "78", 7, "the 401st unit is not looked at"},
        {zeros + "07", 0, "the 401st unit is not looked at"},
        {zeros + ".5", 0, "the 401st unit is not looked at"},
        {std::string(400, '9'), BitsOf(kInfinity), "above every double"},
    };
}

} // namespace vexaTransferLib::testing_support
