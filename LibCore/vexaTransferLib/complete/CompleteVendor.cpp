// SPDX-License-Identifier: MIT
#include <vexaTransferLib/complete/CompleteReaders.h>

#include <vexaTransferLib/model/ElementText.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/model/SourceValues.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vexaTransferLib::complete {

namespace {

// Elements of the vendor in files that do not declare its namespace are in none, or in that of GPX.
bool IsVendors(const ScannedChild& child) {
    return child.kind == NamespaceKind::kTarvik || child.kind == NamespaceKind::kGpx;
}

double ModTimeIn(CompleteContext& context, const ScannedChild& element, std::string_view raw) {
    std::string value;
    DecodedValue(raw).toUTF8String(value);
    value.append(SourceText::kPadding, '\0');
    const std::optional<double> time =
        TimeIn(std::string_view(value).substr(0, value.size() - SourceText::kPadding));
    if (!time)
        context.ReportUnread(element, "Its modtime is not a time.");
    return time.value_or(0.0);
}

const char* ReadFormString(CompleteContext& context, const ScannedChild& element, GpxPoint& point) {
    context.Host().CountObject();
    icu::UnicodeString key;
    bool hasKey = false;
    double modTime = 0.0;
    std::string_view rest = element.tag.attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);) {
        if (attribute.name == tarvik::kKey) {
            key = DecodedValue(attribute.value);
            hasKey = true;
        } else if (attribute.name == tarvik::kModtime) {
            modTime = ModTimeIn(context, element, attribute.value);
        }
    }
    if (!hasKey) {
        context.ReportUnread(element, "It has no key.");
        return nullptr;
    }
    icu::UnicodeString value;
    const char* const end = context.ReadText(element, value);
    point.SetFormAttribute(key, value, modTime);
    return end;
}

const char* ReadForm(CompleteContext& context, const ScannedChild& form, GpxPoint& point) {
    return context.ForEach(form, [&](const ScannedChild& child) {
        return IsVendors(child) && child.name == tarvik::kFormstring.Local()
                   ? ReadFormString(context, child, point)
                   : nullptr;
    });
}

const char* ReadSymbolNumber(CompleteContext& context, const ScannedChild& child, GpxPoint& point) {
    const GpxModelAccess::RareData* const rare = GpxModelAccess::GetRareData(point);
    std::optional<std::int32_t> number;
    if (rare != nullptr && rare->symbolNumber != 0)
        number = rare->symbolNumber;
    const char* const end = context.ReadInteger(child, number);
    if (number)
        GpxModelAccess::SetSymbolNumber(point, *number);
    return end;
}

const char* ReadIdentifier(CompleteContext& context, const ScannedChild& child, GpxPoint& point) {
    icu::UnicodeString text = GpxModelAccess::GetGUID(point);
    const bool isFirst = text.isEmpty();
    const char* const end = context.ReadText(child, text);
    if (isFirst && !text.isEmpty())
        GpxModelAccess::SetGUID(point, text);
    return end;
}

const char* ReadWaypointExtension(CompleteContext& context, const ScannedChild& child, GpxPoint& point) {
    if (child.name == tarvik::kFormdata.Local())
        return ReadForm(context, child, point);
    if (child.name == tarvik::kTovasymbol.Local())
        return ReadSymbolNumber(context, child, point);
    return child.name == tarvik::kObjectid.Local() ? ReadIdentifier(context, child, point) : nullptr;
}

const char* ReadRoutePointType(CompleteContext& context, const ScannedChild& child, GpxPoint& point) {
    if (child.name != tarvik::kRoutePointType.Local())
        return nullptr;
    std::size_t type = GpxModelAccess::GetRawRoutePointType(point);
    const char* const end = context.ReadChoice(child, text::kRoutePointTypeTexts, type);
    if (type != 0)
        point.SetTarvikRoutePointType(static_cast<TarvikRoutePointType>(type));
    return end;
}

const char* ReadExtensionGeocache(CompleteContext& context, const ScannedChild& child, GpxPoint& point) {
    const GpxModelAccess::RareData* const rare = GpxModelAccess::GetRareData(point);
    if (child.name != groundspeak::kCache.Local())
        return nullptr;
    if (rare != nullptr && rare->geocache != nullptr) {
        context.ReportSecond(child);
        return nullptr;
    }
    auto cache = std::make_unique<GpxGroundspeakCache>();
    const char* const end = ReadGeocache(context, child, *cache);
    GpxModelAccess::GetOrMakeRareData(point).geocache = std::move(cache);
    return end;
}

} // namespace

const char* ReadPointExtensions(CompleteContext& context, const ScannedChild& element, GpxPoint& point) {
    const GpxPointType type = point.GetPointType();
    if (type == kGpxTrackPoint)
        return nullptr; // The model has nothing for them.
    return context.ForEach(element, [&](const ScannedChild& child) -> const char* {
        if (type == kGpxRoutePoint)
            return IsVendors(child) ? ReadRoutePointType(context, child, point) : nullptr;
        if (child.kind == NamespaceKind::kGroundspeak)
            return ReadExtensionGeocache(context, child, point);
        return IsVendors(child) ? ReadWaypointExtension(context, child, point) : nullptr;
    });
}

const char* ReadVendorElement(CompleteContext& context, const ScannedChild& element, GpxPoint& point) {
    if (point.GetPointType() == kGpxTrackPoint)
        return nullptr;
    return point.GetPointType() == kGpxRoutePoint ? ReadRoutePointType(context, element, point)
                                                  : ReadWaypointExtension(context, element, point);
}

} // namespace vexaTransferLib::complete
