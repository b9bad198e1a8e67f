// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace vexagpx {

/// The text on one line and safe for a terminal: line ends and other control characters become spaces, runs of white
/// space become one space, and characters without a shape (such as marks that turn the direction of writing) are left
/// out.
icu::UnicodeString Printable(const icu::UnicodeString& text);

/// The columns that a printable text takes in a terminal: two for a wide character, none for a combining one.
std::size_t DisplayWidth(const icu::UnicodeString& text);

/// The text, its end replaced by an ellipsis when it is wider than `width`, which is at least 1.
icu::UnicodeString Fitted(const icu::UnicodeString& text, std::size_t width);
/// The same with the start replaced: the end of a path says more.
icu::UnicodeString FittedAtEnd(const icu::UnicodeString& text, std::size_t width);

template <class Integer>
icu::UnicodeString NumberText(Integer number) {
    return icu::UnicodeString::fromUTF8(std::to_string(number));
}
/// "1 point", "2 points", "2 entries".
/// \param plural for a noun whose plural is not made with an "s"
template <class Integer>
std::string Counted(Integer count, const std::string& noun, const std::string& plural = {}) {
    return std::to_string(count) + ' ' + (count == 1 ? noun : plural.empty() ? noun + 's' : plural);
}

/// A number with so many decimals.
icu::UnicodeString FixedText(double number, int decimals);
/// "850 m", "12.3 km".
icu::UnicodeString LengthText(double metres);
/// "35 m"; "nan m" and "inf m" for what is not finite.
icu::UnicodeString HeightText(double metres);
/// "999 B", "12.3 MB".
icu::UnicodeString SizeText(std::uint64_t bytes);
/// Degrees with six decimals.
icu::UnicodeString DegreesText(double degrees);
/// "45 s", "1 h 39 min", "2 d 3 h".
icu::UnicodeString DurationText(double millis);
/// "2009-01-15T10:20:30Z"; empty when there is no such time.
icu::UnicodeString TimeText(double millis);

} // namespace vexagpx
