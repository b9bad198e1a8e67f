// SPDX-License-Identifier: MIT
#include <vexagpx/commands/DumpDetails.h>

#include <vexagpx/commands/AuthorJson.h>
#include <vexagpx/commands/BoundsJson.h>
#include <vexagpx/commands/ElementJson.h>
#include <vexagpx/commands/LinkJson.h>
#include <vexagpx/output/HiddenFields.h>
#include <vexagpx/output/OptionalMembers.h>

#include <vexaTransferLib/GpxExtensions.h>
#include <vexaTransferLib/GpxMetadata.h>
#include <vexaTransferLib/GpxPathDetails.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

/// What there is among the elements of an object. A getter of details for something that is absent would look for it
/// in the whole object, all its points included.
class Fields {
public:
    Fields() = default;
    /// \param children without points, segments, routes and tracks
    Fields(const GpxElement& object, const std::vector<GpxElement>& children) {
        const std::string_view nameSpace = object.GetNamespace();
        for (const GpxElement& child : children)
            Add(child, nameSpace);
    }
    void AddChildren(const GpxElement& object) {
        const std::string_view nameSpace = object.GetNamespace();
        for (const GpxElement& child : object.GetChildren())
            Add(child, nameSpace);
    }

    bool Has(std::string_view name) const {
        return std::find(names_.begin(), names_.end(), name) != names_.end();
    }
    bool HasLink() const { return Has("link") || Has("url"); }
    /// Whether there may be elements of other programs.
    bool MayHaveForeign() const { return mayHaveForeign_; }

private:
    void Add(const GpxElement& child, std::string_view nameSpace) {
        names_.push_back(child.GetName());
        mayHaveForeign_ |= names_.back() == "extensions" || child.GetNamespace() != nameSpace;
    }

    std::vector<std::string_view> names_;
    bool mayHaveForeign_ = false;
};

void WriteCopyright(const GpxCopyright& copyright, JsonWriter& json) {
    json.Key("copyright");
    json.BeginObject();
    MemberIfAny(json, "author", copyright.author);
    MemberIfAny(json, "year", copyright.year);
    MemberIfAny(json, "license", copyright.license);
    json.EndObject();
}

/// The head of a document, whose values are below the root, in `metadata`, or in both.
class Head {
public:
    Head(const GpxDocument& document, JsonWriter& json)
        : root_(document.GetElement()), details_(root_), json_(json), ofRoot_(root_, FieldsOf(document)) {
        for (const GpxElement& field : FieldsOf(document))
            if (field.GetName() == "metadata")
                AddMetadata(field);
    }

    void Write();

private:
    bool Has(std::string_view name) const { return ofMetadata_.Has(name) || ofRoot_.Has(name); }

    void AddMetadata(const GpxElement& metadata);
    void WritePeople();
    std::vector<GpxLink> Links() const;
    std::vector<GpxElement> Extensions() const;

    GpxElement root_;
    GpxMetadata details_;
    JsonWriter& json_;
    Fields ofRoot_;
    Fields ofMetadata_;   ///< of all elements with this name
    GpxElement metadata_; ///< nothing when there are several, or one of another namespace than the root's
    bool hasMetadata_ = false;
};

void Head::AddMetadata(const GpxElement& metadata) {
    ofMetadata_.AddChildren(metadata);
    const bool isOnly = !hasMetadata_ && metadata.GetNamespace() == root_.GetNamespace();
    metadata_ = isOnly ? metadata : GpxElement();
    hasMetadata_ = true;
}

void Head::Write() {
    MemberIfAny(json_, "version", details_.GetVersion());
    MemberIfAny(json_, "creator", details_.GetCreator());
    if (Has("desc"))
        MemberIfAny(json_, "description", details_.GetDescription());
    WritePeople();
    if (Has("keywords"))
        MemberIfAny(json_, "keywords", details_.GetKeywords());
    WriteLinks(json_, Links());
    if (Has("bounds"))
        if (const std::optional<GpxBounds> bounds = details_.GetBounds())
            WriteBounds(json_, *bounds);
    ElementJson(json_).Write("extensions", Extensions());
}

