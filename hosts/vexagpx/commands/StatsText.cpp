// SPDX-License-Identifier: MIT
#include <vexagpx/commands/StatsText.h>

#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/Lines.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace vexagpx {

using vexaTrackLib::PathStatistics;
using vexaTrackLib::Pause;

namespace {

// Where the texts after "    Distance  " start.
constexpr std::int32_t kLabelEnd = 14;
constexpr std::size_t kShownPauses = 20;

icu::UnicodeString FromAscii(const std::string& text) {
    return icu::UnicodeString::fromUTF8(text);
}

icu::UnicodeString Duration(double seconds) {
    return DurationText(seconds * 1000.0);
}

/// Writes the lines of one path, or of a sum.
class FiguresWriter {
public:
    FiguresWriter(const PathStatistics& figures, Units units, Output& out)
        : figures_(figures), units_(units), out_(out) {}

    /// \param segments as a word, or empty
    void Write(const std::string& segments);

private:
    using Parts = std::vector<icu::UnicodeString>;

    void WriteField(const char16_t* label, const Parts& parts);
    void WriteDistance();
    void WriteHeights();
    void WriteTimes();
    void WriteSpeeds();
    void WritePauses();
    void WritePoints(const std::string& segments);

    const PathStatistics& figures_;
    Units units_;
    Output& out_;
};

void FiguresWriter::Write(const std::string& segments) {
    WriteDistance();
    WriteHeights();
    WriteTimes();
    WriteSpeeds();
    WritePauses();
    WritePoints(segments);
}

/// In a terminal, lines end between parts, so that a number stays beside its unit.
void FiguresWriter::WriteField(const char16_t* label, const Parts& parts) {
    icu::UnicodeString line = icu::UnicodeString(u"    ") + label;
    while (line.length() < kLabelEnd)
        line.append(u' ');
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const icu::UnicodeString part = i + 1 < parts.size() ? parts[i] + u',' : parts[i];
        const bool fits = DisplayWidth(line) + 1 + DisplayWidth(part) <= LineWidth(out_);
        if (i > 0 && out_.TerminalColumns() && !fits) {
            WriteWhole(out_, line, kLabelEnd);
            line = icu::UnicodeString(kLabelEnd, u' ', kLabelEnd);
        } else if (i > 0) {
            line.append(u' ');
        }
        line += part;
    }
    WriteWhole(out_, line, kLabelEnd);
}

void FiguresWriter::WriteDistance() {
    Parts parts = {LengthText(figures_.metres, units_)};
    if (figures_.highest)
        parts.push_back(u"with height " + LengthText(figures_.metresWithHeight, units_));
    WriteField(u"Distance", parts);
}

void FiguresWriter::WriteHeights() {
    if (!figures_.highest)
        return;
    WriteField(u"Climb",
               {u"up " + HeightText(figures_.ascent, units_), u"down " + HeightText(figures_.descent, units_),
                u"raw up " + HeightText(figures_.rawAscent, units_),
                u"raw down " + HeightText(figures_.rawDescent, units_)});
    WriteField(u"Height",
               {HeightText(*figures_.lowest, units_) + u" to " + HeightText(*figures_.highest, units_)});
}

void FiguresWriter::WriteTimes() {
    if (figures_.times.IsEmpty())
        return;
    const double first = figures_.times.First();
    const double last = figures_.times.Last();
    WriteField(u"Time", {first == last ? TimeText(first) : TimeText(first) + u" to " + TimeText(last)});
    if (figures_.elapsedSeconds > 0.0)
        WriteField(u"Elapsed",
                   {Duration(figures_.elapsedSeconds), u"moving " + Duration(figures_.movingSeconds)});
}

void FiguresWriter::WriteSpeeds() {
    Parts parts;
    if (const std::optional<double> mean = figures_.MeanSpeed())
        parts.push_back(u"mean " + SpeedText(*mean, units_));
    if (const std::optional<double> fastest = figures_.FastestSpeed())
        parts.push_back(u"fastest " + SpeedText(*fastest, units_));
    if (!parts.empty())
        WriteField(u"Speed", parts);
}

void FiguresWriter::WritePauses() {
    if (figures_.pauseCount == 0)
        return;
    WriteField(u"Pauses", {NumberText(figures_.pauseCount), u"together " + Duration(figures_.pausedSeconds)});
    const std::size_t shown = std::min(figures_.pauses.size(), kShownPauses);
    for (std::size_t i = 0; i < shown; ++i) {
        const Pause& pause = figures_.pauses[i];
        WriteField(u"", {TimeText(pause.start), Duration(pause.seconds),
                         u"at " + DegreesText(pause.latitude) + u" " + DegreesText(pause.longitude)});
    }
    if (shown > 0 && shown < figures_.pauseCount)
        WriteField(u"", {u"\u2026 and " + NumberText(figures_.pauseCount - shown) + u" more"});
}

void FiguresWriter::WritePoints(const std::string& segments) {
    Parts parts = {NumberText(figures_.points) + FromAscii(segments)};
    if (figures_.pointsWithoutTime > 0)
        parts.push_back(u"without time " + NumberText(figures_.pointsWithoutTime));
    if (figures_.pointsWithoutHeight > 0)
        parts.push_back(u"without height " + NumberText(figures_.pointsWithoutHeight));
    if (figures_.backwardTimes > 0)
        parts.push_back(u"times that go back " + NumberText(figures_.backwardTimes));
    WriteField(u"Points", parts);
}

std::string InSegments(std::size_t count) {
    return " in " + Counted(count, "segment");
}

void WritePath(const char* kind, std::size_t number, const PathFigures& path, const std::string& segments,
               Units units, Output& out) {
    const icu::UnicodeString name = Printable(path.name);
    WriteLine(out, FromAscii(std::string("  ") + kind + " " + std::to_string(number)) +
                       (name.isEmpty() ? name : u": " + name));
    FiguresWriter(path.figures, units, out).Write(segments);
}

void WriteSums(const PathSum& tracks, const PathSum& routes, std::size_t fewest, Units units, Output& out) {
    if (tracks.count >= fewest) {
        WriteLine(out, FromAscii("  Total of " + Counted(tracks.count, "track")));
        FiguresWriter(tracks.figures, units, out).Write(InSegments(tracks.segments));
    }
    if (routes.count >= fewest) {
        WriteLine(out, FromAscii("  Total of " + Counted(routes.count, "route")));
        FiguresWriter(routes.figures, units, out).Write("");
    }
}

} // namespace

void WriteStatsText(const DocumentFigures& document, const std::string& heading, Units units, Output& out) {
    WriteHeading(out, heading);
    std::size_t number = 0;
    for (const PathFigures& track : document.tracks)
        WritePath("Track", ++number, track, InSegments(track.segments), units, out);
    number = 0;
    for (const PathFigures& route : document.routes)
        WritePath("Route", ++number, route, "", units, out);
    if (document.tracks.empty() && document.routes.empty())
        WriteNote(out, u"  It holds no track and no route.", 2);
    WriteSums(document.allTracks, document.allRoutes, 2, units, out);
}

void WriteStatsText(const TotalFigures& total, Units units, Output& out) {
    WriteLine(out, FromAscii("Total of " + Counted(total.files, "file")), Style::kHeading);
    if (total.allTracks.count + total.allRoutes.count == 0)
        WriteNote(out, u"  They hold no track and no route.", 2);
    WriteSums(total.allTracks, total.allRoutes, 1, units, out);
}

} // namespace vexagpx
