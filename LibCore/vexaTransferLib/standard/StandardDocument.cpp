// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/StandardWriters.h>

#include <vexaTransferLib/model/ElementText.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/ValueText.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::standard {

namespace {

using Access = GpxModelAccess;
using Place = PieceOutput::Place;

constexpr std::string_view kGpx10Uri = "http://www.topografix.com/GPX/1/0";
constexpr std::string_view kGpx10SchemaLocation = "http://www.topografix.com/GPX/1/0/gpx.xsd";
constexpr std::string_view kXsi = "xsi";

// In the order of the schemas.
constexpr std::string_view kMetadata11[] = {gpx::kName, gpx::kDesc, gpx::kAuthor,   gpx::kCopyright,
                                            gpx::kLink, gpx::kTime, gpx::kKeywords, gpx::kBounds};
constexpr std::string_view kMetadata10[] = {gpx::kName, gpx::kDesc, gpx::kAuthor,   gpx::kEmail,
                                            gpx::kLink, gpx::kTime, gpx::kKeywords, gpx::kBounds};

bool IsMetadataName(std::string_view name) {
    constexpr std::string_view kNames[] = {gpx::kName,  gpx::kDesc,     gpx::kAuthor, gpx::kCopyright,
                                           gpx::kEmail, gpx::kLink,     gpx::kUrl,    gpx::kUrlname,
                                           gpx::kTime,  gpx::kKeywords, gpx::kBounds};
    return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames);
}

/// The attributes of the root.
class RootWriter {
public:
    RootWriter(Writing& writing, const GpxDocument& document)
        : writing_(writing), element_(document.GetElement()) {}

    void Write() {
        PieceOutput& out = writing_.Out();
        const std::string_view uri = writing_.Is10() ? kGpx10Uri : text::kGpx11Uri;
        const std::string_view location = writing_.Is10() ? kGpx10SchemaLocation : text::kGpx11SchemaLocation;
        out.AppendAll("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<", gpx::kGpx, " xmlns=\"", uri, "\" ",
                      gpx::kVersion, "=\"", writing_.Is10() ? "1.0" : "1.1", "\" ", gpx::kCreator, "=\"");
        out.AppendEscaped(writing_.Options().creator, Place::kAttribute);
        out.Append("\"");
        if (HasXsi())
            out.AppendAll(" xmlns:", kXsi, "=\"", text::kXsiUri, "\" ", kXsi, ":schemaLocation=\"", uri, " ",
                          location, "\"");
        for (const SourceText::Declaration& declaration : writing_.RootDeclarations())
            if (declaration.prefix != kXsi || !HasXsi())
                out.Append(Declaration(declaration.prefix, declaration.uri));
        CopyOthers();
        out.Append(">");
    }

private:
    // A file can use the prefix for something else.
    bool HasXsi() const {
        return std::none_of(writing_.RootDeclarations().begin(), writing_.RootDeclarations().end(),
                            [](const SourceText::Declaration& declaration) {
                                return declaration.prefix == kXsi && declaration.uri != text::kXsiUri;
                            });
    }
    void CopyOthers() {
        const SourceText* const source = Access::GetSource(element_);
        if (source == nullptr)
            return;
        const char* const begin = source->At(Access::GetPlace(element_));
        const SourceElement root{source, ScanChild(writing_.NamesOf(*source), *source, begin), nullptr};
        CopyAttributes(writing_, root, [&](std::string_view name) {
            const std::string_view prefix = PrefixOf(name);
            return name == gpx::kVersion || name == gpx::kCreator ||
                   (!prefix.empty() && source->FindNamespace(prefix, source->RootPlace()) == text::kXsiUri);
        });
    }

    Writing& writing_;
    GpxElement element_;
};

/// What a document says about itself: `metadata` of GPX 1.1, elements below the root in GPX 1.0.
class MetadataWriter {
public:
    MetadataWriter(Writing& writing, const GpxDocument& document) : writing_(writing), document_(document) {
        for (const SourceElement& element : writing.ElementsOf(Access::GetFields(document)))
            Sort(element);
    }

    void Write() {
        if (writing_.Is10()) {
            depth_ = 1;
            ReportAttributes();
            WriteFields(kMetadata10);
            return;
        }
        if (metadata_.source == nullptr && elements_.empty() && extensions_.extensions.empty() &&
            extensions_.direct.empty() && !HasModelValues() && !HasChanges())
            return;
        writing_.StartLine(1);
        writing_.Out().AppendAll("<", gpx::kMetadata);
        if (metadata_.source != nullptr)
            CopyAttributes(writing_, metadata_, [](std::string_view) { return false; });
        writing_.Out().Append(">");
        WriteFields(kMetadata11);
        WriteForeign(writing_, extensions_, depth_);
        writing_.StartLine(1);
        writing_.Out().AppendAll("</", gpx::kMetadata, ">");
    }

