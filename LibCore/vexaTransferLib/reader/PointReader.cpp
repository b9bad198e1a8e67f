// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/PointReader.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/reader/ChangedValues.h>
#include <vexaTransferLib/reader/Children.h>
#include <vexaTransferLib/reader/CommonElements.h>
#include <vexaTransferLib/reader/ElementTable.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/GeocacheReader.h>
#include <vexaTransferLib/reader/UnreadAttributes.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/reader/VendorReader.h>
#include <vexaTransferLib/text/ElementNames.h>

namespace vexaTransferLib::reader {

namespace {

constexpr ChildMessages kMessages = {"Unable to read GPX point child elements.",
                                     "Unable to read a GPX point child node.", text::sites::kPointChildren,
                                     text::sites::kPointChild};

using PointElement = Element<GpxPoint>;

bool ReadGeocacheElement(const PointElement& element) {
    GpxGroundspeakCache cache;
    if (!ReadGeocache(element.context, element.node, cache))
        return false;
    element.owner.SetGroundspeakCache(cache);
    return true;
}

void ReadRoutePointExtensions(const PointElement& element) {
    TarvikRoutePointType type = kTarvikRoutePointStart;
    if (!ReadRoutePointType(element.context, element.node, type))
        return;
    element.owner.SetTarvikRoutePointType(type);
    element.sources.Set(tarvik::kRoutePointType, element.node);
}

void ReadWaypointExtensions(const PointElement& element) {
    GpxGroundspeakCache cache;
    NodeView source;
    if (ReadGeocacheFromExtensions(element.context, element.node, cache, &source)) {
        element.owner.SetGroundspeakCache(cache);
        element.sources.Set(groundspeak::kCache, source);
    }
    ReadWaypointData(element.context, element.sources, element.node, element.owner);
}

bool ReadExtensions(const PointElement& element) {
    if (element.owner.GetPointType() == kGpxRoutePoint)
        ReadRoutePointExtensions(element);
    else if (element.owner.GetPointType() == kGpxWaypoint)
        ReadWaypointExtensions(element);
    else
        element.context.reporter.SkipContent(element.node, kGpxUnknownElement,
                                             "The library does not keep the extensions of track points.");
    return true;
}

// A track point rarely has more than the first two elements.
constexpr ElementReader<GpxPoint> kStandardReaders[] = {
    {gpx::kEle, gpx::kEle, ReadDoubleInto<&GpxPoint::SetElevation, text::kHeightDecimals>},
    {gpx::kTime, gpx::kTime, ReadTimeInto<&GpxPoint::SetTime>},
    {gpx::kMagvar, gpx::kMagvar, ReadDoubleInto<&GpxPoint::SetMagneticVariation, text::kAngleDecimals>},
    {gpx::kGeoidheight, gpx::kGeoidheight, ReadDoubleInto<&GpxPoint::SetGeoidHeight, text::kHeightDecimals>},
    {gpx::kName, gpx::kName, ReadTextInto<&GpxPoint::SetName>},
    {gpx::kCmt, gpx::kDesc, ReadComment},
    {gpx::kDesc, gpx::kDesc, ReadDescription},
    {gpx::kSrc, gpx::kSrc, ReadTextInto<&GpxPoint::SetSource>},
    {gpx::kLink, gpx::kUrl, ReadLinkElement, Versions::kOnly11, Attributes::kOfReader},
    {gpx::kUrl, gpx::kUrl, ReadUrl, Versions::kOnly10},
    {gpx::kUrlname, gpx::kUrlname, ReadUrlName, Versions::kOnly10},
    {gpx::kSym, gpx::kSym, ReadTextInto<&GpxPoint::SetSymbol>},
    {gpx::kType, gpx::kType, ReadTextInto<&GpxPoint::SetType>},
    {gpx::kFix, gpx::kFix, ReadFixInto<&GpxPoint::SetFix>},
    {gpx::kExtensions, nullptr, ReadExtensions, Versions::kOnly11},
};
constexpr ElementTable<GpxPoint> kStandardElements = {Namespace::kGpx, kStandardReaders};

constexpr ElementReader<GpxPoint> kGroundspeakReaders[] = {
    {groundspeak::kCache, groundspeak::kCache, ReadGeocacheElement, Versions::kAll, Attributes::kOfReader},
};
constexpr ElementTable<GpxPoint> kGroundspeakElements = {Namespace::kGroundspeak, kGroundspeakReaders};

void ReadPointChild(const PointElement& element) {
    if (IsStandard(*element.version, element.node))
        ReadOwnElement(kStandardElements, element);
    else if (IsGroundspeak(element.node))
        ReadOwnElement(kGroundspeakElements, element);
    else
        SkipForeign(kStandardElements, element.context, element.version, element.node);
}

constexpr const char16_t* kAttributes[] = {gpx::kLat, gpx::kLon};

void ReportPosition(SkipReporter& reporter, const NodeView& node, const GpxPoint& point,
                    const Number& latitude, const Number& longitude) {
    ReportLostDigits(reporter, node, gpx::kLat, latitude, GpxModelAccess::GetLatitude(point),
                     text::kAngleDecimals);
    ReportLostDigits(reporter, node, gpx::kLon, longitude, GpxModelAccess::GetLongitude(point),
                     text::kAngleDecimals);
    ReportUnreadAttributes(reporter, node, kAttributes);
}

} // namespace

GpxPoint ReadPoint(ReadContext& context, const GpxVersion& version, GpxPointType type, const NodeView& node) {
    const auto number = static_cast<std::uint32_t>(type);
    text::Require(number >= kGpxWaypoint && number <= kGpxTrackPoint, text::sites::kPointType,
                  "Unable to read a GPX point due to an invalid GPX point type.");
    if (context.limiter != nullptr)
        context.limiter->AddPoint();
    Number latitude;
    Number longitude;
    text::Ensure(ReadDoubleAttribute(node, gpx::kLat, latitude), text::sites::kPointLatitude,
                 "Unable to read a GPX point's latitude.");
    text::Ensure(ReadDoubleAttribute(node, gpx::kLon, longitude), text::sites::kPointLongitude,
                 "Unable to read a GPX point's longitude.");
    GpxPoint point(type, latitude.value, longitude.value);
    ReportPosition(context.reporter, node, point, latitude, longitude);
    FieldSources sources(context.reporter, FieldSources::Lifetime::kLong);
    ForEachIsolatedChild(context, node, kMessages, [&](const NodeView& child) {
        ReadPointChild({context, &version, child, point, sources});
    });
    return point;
}

} // namespace vexaTransferLib::reader
