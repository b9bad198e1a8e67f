// SPDX-License-Identifier: MIT
#include <vexagpx/picture/ProfileLayout.h>

#include <vexagpx/picture/ColouredLine.h>
#include <vexagpx/picture/LabelPlacement.h>
#include <vexagpx/picture/Palette.h>

#include <vexaTrackLib/Ticks.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>

namespace vexagpx {

namespace {

// Two points of a profile may be nearer than this part of the whole though a point between them lacks its height.
constexpr double kBridgedPart = 0.02;

bool HasHeights(const PathOfPoints& path) {
    for (const PathSegment& segment : path.segments)
        for (const PathPoint& point : segment)
            if (!std::isnan(point.height))
                return true;
    return false;
}

bool IsInProfile(const PathOfPoints& path) {
    return path.Length() > 0.0 && HasHeights(path);
}

/// Digits with a point whatever the locale.
std::string Fixed(double number, int decimals) {
    char text[64];
    const double factor = std::pow(10.0, decimals);
    const double whole = std::round(std::abs(number) * factor);
    const double high = std::floor(whole / factor);
    int length =
        std::snprintf(text, sizeof text, "%s%.0f", number < 0.0 && whole > 0.0 ? "\u2212" : "", high);
    std::string result(text, static_cast<std::size_t>(length));
    if (decimals > 0) {
        length = std::snprintf(text, sizeof text, ".%0*.0f", decimals, whole - high * factor);
        result.append(text, static_cast<std::size_t>(length));
    }
    return result;
}

/// Leaves of each narrow column the first and the last spot, and the highest and the lowest between them: the rest
/// would be under the line through these. The spots go to the right.
void ThinColumns(std::vector<Spot>& spots, std::vector<std::uint8_t>& steps) {
    constexpr double kColumn = 0.5;
    std::vector<std::size_t> kept;
    for (std::size_t start = 0; start < spots.size();) {
        std::size_t end = start;
        std::size_t low = start;
        std::size_t high = start;
        for (; end < spots.size() && spots[end].x <= spots[start].x + kColumn; ++end) {
            low = spots[end].y < spots[low].y ? end : low;
            high = spots[end].y > spots[high].y ? end : high;
        }
        for (const std::size_t i : {start, std::min(low, high), std::max(low, high), end - 1})
            if (kept.empty() || i > kept.back())
                kept.push_back(i);
        start = end;
    }
    for (std::size_t k = 0; k < kept.size(); ++k) {
        spots[k] = spots[kept[k]];
        steps[k] = steps[kept[k]];
    }
    spots.resize(kept.size());
    steps.resize(kept.size());
}

class ProfilePainter {
public:
    ProfilePainter(const PathData& data, const PathColours& colours, const Box& box, double unit,
                   const MeasureText& measure, Drawing& drawing)
        : data_(data), colours_(colours), unit_(unit), measure_(measure),
          drawing_(drawing), room_{box.left + 48.0 * unit, box.top + 6.0 * unit, box.right,
                                   box.bottom - 18.0 * unit},
          axis_(data, room_.left, room_.right, 5.0 * unit) {}

    void Paint();

private:
    void FindHeights();
    void DrawHeightAxis();
    void DrawDistanceAxis();
    void DrawPaths();
    void DrawSegment(std::size_t path, std::size_t segment);
    void DrawStretch(std::size_t path, std::vector<Spot> spots, std::vector<std::uint8_t> steps);
    void DrawBorder(std::size_t path);
    double HeightPlace(double height) const {
        return room_.bottom - (height - low_) / (high_ - low_) * room_.Height();
    }
    void Add(Shape shape) { drawing_.shapes.push_back(std::move(shape)); }

