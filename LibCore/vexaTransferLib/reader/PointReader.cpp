// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/PointReader.h>

#include <vexaTransferLib/reader/ChildGuard.h>
#include <vexaTransferLib/reader/CommonElements.h>
#include <vexaTransferLib/reader/GeocacheReader.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/reader/VendorReader.h>

#include <utility>

namespace vexaTransferLib::reader {

namespace {

constexpr ChildMessages kMessages = {"Unable to read GPX point child elements.",
                                     "Unable to read a GPX point child node."};

// What the reader of one child needs.
struct PointChild {
    ReadContext& context;
    const GpxVersion& version;
    const NodeView& node;
    GpxPoint& point;
};

template <void (GpxPoint::*Set)(double)>
void ReadNumberInto(const PointChild& child) {
    double value = 0.0;
    if (ReadDouble(child.node, value))
        (child.point.*Set)(value);
}

template <void (GpxPoint::*Set)(const icu::UnicodeString&)>
void ReadTextInto(const PointChild& child) {
    icu::UnicodeString text;
    if (ReadText(child.node, text))
        (child.point.*Set)(text);
}

void ReadPointTime(const PointChild& child) {
    double time = 0.0;
    if (ReadTime(child.node, time))
        child.point.SetTime(time);
}

void ReadPointFix(const PointChild& child) {
    GpxFix fix = kGpxFixNone;
    if (ReadFix(child.node, fix))
        child.point.SetFix(fix);
}

void ReadGeocacheInto(const PointChild& child) {
    GpxGroundspeakCache cache;
    if (ReadGeocache(child.context, child.node, cache))
        child.point.SetGroundspeakCache(cache);
}

void ReadRoutePointExtensions(const PointChild& child) {
    TarvikRoutePointType type = kTarvikRoutePointStart;
    if (ReadRoutePointType(child.node, type))
        child.point.SetTarvikRoutePointType(type);
}

void ReadWaypointExtensions(const PointChild& child) {
    GpxGroundspeakCache cache;
    if (ReadGeocacheFromExtensions(child.context, child.node, cache))
        child.point.SetGroundspeakCache(cache);
    ReadWaypointData(child.context, child.node, child.point);
}

void ReadExtensions(const PointChild& child) {
    if (child.version.IsGpx10())
        return;
    if (child.point.GetPointType() == kGpxRoutePoint)
        ReadRoutePointExtensions(child);
    else if (child.point.GetPointType() == kGpxWaypoint)
        ReadWaypointExtensions(child);
}

struct PointElement {
    const char16_t* name;
    void (*read)(const PointChild&);
};

// The most frequent first: a track point rarely has more than the first two.
constexpr PointElement kElements[] = {
    {u"ele", ReadNumberInto<&GpxPoint::SetElevation>},
    {u"time", ReadPointTime},
    {u"magvar", ReadNumberInto<&GpxPoint::SetMagneticVariation>},
    {u"geoidheight", ReadNumberInto<&GpxPoint::SetGeoidHeight>},
    {u"name", ReadTextInto<&GpxPoint::SetName>},
    {u"cmt", [](const PointChild& child) { ReadCommentAsDescription(child.node, child.point); }},
    {u"desc", [](const PointChild& child) { ReadDescription(child.node, child.point); }},
    {u"src", ReadTextInto<&GpxPoint::SetSource>},
    {u"link", [](const PointChild& child) { ReadLinkElement(child.version, child.node, child.point); }},
    {u"url", [](const PointChild& child) { ReadUrlElement(child.version, child.node, child.point); }},
    {u"urlname", [](const PointChild& child) { ReadUrlNameElement(child.version, child.node, child.point); }},
    {u"sym", ReadTextInto<&GpxPoint::SetSymbol>},
    {u"type", ReadTextInto<&GpxPoint::SetType>},
    {u"fix", ReadPointFix},
    {u"extensions", ReadExtensions},
};

void ReadPointChild(const PointChild& child) {
    const char16_t* const name = child.node.LocalName();
    if (IsStandard(child.version, child.node)) {
        for (const PointElement& element : kElements) {
            if (Equals(name, element.name)) {
                element.read(child);
                return;
            }
        }
    } else if (IsGroundspeak(child.node) && Equals(name, u"cache")) {
        ReadGeocacheInto(child);
    }
}

} // namespace

void ReadPoint(ReadContext& context, const GpxVersion& version, GpxPointType type, const NodeView& node,
               GpxPoint& point) {
    const auto number = static_cast<std::uint32_t>(type);
    dbc::Require(number >= kGpxWaypoint && number <= kGpxTrackPoint, text::kGpxParserSource,
                 "Unable to read a GPX point due to an invalid GPX point type.");
    double latitude = 0.0;
    double longitude = 0.0;
    dbc::Ensure(ReadDoubleAttribute(node, u"lat", latitude), text::kGpxParserSource,
                "Unable to read a GPX point's latitude.");
    dbc::Ensure(ReadDoubleAttribute(node, u"lon", longitude), text::kGpxParserSource,
                "Unable to read a GPX point's longitude.");
    GpxPoint read(type, latitude, longitude);
    ForEachGuardedChild(node, kMessages, [&](const NodeView& child) {
        ReadPointChild({context, version, child, read});
    });
    point = std::move(read);
}

} // namespace vexaTransferLib::reader
