// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Distance.h>

#include <vexaTrackLib/PathLength.h>

namespace vexaTrackLib {

double Distance(double latitude1, double longitude1, double latitude2, double longitude2) {
    PathLength path;
    path.Add(latitude1, longitude1);
    return path.Add(latitude2, longitude2);
}

} // namespace vexaTrackLib