    void ReportAttributes() {
        std::string_view rest = metadata_.child.tag.attributes;
        for (ScannedAttribute attribute; metadata_.source != nullptr && ScanAttribute(rest, attribute);)
            if (!IsDeclaration(attribute.name))
                writing_.ReportUnwritten(gpx::kMetadata, "GPX 1.0 has no place for its attributes.");
    }

    // After the tracks.
    void WriteRest() {
        ForeignParts parts = rest_;
        if (writing_.Is10()) {
            parts.extensions.insert(parts.extensions.end(), extensions_.extensions.begin(),
                                    extensions_.extensions.end());
            parts.direct.insert(parts.direct.end(), extensions_.direct.begin(), extensions_.direct.end());
            parts.writeNew = extensions_.writeNew;
        }
        WriteForeign(writing_, parts, 1);
    }

private:
    void Sort(const SourceElement& element) {
        if (element.child.kind != NamespaceKind::kGpx)
            rest_.direct.push_back(element);
        else if (element.child.name == gpx::kExtensions)
            rest_.extensions.push_back(element);
        else if (element.child.name == gpx::kMetadata)
            SortMetadata(element);
        else if (IsMetadataName(element.child.name))
            elements_.push_back(element);
        else
            rest_.other.push_back(element);
    }
    void SortMetadata(const SourceElement& metadata) {
        if (metadata_.source == nullptr)
            metadata_ = metadata;
        for (const SourceElement& element : writing_.ChildrenOf(metadata)) {
            if (element.child.kind != NamespaceKind::kGpx)
                extensions_.direct.push_back(element);
            else if (element.child.name == gpx::kExtensions)
                extensions_.extensions.push_back(element);
            else if (IsMetadataName(element.child.name))
                elements_.push_back(element);
            else
                extensions_.other.push_back(element);
        }
    }

    // A document that was not read completely has its values in the model only.
    bool HasModelValues() {
        if (document_.GetElement())
            return false;
        double time = 0.0;
        if (document_.HasExtensionData())
            extensions_.writeNew = [this](int depth) { WriteRecords(depth); };
        return document_.HasMetaData() || document_.GetDocumentTime(time);
    }

    template <std::size_t size>
    void WriteFields(const std::string_view (&names)[size]) {
        const bool isInModel = HasModelValues();
        for (const std::string_view name : names) {
            if (isInModel || IsChanged(name))
                WriteModelField(name);
            if (name == gpx::kLink)
                WriteLinks(writing_, elements_, nullptr, true, depth_);
            else if (name == gpx::kAuthor)
                WriteAuthor();
            else if (name != gpx::kEmail)
                CopyAllBut(IsChanged(name) ? Counted(name) : nullptr, name);
        }
        if (writing_.Is10() && Find(gpx::kCopyright) != nullptr)
            writing_.ReportUnwritten(gpx::kCopyright, "GPX 1.0 has no place for it.");
    }
    void WriteModelField(std::string_view name) {
        double time = 0.0;
        if (name == gpx::kName && !Access::GetName(document_).isEmpty())
            WriteTextElement(writing_, name, Access::GetName(document_), depth_);
        else if (name == gpx::kTime && document_.GetDocumentTime(time))
            WriteModelTime(time);
    }
    void WriteModelTime(double time) {
        const std::string text = text::SchemaTime(time);
        if (text.empty())
            writing_.ReportUnwritten(gpx::kTime, "GPX has no place for such a time.");
        else
            WriteAsciiElement(writing_, gpx::kTime, text, depth_);
    }
    void CopyAll(std::string_view name) { CopyAllBut(nullptr, name); }
    void CopyAllBut(const SourceElement* replaced, std::string_view name) {
        for (const SourceElement& element : elements_)
            if (&element != replaced && element.child.IsGpx(name))
                Copy(element);
    }
    // The element that the model has its value from: the first one with a value.
    const SourceElement* Counted(std::string_view name) const {
        for (const SourceElement& element : elements_)
            if (element.child.IsGpx(name) &&
                (name == gpx::kTime ? TimeIn(element).has_value() : !IsBlank(element)))
                return &element;
        return nullptr;
    }
    static std::optional<double> TimeIn(const SourceElement& element) {
        std::string text;
        return text::ReadSchemaTime(ContentText(element.child.begin).toUTF8String(text));
    }
    // Of a document that was read completely, a value that the model has and the element has not.
    bool IsChanged(std::string_view name) const {
        if (!document_.GetElement() || (name != gpx::kName && name != gpx::kTime))
            return false;
        const SourceElement* const element = Counted(name);
        if (name == gpx::kName)
            return (element != nullptr ? ContentText(element->child.begin) : icu::UnicodeString()) !=
                   Access::GetName(document_);
        double time = 0.0;
        const bool hasTime = document_.GetDocumentTime(time);
        const std::optional<double> read = element != nullptr ? TimeIn(*element) : std::nullopt;
        return read != (hasTime ? std::optional(time) : std::nullopt);
    }
    bool HasChanges() const { return IsChanged(gpx::kName) || IsChanged(gpx::kTime); }
    void Copy(const SourceElement& element) {
        writing_.StartLine(depth_);
        CopyElement(writing_, element);
    }
    const SourceElement* Find(std::string_view name) const {
        for (const SourceElement& element : elements_)
            if (element.child.IsGpx(name))
                return &element;
        return nullptr;
    }
    SourceElement PartOf(const SourceElement& parent, std::string_view name) {
        for (const SourceElement& child : writing_.ChildrenOf(parent))
            if (child.child.IsGpx(name))
                return child;
        return {};
    }

