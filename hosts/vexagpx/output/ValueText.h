// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace vexagpx {

/// A number as text with a point, in no locale: the fewest digits that read back the same. It has no exponent unless it
/// would have very many digits. Empty for a number that is not finite.
class NumberDigits {
public:
    explicit NumberDigits(double number);

    std::string_view Text() const { return {text_.data(), size_}; }

private:
    std::array<char, 40> text_;
    std::size_t size_ = 0;
};

/// A time as RFC 3339 has it, in UTC: "2009-01-15T10:20:30Z", or "2009-01-15T10:20:30.25Z" with at most six decimals.
/// Empty for a time that is not finite or not in the years 0 to 9999, which the form has no place for.
class TimeDigits {
public:
    /// \param millis milliseconds since 1970-01-01T00:00:00 UTC
    explicit TimeDigits(double millis);

    std::string_view Text() const { return {text_.data(), size_}; }

private:
    std::array<char, 32> text_;
    std::size_t size_ = 0;
};

} // namespace vexagpx
