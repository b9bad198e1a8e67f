// SPDX-License-Identifier: MIT
#include <vexagpx/picture/Occupancy.h>

#include <algorithm>
#include <cmath>

namespace vexagpx {

namespace {

constexpr double kCell = 2.0;

std::size_t CountOf(double length) {
    return static_cast<std::size_t>(std::max(1.0, std::ceil(length / kCell)));
}

std::size_t IndexOf(double place, std::size_t count) {
    return static_cast<std::size_t>(
        std::clamp(std::floor(place / kCell), 0.0, static_cast<double>(count - 1)));
}

} // namespace

Occupancy::Occupancy(const Box& box)
    : box_(box), columns_(CountOf(box.Width())), rows_(CountOf(box.Height())),
      taken_(columns_ * rows_, false) {}

Occupancy::Cells Occupancy::CellsOf(const Box& area) const {
    return {IndexOf(area.left - box_.left, columns_), IndexOf(area.top - box_.top, rows_),
            IndexOf(area.right - box_.left, columns_), IndexOf(area.bottom - box_.top, rows_)};
}

bool Occupancy::IsFree(const Box& area) const {
    if (!box_.Contains({area.left, area.top}) || !box_.Contains({area.right, area.bottom}))
        return false;
    const Cells cells = CellsOf(area);
    for (std::size_t row = cells.top; row <= cells.bottom; ++row)
        for (std::size_t column = cells.left; column <= cells.right; ++column)
            if (taken_[row * columns_ + column])
                return false;
    return true;
}

void Occupancy::Take(const Box& area) {
    if (area.right < box_.left || area.left > box_.right || area.bottom < box_.top || area.top > box_.bottom)
        return;
    const Cells cells = CellsOf(area);
    for (std::size_t row = cells.top; row <= cells.bottom; ++row)
        for (std::size_t column = cells.left; column <= cells.right; ++column)
            taken_[row * columns_ + column] = true;
}

bool Occupancy::TakeIfFree(const Box& area) {
    const bool isFree = IsFree(area);
    if (isFree)
        Take(area);
    return isFree;
}

} // namespace vexagpx
