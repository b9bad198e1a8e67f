// SPDX-License-Identifier: MIT
#include <vexagpx/picture/Graticule.h>

#include <vexagpx/output/ValueText.h>

#include <vexaTrackLib/Bounds.h>

#include <algorithm>
#include <cmath>

namespace vexagpx {

namespace {

/// The latitudes and longitudes of a map.
struct Extent {
    double south = -90.0;
    double north = 90.0;
    double west = -180.0; ///< may be below -180
    double east = 180.0;
};

bool ShowsPole(const MapFrame& frame, double latitude) {
    return frame.Room().Contains(frame.SpotOf(latitude, 0.0));
}

Extent ExtentOf(const MapFrame& frame) {
    constexpr int kSamples = 40;
    Extent extent;
    if (frame.Projection().IsOfWorld())
        return extent;
    const Box& box = frame.Room();
    vexaTrackLib::Bounds bounds;
    for (int row = 0; row <= kSamples; ++row)
        for (int column = 0; column <= kSamples; ++column) {
            double latitude = 0.0;
            double longitude = 0.0;
            frame.PlaceOf(
                {box.left + box.Width() * column / kSamples, box.top + box.Height() * row / kSamples},
                latitude, longitude);
            bounds.Add(latitude, longitude);
        }
    const bool north = ShowsPole(frame, 90.0);
    const bool south = ShowsPole(frame, -90.0);
    extent.south = south ? -90.0 : bounds.South();
    extent.north = north ? 90.0 : bounds.North();
    if (north || south)
        return extent;
    extent.west = bounds.West() - (bounds.West() > bounds.East() ? 360.0 : 0.0);
    extent.east = bounds.East();
    return extent;
}

constexpr int kPieces = 96;
// Half around the earth, on this side of the map's edge.
constexpr double kEdge = 179.9999;

double MiddleLongitude(const MapFrame& frame) {
    double latitude = 0.0;
    double longitude = 0.0;
    frame.Projection().Reverse({0.0, 0.0}, latitude, longitude);
    return longitude;
}

GraticuleLine Parallel(const MapFrame& frame, const Extent& extent, double latitude) {
    GraticuleLine line;
    line.parts.resize(1);
    for (int i = 0; i <= kPieces; ++i) {
        const double part = static_cast<double>(i) / kPieces;
        if (frame.Projection().IsOfWorld()) {
            line.parts[0].push_back(
                frame.SpotOf(latitude, MiddleLongitude(frame) - kEdge + 2.0 * kEdge * part));
        } else {
            line.parts[0].push_back(frame.SpotOf(latitude, extent.west + (extent.east - extent.west) * part));
        }
    }
    return line;
}

GraticuleLine Meridian(const MapFrame& frame, const Extent& extent, double longitude) {
    GraticuleLine line;
    line.isMeridian = true;
    line.parts.resize(1);
    for (int i = 0; i <= kPieces; ++i)
        line.parts[0].push_back(
            frame.SpotOf(extent.south + (extent.north - extent.south) * i / kPieces, longitude));
    return line;
}

/// Where the piece meets the edge.
bool MeetsEdge(Spot from, Spot to, bool isMeridian, const Box& box, Spot& place) {
    const double edge = isMeridian ? box.bottom : box.left;
    const double a = (isMeridian ? from.y : from.x) - edge;
    const double b = (isMeridian ? to.y : to.x) - edge;
    if ((a < 0.0) == (b < 0.0))
        return false;
    const double part = a / (a - b);
    place = {from.x + part * (to.x - from.x), from.y + part * (to.y - from.y)};
    (isMeridian ? place.y : place.x) = edge;
    return box.Contains(place);
}

} // namespace

double RoundDegrees(double span, int most) {
    for (const double degrees :
         {1e-6, 2e-6, 5e-6, 1e-5, 2e-5, 5e-5, 1e-4, 2e-4, 5e-4, 1e-3, 2e-3, 5e-3, 0.01,
          0.02, 0.05, 0.1,  0.2,  0.5,  1.0,  2.0,  5.0,  10.0, 15.0, 30.0, 45.0, 60.0})
        if (span / degrees <= most)
            return degrees;
    return 90.0;
}

std::string DegreesName(double degrees, double step, char positive, char negative) {
    // The number of steps is exact, and few digits leave no trace of the product's rounding.
    const double digits = step < 1.0 ? std::pow(10.0, std::ceil(-std::log10(step) - 1e-9)) : 1.0;
    const double rounded = std::round(std::abs(degrees) * digits) / digits;
    std::string name = std::string(NumberDigits(rounded).Text()) + "\u00b0";
    if (rounded != 0.0 && rounded != 180.0)
        name += std::string(" ") + (degrees > 0.0 ? positive : negative);
    return name;
}

std::vector<GraticuleLine> MakeGraticule(const MapFrame& frame) {
    const Extent extent = ExtentOf(frame);
    std::vector<GraticuleLine> lines;
    const int columns = std::clamp(static_cast<int>(frame.Room().Width() / 130.0), 2, 12);
    const int rows = std::clamp(static_cast<int>(frame.Room().Height() / 90.0), 2, 10);
    const bool isWorld = frame.Projection().IsOfWorld();
    const double parallels = isWorld ? 30.0 : RoundDegrees(extent.north - extent.south, rows);
    for (double k = std::ceil(extent.south / parallels); k * parallels <= extent.north; ++k) {
        if (std::abs(k * parallels) > 89.9999)
            continue;
        lines.push_back(Parallel(frame, extent, k * parallels));
        lines.back().name = DegreesName(k * parallels, parallels, 'N', 'S');
    }
    const double meridians = isWorld ? 30.0 : RoundDegrees(extent.east - extent.west, columns);
    for (double k = std::ceil(extent.west / meridians); k * meridians <= extent.east; ++k) {
        if (k * meridians <= -180.0 && extent.east >= 180.0)
            continue;
        lines.push_back(Meridian(frame, extent, k * meridians));
        lines.back().name = DegreesName(std::remainder(k * meridians, 360.0), meridians, 'E', 'W');
    }
    if (isWorld) {
        for (const double edge : {-kEdge, kEdge})
            lines.push_back(Meridian(frame, extent, MiddleLongitude(frame) + edge));
        for (const double pole : {-90.0, 90.0})
            lines.push_back(Parallel(frame, extent, pole));
    }
    return lines;
}

bool FindNamePlace(const GraticuleLine& line, const Box& box, Spot& place) {
    for (const std::vector<Spot>& part : line.parts)
        for (std::size_t i = 1; i < part.size(); ++i)
            if (MeetsEdge(part[i - 1], part[i], line.isMeridian, box, place))
                return true;
    for (const std::vector<Spot>& part : line.parts)
        for (const Spot& spot : part)
            if (box.Contains(spot)) {
                place = spot;
                return true;
            }
    return false;
}

} // namespace vexagpx
