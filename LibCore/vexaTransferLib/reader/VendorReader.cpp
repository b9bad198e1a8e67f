// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/VendorReader.h>

#include <vexaTransferLib/GpxUtils.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/reader/FailureIsolation.h>
#include <vexaTransferLib/reader/ToldValues.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <array>
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

template <class Type, std::size_t Size>
bool ReadType(ReadContext& context, const NodeView& extensions, const char16_t* name,
              const std::array<std::string_view, Size>& texts, Type& type) {
    std::size_t found = 0;
    FieldSources sources(context.reporter, FieldSources::Lifetime::kLong);
    ForEachIsolatedChild(context, extensions, kMessages, [&](const NodeView& child) {
        if (!Equals(child.NamespaceUri(), text::kTarvikNamespace) || !Equals(child.LocalName(), name)) {
            context.reporter.SkipUnknown(child);
            return;
        }
        const std::size_t match = FindType(context, child, texts);
        if (match == 0)
            return;
        found = match;
        sources.Set(name, child);
    });
    if (found != 0)
        type = static_cast<Type>(found);
    return found != 0;
}

// False, with a report where the node is no element at all, when there is nothing to read.
bool IsExtensions(const NodeView& node) {
    return text::SoftCheck(node.LocalName() != nullptr, text::sites::kVendorExtensions) &&
           Equals(node.LocalName(), gpx::kExtensions);
}

double ReadModTime(ReadContext& context, const NodeView& node) {
    double modTime = 0.0;
    std::string time;
    if (ToNarrow(AttributeText(node, tarvik::kModtime), time) && !ParseGpxTime(time, modTime))
        context.reporter.Skip(node, kGpxUnreadable, "Its modtime is not a time.", true);
    return modTime;
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
    if (context.reporter.IsWanted() && point.GetFormAttribute(key) != nullptr)
        context.reporter.Skip(node, kGpxReplaced, "It replaces an earlier form field with the same key.",
                              true);
    point.SetFormAttribute(key, value, modTime);
}

void ReadFormData(ReadContext& context, const NodeView& form, GpxPoint& point) {
    ForEachNamedChild(context, form, [&](const NodeView& child) {
        if (Equals(child.LocalName(), tarvik::kFormstring))
            ReadFormString(context, child, point);
        else
            context.reporter.SkipUnknown(child);
    });
}

// Half a number is read as what it begins with, and none as 0.
std::int32_t ReadInteger(ReadContext& context, const NodeView& node, const icu::UnicodeString& text) {
    const std::int32_t number = context.numberFormat.ParseInteger(text);
    if (context.reporter.IsWanted() && context.numberFormat.Format(number) != text &&
        icu::UnicodeString(std::to_string(number).c_str()) != text)
        context.reporter.ReportUnreadable(node, "a whole number");
    return number;
}

// True when the child is one of the vendor's data of a waypoint.
bool ReadWaypointDatum(ReadContext& context, FieldSources& sources, const NodeView& child, GpxPoint& point) {
    icu::UnicodeString text;
    if (Equals(child.LocalName(), tarvik::kTovasymbol)) {
        if (ReadText(context, child, text)) {
            GpxModelAccess::SetSymbolNumber(point, ReadInteger(context, child, text));
            sources.Set(tarvik::kTovasymbol, child);
        }
        return true;
    }
    if (Equals(child.LocalName(), tarvik::kObjectid)) {
        if (ReadText(context, child, text)) {
            GpxModelAccess::SetGUID(point, text);
            sources.Set(tarvik::kObjectid, child);
        }
        return true;
    }
    return false;
}

// True when the child is one of the records' fields and has a value.
bool ReadDocumentDatum(ReadContext& context, const NodeView& child, GISMetaData& layer,
                       AnnotateMetaData& annotation) {
    const char16_t* const name = child.LocalName();
    icu::UnicodeString* const field = Equals(name, tarvik::kLayerkey)       ? &layer.layerKey
                                      : Equals(name, tarvik::kLayername)    ? &layer.layerName
                                      : Equals(name, tarvik::kForm)         ? &layer.form
                                      : Equals(name, tarvik::kWaypointGUID) ? &annotation.waypointGUID
                                      : Equals(name, tarvik::kTrackGUID)    ? &annotation.trackGUID
                                                                            : nullptr;
    if (field != nullptr)
        return ReadText(context, child, *field);
    icu::UnicodeString text;
    if (!Equals(name, tarvik::kDefaultsymbol))
        context.reporter.SkipUnknown(child);
    else if (ReadText(context, child, text))
        layer.defaultSymbol = ReadInteger(context, child, text);
    return !text.isEmpty();
}

} // namespace

bool ReadRouteType(ReadContext& context, const NodeView& extensions, TarvikRouteType& type) {
    return ReadType(context, extensions, tarvik::kRouteType, text::kRouteTypeTexts, type);
}

bool ReadRoutePointType(ReadContext& context, const NodeView& extensions, TarvikRoutePointType& type) {
    return ReadType(context, extensions, tarvik::kRoutePointType, text::kRoutePointTypeTexts, type);
}

void ReadWaypointData(ReadContext& context, FieldSources& sources, const NodeView& extensions,
                      GpxPoint& point) {
    if (!IsExtensions(extensions))
        return;
    NodeView form;
    ForEachNamedChild(context, extensions, [&](const NodeView& child) {
        if (Equals(child.LocalName(), tarvik::kFormdata)) {
            if (!form.IsNull())
                context.reporter.Skip(form, kGpxReplaced, "The last form is the one that is read.", true);
            form = child;
        } else if (!ReadWaypointDatum(context, sources, child, point) &&
                   !Equals(child.LocalName(), groundspeak::kCache)) {
            context.reporter.SkipUnknown(child);
        }
    });
    ReadFormData(context, form, point);
}

bool ReadTrackData(ReadContext& context, const NodeView& extensions, GpxTrack& track) {
    if (!IsExtensions(extensions))
        return false;
    bool found = false;
    FieldSources sources(context.reporter, FieldSources::Lifetime::kLong);
    ForEachNamedChild(context, extensions, [&](const NodeView& child) {
        icu::UnicodeString text;
        if (!Equals(child.LocalName(), tarvik::kColor)) {
            context.reporter.SkipUnknown(child);
        } else if (ReadText(context, child, text)) {
            // The low 16 bits are kept: 65535 reads as -1, no colour.
            GpxModelAccess::SetColor(track, static_cast<std::int16_t>(ReadInteger(context, child, text)));
            sources.Set(tarvik::kColor, child);
            found = true;
        }
    });
    return found;
}

bool ReadDocumentData(ReadContext& context, const NodeView& extensions, GpxDocument& document) {
    text::Require(!extensions.IsNull(), text::sites::kDocumentExtensions, "Invalid node.");
    const auto layer = boost::make_shared<GISMetaData>();
    const auto annotation = boost::make_shared<AnnotateMetaData>();
    GpxModelAccess::SetGISMetaData(document, layer);
    GpxModelAccess::SetAnnotateMetaData(document, annotation);
    bool found = false;
    FieldSources sources(context.reporter, FieldSources::Lifetime::kLong);
    ForEachNamedChild(context, extensions, [&](const NodeView& child) {
        if (!ReadDocumentDatum(context, child, *layer, *annotation))
            return;
        sources.Set(child.LocalName(), child);
        found = true;
    });
    return found;
}

} // namespace vexaTransferLib::reader
