// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/VendorReader.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/reader/ChangedValues.h>
#include <vexaTransferLib/reader/Children.h>
#include <vexaTransferLib/reader/ElementTable.h>
#include <vexaTransferLib/reader/UnreadAttributes.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vexaTransferLib::reader {

namespace {

constexpr ChildMessages kMessages = {"Unable to read GPX extension child elements.",
                                     "Unable to read a GPX extension child node.",
                                     text::sites::kExtensionChildren, text::sites::kExtensionChild};

template <std::size_t Size>
std::size_t FindType(ReadContext& context, const NodeView& child,
                     const std::array<std::string_view, Size>& texts) {
    std::string text;
    const bool isRead = ReadText(child, text);
    context.reporter.ReportUnreadText(child);
    const auto match = std::find(texts.begin() + 1, texts.end(), text);
    if (isRead && match != texts.end())
        return static_cast<std::size_t>(match - texts.begin());
    context.reporter.ReportUnreadable(child, "a type that the library knows");
    return 0;
}

template <const auto& texts, class Type>
bool ReadTypeElement(const Element<std::optional<Type>>& element) {
    const std::size_t found = FindType(element.context, element.node, texts);
    if (found != 0)
        element.owner = static_cast<Type>(found);
    return found != 0;
}

using FoundRouteType = std::optional<TarvikRouteType>;
constexpr ElementReader<FoundRouteType> kRouteTypeReaders[] = {
    {tarvik::kRouteType, tarvik::kRouteType, ReadTypeElement<text::kRouteTypeTexts>},
};
constexpr ElementTable<FoundRouteType> kRouteTypeElements = {Namespace::kTarvik, kRouteTypeReaders};

using FoundRoutePointType = std::optional<TarvikRoutePointType>;
constexpr ElementReader<FoundRoutePointType> kRoutePointTypeReaders[] = {
    {tarvik::kRoutePointType, tarvik::kRoutePointType, ReadTypeElement<text::kRoutePointTypeTexts>},
};
constexpr ElementTable<FoundRoutePointType> kRoutePointTypeElements = {Namespace::kTarvik,
                                                                       kRoutePointTypeReaders};

template <class Type>
bool ReadType(ReadContext& context, const NodeView& extensions,
              const ElementTable<std::optional<Type>>& table, Type& type) {
    std::optional<Type> found;
    FieldSources sources(context.reporter, FieldSources::Lifetime::kLong);
    ForEachIsolatedChild(context, extensions, kMessages, [&](const NodeView& child) {
        ReadElement(table, {context, nullptr, child, found, sources});
    });
    if (found)
        type = *found;
    return found.has_value();
}

// False when there is nothing to read. Writes the contract report when the node is not an element.
bool IsExtensions(const NodeView& node) {
    return text::SoftCheck(node.LocalName() != nullptr, text::sites::kVendorExtensions) &&
           Equals(node.LocalName(), gpx::kExtensions);
}

double ReadModTime(ReadContext& context, const NodeView& node) {
    double modTime = 0.0;
    std::string time;
    text::TimeLosses losses;
    if (!ToNarrow(AttributeText(node, tarvik::kModtime), time))
        return modTime;
    if (!text::ReadTime(time, modTime, losses))
        context.reporter.Report(node, kGpxUnreadable, "Its modtime is not a time.", true, "modtime");
    else if (modTime == 0.0)
        ReportTimeAsNone(context.reporter, node, tarvik::kModtime,
                         "A form field with this modtime counts as one without.");
    else
        ReportTimeLosses(context.reporter, node, tarvik::kModtime, modTime, losses);
    return modTime;
}

constexpr const char16_t* kFormStringAttributes[] = {tarvik::kKey, tarvik::kModtime};

bool ReplacesOther(const GpxPoint& point, const icu::UnicodeString& key, const icu::UnicodeString& value,
                   double modTime) {
    const boost::shared_ptr<FormData> earlier = point.GetFormAttribute(key);
    return earlier != nullptr && (earlier->value != value || earlier->modTime != modTime);
}

void ReadFormString(ReadContext& context, const NodeView& node, GpxPoint& point) {
    icu::UnicodeString key;
    if (!ReadTextAttribute(node, tarvik::kKey, key)) {
        context.reporter.Skip(node, kGpxIncomplete, "A form field without a key is not kept.", true);
        return;
    }
    context.CountObject();
    const double modTime = ReadModTime(context, node);
    icu::UnicodeString value;
    ReadText(context, node, value);
    context.reporter.ReportReplaced(node, key, tarvik::kKey);
    if (context.reporter.IsWanted() && ReplacesOther(point, key, value, modTime))
        context.reporter.Skip(node, kGpxReplaced, "It replaces an earlier form field with the same key.",
                              true);
    ReportUnreadAttributes(context.reporter, node, kFormStringAttributes);
    point.SetFormAttribute(key, value, modTime);
}

void ReadFormData(ReadContext& context, const NodeView& form, GpxPoint& point) {
    ReportUnreadAttributes(context.reporter, form);
    ForEachNamedChild(context, form, [&](const NodeView& child) {
        if (Equals(child.LocalName(), tarvik::kFormstring))
            ReadFormString(context, child, point);
        else
            context.reporter.SkipUnknown(child);
    });
}

// Text after the number is ignored, and a text without a number gives 0.
std::int32_t ReadInteger(ReadContext& context, const NodeView& node, const icu::UnicodeString& text) {
    const std::int32_t number = context.numberFormat.ParseInteger(text);
    if (context.reporter.IsWanted() && context.numberFormat.Format(number) != text &&
        icu::UnicodeString(std::to_string(number).c_str()) != text)
        context.reporter.ReportUnreadable(node, "a whole number");
    return number;
}

// The document has the number, but it means none and is not written.
template <class Owner>
void ReportAsNone(const Element<Owner>& element, std::int32_t number, const char* what) {
    if (element.context.reporter.IsWanted())
        element.context.reporter.Report(element.node, kGpxChanged,
                                        std::to_string(number) + " counts as no " + what + ".", true);
}

bool ReadSymbolNumber(const Element<GpxPoint>& element) {
    icu::UnicodeString text;
    if (!ReadText(element.context, element.node, text))
        return false;
    const std::int32_t number = ReadInteger(element.context, element.node, text);
    GpxModelAccess::SetSymbolNumber(element.owner, number);
    if (number < 0)
        ReportAsNone(element, number, "symbol");
    return true;
}

bool ReadGUID(const Element<GpxPoint>& element) {
    icu::UnicodeString text;
    if (!ReadText(element.context, element.node, text))
        return false;
    GpxModelAccess::SetGUID(element.owner, text);
    if (element.context.reporter.IsWanted() && GpxModelAccess::GetGUID(element.owner) != text)
        element.context.reporter.Report(element.node, kGpxChanged, "Its braces are not kept.", false);
    return true;
}

constexpr ElementReader<GpxPoint> kWaypointReaders[] = {
    {tarvik::kTovasymbol, tarvik::kTovasymbol, ReadSymbolNumber},
    {tarvik::kObjectid, tarvik::kObjectid, ReadGUID},
};
constexpr ElementTable<GpxPoint> kWaypointElements = {Namespace::kAny, kWaypointReaders};

bool ReadColor(const Element<GpxTrack>& element) {
    icu::UnicodeString text;
    if (!ReadText(element.context, element.node, text))
        return false;
    // The low 16 bits are kept: 65535 reads as -1, no colour.
    const std::int32_t number = ReadInteger(element.context, element.node, text);
    const auto color = static_cast<std::int16_t>(number);
    GpxModelAccess::SetColor(element.owner, color);
    if (element.context.reporter.IsWanted() && color != number)
        element.context.reporter.Report(
            element.node, kGpxChanged,
            "Colour " + std::to_string(number) + " is kept as " + std::to_string(color) + ".", true);
    if (color == number && color < -1)
        ReportAsNone(element, number, "colour");
    return true;
}

constexpr ElementReader<GpxTrack> kTrackReaders[] = {
    {tarvik::kColor, tarvik::kColor, ReadColor},
};
constexpr ElementTable<GpxTrack> kTrackElements = {Namespace::kAny, kTrackReaders};

struct DocumentRecords {
    GISMetaData& layer;
    AnnotateMetaData& annotation;
};

template <icu::UnicodeString GISMetaData::*field>
bool ReadLayerText(const Element<DocumentRecords>& element) {
    return ReadText(element.context, element.node, element.owner.layer.*field);
}

template <icu::UnicodeString AnnotateMetaData::*field>
bool ReadAnnotationText(const Element<DocumentRecords>& element) {
    return ReadText(element.context, element.node, element.owner.annotation.*field);
}

bool ReadDefaultSymbol(const Element<DocumentRecords>& element) {
    icu::UnicodeString text;
    if (!ReadText(element.context, element.node, text))
        return false;
    element.owner.layer.defaultSymbol = ReadInteger(element.context, element.node, text);
    return true;
}

constexpr ElementReader<DocumentRecords> kDocumentReaders[] = {
    {tarvik::kLayerkey, tarvik::kLayerkey, ReadLayerText<&GISMetaData::layerKey>},
    {tarvik::kLayername, tarvik::kLayername, ReadLayerText<&GISMetaData::layerName>},
    {tarvik::kForm, tarvik::kForm, ReadLayerText<&GISMetaData::form>},
    {tarvik::kDefaultsymbol, tarvik::kDefaultsymbol, ReadDefaultSymbol},
    {tarvik::kWaypointGUID, tarvik::kWaypointGUID, ReadAnnotationText<&AnnotateMetaData::waypointGUID>},
    {tarvik::kTrackGUID, tarvik::kTrackGUID, ReadAnnotationText<&AnnotateMetaData::trackGUID>},
};
constexpr ElementTable<DocumentRecords> kDocumentElements = {Namespace::kAny, kDocumentReaders};

} // namespace

