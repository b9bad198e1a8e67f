// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The distance of two places on the earth.

#include <common/Export.h>

namespace vexaTrackLib {

/// The length in metres of the shortest way between two places on the ellipsoid WGS 84, a geodesic. Heights do not
/// count. The error is below 0.01 mm.
///
/// Takes well below a microsecond for places up to 50 km apart, and about a microsecond for others. For one place after
/// another, PathLength is twice as fast. May run on several threads at once.
///
/// \param latitude1, latitude2 in degrees, -90 to 90
/// \param longitude1, longitude2 in degrees, any finite number: 190 is -170
/// \returns NaN for a latitude outside its range, and for numbers that are not finite
VEXATRANSFERLIB_API double Distance(double latitude1, double longitude1, double latitude2, double longitude2);

} // namespace vexaTrackLib