    const PathData& data_;
    const PathColours& colours_;
    double unit_;
    const MeasureText& measure_;
    Drawing& drawing_;
    Box room_;
    ProfileAxis axis_;
    double low_ = 0.0;
    double high_ = 1.0;
};

void ProfilePainter::Paint() {
    FindHeights();
    DrawHeightAxis();
    DrawPaths();
    DrawDistanceAxis();
}

void ProfilePainter::FindHeights() {
    low_ = 1e300;
    high_ = -1e300;
    for (std::size_t i = 0; i < data_.paths.size(); ++i) {
        if (!axis_.Has(i))
            continue;
        for (const PathSegment& segment : data_.paths[i].segments)
            for (const PathPoint& point : segment)
                if (!std::isnan(point.height)) {
                    low_ = std::min(low_, point.height);
                    high_ = std::max(high_, point.height);
                }
    }
    const double missing = std::max(0.0, 20.0 - (high_ - low_)) / 2.0;
    const double margin = missing + (high_ - low_) * 0.06;
    low_ -= margin;
    high_ += margin;
}

void ProfilePainter::DrawHeightAxis() {
    const int most = std::max(2, static_cast<int>(room_.Height() / (24.0 * unit_)));
    const vexaTrackLib::Ticks ticks = vexaTrackLib::RoundTicks(low_, high_, most);
    for (const double height : ticks.values) {
        const double y = HeightPlace(height);
        Add(Line{{{room_.left, y}, {room_.right, y}}, kLightGrey, 0.6 * unit_});
        Add(Label{{room_.left - 5.0 * unit_, y},
                  Fixed(height, ticks.decimals) + " m",
                  10.0 * unit_,
                  Align::kEnd,
                  kBlack});
    }
}

void ProfilePainter::DrawDistanceAxis() {
    Add(Line{{{room_.left, room_.bottom}, {room_.right, room_.bottom}}, kGrey, 0.8 * unit_});
    const bool inKilometres = axis_.Length() >= 2000.0;
    const double metres = inKilometres ? 1000.0 : 1.0;
    const int most = std::max(2, static_cast<int>(room_.Width() / (70.0 * unit_)));
    const vexaTrackLib::Ticks ticks = vexaTrackLib::RoundTicks(0.0, axis_.Length() / metres, most);
    for (const double distance : ticks.values) {
        const double x = axis_.PlaceOf(distance * metres);
        Add(Line{{{x, room_.bottom}, {x, room_.bottom + 4.0 * unit_}}, kGrey, 0.8 * unit_});
        Label label{{x, room_.bottom + 11.0 * unit_},
                    Fixed(distance, ticks.decimals) + (inKilometres ? " km" : " m"),
                    10.0 * unit_,
                    Align::kMiddle,
                    kBlack};
        const double beyond = BoxOf(label, measure_).right - drawing_.width + 2.0 * unit_;
        label.at.x -= std::max(0.0, beyond);
        Add(std::move(label));
    }
}

void ProfilePainter::DrawPaths() {
    for (std::size_t path = 0; path < data_.paths.size(); ++path) {
        if (!axis_.Has(path))
            continue;
        for (std::size_t segment = 0; segment < data_.paths[path].segments.size(); ++segment)
            DrawSegment(path, segment);
        DrawBorder(path);
    }
}

void ProfilePainter::DrawSegment(std::size_t path, std::size_t segment) {
    const PathSegment& points = data_.paths[path].segments[segment];
    const std::vector<std::uint8_t> steps = colours_.StepsOf(path, segment);
    std::vector<Spot> spots;
    std::vector<std::uint8_t> stepsOfSpots;
    double lastDistance = 0.0;
    bool isInterrupted = false;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (std::isnan(points[i].height)) {
            isInterrupted = true;
            continue;
        }
        if (isInterrupted && points[i].distance - lastDistance > axis_.Length() * kBridgedPart) {
            DrawStretch(path, spots, stepsOfSpots);
            spots.clear();
            stepsOfSpots.clear();
        }
        isInterrupted = false;
        lastDistance = points[i].distance;
        spots.push_back({axis_.PlaceOf(path, segment, lastDistance), HeightPlace(points[i].height)});
        stepsOfSpots.push_back(steps[i]);
    }
    DrawStretch(path, std::move(spots), std::move(stepsOfSpots));
}

void ProfilePainter::DrawStretch(std::size_t path, std::vector<Spot> spots, std::vector<std::uint8_t> steps) {
    ThinColumns(spots, steps);
    std::vector<ColouredRun> runs = SimplifiedRuns(spots, steps);
    if (runs.empty())
        return;
    Area area{{}, colours_.HasScale() ? kProfileGround : Lighter(colours_.ColourOf(path, 0), 0.2)};
    for (const ColouredRun& run : runs)
        area.spots.insert(area.spots.end(), run.spots.begin(), run.spots.end());
    area.spots.push_back({area.spots.back().x, room_.bottom});
    area.spots.push_back({area.spots.front().x, room_.bottom});
    Add(std::move(area));
    for (ColouredRun& run : runs)
        Add(Line{std::move(run.spots), colours_.ColourOf(path, run.step), 1.5 * unit_});
}

/// Where a path ends and the next one starts.
void ProfilePainter::DrawBorder(std::size_t path) {
    const PathOfPoints& last = data_.paths[path];
    const double start = axis_.PlaceOf(path, 0, 0.0);
    const double end = axis_.PlaceOf(path, last.segments.size() - 1, last.Length());
    if (start > room_.left + 0.5)
        Add(Line{{{start, room_.top}, {start, room_.bottom}}, kGrey, 0.7 * unit_, true});
    Label label{{start + 4.0 * unit_, room_.top + 3.0 * unit_}, last.name, 9.5 * unit_, Align::kStart, kGrey};
    label.widest = end - start - 8.0 * unit_;
    label.hasHalo = true;
    const bool isAlone = start <= room_.left + 0.5 && end >= room_.right - 0.5;
    if (!isAlone && label.widest > 50.0 * unit_)
        Add(std::move(label));
}

} // namespace

