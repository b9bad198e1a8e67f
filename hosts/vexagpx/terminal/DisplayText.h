// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>

namespace vexagpx {

/// The text on one line and safe for a terminal: line ends and other control characters become spaces, runs
/// of white space one space, what has no shape of its own (such as marks that turn the direction of writing)
/// goes.
icu::UnicodeString Printable(const icu::UnicodeString& text);

/// Columns that a printable text takes in a terminal: two for wide characters, none for combining ones.
std::size_t DisplayWidth(const icu::UnicodeString& text);

/// The text, its end replaced by an ellipsis when it is wider than `width`, which is at least 1.
icu::UnicodeString Fitted(const icu::UnicodeString& text, std::size_t width);
/// The same with the beginning replaced: the end of a path says more.
icu::UnicodeString FittedAtEnd(const icu::UnicodeString& text, std::size_t width);

/// "850 m", "12.3 km".
icu::UnicodeString LengthText(double metres);
/// "35 m", also for what is not finite.
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
