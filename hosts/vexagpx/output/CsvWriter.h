// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace vexagpx {

/// Writes comma-separated values by RFC 4180, in UTF-8 and row by row: cells separated by commas, rows ended by CR LF,
/// and a cell in quotation marks when it has a comma, a quotation mark, a line end, or a blank at its start or end. The
/// caller gives every row as many cells as the first one, whose texts name the columns.
///
///     CsvWriter csv(out);
///     csv.Text("name");
///     csv.Text("height");
///     csv.EndRow();
///     csv.Text(point.name);
///     csv.Number(point.height);
///     csv.EndRow();
class CsvWriter {
public:
    /// \param out must outlive the writer, and is not flushed
    explicit CsvWriter(Output& out) : out_(out) {}

    // Each of these writes one cell.
    void Text(std::string_view utf8);
    void Text(const char* utf8) { Text(std::string_view(utf8)); }
    /// An unpaired surrogate becomes a replacement character.
    void Text(const icu::UnicodeString& text);
    /// The fewest digits that read back the same; nothing for a number that is not finite.
    void Number(double number);
    void Number(std::int64_t number);
    void Number(std::uint64_t number);
    /// "true" or "false".
    void Bool(bool value);
    /// "2009-01-15T10:20:30Z"; nothing for a time that this form has no place for.
    /// \param millis milliseconds since 1970-01-01T00:00:00 UTC
    void Time(double millis);
    void Empty();

    void EndRow();

private:
    void Cell(std::string_view text);

    Output& out_;
    std::string utf8_;
    std::uint64_t cells_ = 0; ///< of the current row
    bool isBlank_ = true;     ///< the current row has no text yet
};

} // namespace vexagpx
