// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>
#include <vexagpx/terminal/Lines.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace vexagpx {

struct Column {
    enum class Kind {
        kNumber,  ///< right aligned, as wide as its widest cell
        kText,    ///< left aligned, as wide as its widest cell
        kFlexible ///< left aligned, made narrower when the line would be too long
    };

    icu::UnicodeString title;
    Kind kind;
};

/// A table for a person. In a terminal, no line is wider than it, whatever the cells contain. Elsewhere no cell is cut:
/// a cell that is wider than most pushes the rest of its row to the right.
class Table {
public:
    explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {}

    /// Adds one cell for each column. A note that is not empty gets a line of its own below the row.
    void AddRow(std::vector<icu::UnicodeString> cells, const icu::UnicodeString& note = {},
                Style style = Style::kPlain);
    /// Adds another such line below the last row, unless the note is empty.
    void AddNote(const icu::UnicodeString& note);

    /// Writes the table without its empty columns. In a terminal, the last columns are left out when the numbers of the
    /// others would be cut.
    void Write(Output& out);

private:
    struct Row {
        std::vector<icu::UnicodeString> cells;
        std::vector<icu::UnicodeString> notes;
        Style style;
    };

    void DropColumn(std::size_t column);
    void DropEmptyColumns();
    void DropWideColumns(std::size_t lineWidth);
    std::vector<std::size_t> WidthsOfCells(std::size_t widest) const;
    std::vector<std::size_t> FindWidths(std::size_t lineWidth) const;
    icu::UnicodeString Line(const std::vector<icu::UnicodeString>& cells,
                            const std::vector<std::size_t>& widths, bool isCut) const;

    std::vector<Column> columns_;
    std::vector<Row> rows_;
};

} // namespace vexagpx