bool HasProfile(const PathData& data) {
    return std::any_of(data.paths.begin(), data.paths.end(), IsInProfile);
}

ProfileAxis::ProfileAxis(const PathData& data, double left, double right, double gap) : left_(left) {
    for (const PathOfPoints& path : data.paths) {
        pathStarts_.push_back(length_);
        firstPieces_.push_back(IsInProfile(path) ? pieceStarts_.size() : kNone);
        if (firstPieces_.back() == kNone)
            continue;
        for (const PathSegment& segment : path.segments)
            pieceStarts_.push_back(length_ + segment.front().distance);
        length_ += path.Length();
    }
    const double gaps = static_cast<double>(std::max<std::size_t>(pieceStarts_.size(), 1) - 1);
    gap_ = gaps > 0.0 ? std::min(gap, (right - left) / 8.0 / gaps) : 0.0;
    scale_ = (right - left - gap_ * gaps) / std::max(length_, 1e-9);
}

double ProfileAxis::PlaceOf(std::size_t path, std::size_t segment, double distance) const {
    const double gaps = static_cast<double>(firstPieces_[path] + segment);
    return left_ + (pathStarts_[path] + distance) * scale_ + gaps * gap_;
}

double ProfileAxis::PlaceOf(double distance) const {
    const auto after = std::upper_bound(pieceStarts_.begin(), pieceStarts_.end(), distance);
    const double gaps = static_cast<double>(std::max<std::ptrdiff_t>(after - pieceStarts_.begin(), 1) - 1);
    return left_ + distance * scale_ + gaps * gap_;
}

void LayOutProfile(const PathData& data, const PathColours& colours, const Box& box, double unit,
                   const MeasureText& measure, Drawing& drawing) {
    ProfilePainter(data, colours, box, unit, measure, drawing).Paint();
}

} // namespace vexagpx
