// SPDX-License-Identifier: MIT
#include <vexagpx/picture/MapLayout.h>

#include <vexagpx/output/ValueText.h>
#include <vexagpx/picture/ColouredLine.h>
#include <vexagpx/picture/Graticule.h>
#include <vexagpx/picture/LabelPlacement.h>
#include <vexagpx/picture/MapFrame.h>
#include <vexagpx/picture/Occupancy.h>
#include <vexagpx/picture/Palette.h>

#include <vexaTrackLib/Ticks.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>
#include <vector>

namespace vexagpx {

namespace {

std::vector<Spot> Rectangle(const Box& box) {
    return {{box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}, {box.left, box.bottom}};
}

Box Around(Spot spot, double half) {
    return {spot.x - half, spot.y - half, spot.x + half, spot.y + half};
}

/// Draws the things of one map, and keeps what room they take.
class MapPainter {
public:
    MapPainter(const PathData& data, const PathColours& colours, const Box& box, double unit,
               const MeasureText& measure, Drawing& drawing)
        : data_(data), colours_(colours), frame_(data, box), unit_(unit), measure_(measure),
          drawing_(drawing), occupancy_(box) {}

    std::size_t Paint();

private:
    void DrawGround(const std::vector<GraticuleLine>& graticule);
    void DrawPaths(bool routes);
    void DrawPath(std::size_t index);
    void DrawWaypoints();
    void DrawEnds();
    void DrawScaleBar();
    void DrawNorthArrow();
    void DrawGraticuleNames(const std::vector<GraticuleLine>& graticule);
    std::size_t DrawNames();
    void Add(Shape shape) { drawing_.shapes.push_back(std::move(shape)); }