    // The author of GPX 1.0 is a text beside an address, that of GPX 1.1 has both in it.
    void WriteAuthor() {
        const SourceElement* const author = Find(gpx::kAuthor);
        const SourceElement* const email = Find(gpx::kEmail);
        const bool hasParts = author != nullptr && !writing_.ChildrenOf(*author).empty();
        if (writing_.Is10())
            WriteAuthor10(author, email, hasParts);
        else if (author != nullptr && (hasParts || IsBlank(*author)) && email == nullptr)
            CopyAll(gpx::kAuthor);
        else if (author != nullptr || email != nullptr)
            WriteAuthor11(author, email, hasParts);
    }
    static bool IsBlank(const SourceElement& element) { return ContentText(element.child.begin).isEmpty(); }
    void WriteAuthor11(const SourceElement* author, const SourceElement* email, bool hasParts) {
        PieceOutput& out = writing_.Out();
        writing_.StartLine(depth_);
        out.AppendAll("<", gpx::kAuthor, ">");
        if (author != nullptr && !hasParts)
            WriteTextElement(writing_, gpx::kName, ContentText(author->child.begin), depth_ + 1);
        else if (author != nullptr)
            for (const SourceElement& part : writing_.ChildrenOf(*author)) {
                writing_.StartLine(depth_ + 1);
                CopyElement(writing_, part);
            }
        if (email != nullptr)
            WriteEmail11(ContentText(email->child.begin));
        writing_.StartLine(depth_);
        out.AppendAll("</", gpx::kAuthor, ">");
    }
    void WriteEmail11(const icu::UnicodeString& address) {
        const std::int32_t at = address.indexOf(u'@');
        PieceOutput& out = writing_.Out();
        writing_.StartLine(depth_ + 1);
        out.AppendAll("<", gpx::kEmail, " id=\"");
        out.AppendEscaped(at >= 0 ? address.tempSubString(0, at) : address, Place::kAttribute);
        out.Append("\" domain=\"");
        out.AppendEscaped(at >= 0 ? address.tempSubString(at + 1) : icu::UnicodeString(), Place::kAttribute);
        out.Append("\"/>");
    }
    void WriteAuthor10(const SourceElement* author, const SourceElement* email, bool hasParts) {
        if (author != nullptr && !hasParts)
            CopyAll(gpx::kAuthor);
        if (author != nullptr && hasParts)
            WriteParts10(*author);
        if (email != nullptr)
            CopyAll(gpx::kEmail);
    }
    void WriteParts10(const SourceElement& author) {
        const SourceElement name = PartOf(author, gpx::kName);
        if (name.source != nullptr)
            WriteTextElement(writing_, gpx::kAuthor, ContentText(name.child.begin), depth_);
        const SourceElement email = PartOf(author, gpx::kEmail);
        if (email.source != nullptr) {
            icu::UnicodeString address;
            std::string_view rest = email.child.tag.attributes;
            icu::UnicodeString domain;
            for (ScannedAttribute attribute; ScanAttribute(rest, attribute);) {
                if (attribute.name == gpx::kId)
                    address = DecodedValue(attribute.value);
                else if (attribute.name == gpx::kDomain)
                    domain = DecodedValue(attribute.value);
            }
            WriteTextElement(writing_, gpx::kEmail, address + u'@' + domain, depth_);
        }
        if (PartOf(author, gpx::kLink).source != nullptr)
            writing_.ReportUnwritten(gpx::kLink, "GPX 1.0 has no place for the link of an author.");
    }