bool ReadRouteType(ReadContext& context, const NodeView& extensions, TarvikRouteType& type) {
    return ReadType(context, extensions, kRouteTypeElements, type);
}

bool ReadRoutePointType(ReadContext& context, const NodeView& extensions, TarvikRoutePointType& type) {
    return ReadType(context, extensions, kRoutePointTypeElements, type);
}

void ReadWaypointData(ReadContext& context, FieldSources& sources, const NodeView& extensions,
                      GpxPoint& point) {
    if (!IsExtensions(extensions))
        return;
    NodeView form;
    ForEachNamedChild(context, extensions, [&](const NodeView& child) {
        if (Equals(child.LocalName(), tarvik::kFormdata)) {
            if (!form.IsNull())
                context.reporter.SkipContent(form, kGpxReplaced, "The last form is the one that is read.");
            form = child;
        } else if (!Equals(child.LocalName(), groundspeak::kCache)) {
            ReadElement(kWaypointElements, {context, nullptr, child, point, sources});
        }
    });
    ReadFormData(context, form, point);
}

bool ReadTrackData(ReadContext& context, const NodeView& extensions, GpxTrack& track) {
    return IsExtensions(extensions) && ReadElements(kTrackElements, context, extensions, track);
}

bool ReadDocumentData(ReadContext& context, const NodeView& extensions, GpxDocument& document) {
    text::Require(!extensions.IsNull(), text::sites::kDocumentExtensions, "Invalid node.");
    const auto layer = boost::make_shared<GISMetaData>();
    const auto annotation = boost::make_shared<AnnotateMetaData>();
    GpxModelAccess::SetGISMetaData(document, layer);
    GpxModelAccess::SetAnnotateMetaData(document, annotation);
    DocumentRecords records{*layer, *annotation};
    return ReadElements(kDocumentElements, context, extensions, records);
}

} // namespace vexaTransferLib::reader
