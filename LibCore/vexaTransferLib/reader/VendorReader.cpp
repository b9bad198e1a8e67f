// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/VendorReader.h>

#include <vexaTransferLib/GpxUtils.h>
#include <vexaTransferLib/reader/ChildGuard.h>
#include <vexaTransferLib/reader/GpxModelAccess.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace vexaTransferLib::reader {

namespace {

constexpr ChildMessages kMessages = {"Unable to read GPX extension child elements.",
                                     "Unable to read a GPX extension child node."};

template <class Type, std::size_t Size>
bool ReadType(const NodeView& extensions, const char16_t* name,
              const std::array<std::string_view, Size>& texts, Type& type) {
    std::size_t found = 0;
    ForEachGuardedChild(extensions, kMessages, [&](const NodeView& child) {
        std::string text;
        if (!Equals(child.NamespaceUri(), text::kTarvikNamespace) || !Equals(child.LocalName(), name) ||
            !ReadText(child, text))
            return;
        const auto match = std::find(texts.begin() + 1, texts.end(), text);
        if (match != texts.end())
            found = static_cast<std::size_t>(match - texts.begin());
    });
    if (found != 0)
        type = static_cast<Type>(found);
    return found != 0;
}

// False, with a report where the node is no element at all, when there is nothing to read.
bool IsExtensions(const NodeView& node) {
    return dbc::SoftCheck(node.LocalName() != nullptr, text::kGpxParserSource) &&
           Equals(node.LocalName(), u"extensions");
}

void ReadFormString(const NodeView& node, GpxPoint& point) {
    icu::UnicodeString key;
    if (!ReadTextAttribute(node, u"key", key))
        return;
    double modTime = 0.0;
    std::string time;
    if (ToNarrow(AttributeText(node, u"modtime"), time))
        ParseGpxTime(time, modTime);
    icu::UnicodeString value;
    ReadText(node, value);
    point.SetFormAttribute(key, value, modTime);
}

void ReadFormData(const NodeView& form, GpxPoint& point) {
    ForEachNamedChild(form, [&](const NodeView& child) {
        if (Equals(child.LocalName(), u"formstring"))
            ReadFormString(child, point);
    });
}

} // namespace

bool ReadRouteType(const NodeView& extensions, TarvikRouteType& type) {
    return ReadType(extensions, u"routeType", text::kRouteTypeTexts, type);
}

bool ReadRoutePointType(const NodeView& extensions, TarvikRoutePointType& type) {
    return ReadType(extensions, u"routePointType", text::kRoutePointTypeTexts, type);
}

void ReadWaypointData(ReadContext& context, const NodeView& extensions, GpxPoint& point) {
    if (!IsExtensions(extensions))
        return;
    NodeView form;
    ForEachNamedChild(extensions, [&](const NodeView& child) {
        icu::UnicodeString text;
        if (Equals(child.LocalName(), u"formdata")) {
            form = child;
        } else if (Equals(child.LocalName(), u"tovasymbol")) {
            if (ReadText(child, text))
                GpxModelAccess::SetSymbolNumber(point, context.numberFormat.ParseInteger(text));
        } else if (Equals(child.LocalName(), u"objectid")) {
            if (ReadText(child, text))
                GpxModelAccess::SetGUID(point, text);
        }
    });
    ReadFormData(form, point);
}

void ReadTrackData(ReadContext& context, const NodeView& extensions, GpxTrack& track) {
    if (!IsExtensions(extensions))
        return;
    ForEachNamedChild(extensions, [&](const NodeView& child) {
        icu::UnicodeString text;
        // The low 16 bits are kept: 65535 reads as -1, no colour.
        if (Equals(child.LocalName(), u"color") && ReadText(child, text))
            GpxModelAccess::SetColor(track,
                                     static_cast<std::int16_t>(context.numberFormat.ParseInteger(text)));
    });
}

void ReadDocumentData(ReadContext& context, const NodeView& extensions, GpxDocument& document) {
    dbc::Require(!extensions.IsNull(), text::kGpxParserSource, "Invalid node.");
    const auto layer = boost::make_shared<GISMetaData>();
    const auto annotation = boost::make_shared<AnnotateMetaData>();
    GpxModelAccess::SetGISMetaData(document, layer);
    GpxModelAccess::SetAnnotateMetaData(document, annotation);
    ForEachNamedChild(extensions, [&](const NodeView& child) {
        const char16_t* const name = child.LocalName();
        icu::UnicodeString text;
        if (!ReadText(child, text))
            return;
        if (Equals(name, u"layerkey"))
            layer->layerKey = text;
        else if (Equals(name, u"layername"))
            layer->layerName = text;
        else if (Equals(name, u"form"))
            layer->form = text;
        else if (Equals(name, u"defaultsymbol"))
            layer->defaultSymbol = context.numberFormat.ParseInteger(text);
        else if (Equals(name, u"waypointGUID"))
            annotation->waypointGUID = text;
        else if (Equals(name, u"trackGUID"))
            annotation->trackGUID = text;
    });
}

} // namespace vexaTransferLib::reader
