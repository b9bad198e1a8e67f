// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/Drawing.h>
#include <vexagpx/picture/PathData.h>

#include <string>
#include <vector>

namespace cli {

/// Letters of equal width.
inline double MeasureEqually(const std::string& text, double size, bool /*isBold*/) {
    return 0.6 * size * static_cast<double>(text.size());
}

/// A path in which points have latitude, longitude and height, a hundred metres and ten seconds apart.
inline vexagpx::PathOfPoints PathOf(const std::vector<std::vector<std::vector<double>>>& segments) {
    vexagpx::PathOfPoints path;
    path.name = "walk";
    double distance = 0.0;
    for (const auto& segment : segments) {
        path.segments.emplace_back();
        for (const auto& point : segment) {
            distance += path.segments.back().empty() ? 0.0 : 100.0;
            path.segments.back().push_back({point[0], point[1], distance, point[2], distance * 100.0});
        }
    }
    return path;
}

template <class ShapeOfKind>
std::vector<ShapeOfKind> ShapesOf(const vexagpx::Drawing& drawing) {
    std::vector<ShapeOfKind> found;
    for (const vexagpx::Shape& shape : drawing.shapes)
        if (const auto* one = std::get_if<ShapeOfKind>(&shape))
            found.push_back(*one);
    return found;
}

inline std::vector<std::string> TextsOf(const vexagpx::Drawing& drawing) {
    std::vector<std::string> texts;
    for (const vexagpx::Label& label : ShapesOf<vexagpx::Label>(drawing))
        texts.push_back(label.text);
    return texts;
}

} // namespace cli
