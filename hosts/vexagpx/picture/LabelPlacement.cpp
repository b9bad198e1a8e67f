// SPDX-License-Identifier: MIT
#include <vexagpx/picture/LabelPlacement.h>

#include <vexagpx/picture/Palette.h>

#include <algorithm>
#include <array>

namespace vexagpx {

namespace {

/// Where a label is in relation to its spot, in parts of its distance.
struct Side {
    double x;
    double y;
    Align align;
};

constexpr std::array<Side, 8> kSides = {{{1.0, 0.0, Align::kStart},
                                         {-1.0, 0.0, Align::kEnd},
                                         {0.8, -0.8, Align::kStart},
                                         {0.8, 0.8, Align::kStart},
                                         {-0.8, -0.8, Align::kEnd},
                                         {-0.8, 0.8, Align::kEnd},
                                         {0.0, -1.6, Align::kMiddle},
                                         {0.0, 1.6, Align::kMiddle}}};

} // namespace

Box BoxOf(const Label& label, const MeasureText& measure) {
    const double width = std::min(measure(label.text, label.size, label.isBold), label.widest);
    const double before = label.align == Align::kStart ? 0.0
                          : label.align == Align::kEnd ? width
                                                       : width / 2.0;
    const double half = label.size * 0.65;
    return {label.at.x - before, label.at.y - half, label.at.x - before + width, label.at.y + half};
}

PlacedNames PlaceNames(const std::vector<NameAt>& names, double size, double widest,
                       const MeasureText& measure, Occupancy& occupancy) {
    PlacedNames placed;
    const double away = size * 0.7;
    // As wide as any two letters: without room for that, the text need not be measured.
    const double least = size;
    for (const NameAt& name : names) {
        bool isPlaced = false;
        double width = -1.0;
        for (const Side& side : kSides) {
            Label label{
                {name.spot.x + side.x * away, name.spot.y + side.y * away}, name.name, size, side.align};
            const Box core = BoxOf(label, [&](const auto&...) { return least; });
            if (!occupancy.IsFree(core))
                continue;
            if (width < 0.0)
                width = measure(label.text, size, false);
            label.widest = widest;
            label.colour = kBlack;
            label.hasHalo = true;
            if (occupancy.TakeIfFree(BoxOf(label, [&](const auto&...) { return width; }))) {
                placed.labels.push_back(std::move(label));
                isPlaced = true;
                break;
            }
        }
        placed.leftOut += isPlaced ? 0 : 1;
    }
    return placed;
}

} // namespace vexagpx
