// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/ObjectEdits.h>

#include <vexaTransferLib/GpxElementEditor.h>
#include <vexaTransferLib/complete/CompleteReaders.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/ValueText.h>

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vexaTransferLib::saving {

namespace {

using Access = GpxModelAccess;
using Place = standard::PieceOutput::Place;

constexpr std::string_view kMetadataOrder[] = {gpx::kName, gpx::kDesc, gpx::kAuthor,   gpx::kCopyright,
                                               gpx::kLink, gpx::kTime, gpx::kKeywords, gpx::kBounds};

/// Of one element.
using Attributes = std::array<std::pair<std::string_view, std::string>, 4>;

/// What describes a document: in `metadata`, or below the root as in GPX 1.0.
class HeadEditing {
public:
    HeadEditing(Saving& saving, TextEdits& edits, ElementEdits& root, const GpxDocument& document)
        : saving_(saving), edits_(edits), root_(root), document_(document) {
        for (const GpxElement& field : Access::GetFields(document))
            ReadField(field);
        if (const GpxElementChanges* const changes = Access::GetChanges(document))
            changes_ = Access::GetHead(*changes);
    }

    // In the order of the schema, in which new elements are added.
    void Edit() {
        if (name_ != Access::GetName(document_))
            EditField(gpx::kName, Content(Access::GetName(document_)));
        EditText(gpx::kDesc, changes_.description);
        if (changes_.author)
            EditAuthor(*changes_.author ? **changes_.author : GpxPerson());
        double time = 0.0;
        const bool hasTime = document_.GetDocumentTime(time);
        if (time_ != (hasTime ? std::optional(time) : std::nullopt))
            EditField(gpx::kTime, hasTime ? TimeText(time) : std::string());
        EditText(gpx::kKeywords, changes_.keywords);
        if (changes_.bounds)
            EditBounds(*changes_.bounds);
        Finish();
    }

private:
    void ReadField(const GpxElement& field) {
        const ScannedChild child = saving_.ElementAt(Access::GetPlace(field)).child;
        if (child.IsGpx(gpx::kName))
            saving_.Context().ReadText(child, name_);
        else if (child.IsGpx(gpx::kTime))
            saving_.Context().ReadTime(child, time_);
        else if (child.IsGpx(gpx::kMetadata))
            for (const GpxElement& inner : field.GetChildren())
                ReadField(inner);
    }
    std::string TimeText(double time) {
        std::string text = text::SchemaTime(time);
        if (text.empty())
            saving_.Writing().ReportUnwritten(gpx::kTime, "GPX has no place for such a time.");
        return text;
    }
    std::string Content(const icu::UnicodeString& text) { return saving_.Escaped(text, Place::kContent); }
    std::string Number(double number) {
        return saving_.Rendered({}, 0, [&] { saving_.Writing().Out().AppendNumber(number); });
    }

    void EditText(std::string_view name, const std::optional<std::optional<icu::UnicodeString>>& change) {
        if (change)
            EditField(name, *change ? Content(**change) : std::string());
    }
    // GPX 1.0 has two texts for what is an element with parts in GPX 1.1.
    void EditAuthor(const GpxPerson& author) {
        if (!saving_.Is10()) {
            EditField(gpx::kAuthor, PersonContent(author));
            return;
        }
        EditField(gpx::kAuthor, author.name ? Content(*author.name) : std::string());
        EditField(gpx::kEmail, author.email ? Content(*author.email) : std::string());
        if (author.link)
            saving_.Writing().ReportUnwritten(gpx::kLink, "GPX 1.0 has no place for the link of an author.");
    }
    std::string PersonContent(const GpxPerson& person) {
        std::string content;
        if (person.name)
            content += Part(gpx::kName, "", Content(*person.name));
        if (person.email) {
            const std::int32_t at = person.email->lastIndexOf(u'@');
            content += Part(gpx::kEmail,
                            Attribute(gpx::kId, person.email->tempSubString(0, at)) +
                                Attribute(gpx::kDomain, person.email->tempSubString(at + 1)),
                            "");
        }
        if (person.link)
            content += LinkPart(*person.link);
        return content.empty() ? content : content + root_.ChildLayout().Inner().separator;
    }
    std::string LinkPart(const GpxLink& link) {
        std::string parts;
        if (!link.text.isEmpty())
            parts += Tagged(gpx::kText, "", Content(link.text));
        if (!link.type.isEmpty())
            parts += Tagged(gpx::kType, "", Content(link.type));
        return Part(gpx::kLink, Attribute(gpx::kHref, link.href), parts);
    }
    // A part of the author, in a line of its own where there are lines.
    std::string Part(std::string_view name, const std::string& attributes, const std::string& content) {
        return root_.ChildLayout().Inner().Inner().separator + Tagged(name, attributes, content);
    }
    std::string Tagged(std::string_view name, const std::string& attributes, const std::string& content) {
        const std::string qualified = root_.Qualified(name);
        const std::string start = "<" + qualified + attributes;
        return content.empty() ? start + "/>" : start + ">" + content + "</" + qualified + ">";
    }
    std::string Attribute(std::string_view name, const icu::UnicodeString& value) {
        return " " + std::string(name) + "=\"" + saving_.Escaped(value, Place::kAttribute) + "\"";
    }

    // The first element of this name is the one that counts. Without a text, all go.
    void EditField(std::string_view name, const std::string& content) {
        bool isSet = false;
        ForEachField(name, [&](ElementEdits& parent, const SavedChild& child) {
            if (content.empty())
                parent.Remove(child);
            else if (!std::exchange(isSet, true))
                parent.SetContent(child, content);
        });
        if (!isSet && !content.empty())
            Add(name, Tagged(name, "", content));
    }
    void EditBounds(const std::optional<GpxBounds>& bounds) {
        Attributes attributes;
        if (bounds)
            attributes = {{{gpx::kMinlat, Number(bounds->minLatitude)},
                           {gpx::kMinlon, Number(bounds->minLongitude)},
                           {gpx::kMaxlat, Number(bounds->maxLatitude)},
                           {gpx::kMaxlon, Number(bounds->maxLongitude)}}};
        bool isSet = false;
        ForEachField(gpx::kBounds, [&](ElementEdits& parent, const SavedChild& child) {
            if (!bounds)
                parent.Remove(child);
            else if (!std::exchange(isSet, true))
                for (const auto& [name, value] : attributes)
                    parent.SetAttribute(ScanTag(child.begin), name, value);
        });
        if (isSet || !bounds)
            return;
        std::string text;
        for (const auto& [name, value] : attributes)
            text += " " + std::string(name) + "=\"" + value + "\"";
        Add(gpx::kBounds, Tagged(gpx::kBounds, text, ""));
    }

    /// Calls `visit(parent, child)` for each child of the root and of `metadata` with this name.
    template <class Visit>
    void ForEachField(std::string_view name, Visit visit) {
        for (const SavedChild& child : root_.Children()) {
            if (child.Is(NamespaceKind::kGpx, name))
                visit(root_, child);
            else if (child.Is(NamespaceKind::kGpx, gpx::kMetadata))
                for (const SavedChild& inner : MetadataAt(child).Children())
                    if (inner.Is(NamespaceKind::kGpx, name))
                        visit(MetadataAt(child), inner);
        }
    }
    void Add(std::string_view name, const std::string& element) {
        const SavedChild* const metadata = root_.Find(gpx::kMetadata);
        if (saving_.Is10())
            root_.Add(name, root_.ChildLayout().separator + element);
        else if (metadata == nullptr)
            newMetadata_ += root_.ChildLayout().Inner().separator + element;
        else
            MetadataAt(*metadata).Add(name, MetadataAt(*metadata).ChildLayout().separator + element);
    }
    // A file should have one.
    ElementEdits& MetadataAt(const SavedChild& child) {
        const std::uint64_t place = saving_.Source().PlaceOf(child.begin);
        const auto found = metadata_.find(place);
        if (found != metadata_.end())
            return found->second;
        return metadata_
            .emplace(std::piecewise_construct, std::forward_as_tuple(place),
                     std::forward_as_tuple(saving_, edits_, saving_.ElementAt(place), kMetadataOrder))
            .first->second;
    }
    void Finish() {
        for (auto& [place, metadata] : metadata_)
            metadata.Finish();
        if (newMetadata_.empty())
            return;
        const std::string name = root_.Qualified(gpx::kMetadata);
        const std::string& separator = root_.ChildLayout().separator;
        root_.Add(gpx::kMetadata,
                  separator + "<" + name + ">" + newMetadata_ + separator + "</" + name + ">");
    }

    Saving& saving_;
    TextEdits& edits_;
    ElementEdits& root_;
    const GpxDocument& document_;
    /// As they were read.
    icu::UnicodeString name_;
    std::optional<double> time_;
    Access::HeadChanges changes_;
    /// By the places of the elements.
    std::map<std::uint64_t, ElementEdits> metadata_;
    std::string newMetadata_;
};

} // namespace

void EditHead(Saving& saving, TextEdits& edits, ElementEdits& root, const GpxDocument& document) {
    HeadEditing(saving, edits, root, document).Edit();
}

} // namespace vexaTransferLib::saving