    const PathData& data_;
    const PathColours& colours_;
    MapFrame frame_;
    double unit_;
    const MeasureText& measure_;
    Drawing& drawing_;
    Occupancy occupancy_;
};

std::size_t MapPainter::Paint() {
    const std::vector<GraticuleLine> graticule = MakeGraticule(frame_);
    Add(Clip{frame_.Room()});
    DrawGround(graticule);
    DrawPaths(true);
    DrawPaths(false);
    DrawWaypoints();
    DrawEnds();
    DrawScaleBar();
    DrawNorthArrow();
    DrawGraticuleNames(graticule);
    const std::size_t leftOut = DrawNames();
    Add(Clip{{0.0, 0.0, drawing_.width, drawing_.height}});
    std::vector<Spot> edge = Rectangle(frame_.Room());
    edge.push_back(edge.front());
    Add(Line{std::move(edge), kGrey, 0.8 * unit_});
    return leftOut;
}

void MapPainter::DrawGround(const std::vector<GraticuleLine>& graticule) {
    Add(Area{Rectangle(frame_.Room()), kMapGround});
    for (const GraticuleLine& line : graticule)
        for (const std::vector<Spot>& part : line.parts)
            Add(Line{part, kLightGrey, 0.6 * unit_});
}

void MapPainter::DrawPaths(bool routes) {
    for (std::size_t i = 0; i < data_.paths.size(); ++i)
        if (data_.paths[i].isRoute == routes)
            DrawPath(i);
}

void MapPainter::DrawPath(std::size_t index) {
    const PathOfPoints& path = data_.paths[index];
    for (std::size_t segment = 0; segment < path.segments.size(); ++segment) {
        const std::vector<std::uint8_t> steps = colours_.StepsOf(index, segment);
        for (const MapFrame::Part& part : frame_.PartsOf(path.segments[segment])) {
            std::vector<std::uint8_t> stepsOfPart;
            stepsOfPart.reserve(part.points.size());
            for (const std::size_t point : part.points)
                stepsOfPart.push_back(steps[point]);
            for (ColouredRun& run : SimplifiedRuns(part.spots, stepsOfPart))
                Add(Line{std::move(run.spots), colours_.ColourOf(index, run.step),
                         (path.isRoute ? 1.6 : 2.2) * unit_, path.isRoute});
        }
    }
}

void MapPainter::DrawWaypoints() {
    std::set<std::pair<int, int>> drawn;
    for (const MarkedPlace& place : data_.places) {
        const Spot spot = frame_.SpotOf(place.latitude, place.longitude);
        // Marks of one place would only make the picture larger.
        if (!frame_.Room().Contains(spot) ||
            !drawn.emplace(static_cast<int>(spot.x * 2.0), static_cast<int>(spot.y * 2.0)).second)
            continue;
        DrawWaypointMark(spot, place.isCache, unit_, drawing_);
        occupancy_.Take(Around(spot, 3.5 * unit_));
    }
}

void MapPainter::DrawEnds() {
    if (data_.paths.size() > kMostMarkedPaths)
        return;
    for (const PathOfPoints& path : data_.paths) {
        const PathPoint& first = path.segments.front().front();
        const PathPoint& last = path.segments.back().back();
        const Spot start = frame_.SpotOf(first.latitude, first.longitude);
        const Spot end = frame_.SpotOf(last.latitude, last.longitude);
        DrawEndMark(end, unit_, drawing_);
        DrawStartMark(start, unit_, drawing_);
        occupancy_.Take(Around(start, 5.0 * unit_));
        occupancy_.Take(Around(end, 5.0 * unit_));
    }
}

void MapPainter::DrawScaleBar() {
    if (frame_.Projection().IsOfWorld())
        return;
    const Box& room = frame_.Room();
    const Spot middle = {(room.left + room.right) / 2.0, (room.top + room.bottom) / 2.0};
    const double unitsPerMetre =
        frame_.UnitsPerMetre() * frame_.Projection().Scale(frame_.ProjectedPlaceOf(middle));
    const double most = room.Width() * 0.22 / unitsPerMetre;
    const double metres = vexaTrackLib::RoundTicks(0.0, most, 2).values.back();
    const double length = metres * unitsPerMetre;
    const double right = room.right - 12.0 * unit_;
    const double bottom = room.bottom - 22.0 * unit_;
    const double tick = 4.0 * unit_;
    Label label{{right - length / 2.0, bottom - 9.0 * unit_}, "", 11.0 * unit_, Align::kMiddle, kBlack};
    label.text = metres >= 1000.0 ? std::string(NumberDigits(metres / 1000.0).Text()) + " km"
                                  : std::string(NumberDigits(metres).Text()) + " m";
    label.hasHalo = true;
    const Box text = BoxOf(label, measure_);
    const Box taken = {std::min(text.left, right - length) - 4.0 * unit_, text.top - 2.0 * unit_,
                       std::max(text.right, right) + 4.0 * unit_, bottom + 4.0 * unit_};
    occupancy_.Take(taken);
    const std::vector<Spot> bar = {
        {right - length, bottom - tick}, {right - length, bottom}, {right, bottom}, {right, bottom - tick}};
    Add(Line{bar, kPaper, 4.0 * unit_});
    Add(Line{bar, kBlack, 1.6 * unit_});
    Add(std::move(label));
}

void MapPainter::DrawNorthArrow() {
    const Box& room = frame_.Room();
    const Spot at = {room.right - 22.0 * unit_, room.top + 28.0 * unit_};
    if (room.Contains(frame_.SpotOf(90.0, 0.0)) || room.Contains(frame_.SpotOf(-90.0, 0.0)))
        return; // north is in every direction
    double latitude = 0.0;
    double longitude = 0.0;
    frame_.PlaceOf(at, latitude, longitude);
    const Spot here = frame_.SpotOf(latitude, longitude);
    const Spot north = frame_.SpotOf(std::min(latitude + 0.01, 90.0), longitude);
    const double length = std::hypot(north.x - here.x, north.y - here.y);
    const bool isUp = frame_.Projection().IsOfWorld() || !(length > 0.0);
    const double x = isUp ? 0.0 : (north.x - here.x) / length;
    const double y = isUp ? -1.0 : (north.y - here.y) / length;
    const auto turned = [&](double along, double across) {
        return Spot{at.x + unit_ * (along * x - across * y), at.y + unit_ * (along * y + across * x)};
    };
    Add(Area{{turned(13.0, 0.0), turned(-9.0, -6.0), turned(-5.0, 0.0)}, kBlack, kBlack, 0.8 * unit_});
    Add(Area{{turned(13.0, 0.0), turned(-9.0, 6.0), turned(-5.0, 0.0)}, kPaper, kBlack, 0.8 * unit_});
    Label label{turned(20.0, 0.0), "N", 11.0 * unit_, Align::kMiddle, kBlack, true, true};
    Add(std::move(label));
    occupancy_.Take(Around(at, 22.0 * unit_));
}

void MapPainter::DrawGraticuleNames(const std::vector<GraticuleLine>& graticule) {
    const Box& room = frame_.Room();
    for (const GraticuleLine& line : graticule) {
        Spot place;
        if (line.name.empty() || !FindNamePlace(line, room, place))
            continue;
        Label label{place, line.name, 9.5 * unit_, line.isMeridian ? Align::kMiddle : Align::kStart, kGrey};
        label.hasHalo = true;
        if (line.isMeridian)
            label.at.y -= place.y > room.bottom - 1.0 ? 8.0 * unit_ : 0.0;
        else
            label.at.x += 4.0 * unit_;
        if (occupancy_.TakeIfFree(BoxOf(label, measure_)))
            Add(std::move(label));
    }
}

std::size_t MapPainter::DrawNames() {
    std::vector<NameAt> names;
    for (const MarkedPlace& place : data_.places)
        if (!place.name.empty())
            names.push_back({frame_.SpotOf(place.latitude, place.longitude), place.name});
    PlacedNames placed = PlaceNames(names, 10.5 * unit_, 150.0 * unit_, measure_, occupancy_);
    for (Label& label : placed.labels)
        Add(std::move(label));
    return placed.leftOut;
}

} // namespace

void DrawWaypointMark(Spot spot, bool isCache, double unit, Drawing& drawing) {
    const double r = 3.6 * unit;
    if (isCache)
        drawing.shapes.emplace_back(
            Area{Rectangle({spot.x - r * 0.85, spot.y - r * 0.85, spot.x + r * 0.85, spot.y + r * 0.85}),
                 kCacheColour, kPaper, 0.9 * unit});
    else
        drawing.shapes.emplace_back(Area{{{spot.x, spot.y - r * 1.2},
                                          {spot.x + r, spot.y},
                                          {spot.x, spot.y + r * 1.2},
                                          {spot.x - r, spot.y}},
                                         kWaypointColour,
                                         kPaper,
                                         0.9 * unit});
}

void DrawStartMark(Spot spot, double unit, Drawing& drawing) {
    drawing.shapes.emplace_back(Disc{spot, 4.6 * unit, kStartColour, kPaper, 1.4 * unit});
}

void DrawEndMark(Spot spot, double unit, Drawing& drawing) {
    drawing.shapes.emplace_back(Disc{spot, 5.6 * unit, kPaper, kEndColour, 2.4 * unit});
}

std::size_t LayOutMap(const PathData& data, const PathColours& colours, const Box& box, double unit,
                      const MeasureText& measure, Drawing& drawing) {
    return MapPainter(data, colours, box, unit, measure, drawing).Paint();
}

} // namespace vexagpx
