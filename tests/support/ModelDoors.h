// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxGroundspeakCache.h>
#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include <cstdint>

namespace vexaTransferLib {

/// Makes objects with values that no constructor and no setter accepts. The checks of writers and getters are
/// tested with them.
class GpxModelAccess::Doors {
public:
    static GpxVersion MakeVersion(std::uint32_t major, std::uint32_t minor) {
        GpxVersion version = GpxVersion::GetLatestVersion();
        version.major_ = major;
        version.minor_ = minor;
        return version;
    }

    /// \{
    /// Numbers outside the enumerations.
    static void SetPointType(GpxPoint& point, std::uint8_t type) { point.pointType_ = type & 0xFU; }
    static void SetFix(GpxPoint& point, std::uint8_t fix) { point.fix_ = fix; }
    static void SetRoutePointType(GpxPoint& point, std::uint8_t type) { point.routePointType_ = type; }
    static void SetRouteType(GpxRoute& route, std::uint32_t type) {
        route.routeType_ = static_cast<TarvikRouteType>(type);
    }
    /// \}
    /// A position outside the range.
    static void SetPosition(GpxPoint& point, double latitude, double longitude) {
        point.latitude_ = latitude;
        point.longitude_ = longitude;
    }
    /// A geocache on any kind of point.
    static void SetGeocache(GpxPoint& point, const GpxGroundspeakCache& cache) {
        SetAutoPtrValue(MakeRare(point).geocache, cache);
    }
};

namespace testing_support {
using ModelDoors = GpxModelAccess::Doors;
}

} // namespace vexaTransferLib
