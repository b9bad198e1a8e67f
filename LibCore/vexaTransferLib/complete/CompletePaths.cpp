// SPDX-License-Identifier: MIT
#include <vexaTransferLib/complete/CompleteReaders.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace vexaTransferLib::complete {

namespace {

struct PathReader {
    std::string_view name;
    icu::UnicodeString PathParts::*field;
};

constexpr PathReader kReaders[] = {
    {gpx::kName, &PathParts::name},
    {gpx::kDesc, &PathParts::description},
    {gpx::kSrc, &PathParts::source},
    {gpx::kType, &PathParts::type},
};

} // namespace

const char* ReadPathChild(CompleteContext& context, const ScannedChild& child, PathParts& parts) {
    for (const PathReader& reader : kReaders)
        if (child.name == reader.name)
            return context.ReadText(child, parts.*reader.field);
    return parts.link.Read(context, child);
}

namespace {

template <class Object>
void SetTexts(const PathParts& parts, Object& object) {
    if (!parts.name.isEmpty())
        object.SetName(parts.name);
    if (!parts.source.isEmpty())
        object.SetSource(parts.source);
    if (!parts.type.isEmpty())
        object.SetType(parts.type);
}

void ReportLateField(CompleteContext& context, const ScannedChild& child, bool isLate) {
    if (isLate && child.name != gpx::kExtensions)
        context.Tolerate(child, "It comes after the points.");
}

} // namespace

const char* ReadRouteVendorElement(CompleteContext& context, const ScannedChild& element, std::size_t& type) {
    if (!element.Is(NamespaceKind::kTarvik, tarvik::kRouteType.Local()))
        return nullptr;
    return context.ReadChoice(element, text::kRouteTypeTexts, type);
}

const char* ReadRouteExtensions(CompleteContext& context, const ScannedChild& extensions, std::size_t& type) {
    return context.ForEach(
        extensions, [&](const ScannedChild& child) { return ReadRouteVendorElement(context, child, type); });
}

namespace {

bool Accepts(std::size_t routeType, const GpxPoint& point) {
    const std::uint8_t pointType = GpxModelAccess::GetRawRoutePointType(point);
    return routeType == kTarvikRouteStandard ||
           (pointType != 0 && (routeType == kTarvikRouteDirections || pointType != kTarvikRoutePointTurn));
}

// A route of a type that does not allow its points is a plain route to the model.
GpxRoute MakeRoute(CompleteContext& context, const ScannedChild& element, std::size_t type,
                   const std::vector<GpxPoint>& points) {
    for (const GpxPoint& point : points) {
        if (Accepts(type, point))
            continue;
        context.Tolerate(element, "Its route type does not allow its points.");
        return GpxRoute(kTarvikRouteStandard);
    }
    return GpxRoute(static_cast<TarvikRouteType>(type));
}

void ReadColor(CompleteContext& context, const ScannedChild& child, GpxTrack& track) {
    std::optional<std::int32_t> color;
    context.ReadInteger(child, color);
    if (color && *color >= 0 && *color <= std::numeric_limits<std::int16_t>::max())
        GpxModelAccess::SetColor(track, static_cast<std::int16_t>(*color));
    else if (color)
        context.ReportUnread(child, "The model has no such colour.");
}

} // namespace

const char* ReadTrackVendorElement(CompleteContext& context, const ScannedChild& element, GpxTrack& track) {
    if (element.Is(NamespaceKind::kTarvik, tarvik::kColor.Local()))
        ReadColor(context, element, track);
    return nullptr;
}

const char* ReadTrackExtensions(CompleteContext& context, const ScannedChild& extensions, GpxTrack& track) {
    return context.ForEach(
        extensions, [&](const ScannedChild& child) { return ReadTrackVendorElement(context, child, track); });
}

namespace {

const char* ReadSegment(CompleteContext& context, const ScannedChild& element, GpxTrack& track) {
    context.Host().CountObject();
    track.AddSegment();
    GpxModelAccess::AddSegmentElement(track, context.ElementOf(element));
    GpxTrack::Segment& points = GpxModelAccess::GetLastSegment(track);
    context.Host().MakeRoom(points, context.ExpectedChildren(element));
    const char* const end = context.ForEach(element, [&](const ScannedChild& child) -> const char* {
        if (!child.IsGpx(gpx::kTrkpt)) {
            GpxModelAccess::AddSegmentField(track, context.ElementOf(child));
            return nullptr;
        }
        const char* const pointEnd = ReadPoint(context, child, kGpxTrackPoint, points);
        if (pointEnd == nullptr)
            GpxModelAccess::AddUnread(track, context.ElementOf(child));
        return pointEnd;
    });
    GpxModelAccess::ReadPointsOfLast(track) = points.size();
    return end;
}

} // namespace

const char* ReadRoute(CompleteContext& context, const ScannedChild& element, GpxDocument& document) {
    context.Host().CountObject();
    PathParts parts;
    std::size_t type = kTarvikRouteStandard;
    std::vector<GpxPoint> points;
    std::vector<GpxElement> fields;
    std::vector<GpxElement> unread;
    context.Host().MakeRoom(points, context.ExpectedChildren(element));
    const char* const end = context.ForEach(element, [&](const ScannedChild& child) -> const char* {
        if (child.IsGpx(gpx::kRtept)) {
            const char* const pointEnd = ReadPoint(context, child, kGpxRoutePoint, points);
            if (pointEnd == nullptr)
                unread.push_back(context.ElementOf(child));
            return pointEnd;
        }
        fields.push_back(context.ElementOf(child));
        if (child.kind != NamespaceKind::kGpx)
            return ReadRouteVendorElement(context, child, type);
        ReportLateField(context, child, !points.empty());
        return child.name == gpx::kExtensions ? ReadRouteExtensions(context, child, type)
                                              : ReadPathChild(context, child, parts);
    });
    GpxRoute route = MakeRoute(context, element, type, points);
    SetTexts(parts, route);
    GpxModelAccess::ReadPoints(route) = points.size();
    GpxModelAccess::ReadRouteType(route) = static_cast<std::uint32_t>(GpxModelAccess::GetRawRouteType(route));
    GpxModelAccess::GetPoints(route) = std::move(points);
    GpxModelAccess::SetElement(route, context.ElementOf(element));
    GpxModelAccess::SetFields(route, std::move(fields));
    GpxModelAccess::SetUnread(route, std::move(unread));
    document.AddRoute(std::move(route));
    return end;
}

const char* ReadTrack(CompleteContext& context, const ScannedChild& element, GpxDocument& document) {
    context.Host().CountObject();
    PathParts parts;
    GpxTrack track;
    const char* const end = context.ForEach(element, [&](const ScannedChild& child) -> const char* {
        if (child.IsGpx(gpx::kTrkseg))
            return ReadSegment(context, child, track);
        GpxModelAccess::AddField(track, context.ElementOf(child));
        if (child.kind != NamespaceKind::kGpx)
            return ReadTrackVendorElement(context, child, track);
        ReportLateField(context, child, track.GetSegmentCount() != 0);
        return child.name == gpx::kExtensions ? ReadTrackExtensions(context, child, track)
                                              : ReadPathChild(context, child, parts);
    });
    SetTexts(parts, track);
    if (!parts.description.isEmpty())
        track.SetDescription(parts.description);
    parts.link.GiveTo(track);
    GpxModelAccess::SetElement(track, context.ElementOf(element));
    GpxModelAccess::ReadSegments(track) = track.GetSegmentCount();
    document.AddTrack(std::move(track));
    return end;
}

} // namespace vexaTransferLib::complete