    void WriteVendorText(const text::ElementName& name, const icu::UnicodeString& text, int depth) {
        if (text.isEmpty())
            return;
        writing_.StartLine(depth);
        writing_.Out().AppendAll("<", name, " xmlns:tarvik=\"", text::kTarvikUri, "\">");
        writing_.Out().AppendEscaped(text, Place::kContent);
        writing_.Out().AppendAll("</", name, ">");
    }
    void WriteVendorNumber(const text::ElementName& name, double number, int depth) {
        writing_.StartLine(depth);
        writing_.Out().AppendAll("<", name, " xmlns:tarvik=\"", text::kTarvikUri, "\">");
        writing_.Out().AppendNumber(number);
        writing_.Out().AppendAll("</", name, ">");
    }
    void WriteRecords(int depth) {
        if (const auto& layer = Access::GetGISMetaData(document_)) {
            WriteVendorText(tarvik::kLayername, layer->layerName, depth);
            WriteVendorText(tarvik::kLayerkey, layer->layerKey, depth);
            WriteVendorText(tarvik::kForm, layer->form, depth);
            WriteVendorNumber(tarvik::kDefaultsymbol, layer->defaultSymbol, depth);
        }
        if (const auto& annotation = Access::GetAnnotateMetaData(document_)) {
            WriteVendorText(tarvik::kTrackGUID, annotation->trackGUID, depth);
            WriteVendorText(tarvik::kWaypointGUID, annotation->waypointGUID, depth);
        }
        if (const auto& stats = Access::GetStats(document_))
            WriteStats(*stats, depth);
    }
    void WriteStats(const GPXStats& stats, int depth) {
        writing_.StartLine(depth);
        writing_.Out().AppendAll("<", tarvik::kFilestats, " xmlns:tarvik=\"", text::kTarvikUri, "\">");
        WriteVendorNumber(tarvik::kWptcount, stats.wptcount, depth + 1);
        WriteVendorNumber(tarvik::kTrkcount, stats.trkcount, depth + 1);
        WriteVendorNumber(tarvik::kTrksegcount, stats.trksegcount, depth + 1);
        WriteVendorNumber(tarvik::kTrktotalkm, stats.trktotalkm, depth + 1);
        if (stats.geocachecount >= 0)
            WriteVendorNumber(tarvik::kGeocachecount, stats.geocachecount, depth + 1);
        writing_.StartLine(depth);
        writing_.Out().AppendAll("</", tarvik::kFilestats, ">");
    }

    Writing& writing_;
    const GpxDocument& document_;
    int depth_ = 2;
    SourceElement metadata_;
    /// Of GPX 1.0 and of the metadata.
    SourceElements elements_;
    ForeignParts extensions_;
    ForeignParts rest_;
};

void WriteWaypoints(Writing& writing, const GpxDocument& document) {
    PointWriter writer(writing, kGpxWaypoint, 1);
    const std::vector<GpxElement>& unread = document.GetUnreadElements();
    auto next = unread.begin();
    const auto writeNext = [&] {
        writing.StartLine(1);
        CopyElement(writing, writing.ElementOf(*next++));
    };
    std::size_t number = 0;
    for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point) {
        writing.SetObject("waypoint", ++number);
        while (next != unread.end() && Access::GetSource(*next) == Access::GetSource(*point) &&
               Access::GetPlace(*next) < Access::GetPlace(*point))
            writeNext();
        writer.Write(*point);
    }
    while (next != unread.end())
        writeNext();
}

} // namespace

void WriteDocument(Writing& writing, const GpxDocument& document) {
    RootWriter(writing, document).Write();
    MetadataWriter metadata(writing, document);
    metadata.Write();
    WriteWaypoints(writing, document);
    std::size_t number = 0;
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route) {
        writing.SetObject("route", ++number);
        WriteRoute(writing, *route);
    }
    number = 0;
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        writing.SetObject("track", ++number);
        WriteTrack(writing, *track);
    }
    writing.SetObject("document", 0);
    metadata.WriteRest();
    writing.Out().AppendAll("\n</", gpx::kGpx, ">\n");
}

} // namespace vexaTransferLib::standard
