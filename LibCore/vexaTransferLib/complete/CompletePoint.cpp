// SPDX-License-Identifier: MIT
#include <vexaTransferLib/complete/CompleteReaders.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/model/SourceValues.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/NumberText.h>
#include <vexaTransferLib/text/ValueText.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vexaTransferLib::complete {

namespace {

using RareData = GpxModelAccess::RareData;

/// A point while its children are read.
struct PointParts {
    CompleteContext& context;
    GpxPoint& point;
    LinkParts link;
};

using ReadPart = const char* (*)(PointParts&, const ScannedChild&);

struct PartReader {
    std::string_view name;
    ReadPart read;
};

template <icu::UnicodeString RareData::*field>
const char* ReadTextPart(PointParts& parts, const ScannedChild& child) {
    const RareData* const rare = GpxModelAccess::GetRareData(parts.point);
    icu::UnicodeString text = rare != nullptr ? rare->*field : icu::UnicodeString();
    const bool isFirst = text.isEmpty();
    const char* const end = parts.context.ReadText(child, text);
    if (isFirst && !text.isEmpty())
        GpxModelAccess::GetOrMakeRareData(parts.point).*field = std::move(text);
    return end;
}

const char* ReadElevation(PointParts& parts, const ScannedChild& child) {
    const double* const before = GpxModelAccess::GetElevation(parts.point);
    std::optional<double> value = before != nullptr ? std::optional(*before) : std::nullopt;
    const char* const end = parts.context.ReadNumber(child, value);
    if (value)
        parts.point.SetElevation(*value);
    return end;
}

const char* ReadTime(PointParts& parts, const ScannedChild& child) {
    const double* const before = GpxModelAccess::GetTime(parts.point);
    std::optional<double> value = before != nullptr ? std::optional(*before) : std::nullopt;
    const char* const end = parts.context.ReadTime(child, value);
    if (value)
        parts.point.SetTime(*value);
    return end;
}

template <std::optional<double> RareData::*field>
std::optional<double> RareNumber(const GpxPoint& point) {
    const RareData* const rare = GpxModelAccess::GetRareData(point);
    return rare != nullptr ? rare->*field : std::nullopt;
}

const char* ReadVariation(PointParts& parts, const ScannedChild& child) {
    std::optional<double> value = RareNumber<&RareData::magneticVariation>(parts.point);
    const char* const end = parts.context.ReadNumber(child, value);
    if (value && *value >= 0.0 && *value < 360.0)
        parts.point.SetMagneticVariation(*value);
    else if (value)
        parts.context.ReportUnread(child, "It is not at least 0 and less than 360.");
    return end;
}

const char* ReadGeoidHeight(PointParts& parts, const ScannedChild& child) {
    std::optional<double> value = RareNumber<&RareData::geoidHeight>(parts.point);
    const char* const end = parts.context.ReadNumber(child, value);
    if (value)
        parts.point.SetGeoidHeight(*value);
    return end;
}

const char* ReadFix(PointParts& parts, const ScannedChild& child) {
    std::size_t index = GpxModelAccess::GetRawFix(parts.point);
    const char* const end = parts.context.ReadChoice(child, text::kFixTexts, index);
    if (index != 0)
        parts.point.SetFix(static_cast<GpxFix>(index));
    return end;
}

const char* ReadExtensions(PointParts& parts, const ScannedChild& child) {
    return ReadPointExtensions(parts.context, child, parts.point);
}

// A track point rarely has more than the first two.
constexpr PartReader kReaders[] = {
    {gpx::kEle, ReadElevation},
    {gpx::kTime, ReadTime},
    {gpx::kExtensions, ReadExtensions},
    {gpx::kName, ReadTextPart<&RareData::name>},
    {gpx::kCmt, ReadTextPart<&RareData::comment>},
    {gpx::kDesc, ReadTextPart<&RareData::description>},
    {gpx::kSrc, ReadTextPart<&RareData::source>},
    {gpx::kSym, ReadTextPart<&RareData::symbol>},
    {gpx::kType, ReadTextPart<&RareData::type>},
    {gpx::kMagvar, ReadVariation},
    {gpx::kGeoidheight, ReadGeoidHeight},
    {gpx::kFix, ReadFix},
};

const char* ReadGeocachePart(PointParts& parts, const ScannedChild& child) {
    const RareData* const rare = GpxModelAccess::GetRareData(parts.point);
    if (rare != nullptr && rare->geocache != nullptr) {
        parts.context.ReportSecond(child);
        return nullptr;
    }
    auto cache = std::make_unique<GpxGroundspeakCache>();
    const char* const end = ReadGeocache(parts.context, child, *cache);
    GpxModelAccess::GetOrMakeRareData(parts.point).geocache = std::move(cache);
    return end;
}

const char* ReadChild(PointParts& parts, const ScannedChild& child) {
    if (child.kind == NamespaceKind::kGroundspeak && child.name == groundspeak::kCache.Local() &&
        parts.point.GetPointType() == kGpxWaypoint)
        return ReadGeocachePart(parts, child);
    if (child.kind == NamespaceKind::kTarvik)
        return ReadVendorElement(parts.context, child, parts.point);
    if (child.kind != NamespaceKind::kGpx)
        return nullptr;
    for (const PartReader& reader : kReaders)
        if (child.name == reader.name)
            return reader.read(parts, child);
    return parts.link.Read(parts.context, child);
}

std::optional<double> CoordinateIn(std::string_view raw, Position& position) {
    double number = 0.0;
    if (text::ReadShortDecimal(raw, number))
        return number;
    std::string decoded;
    if (raw.find('&') != std::string_view::npos) {
        DecodedValue(raw).toUTF8String(decoded);
        const std::size_t size = decoded.size();
        decoded.append(SourceText::kPadding, '\0');
        raw = std::string_view(decoded).substr(0, size);
    }
    const std::string_view trimmed = text::Trimmed(raw);
    position.hasBlanks = position.hasBlanks || trimmed.size() != raw.size();
    return NumberIn(trimmed);
}

} // namespace

Position PositionOf(const ScannedTag& tag) {
    Position position;
    std::string_view rest = tag.attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);) {
        if (attribute.name == gpx::kLat)
            position.latitude = CoordinateIn(attribute.value, position);
        else if (attribute.name == gpx::kLon)
            position.longitude = CoordinateIn(attribute.value, position);
    }
    return position;
}

const char* ReadPoint(CompleteContext& context, const ScannedChild& element, GpxPointType type,
                      std::vector<GpxPoint>& points) {
    if (context.Host().limiter != nullptr)
        context.Host().limiter->AddPoint();
    const Position position = PositionOf(element.tag);
    if (!position.latitude || !position.longitude ||
        !GpxModelAccess::IsPosition(*position.latitude, *position.longitude)) {
        context.ReportUnread(element, "It has no position that a point can have.");
        return nullptr;
    }
    if (position.hasBlanks)
        context.Tolerate(element, "There are blanks around its position.");
    points.emplace_back(type, *position.latitude, *position.longitude);
    PointParts parts{context, points.back(), {}};
    GpxModelAccess::SetElement(parts.point, context.Source(), context.PlaceOf(element));
    const char* const end =
        context.ForEach(element, [&](const ScannedChild& child) { return ReadChild(parts, child); });
    parts.link.GiveTo(parts.point);
    GpxModelAccess::SetUnchanged(parts.point);
    return end;
}

} // namespace vexaTransferLib::complete
