// SPDX-License-Identifier: MIT
#pragma once

#include "support/TestFiles.h"

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxUrl.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include <unicode/unistr.h>

#include <optional>
#include <string>

namespace vexaTransferLib::testing_support {

/// Represents an absent value in comparisons.
inline constexpr char kAbsent[] = "(absent)";

/// TextOf(point, &GpxPoint::GetName): the text as UTF-8, or kAbsent.
template <class Object>
std::string TextOf(const Object& object, bool (Object::*get)(icu::UnicodeString&) const) {
    icu::UnicodeString text;
    return (object.*get)(text) ? Utf8(text) : kAbsent;
}

/// NumberOf(point, &GpxPoint::GetElevation).
inline std::optional<double> NumberOf(const GpxPoint& point, bool (GpxPoint::*get)(double&) const) {
    double number = 0.0;
    return (point.*get)(number) ? std::optional<double>(number) : std::nullopt;
}

/// "address|text|type" of the link of a point or track, "-" for a missing text or type; or kAbsent.
std::string LinkText(const GpxUrl& link);
template <class Owner>
std::string LinkOf(const Owner& owner) {
    GpxUrl link(u"unset");
    return owner.GetURL(link) ? LinkText(link) : kAbsent;
}

/// "latitude longitude", as "%g" prints them.
std::string PositionOf(const GpxPoint& point);

GpxFix FixOf(const GpxPoint& point);                          ///< 0 when absent
TarvikRoutePointType RoutePointTypeOf(const GpxPoint& point); ///< 0 when absent
TarvikRouteType RouteTypeOf(const GpxRoute& route);           ///< 0 when absent
std::optional<GpxGroundspeakCache> GeocacheOf(const GpxPoint& waypoint);
std::string GuidOf(const GpxPoint& point);
std::string NameOf(const GpxDocument& document);

/// "2 waypoints, 1 routes, 0 tracks".
std::string CountsOf(const GpxDocument& document);

} // namespace vexaTransferLib::testing_support
