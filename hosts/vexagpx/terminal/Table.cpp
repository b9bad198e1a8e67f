// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/Table.h>

#include <vexagpx/terminal/DisplayText.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string>

namespace vexagpx {

namespace {

constexpr std::size_t kIndent = 2;
constexpr std::size_t kGap = 2;
constexpr std::size_t kLeastFlexible = 8;
// Wider cells widen only their own row where there is no terminal, so that the output does not grow with one long cell.
constexpr std::size_t kWidestColumn = 80;

/// The width of a line with such cells.
std::size_t LineOf(const std::vector<std::size_t>& widths) {
    return std::accumulate(widths.begin(), widths.end(), kIndent) + kGap * (widths.size() - 1);
}

/// Makes the widest of the columns that `may` allows narrower, again and again, down to `least`, until the excess is
/// gone. Returns the excess that remains.
template <class May>
std::size_t Shrink(std::vector<std::size_t>& widths, std::size_t excess, std::size_t least, May may) {
    while (excess > 0) {
        std::size_t widest = widths.size();
        for (std::size_t i = 0; i < widths.size(); ++i)
            if (may(i) && widths[i] > least && (widest == widths.size() || widths[i] > widths[widest]))
                widest = i;
        if (widest == widths.size())
            break;
        --widths[widest];
        --excess;
    }
    return excess;
}

} // namespace

void Table::AddRow(std::vector<icu::UnicodeString> cells, const icu::UnicodeString& note, Style style) {
    for (icu::UnicodeString& cell : cells)
        cell = Printable(cell);
    rows_.push_back({std::move(cells), {}, style});
    AddNote(note);
}

void Table::AddNote(const icu::UnicodeString& note) {
    if (!note.isEmpty())
        rows_.back().notes.push_back(Printable(note));
}

std::vector<std::size_t> Table::WidthsOfCells(std::size_t widest) const {
    std::vector<std::size_t> widths;
    for (const Column& column : columns_)
        widths.push_back(DisplayWidth(column.title));
    for (const Row& row : rows_)
        for (std::size_t i = 0; i < widths.size(); ++i)
            // The limit also limits the steps of Shrink.
            widths[i] = std::max(widths[i], std::min(DisplayWidth(row.cells[i]), widest));
    return widths;
}

std::vector<std::size_t> Table::FindWidths(std::size_t lineWidth) const {
    if (lineWidth == kAnyWidth)
        return WidthsOfCells(kWidestColumn);
    std::vector<std::size_t> widths = WidthsOfCells(lineWidth);
    const std::size_t total = LineOf(widths);
    const std::size_t excess = total > lineWidth ? total - lineWidth : 0;
    const std::size_t rest = Shrink(widths, excess, kLeastFlexible, [this](std::size_t i) {
        return columns_[i].kind == Column::Kind::kFlexible;
    });
    Shrink(widths, rest, 1, [](std::size_t) { return true; });
    return widths;
}

icu::UnicodeString Table::Line(const std::vector<icu::UnicodeString>& cells,
                               const std::vector<std::size_t>& widths, bool isCut) const {
    icu::UnicodeString line;
    std::size_t pending = kIndent;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const icu::UnicodeString cell = isCut ? Fitted(cells[i], widths[i]) : cells[i];
        const std::size_t padding = widths[i] - std::min(DisplayWidth(cell), widths[i]);
        const bool right = columns_[i].kind == Column::Kind::kNumber;
        // Spaces are written only when something follows them.
        if (!cell.isEmpty()) {
            for (std::size_t n = pending + (right ? padding : 0); n > 0; --n)
                line.append(u' ');
            line.append(cell);
            pending = right ? 0 : padding;
        } else {
            pending += padding;
        }
        pending += kGap;
    }
    return line;
}

void Table::DropColumn(std::size_t column) {
    const auto offset = static_cast<std::ptrdiff_t>(column);
    columns_.erase(columns_.begin() + offset);
    for (Row& row : rows_)
        row.cells.erase(row.cells.begin() + offset);
}

void Table::DropEmptyColumns() {
    for (std::size_t i = columns_.size(); i-- > 0;)
        if (std::all_of(rows_.begin(), rows_.end(), [i](const Row& row) { return row.cells[i].isEmpty(); }))
            DropColumn(i);
}

void Table::DropWideColumns(std::size_t lineWidth) {
    constexpr std::size_t kFewest = 2;
    std::vector<std::size_t> widths = WidthsOfCells(lineWidth);
    for (std::size_t i = 0; i < widths.size(); ++i)
        if (columns_[i].kind == Column::Kind::kFlexible)
            widths[i] = std::min(widths[i], kLeastFlexible);
    for (; columns_.size() > kFewest && LineOf(widths) > lineWidth; widths.pop_back())
        DropColumn(columns_.size() - 1);
}

void Table::Write(Output& out) {
    DropEmptyColumns();
    if (out.TerminalColumns())
        DropWideColumns(LineWidth(out));
    if (columns_.empty())
        return;
    const std::vector<std::size_t> widths = FindWidths(LineWidth(out));
    std::vector<icu::UnicodeString> titles;
    for (const Column& column : columns_)
        titles.push_back(column.title);
    const bool isCut = out.TerminalColumns().has_value();
    WriteLine(out, Line(titles, widths, isCut), Style::kFaint);
    const auto noteStart = static_cast<std::int32_t>(kIndent + widths.front() + kGap);
    const icu::UnicodeString noteIndent(noteStart, u' ', noteStart);
    for (const Row& row : rows_) {
        WriteLine(out, Line(row.cells, widths, isCut), row.style);
        for (const icu::UnicodeString& note : row.notes)
            WriteNote(out, noteIndent + note, static_cast<std::size_t>(noteStart));
    }
}

} // namespace vexagpx
