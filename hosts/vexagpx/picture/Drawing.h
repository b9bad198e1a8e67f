// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace vexagpx {

/// A place in the picture, in its units: `x` from the left, `y` from the top.
struct Spot {
    double x = 0.0;
    double y = 0.0;
};

struct Box {
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;

    double Width() const { return right - left; }
    double Height() const { return bottom - top; }
    bool Contains(Spot spot) const {
        return spot.x >= left && spot.x <= right && spot.y >= top && spot.y <= bottom;
    }
};

/// Parts from 0 to 1.
struct Colour {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;

    bool operator==(const Colour&) const = default;
};

struct Line {
    std::vector<Spot> spots;
    Colour colour;
    double width = 1.0;
    bool isDashed = false;
};

/// A filled polygon. Its edge has a width of 0 for none.
struct Area {
    std::vector<Spot> spots;
    Colour colour;
    Colour edge = {};
    double edgeWidth = 0.0;
};

struct Disc {
    Spot centre;
    double radius = 0.0;
    Colour colour;
    Colour edge;
    double edgeWidth = 0.0;
};

enum class Align { kStart, kMiddle, kEnd };

/// A text on one line, in UTF-8. Nothing in it is markup.
struct Label {
    Spot at; ///< the height is that of the text's middle
    std::string text;
    double size = 11.0; ///< of the font
    Align align = Align::kStart;
    Colour colour = {};
    bool isBold = false;
    bool hasHalo = false; ///< a light edge, for what is drawn over other things
    double widest = 1e6;  ///< a longer text ends with an ellipsis
};

/// Until the next one, nothing outside the box is drawn.
struct Clip {
    Box box;
};

using Shape = std::variant<Line, Area, Disc, Label, Clip>;

/// What a picture shows, in the order in which it is painted.
struct Drawing {
    double width = 0.0;
    double height = 0.0;
    std::string title;
    std::string description;
    std::vector<Shape> shapes;
};

/// The width of a text.
using MeasureText = std::function<double(const std::string& text, double size, bool isBold)>;

} // namespace vexagpx
