// SPDX-License-Identifier: MIT
#include "support/GpxValues.h"

#include <cstdio>

namespace vexaTransferLib::testing_support {

namespace {

std::string OrDash(const GpxUrl& link, bool (GpxUrl::*get)(icu::UnicodeString&) const) {
    const std::string text = TextOf(link, get);
    return text == kAbsent ? "-" : text;
}

} // namespace

std::string LinkText(const GpxUrl& link) {
    return Utf8(link.GetUrl()) + "|" + OrDash(link, &GpxUrl::GetUrlText) + "|" +
           OrDash(link, &GpxUrl::GetUrlType);
}

std::string PositionOf(const GpxPoint& point) {
    double latitude = 0.0;
    double longitude = 0.0;
    point.GetPoint(latitude, longitude);
    char text[64];
    std::snprintf(text, sizeof text, "%g %g", latitude, longitude);
    return text;
}

GpxFix FixOf(const GpxPoint& point) {
    GpxFix fix{};
    point.GetFix(fix);
    return fix;
}

TarvikRoutePointType RoutePointTypeOf(const GpxPoint& point) {
    TarvikRoutePointType type{};
    point.GetTarvikRoutePointType(type);
    return type;
}

TarvikRouteType RouteTypeOf(const GpxRoute& route) {
    TarvikRouteType type = kTarvikRouteStandard;
    route.GetTarvikRouteType(type);
    return type;
}

std::optional<GpxGroundspeakCache> GeocacheOf(const GpxPoint& waypoint) {
    GpxGroundspeakCache cache;
    return waypoint.GetGroundspeakCache(cache) ? std::optional<GpxGroundspeakCache>(cache) : std::nullopt;
}

std::string GuidOf(const GpxPoint& point) {
    return Utf8(GpxModelAccess::GetGUID(point));
}
std::string NameOf(const GpxDocument& document) {
    return Utf8(GpxModelAccess::GetName(document));
}

std::string CountsOf(const GpxDocument& document) {
    return std::to_string(document.GetWaypointCount()) + " waypoints, " +
           std::to_string(document.GetRouteCount()) + " routes, " + std::to_string(document.GetTrackCount()) +
           " tracks";
}

} // namespace vexaTransferLib::testing_support
