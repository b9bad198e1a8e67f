// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vexaTransferLib::text {

/// The most characters of a number in fixed notation with up to 40 decimals: -DBL_MAX has a sign and 309
/// digits before the point.
inline constexpr std::size_t kLongestFixed = 352;

/// Writes a number in fixed notation with a full stop, whatever the C locale: what `printf("%.*f")` writes in
/// the classic one. Returns the end of it; there must be room for `kLongestFixed` characters.
char* WriteFixed(char* out, double number, int decimals);

/// The same as a text of its own.
class FixedText {
public:
    FixedText(double number, int decimals)
        : length_(static_cast<std::size_t>(WriteFixed(buffer_.data(), number, decimals) - buffer_.data())) {}
    std::string_view View() const { return {buffer_.data(), length_}; }

private:
    std::array<char, kLongestFixed> buffer_;
    std::size_t length_;
};

/// What `strtod` of the classic locale makes of a zero-terminated text. Returns the end of what was read.
const char* ReadDouble(const char* text, double& number);

/// The product rounded once, to the nearest double, also where the processor computes with more digits.
double Multiply(double a, double b);

/// Reads a text that is nothing but a number of up to 19 digits without exponent, such as "-122.25", for which it
/// is much faster than ReadDouble and gives the same. False, and nothing read, for any other text, be it a number
/// or not.
bool ReadShortDecimal(const char16_t* text, double& number);

/// What a 32-bit `strtol` in base 10 makes of a zero-terminated text: saturates, never wraps.
std::int32_t ReadInt32(const char* text);

} // namespace vexaTransferLib::text
