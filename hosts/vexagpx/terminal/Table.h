// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace vexagpx {

/// What a terminal shows without breaking lines.
inline constexpr std::size_t kLineWidth = 80;

struct Column {
    enum class Kind {
        kNumber,  ///< right aligned, as wide as its widest cell
        kText,    ///< left aligned, as wide as its widest cell
        kFlexible ///< left aligned, gives way where the line gets too long
    };

    icu::UnicodeString title;
    Kind kind;
};

/// A table for the terminal. No line is wider than kLineWidth columns whatever the cells hold.
class Table {
public:
    explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {}

    /// One cell for each column; `note` is a line of its own below the row, unless it is empty.
    void AddRow(std::vector<icu::UnicodeString> cells, const icu::UnicodeString& note = {});

    /// Columns without any content are left out.
    void Write(Output& out);

private:
    struct Row {
        std::vector<icu::UnicodeString> cells;
        icu::UnicodeString note;
    };

    void DropEmptyColumns();
    std::vector<std::size_t> FindWidths() const;
    icu::UnicodeString Line(const std::vector<icu::UnicodeString>& cells,
                            const std::vector<std::size_t>& widths) const;

    std::vector<Column> columns_;
    std::vector<Row> rows_;
};

/// Writes one line, cut to kLineWidth columns, in UTF-8.
void WriteLine(Output& out, const icu::UnicodeString& line);

} // namespace vexagpx
