// SPDX-License-Identifier: MIT
#include <vexagpx/picture/Legend.h>

#include <vexagpx/picture/MapLayout.h>
#include <vexagpx/picture/Palette.h>
#include <vexagpx/terminal/DisplayText.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace vexagpx {

namespace {

constexpr int kRows = 3;

/// Puts items beside each other, and below when a row is full.
class LegendPainter {
public:
    LegendPainter(const Box& box, double unit, const MeasureText& measure, Drawing& drawing)
        : box_(box), unit_(unit), measure_(measure), drawing_(drawing), x_(box.left),
          y_(box.top + 8.0 * unit) {}

    /// Draws an item with a sample to the left of its text.
    /// \param paint called with the left end of the sample
    /// \param keepsRoom leaves room for the note that items are left out
    /// \returns false without room
    template <class Paint>
    bool Item(double sampleWidth, const std::string& text, bool keepsRoom, Paint paint) {
        const double textWidth = std::min(measure_(text, Size(), false), 180.0 * unit_) + 1.0;
        const double width = sampleWidth * unit_ + 5.0 * unit_ + textWidth;
        const double reserve = keepsRoom && row_ == kRows - 1 ? 90.0 * unit_ : 0.0;
        if (x_ + width + reserve > box_.right && x_ > box_.left) {
            if (row_ == kRows - 1)
                return false;
            ++row_;
            x_ = box_.left;
            y_ += 16.0 * unit_;
        }
        paint(Spot{x_, y_});
        Label label{{x_ + sampleWidth * unit_ + 5.0 * unit_, y_}, text, Size(), Align::kStart, kBlack};
        label.widest = textWidth;
        drawing_.shapes.emplace_back(std::move(label));
        x_ += width + 14.0 * unit_;
        isUsed_ = true;
        return true;
    }

    double Size() const { return 10.0 * unit_; }
    double Bottom() const { return isUsed_ ? y_ + 10.0 * unit_ : box_.top; }

private:
    const Box& box_;
    double unit_;
    const MeasureText& measure_;
    Drawing& drawing_;
    double x_;
    double y_;
    int row_ = 0;
    bool isUsed_ = false;
};

/// "312", "4.2": two digits at least.
std::string ShortNumber(double number) {
    const double rounded = std::abs(number) < 10.0 ? std::round(number * 10.0) / 10.0 : std::round(number);
    std::string text = std::to_string(std::llround(rounded * 10.0) / 10);
    const long long tenth = std::llabs(std::llround(rounded * 10.0)) % 10;
    if (rounded < 0.0 && text[0] != '-')
        text.insert(0, "-");
    return tenth == 0 ? text : text + '.' + std::to_string(tenth);
}

void DrawScale(const PathColours& colours, double unit, Drawing& drawing, LegendPainter& painter) {
    const bool isSpeed = colours.By() == ColourBy::kSpeed;
    const double factor = isSpeed ? 3.6 : 1.0;
    const std::string text = std::string(isSpeed ? "speed " : "height ") +
                             ShortNumber(colours.Low() * factor) + " to " +
                             ShortNumber(colours.High() * factor) + (isSpeed ? " km/h" : " m");
    constexpr double kWidth = 96.0;
    painter.Item(kWidth, text, false, [&](Spot spot) {
        const double step = kWidth * unit / kRampSteps;
        for (int i = 0; i < kRampSteps; ++i) {
            const double left = spot.x + i * step;
            const double right = left + step + (i + 1 < kRampSteps ? 0.5 : 0.0);
            drawing.shapes.emplace_back(Area{{{left, spot.y - 4.0 * unit},
                                              {right, spot.y - 4.0 * unit},
                                              {right, spot.y + 4.0 * unit},
                                              {left, spot.y + 4.0 * unit}},
                                             RampColour(i)});
        }
    });
}

void DrawPathNames(const PathData& data, const PathColours& colours, double unit, Drawing& drawing,
                   LegendPainter& painter) {
    for (std::size_t i = 0; i < data.paths.size(); ++i) {
        const PathOfPoints& path = data.paths[i];
        const bool isDrawn = painter.Item(22.0, path.name, i + 1 < data.paths.size(), [&](Spot spot) {
            drawing.shapes.emplace_back(Line{{spot, {spot.x + 22.0 * unit, spot.y}},
                                             colours.ColourOf(i, 0),
                                             (path.isRoute ? 1.6 : 2.2) * unit,
                                             path.isRoute});
        });
        if (!isDrawn) {
            painter.Item(0.0, "and " + std::to_string(data.paths.size() - i) + " more", false, [](Spot) {});
            return;
        }
    }
}

/// What the dashes mean where no path is named.
void DrawRouteSample(const PathData& data, double unit, Drawing& drawing, LegendPainter& painter) {
    const auto isRoute = [](const PathOfPoints& path) { return path.isRoute; };
    const auto routes =
        static_cast<std::size_t>(std::count_if(data.paths.begin(), data.paths.end(), isRoute));
    if (routes == 0)
        return;
    painter.Item(22.0, Counted(routes, "route"), false, [&](Spot spot) {
        drawing.shapes.emplace_back(Line{{spot, {spot.x + 22.0 * unit, spot.y}}, kGrey, 1.6 * unit, true});
    });
}

void DrawMarks(const PathData& data, double unit, Drawing& drawing, LegendPainter& painter) {
    const auto caches = static_cast<std::size_t>(std::count_if(
        data.places.begin(), data.places.end(), [](const MarkedPlace& place) { return place.isCache; }));
    const std::size_t waypoints = data.places.size() - caches;
    const auto mark = [&](const std::string& text, auto paint) {
        painter.Item(11.0, text, false, [&](Spot spot) { paint(Spot{spot.x + 6.0 * unit, spot.y}); });
    };
    if (!data.paths.empty() && data.paths.size() <= kMostMarkedPaths) {
        mark("start", [&](Spot spot) { DrawStartMark(spot, unit, drawing); });
        mark("end", [&](Spot spot) { DrawEndMark(spot, unit * 0.85, drawing); });
    }
    if (waypoints > 0)
        mark(Counted(waypoints, "waypoint"),
             [&](Spot spot) { DrawWaypointMark(spot, false, unit, drawing); });
    if (caches > 0)
        mark(Counted(caches, "geocache"), [&](Spot spot) { DrawWaypointMark(spot, true, unit, drawing); });
}

} // namespace

double LayOutLegend(const PathData& data, const PathColours& colours, const Box& box, double unit,
                    const MeasureText& measure, Drawing& drawing) {
    LegendPainter painter(box, unit, measure, drawing);
    DrawMarks(data, unit, drawing, painter);
    if (colours.HasScale()) {
        DrawRouteSample(data, unit, drawing, painter);
        DrawScale(colours, unit, drawing, painter);
    } else {
        DrawPathNames(data, colours, unit, drawing, painter);
    }
    return painter.Bottom();
}

} // namespace vexagpx
