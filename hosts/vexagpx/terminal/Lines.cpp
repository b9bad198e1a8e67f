// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/Lines.h>

#include <vexagpx/terminal/AsciiText.h>
#include <vexagpx/terminal/Clusters.h>
#include <vexagpx/terminal/DisplayText.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace vexagpx {

namespace {

constexpr std::size_t kNarrowest = 20;
constexpr std::size_t kMostNoteLines = 4;

std::string_view CodesOf(Style style) {
    switch (style) {
    case Style::kHeading:
        return "\x1B[1m";
    case Style::kGood:
        return "\x1B[32m";
    case Style::kBad:
        return "\x1B[31m";
    case Style::kFaint:
        return "\x1B[2m";
    case Style::kPlain:
        break;
    }
    return {};
}

void Write(Output& out, const icu::UnicodeString& line, Style style = Style::kPlain) {
    std::string bytes;
    (out.ShowsOnlyAscii() ? InAscii(line) : line).toUTF8String(bytes);
    if (style == Style::kPlain || !out.UsesColours()) {
        out.Write(bytes);
    } else {
        out.Write(CodesOf(style));
        out.Write(bytes);
        out.Write("\x1B[0m");
    }
    out.Write("\n");
}

/// Where the first line of a text ends: after the last word that fits, or inside of a word that does not.
/// \param start before which nothing is broken
std::int32_t LineEnd(const icu::UnicodeString& text, std::int32_t start, std::size_t width) {
    std::size_t taken = DisplayWidth(text.tempSubString(0, start));
    std::int32_t space = -1;
    for (std::int32_t i = start; i < text.length();) {
        const Cluster cluster = ClusterAt(text, i);
        taken += cluster.width;
        if (text[i] == u' ')
            space = i;
        if (taken > width)
            return space > start ? space : std::max(i, start + 1);
        i = cluster.end;
    }
    return text.length();
}

std::int32_t FirstOther(const icu::UnicodeString& text, std::int32_t from) {
    while (from < text.length() && text[from] == u' ')
        ++from;
    return from;
}

} // namespace

std::size_t LineWidth(const Output& out) {
    return std::max(out.TerminalColumns().value_or(kAnyWidth), kNarrowest);
}

std::vector<icu::UnicodeString> Wrapped(const icu::UnicodeString& text, std::size_t width,
                                        std::size_t indent) {
    const auto spaces = static_cast<std::int32_t>(2 * indent > width ? 0 : indent);
    const icu::UnicodeString prefix(spaces, u' ', spaces);
    std::vector<icu::UnicodeString> lines;
    icu::UnicodeString line;
    // Each line is taken from a piece that is long enough for it, so that the time is proportional to the text.
    std::int32_t at = 0;
    do {
        const std::int32_t room = static_cast<std::int32_t>(4 * width);
        line = lines.empty() ? icu::UnicodeString() : prefix;
        line.append(text, at, room);
        const std::int32_t before = lines.empty() ? 0 : spaces;
        const std::int32_t end = LineEnd(line, FirstOther(line, before), width);
        lines.emplace_back(line, 0, end);
        at = FirstOther(text, at + end - before);
    } while (at < text.length());
    return lines;
}

void WriteLine(Output& out, const icu::UnicodeString& line, Style style) {
    Write(out, Fitted(line, LineWidth(out)), style);
}

void WriteHeading(Output& out, const std::string& name) {
    WriteLine(out, FittedAtEnd(Printable(icu::UnicodeString::fromUTF8(name)), LineWidth(out)),
              Style::kHeading);
}

void WriteNote(Output& out, const icu::UnicodeString& line, std::size_t indent) {
    if (!out.TerminalColumns())
        return Write(out, line);
    std::vector<icu::UnicodeString> lines = Wrapped(line, LineWidth(out), indent);
    if (lines.size() > kMostNoteLines) {
        lines.resize(kMostNoteLines);
        lines.back() = Fitted(lines.back(), LineWidth(out) - 1) + u'\u2026';
    }
    for (const icu::UnicodeString& one : lines)
        Write(out, one);
}

void WriteWhole(Output& out, const icu::UnicodeString& line, std::size_t indent, Style style) {
    if (!out.TerminalColumns())
        return Write(out, line, style);
    for (const icu::UnicodeString& one : Wrapped(line, LineWidth(out), indent))
        Write(out, one, style);
}

} // namespace vexagpx
