// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/PointReader.h>

#include <vexaTransferLib/reader/CommonElements.h>
#include <vexaTransferLib/reader/FailureIsolation.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/GeocacheReader.h>
#include <vexaTransferLib/reader/ToldValues.h>
#include <vexaTransferLib/reader/VendorReader.h>
#include <vexaTransferLib/text/ElementNames.h>

namespace vexaTransferLib::reader {

namespace {

constexpr ChildMessages kMessages = {"Unable to read GPX point child elements.",
                                     "Unable to read a GPX point child node.", text::sites::kPointChildren,
                                     text::sites::kPointChild};

// What the reader of one child needs.
struct PointChild {
    ReadContext& context;
    const GpxVersion& version;
    const NodeView& node;
    GpxPoint& point;
    FieldSources& sources;
};

template <void (GpxPoint::*Set)(double)>
bool ReadNumberInto(const PointChild& child) {
    double value = 0.0;
    if (!ReadDouble(child.context, child.node, value))
        return false;
    (child.point.*Set)(value);
    return true;
}

template <void (GpxPoint::*Set)(const icu::UnicodeString&)>
bool ReadTextInto(const PointChild& child) {
    icu::UnicodeString text;
    if (!ReadText(child.context, child.node, text))
        return false;
    (child.point.*Set)(text);
    return true;
}

bool ReadPointTime(const PointChild& child) {
    double time = 0.0;
    if (!ReadTime(child.context, child.node, time))
        return false;
    child.point.SetTime(time);
    return true;
}

bool ReadPointFix(const PointChild& child) {
    GpxFix fix = kGpxFixNone;
    if (!ReadFix(child.context, child.node, fix))
        return false;
    child.point.SetFix(fix);
    return true;
}

void ReadGeocacheInto(const PointChild& child) {
    GpxGroundspeakCache cache;
    if (!ReadGeocache(child.context, child.node, cache))
        return;
    child.point.SetGroundspeakCache(cache);
    child.sources.Set(groundspeak::kCache, child.node);
}

void ReadRoutePointExtensions(const PointChild& child) {
    TarvikRoutePointType type = kTarvikRoutePointStart;
    if (!ReadRoutePointType(child.context, child.node, type))
        return;
    child.point.SetTarvikRoutePointType(type);
    child.sources.Set(tarvik::kRoutePointType, child.node);
}

void ReadWaypointExtensions(const PointChild& child) {
    GpxGroundspeakCache cache;
    if (ReadGeocacheFromExtensions(child.context, child.node, cache)) {
        child.point.SetGroundspeakCache(cache);
        child.sources.Set(groundspeak::kCache, child.node);
    }
    ReadWaypointData(child.context, child.sources, child.node, child.point);
}

// Keeps account of the fields itself: one element fills several.
bool ReadExtensions(const PointChild& child) {
    if (child.version.IsGpx10())
        child.context.reporter.SkipOtherVersion(child.node, child.version);
    else if (child.point.GetPointType() == kGpxRoutePoint)
        ReadRoutePointExtensions(child);
    else if (child.point.GetPointType() == kGpxWaypoint)
        ReadWaypointExtensions(child);
    else
        child.context.reporter.Skip(child.node, kGpxUnknownElement,
                                    "The library does not keep the extensions of track points.", false);
    return false;
}

struct PointElement {
    const char16_t* name;
    const char16_t* field;
    /// True when the field has the element's value.
    bool (*read)(const PointChild&);
};

// The most frequent first: a track point rarely has more than the first two.
constexpr PointElement kElements[] = {
    {gpx::kEle, gpx::kEle, ReadNumberInto<&GpxPoint::SetElevation>},
    {gpx::kTime, gpx::kTime, ReadPointTime},
    {gpx::kMagvar, gpx::kMagvar, ReadNumberInto<&GpxPoint::SetMagneticVariation>},
    {gpx::kGeoidheight, gpx::kGeoidheight, ReadNumberInto<&GpxPoint::SetGeoidHeight>},
    {gpx::kName, gpx::kName, ReadTextInto<&GpxPoint::SetName>},
    {gpx::kCmt, gpx::kDesc,
     [](const PointChild& c) { return ReadCommentAsDescription(c.context, c.node, c.point); }},
    {gpx::kDesc, gpx::kDesc,
     [](const PointChild& c) { return ReadDescription(c.context, c.sources, c.node, c.point); }},
    {gpx::kSrc, gpx::kSrc, ReadTextInto<&GpxPoint::SetSource>},
    {gpx::kLink, gpx::kUrl,
     [](const PointChild& c) { return ReadLinkElement(c.context, c.version, c.node, c.point); }},
    {gpx::kUrl, gpx::kUrl,
     [](const PointChild& c) { return ReadUrlElement(c.context, c.version, c.node, c.point); }},
    {gpx::kUrlname, gpx::kUrlname,
     [](const PointChild& c) { return ReadUrlNameElement(c.context, c.version, c.node, c.point); }},
    {gpx::kSym, gpx::kSym, ReadTextInto<&GpxPoint::SetSymbol>},
    {gpx::kType, gpx::kType, ReadTextInto<&GpxPoint::SetType>},
    {gpx::kFix, gpx::kFix, ReadPointFix},
    {gpx::kExtensions, gpx::kExtensions, ReadExtensions},
};

const PointElement* FindElement(const char16_t* name) {
    for (const PointElement& element : kElements)
        if (Equals(name, element.name))
            return &element;
    return nullptr;
}

void ReadStandardChild(const PointChild& child) {
    const PointElement* const element = FindElement(child.node.LocalName());
    if (element == nullptr)
        child.context.reporter.SkipUnknown(child.node);
    else if (element->read(child))
        child.sources.Set(element->field, child.node);
}

void ReadPointChild(const PointChild& child) {
    const char16_t* const name = child.node.LocalName();
    if (IsStandard(child.version, child.node))
        ReadStandardChild(child);
    else if (!IsGroundspeak(child.node))
        SkipForeignToGpx(child.context.reporter, child.version, child.node, FindElement(name) != nullptr);
    else if (Equals(name, groundspeak::kCache))
        ReadGeocacheInto(child);
    else
        child.context.reporter.SkipUnknown(child.node);
}

} // namespace

GpxPoint ReadPoint(ReadContext& context, const GpxVersion& version, GpxPointType type, const NodeView& node) {
    const auto number = static_cast<std::uint32_t>(type);
    text::Require(number >= kGpxWaypoint && number <= kGpxTrackPoint, text::sites::kPointType,
                  "Unable to read a GPX point due to an invalid GPX point type.");
    if (context.limiter != nullptr)
        context.limiter->AddPoint();
    double latitude = 0.0;
    double longitude = 0.0;
    text::Ensure(ReadDoubleAttribute(node, gpx::kLat, latitude), text::sites::kPointLatitude,
                 "Unable to read a GPX point's latitude.");
    text::Ensure(ReadDoubleAttribute(node, gpx::kLon, longitude), text::sites::kPointLongitude,
                 "Unable to read a GPX point's longitude.");
    GpxPoint point(type, latitude, longitude);
    FieldSources sources(context.reporter, FieldSources::Lifetime::kLong);
    ForEachIsolatedChild(context, node, kMessages, [&](const NodeView& child) {
        ReadPointChild({context, version, child, point, sources});
    });
    return point;
}

} // namespace vexaTransferLib::reader
