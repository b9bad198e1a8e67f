// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

// The names of the elements and attributes that the library reads and writes. A constant bears the name of its element.

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace vexaTransferLib::text {

/// The name of an element or an attribute, in both forms that the library needs: readers compare the local
/// name with that of the XML parser, writers append the qualified name. Both forms are conversions, so that a
/// constant can be used in place of its text.
class ElementName {
public:
    /// \param qualified ASCII, with a prefix where the writers write one: "ele", "tarvik:color"
    template <std::size_t size>
    constexpr explicit ElementName(const char (&qualified)[size]) : qualified_(qualified, size - 1) {
        const std::size_t colon = qualified_.find(':');
        const std::string_view local =
            colon == std::string_view::npos ? qualified_ : qualified_.substr(colon + 1);
        *std::copy(local.begin(), local.end(), local_.begin()) = u'\0';
    }
    // Not copyable, because pointers to the text of a copy become invalid when the copy is destroyed.
    ElementName(const ElementName&) = delete;
    ElementName& operator=(const ElementName&) = delete;

    /// The local name, zero-terminated: u"color".
    constexpr operator const char16_t*() const { return local_.data(); }
    /// The name as it is written: "tarvik:color".
    constexpr operator std::string_view() const { return qualified_; }
    /// The local name in ASCII: "color".
    constexpr std::string_view Local() const { return qualified_.substr(qualified_.find(':') + 1); }

private:
    // A constant that needs more room does not compile.
    std::array<char16_t, 20> local_{};
    std::string_view qualified_;
};

} // namespace vexaTransferLib::text

/// The elements of GPX and their attributes.
namespace vexaTransferLib::gpx {

inline constexpr text::ElementName kGpx("gpx");
inline constexpr text::ElementName kVersion("version");
inline constexpr text::ElementName kCreator("creator");
inline constexpr text::ElementName kMetadata("metadata");
inline constexpr text::ElementName kAuthor("author");
inline constexpr text::ElementName kEmail("email");
inline constexpr text::ElementName kId("id");
inline constexpr text::ElementName kDomain("domain");
inline constexpr text::ElementName kCopyright("copyright");
inline constexpr text::ElementName kYear("year");
inline constexpr text::ElementName kLicense("license");
inline constexpr text::ElementName kKeywords("keywords");
inline constexpr text::ElementName kBounds("bounds");
inline constexpr text::ElementName kMinlat("minlat");
inline constexpr text::ElementName kMinlon("minlon");
inline constexpr text::ElementName kMaxlat("maxlat");
inline constexpr text::ElementName kMaxlon("maxlon");
inline constexpr text::ElementName kExtensions("extensions");

inline constexpr text::ElementName kWpt("wpt");
inline constexpr text::ElementName kRte("rte");
inline constexpr text::ElementName kRtept("rtept");
inline constexpr text::ElementName kTrk("trk");
inline constexpr text::ElementName kTrkseg("trkseg");
inline constexpr text::ElementName kTrkpt("trkpt");

inline constexpr text::ElementName kLat("lat");
inline constexpr text::ElementName kLon("lon");
inline constexpr text::ElementName kEle("ele");
inline constexpr text::ElementName kTime("time");
inline constexpr text::ElementName kMagvar("magvar");
inline constexpr text::ElementName kGeoidheight("geoidheight");
inline constexpr text::ElementName kName("name");
inline constexpr text::ElementName kCmt("cmt");
inline constexpr text::ElementName kDesc("desc");
inline constexpr text::ElementName kSrc("src");
inline constexpr text::ElementName kSym("sym");
inline constexpr text::ElementName kType("type");
inline constexpr text::ElementName kFix("fix");
inline constexpr text::ElementName kSat("sat");
inline constexpr text::ElementName kHdop("hdop");
inline constexpr text::ElementName kVdop("vdop");
inline constexpr text::ElementName kPdop("pdop");
inline constexpr text::ElementName kAgeofdgpsdata("ageofdgpsdata");
inline constexpr text::ElementName kDgpsid("dgpsid");
inline constexpr text::ElementName kNumber("number");
// GPX 1.0 only.
inline constexpr text::ElementName kCourse("course");
inline constexpr text::ElementName kSpeed("speed");

inline constexpr text::ElementName kLink("link");
inline constexpr text::ElementName kHref("href");
inline constexpr text::ElementName kText("text");
inline constexpr text::ElementName kUrl("url");
inline constexpr text::ElementName kUrlname("urlname");

} // namespace vexaTransferLib::gpx

