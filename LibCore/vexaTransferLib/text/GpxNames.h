// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

// The fixed texts other than names of elements that readers and writers share. Readers compare namespaces as UTF-16,
// which the XML parser gives them; writers append ASCII.

#include <vexaTransferLib/text/ElementNames.h>

#include <array>
#include <string_view>

namespace vexaTransferLib::text {

inline constexpr char16_t kGpx10Namespace[] = u"http://www.topografix.com/GPX/1/0";
inline constexpr char16_t kGpx11Namespace[] = u"http://www.topografix.com/GPX/1/1";
inline constexpr char16_t kGroundspeak10Namespace[] = u"http://www.groundspeak.com/cache/1/0";
inline constexpr char16_t kGroundspeak101Namespace[] = u"http://www.groundspeak.com/cache/1/0/1";
/// What all versions of the geocache namespace have in common.
inline constexpr char16_t kGroundspeakNamespaceStart[] = u"http://www.groundspeak.com/cache/";
inline constexpr char16_t kTarvikNamespace[] = u"https://tarvik.example/xmlschemas/gpx-extensions/1/0";

inline constexpr std::string_view kGpx11Uri = "http://www.topografix.com/GPX/1/1";
inline constexpr std::string_view kGpx11SchemaLocation = "http://www.topografix.com/GPX/1/1/gpx.xsd";
inline constexpr std::string_view kXsiUri = "http://www.w3.org/2001/XMLSchema-instance";
inline constexpr std::string_view kGroundspeak10Uri = "http://www.groundspeak.com/cache/1/0";
inline constexpr std::string_view kGroundspeak10SchemaLocation =
    "http://www.groundspeak.com/cache/1/0/cache.xsd";
inline constexpr std::string_view kTarvikUri = "https://tarvik.example/xmlschemas/gpx-extensions/1/0";
inline constexpr std::string_view kTarvikSchemaLocation =
    "https://tarvik.example/xmlschemas/gpx-extensions/1/0/tarvik-extensions.xsd";

inline constexpr char16_t kVendorHomePage[] = u"https://tarvik.example/";

// Texts of enumerations, by value; an empty text means that the value has none.
inline constexpr std::array<std::string_view, 4> kPointElementNames = {"", gpx::kWpt, gpx::kRtept,
                                                                       gpx::kTrkpt};
inline constexpr std::array<std::string_view, 6> kFixTexts = {"", "none", "2d", "3d", "dgps", "pps"};
inline constexpr std::array<std::string_view, 3> kRouteTypeTexts = {"", "points", "directions"};
inline constexpr std::array<std::string_view, 6> kRoutePointTypeTexts = {"",    "start",  "stop",
                                                                         "via", "finish", "turn"};

} // namespace vexaTransferLib::text
