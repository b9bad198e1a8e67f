// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <string>
#include <vector>

namespace vexagpx {

/// The columns of a line where there is no terminal: more than any text has.
inline constexpr std::size_t kAnyWidth = std::size_t{1} << 30;

/// The columns of a line: those of the terminal, at least 20, or kAnyWidth when the output is none.
std::size_t LineWidth(const Output& out);

/// A printable text as lines of at most `width` columns, broken at spaces; a word that is wider than a line is broken
/// inside. The lines after the first one start with `indent` spaces, but with none when that leaves less than half of a
/// line.
std::vector<icu::UnicodeString> Wrapped(const icu::UnicodeString& text, std::size_t width,
                                        std::size_t indent);

/// How a line stands out where colours are used.
enum class Style { kPlain, kHeading, kGood, kBad, kFaint };

/// Writes one line in UTF-8, cut to the columns of a terminal. Where a terminal shows only ASCII, it and the two below
/// write letters without accents, and a question mark for each column of what has no such letter.
void WriteLine(Output& out, const icu::UnicodeString& line, Style style = Style::kPlain);

/// Writes the name of a file above what is written of it; of a name that is too long for a terminal its end.
void WriteHeading(Output& out, const std::string& name);

/// Writes a line whose end is not worth more than a few lines: wrapped to at most four in a terminal, as it is
/// elsewhere.
void WriteNote(Output& out, const icu::UnicodeString& line, std::size_t indent);

/// Writes a line of which nothing may be left out: wrapped in a terminal, as it is elsewhere.
void WriteWhole(Output& out, const icu::UnicodeString& line, std::size_t indent, Style style = Style::kPlain);

} // namespace vexagpx