/// The elements of geocaches and their attributes.
namespace vexaTransferLib::groundspeak {

inline constexpr text::ElementName kCache("groundspeak:cache");
inline constexpr text::ElementName kAvailable("available");
inline constexpr text::ElementName kArchived("archived");
inline constexpr text::ElementName kMemberonly("memberonly");
inline constexpr text::ElementName kCustomcoords("customcoords");
inline constexpr text::ElementName kName("groundspeak:name");
inline constexpr text::ElementName kPlacedBy("groundspeak:placed_by");
inline constexpr text::ElementName kOwner("groundspeak:owner");
inline constexpr text::ElementName kType("groundspeak:type");
inline constexpr text::ElementName kContainer("groundspeak:container");
inline constexpr text::ElementName kAttributes("groundspeak:attributes");
inline constexpr text::ElementName kAttribute("groundspeak:attribute");
inline constexpr text::ElementName kInc("inc");
inline constexpr text::ElementName kDifficulty("groundspeak:difficulty");
inline constexpr text::ElementName kTerrain("groundspeak:terrain");
inline constexpr text::ElementName kCountry("groundspeak:country");
inline constexpr text::ElementName kState("groundspeak:state");
inline constexpr text::ElementName kShortDescription("groundspeak:short_description");
inline constexpr text::ElementName kLongDescription("groundspeak:long_description");
inline constexpr text::ElementName kHtml("html");
inline constexpr text::ElementName kEncodedHints("groundspeak:encoded_hints");
inline constexpr text::ElementName kPersonalNote("groundspeak:personal_note");
inline constexpr text::ElementName kFavoritePoints("groundspeak:favorite_points");
inline constexpr text::ElementName kLogs("groundspeak:logs");
inline constexpr text::ElementName kLog("groundspeak:log");
inline constexpr text::ElementName kId("id");
inline constexpr text::ElementName kDate("groundspeak:date");
inline constexpr text::ElementName kFinder("groundspeak:finder");
inline constexpr text::ElementName kText("groundspeak:text");
inline constexpr text::ElementName kEncoded("encoded");
inline constexpr text::ElementName kLogWpt("groundspeak:log_wpt");
inline constexpr text::ElementName kTravelbugs("groundspeak:travelbugs");
inline constexpr text::ElementName kTravelbug("groundspeak:travelbug");
inline constexpr text::ElementName kRef("ref");

} // namespace vexaTransferLib::groundspeak

/// The vendor's elements and their attributes.
namespace vexaTransferLib::tarvik {

inline constexpr text::ElementName kLayername("tarvik:layername");
inline constexpr text::ElementName kLayerkey("tarvik:layerkey");
inline constexpr text::ElementName kForm("tarvik:form");
inline constexpr text::ElementName kDefaultsymbol("tarvik:defaultsymbol");
inline constexpr text::ElementName kTrackGUID("tarvik:trackGUID");
inline constexpr text::ElementName kWaypointGUID("tarvik:waypointGUID");

inline constexpr text::ElementName kFilestats("tarvik:filestats");
inline constexpr text::ElementName kWptcount("tarvik:wptcount");
inline constexpr text::ElementName kTrkcount("tarvik:trkcount");
inline constexpr text::ElementName kTrksegcount("tarvik:trksegcount");
inline constexpr text::ElementName kTrktotalkm("tarvik:trktotalkm");
inline constexpr text::ElementName kGeocachecount("tarvik:geocachecount");
/// Another name of geocachecount, which is read and never written.
inline constexpr text::ElementName kGeocachesymbolcount("tarvik:geocachesymbolcount");

inline constexpr text::ElementName kFormdata("tarvik:formdata");
inline constexpr text::ElementName kFormstring("tarvik:formstring");
inline constexpr text::ElementName kKey("key");
inline constexpr text::ElementName kModtime("modtime");
inline constexpr text::ElementName kTovasymbol("tarvik:tovasymbol");
inline constexpr text::ElementName kObjectid("tarvik:objectid");

inline constexpr text::ElementName kColor("tarvik:color");
inline constexpr text::ElementName kRouteType("tarvik:routeType");
inline constexpr text::ElementName kRoutePointType("tarvik:routePointType");

} // namespace vexaTransferLib::tarvik
