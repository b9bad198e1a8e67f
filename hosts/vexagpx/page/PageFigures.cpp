// SPDX-License-Identifier: MIT
#include <vexagpx/page/PageFigures.h>

#include <vexagpx/process/Utf8.h>
#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/Units.h>

#include <unicode/unistr.h>

#include <cmath>
#include <optional>
#include <utility>

namespace vexagpx {

namespace {

/// The rows of a table, to which the groups of figures are added.
class Figures {
public:
    explicit Figures(const vexaTrackLib::PathStatistics& statistics) : statistics_(statistics) {}

    std::vector<PageFigure> Take(std::size_t segments);

private:
    void Add(const char* label, const icu::UnicodeString& value) { rows_.push_back({label, Utf8(value)}); }
    void AddCount(const char* label, std::size_t count);
    void AddHeights();
    void AddTimes();
    void AddPauses();
    void AddSpeeds();

    const vexaTrackLib::PathStatistics& statistics_;
    std::vector<PageFigure> rows_;
};

void Figures::AddCount(const char* label, std::size_t count) {
    if (count > 0)
        rows_.push_back({label, std::to_string(count)});
}

void Figures::AddHeights() {
    if (!statistics_.highest)
        return;
    Add("Ascent", HeightText(statistics_.ascent));
    Add("Descent", HeightText(statistics_.descent));
    Add("Highest", HeightText(*statistics_.highest));
    Add("Lowest", HeightText(*statistics_.lowest));
}

void Figures::AddTimes() {
    const vexaTrackLib::TimeSpan& times = statistics_.times;
    if (times.IsEmpty())
        return;
    Add("Start", TimeText(times.First()));
    Add("End", TimeText(times.Last()));
    Add("Elapsed", DurationText(1000.0 * statistics_.elapsedSeconds));
    Add("Moving", DurationText(1000.0 * statistics_.movingSeconds));
}

void Figures::AddPauses() {
    constexpr std::size_t kListed = 20;
    if (statistics_.pauseCount == 0)
        return;
    Add("Pauses", NumberText(statistics_.pauseCount) + u", " +
                      DurationText(1000.0 * statistics_.pausedSeconds) + u" in all");
    std::size_t number = 0;
    for (const vexaTrackLib::Pause& pause : statistics_.pauses) {
        if (number++ == kListed)
            break;
        rows_.push_back({"Pause " + std::to_string(number),
                         Utf8(DurationText(1000.0 * pause.seconds) + u" from " + TimeText(pause.start))});
    }
}

void Figures::AddSpeeds() {
    if (const std::optional<double> mean = statistics_.MeanSpeed())
        Add("Mean speed", SpeedText(*mean, Units::kMetric));
    if (const std::optional<double> fastest = statistics_.FastestSpeed())
        Add("Fastest", SpeedText(*fastest, Units::kMetric));
}

std::vector<PageFigure> Figures::Take(std::size_t segments) {
    Add("Distance", LengthText(statistics_.metres));
    AddHeights();
    AddTimes();
    AddSpeeds();
    AddPauses();
    if (segments > 1)
        AddCount("Segments", segments);
    Add("Points", NumberText(statistics_.points));
    AddCount("Without height", statistics_.pointsWithoutHeight);
    AddCount("Without time", statistics_.pointsWithoutTime);
    return std::move(rows_);
}

} // namespace

std::vector<PageFigure> PathFigures(const vexaTrackLib::PathStatistics& statistics, std::size_t segments) {
    return Figures(statistics).Take(segments);
}

std::string HeightOrNothing(double height) {
    return std::isnan(height) ? "" : Utf8(HeightText(height));
}

} // namespace vexagpx
