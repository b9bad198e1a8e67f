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

/// How many decimals the writers give to an angle (latitude, longitude, magnetic variation) and to a height.
inline constexpr int kAngleDecimals = 9;
inline constexpr int kHeightDecimals = 6;

/// The length of the longest number in fixed notation with up to 40 decimals: -DBL_MAX has a sign and 309
/// digits before the point.
inline constexpr std::size_t kLongestFixed = 352;

/// Writes a number in fixed notation with a full stop, as `printf("%.*f")` does in the classic locale, whatever
/// the C locale is. Returns the end of the text; there must be room for `kLongestFixed` characters.
char* WriteFixed(char* out, double number, int decimals);

/// Holds the text that WriteFixed writes.
class FixedText {
public:
    FixedText(double number, int decimals)
        : length_(static_cast<std::size_t>(WriteFixed(buffer_.data(), number, decimals) - buffer_.data())) {}
    std::string_view View() const { return {buffer_.data(), length_}; }

private:
    std::array<char, kLongestFixed> buffer_;
    std::size_t length_;
};

/// Reads a zero-terminated text as `strtod` does in the classic locale. Returns the end of what was read.
const char* ReadDouble(const char* text, double& number);

/// \{
/// The product and the sum, rounded once to the nearest double, also where the processor computes with more digits.
double Multiply(double a, double b);
double Add(double a, double b);
/// \}

/// How many digits a text has before its point, and after it. Of a text that ReadShortDecimal did not read, they are
/// not known.
struct DigitCounts {
    static constexpr std::int32_t kUnknown = 1000;

    std::int32_t whole = kUnknown;
    std::int32_t decimals = 0;

    /// True when it is certain that the nearest double, written with so many decimals, has all these digits: a double
    /// holds fifteen.
    bool AreWritten(int writtenDecimals) const {
        return decimals <= writtenDecimals && whole + writtenDecimals <= 15;
    }
};

/// Reads a text that consists of one number with up to 19 digits and no exponent, such as "-122.25": much faster
/// than ReadDouble, with the same result. For any other text, whether it is a number or not, returns false and
/// leaves \p number and \p counts unchanged.
bool ReadShortDecimal(const char16_t* text, double& number, DigitCounts& counts);
bool ReadShortDecimal(const char16_t* text, double& number);
/// The same for a text in a buffer.
/// \param text is followed by a byte that is neither a digit nor a point, and by three more bytes, whatever they are
bool ReadShortDecimal(std::string_view text, double& number, DigitCounts& counts);
bool ReadShortDecimal(std::string_view text, double& number);

/// Reads a zero-terminated text as a 32-bit `strtol` does in base 10: saturates, never wraps.
std::int32_t ReadInt32(const char* text);

} // namespace vexaTransferLib::text
