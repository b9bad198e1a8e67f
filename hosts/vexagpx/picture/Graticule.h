// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/Drawing.h>
#include <vexagpx/picture/MapFrame.h>

#include <string>
#include <vector>

namespace vexagpx {

/// A meridian or a parallel of a map.
struct GraticuleLine {
    std::vector<std::vector<Spot>> parts; ///< may leave the map
    std::string name;                     ///< "48.85° N"; empty for the edge of the world
    bool isMeridian = false;
};

/// Lines at round numbers of degrees, some four in each direction.
std::vector<GraticuleLine> MakeGraticule(const MapFrame& frame);

/// Where a name for the line can be: where it meets the left edge (a parallel) or the lower edge (a meridian), or else
/// anywhere inside the box.
/// \returns false when the line is nowhere in the box
bool FindNamePlace(const GraticuleLine& line, const Box& box, Spot& place);

/// The smallest round number of degrees that divides `span` into at most `most` parts.
double RoundDegrees(double span, int most);

/// "12.5° W"; 0 and 180 have no letter.
/// \param step what the graticule's numbers are multiples of
std::string DegreesName(double degrees, double step, char positive, char negative);

} // namespace vexagpx
