// SPDX-License-Identifier: MIT
#include <vexagpx/export/Position.h>

#include <vexaTransferLib/GpxPointDetails.h>

#include <cmath>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

// What a point has for a longitude of 180.
constexpr double kStoredFor180 = 179.9999998807907;

// The first and the last millisecond of the years 0 to 9999.
constexpr double kFirstTime = -62167219200000.0;
constexpr double kLastTime = 253402300799999.0;

double LongitudeOf(const GpxPoint& point, double stored) {
    if (stored != kStoredFor180)
        return stored;
    const std::optional<double> written = GpxPointDetails(point.GetElement()).GetLongitude();
    return written == 180.0 ? 180.0 : stored;
}

std::optional<double> Between(const std::optional<double>& from, const std::optional<double>& to,
                              double part) {
    if (!from || !to)
        return std::nullopt;
    return std::lerp(*from, *to, part);
}

} // namespace

bool IsWritableTime(double millis) {
    return millis >= kFirstTime && millis <= kLastTime;
}

Position PositionOf(const GpxPoint& point) {
    Position position;
    point.GetPoint(position.latitude, position.longitude);
    position.longitude = LongitudeOf(point, position.longitude);
    double value = 0.0;
    if (point.GetElevation(value) && std::isfinite(value))
        position.height = value;
    if (point.GetTime(value) && IsWritableTime(value))
        position.time = value;
    return position;
}

Position CrossingOf180(const Position& from, const Position& to) {
    const double border = from.longitude > 0.0 ? 180.0 : -180.0;
    const double distance = to.longitude + 2.0 * border - from.longitude;
    const double part = distance == 0.0 ? 0.0 : (border - from.longitude) / distance;
    Position crossing;
    crossing.longitude = border;
    crossing.latitude = std::lerp(from.latitude, to.latitude, part);
    crossing.height = Between(from.height, to.height, part);
    crossing.time = Between(from.time, to.time, part);
    return crossing;
}

} // namespace vexagpx
