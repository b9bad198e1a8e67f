// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/Drawing.h>
#include <vexagpx/picture/PathColours.h>
#include <vexagpx/picture/PathData.h>

namespace vexagpx {

struct PictureOptions {
    int width = 1000;
    int height = 800;
    ColourBy colourBy = ColourBy::kNone;
};

/// Lays out the whole picture: title, legend, map, and a profile below it when there are heights.
/// \param data not empty
Drawing LayOutPicture(const PathData& data, const PictureOptions& options, const MeasureText& measure);

} // namespace vexagpx