void Head::WritePeople() {
    if (Has("author") || Has("email"))
        if (const std::optional<GpxPerson> author = details_.GetAuthor())
            WriteAuthor(json_, *author);
    if (Has("copyright"))
        if (const std::optional<GpxCopyright> copyright = details_.GetCopyright())
            WriteCopyright(*copyright, json_);
}

std::vector<GpxLink> Head::Links() const {
    if (ofMetadata_.HasLink() && metadata_ && !ofRoot_.HasLink())
        return GpxMetadata(metadata_).GetLinks();
    return ofMetadata_.HasLink() || ofRoot_.HasLink() ? details_.GetLinks() : std::vector<GpxLink>();
}

std::vector<GpxElement> Head::Extensions() const {
    if (ofMetadata_.MayHaveForeign() && metadata_ && !ofRoot_.MayHaveForeign())
        return ForeignElements(metadata_);
    return ofMetadata_.MayHaveForeign() || ofRoot_.MayHaveForeign() ? details_.GetExtensions()
                                                                    : std::vector<GpxElement>();
}

/// What routes and tracks have in common.
void WritePath(const GpxPathDetails& path, const Fields& fields, JsonWriter& json) {
    if (fields.Has("number"))
        MemberIfAny(json, "number", path.GetNumber());
    if (fields.Has("cmt"))
        MemberIfAny(json, "comment", path.GetComment());
    if (fields.HasLink())
        WriteLinks(json, path.GetLinks());
}

void WriteForeign(const GpxElement& path, const Fields& fields, JsonWriter& json) {
    if (fields.MayHaveForeign())
        ElementJson(json).Write("extensions", ForeignElements(path));
}

struct SegmentExtensions {
    std::uint64_t segment; ///< index in the track
    std::vector<GpxElement> elements;
};

std::vector<SegmentExtensions> ExtensionsOfSegments(const GpxTrack& track) {
    std::vector<SegmentExtensions> extensions;
    if (SegmentFieldsOf(track).empty())
        return extensions;
    std::uint64_t index = 0;
    for (auto segment = track.GetSegmentIter(); segment != track.GetSegmentEndIter(); ++segment, ++index) {
        std::vector<GpxElement> elements = ForeignElements(track.GetSegmentElement(segment));
        if (!elements.empty())
            extensions.push_back({index, std::move(elements)});
    }
    return extensions;
}

void WriteSegmentExtensions(const GpxTrack& track, JsonWriter& json) {
    const std::vector<SegmentExtensions> extensions = ExtensionsOfSegments(track);
    ArrayIfAny(json, "segmentExtensions", extensions, [&json](const SegmentExtensions& ofSegment) {
        json.BeginObject();
        json.Member("segment", ofSegment.segment);
        ElementJson(json).Write("extensions", ofSegment.elements);
        json.EndObject();
    });
}

} // namespace

void WriteDocumentDetails(const GpxDocument& document, JsonWriter& json) {
    if (!document.GetElement())
        return;
    Head(document, json).Write();
    ElementJson(json).WriteWithLines("unread", document.GetUnreadElements());
}

void WriteRouteDetails(const GpxRoute& route, JsonWriter& json) {
    const GpxElement element = route.GetElement();
    if (!element)
        return;
    const GpxPathDetails details(element);
    const Fields fields(element, FieldsOf(route));
    WritePath(details, fields, json);
    if (fields.Has("desc"))
        MemberIfAny(json, "description", details.GetDescription());
    TarvikRouteType type;
    if (fields.MayHaveForeign() && !route.GetTarvikRouteType(type))
        MemberIfAny(json, "routeType", details.GetRouteType());
    WriteForeign(element, fields, json);
    ElementJson(json).WriteWithLines("unread", route.GetUnreadElements());
}

void WriteTrackDetails(const GpxTrack& track, JsonWriter& json) {
    const GpxElement element = track.GetElement();
    if (!element)
        return;
    const GpxPathDetails details(element);
    const Fields fields(element, FieldsOf(track));
    WritePath(details, fields, json);
    if (fields.MayHaveForeign() && !ColorOf(track))
        MemberIfAny(json, "color", details.GetColor());
    WriteForeign(element, fields, json);
    WriteSegmentExtensions(track, json);
    ElementJson(json).WriteWithLines("unread", track.GetUnreadElements());
}

} // namespace vexagpx
