// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/Drawing.h>

#include <functional>
#include <string>
#include <string_view>

namespace vexagpx {

enum class PictureFormat { kSvg, kPng, kPdf };

/// The widths of texts in the font of the pictures.
MeasureText MakeTextMeasure();

/// Paints the drawing. The same drawing gives the same bytes with the same fonts.
/// \param take called with pieces of the file
/// \throws std::runtime_error when it cannot be painted; what `take` throws
void PaintPicture(const Drawing& drawing, PictureFormat format,
                  const std::function<void(std::string_view)>& take);

} // namespace vexagpx
