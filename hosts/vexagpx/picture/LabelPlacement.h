// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/Drawing.h>
#include <vexagpx/picture/Occupancy.h>

#include <cstddef>
#include <string>
#include <vector>

namespace vexagpx {

/// A name that belongs beside a spot.
struct NameAt {
    Spot spot;
    std::string name;
};

/// What PlaceNames found.
struct PlacedNames {
    std::vector<Label> labels;
    std::size_t leftOut = 0; ///< names without room
};

/// Puts each name beside its spot, where nothing is yet: right, left, above or below. Earlier names come first. Long
/// names are shortened to `widest`.
PlacedNames PlaceNames(const std::vector<NameAt>& names, double size, double widest,
                       const MeasureText& measure, Occupancy& occupancy);

/// The box around a label. A text is about as high as 1.3 of its size.
Box BoxOf(const Label& label, const MeasureText& measure);

} // namespace vexagpx
