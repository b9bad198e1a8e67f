// SPDX-License-Identifier: MIT
#include <vexagpx/picture/PictureLayout.h>

#include <vexagpx/picture/Legend.h>
#include <vexagpx/picture/MapLayout.h>
#include <vexagpx/picture/Palette.h>
#include <vexagpx/picture/ProfileLayout.h>
#include <vexagpx/terminal/DisplayText.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace vexagpx {

namespace {

/// In larger pictures texts are larger, too, but take a smaller part.
double UnitFor(const PictureOptions& options) {
    return std::clamp(std::sqrt(std::min(options.width / 1000.0, options.height / 800.0)), 0.75, 10.0);
}

std::string Describe(const PathData& data, const PathColours& colours) {
    const auto routes = static_cast<std::size_t>(std::count_if(
        data.paths.begin(), data.paths.end(), [](const PathOfPoints& path) { return path.isRoute; }));
    std::string text = "A map of " + Counted(data.paths.size() - routes, "track") + ", " +
                       Counted(routes, "route") + " and " + Counted(data.places.size(), "waypoint");
    if (HasProfile(data))
        text += " above a profile of height over distance";
    if (colours.HasScale())
        text += colours.By() == ColourBy::kSpeed ? ", coloured by speed" : ", coloured by height";
    return text + ".";
}

void DrawTitle(const Box& page, double unit, Drawing& drawing) {
    Label title{{page.left, page.top + 9.0 * unit}, drawing.title, 15.0 * unit, Align::kStart, kBlack, true};
    title.widest = page.Width();
    drawing.shapes.emplace_back(std::move(title));
}

void DrawNote(std::size_t leftOut, const Box& map, double unit, Drawing& drawing) {
    if (leftOut == 0)
        return;
    Label note{{map.right, map.bottom + 9.0 * unit},
               Counted(leftOut, "name") + " without room",
               9.5 * unit,
               Align::kEnd,
               kGrey};
    drawing.shapes.emplace_back(std::move(note));
}

} // namespace

Drawing LayOutPicture(const PathData& data, const PictureOptions& options, const MeasureText& measure) {
    const PathColours colours(data, options.colourBy);
    Drawing drawing;
    drawing.width = options.width;
    drawing.height = options.height;
    drawing.title = data.title;
    drawing.description = Describe(data, colours);
    const double unit = UnitFor(options);
    const Box page = {14.0 * unit, 10.0 * unit, drawing.width - 14.0 * unit, drawing.height - 8.0 * unit};
    DrawTitle(page, unit, drawing);
    const double legendTop = page.top + 22.0 * unit;
    const double mapTop =
        LayOutLegend(data, colours, {page.left, legendTop, page.right, page.bottom}, unit, measure, drawing) +
        4.0 * unit;
    const double rest = page.bottom - mapTop;
    // Below a hundred units for both there would be neither map nor profile.
    const bool hasProfile = HasProfile(data) && rest >= 230.0 * unit;
    const double profileHeight = hasProfile ? std::max(rest * 0.3, 105.0 * unit) : 0.0;
    const bool hasNames = !data.places.empty();
    const double note = hasNames || hasProfile ? 16.0 * unit : 0.0;
    const Box map = {page.left, mapTop, page.right, page.bottom - profileHeight - note};
    const std::size_t leftOut = LayOutMap(data, colours, map, unit, measure, drawing);
    DrawNote(leftOut, map, unit, drawing);
    if (hasProfile)
        LayOutProfile(data, colours, {page.left, map.bottom + 6.0 * unit, page.right, page.bottom}, unit,
                      measure, drawing);
    return drawing;
}

} // namespace vexagpx
