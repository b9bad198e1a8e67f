// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/ObjectEdits.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/standard/StandardWriters.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/ValueText.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::saving {

namespace {

using Access = GpxModelAccess;
using Place = standard::PieceOutput::Place;

// In the order of the schemas of both versions.
constexpr std::string_view kRootOrder[] = {
    gpx::kMetadata, gpx::kName,   gpx::kDesc, gpx::kAuthor, gpx::kEmail, gpx::kLink,      gpx::kTime,
    gpx::kKeywords, gpx::kBounds, gpx::kWpt,  gpx::kRte,    gpx::kTrk,   gpx::kExtensions};
constexpr std::string_view kMetadataOrder[] = {gpx::kName, gpx::kDesc, gpx::kAuthor,   gpx::kCopyright,
                                               gpx::kLink, gpx::kTime, gpx::kKeywords, gpx::kBounds};

/// The name and the time of a document: in `metadata`, or below the root as in GPX 1.0.
class HeadEditing {
public:
    HeadEditing(Saving& saving, TextEdits& edits, ElementEdits& root, const GpxDocument& document)
        : saving_(saving), edits_(edits), root_(root), document_(document) {
        for (const GpxElement& field : Access::GetFields(document))
            ReadField(field);
    }

    void Edit() {
        if (name_ != Access::GetName(document_))
            EditField(gpx::kName, saving_.Escaped(Access::GetName(document_), Place::kContent));
        double time = 0.0;
        const bool hasTime = document_.GetDocumentTime(time);
        if (time_ != (hasTime ? std::optional(time) : std::nullopt))
            EditField(gpx::kTime, hasTime ? TimeText(time) : std::string());
        if (!newMetadata_.empty())
            AddMetadata();
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

    // The first element of this name is the one that counts. Without a text, all go.
    void EditField(std::string_view name, const std::string& content) {
        bool isSet = false;
        for (const SavedChild& child : root_.Children()) {
            if (child.Is(NamespaceKind::kGpx, name))
                isSet = EditChild(root_, child, content, isSet) || isSet;
            else if (child.Is(NamespaceKind::kGpx, gpx::kMetadata))
                isSet = EditIn(child, name, content, isSet) || isSet;
        }
        if (!isSet && !content.empty())
            AddField(name, content);
    }
    // True when the child has the content now.
    static bool EditChild(ElementEdits& parent, const SavedChild& child, const std::string& content,
                          bool isSet) {
        if (content.empty())
            parent.Remove(child);
        else if (!isSet)
            parent.SetContent(child, content);
        return !content.empty();
    }
    bool EditIn(const SavedChild& metadata, std::string_view name, const std::string& content, bool isSet) {
        ElementEdits parent(saving_, edits_, ElementOf(metadata), kMetadataOrder);
        bool isSetHere = false;
        for (const SavedChild& child : parent.Children())
            if (child.Is(NamespaceKind::kGpx, name))
                isSetHere = EditChild(parent, child, content, isSet || isSetHere) || isSetHere;
        return isSetHere;
    }
    void AddField(std::string_view name, const std::string& content) {
        const SavedChild* const metadata = root_.Find(gpx::kMetadata);
        if (saving_.Is10()) {
            root_.AddText(name, content);
        } else if (metadata == nullptr) {
            const std::string qualified = root_.Qualified(name);
            newMetadata_ += root_.ChildLayout().Inner().separator + "<" + qualified + ">" + content + "</" +
                            qualified + ">";
        } else {
            ElementEdits parent(saving_, edits_, ElementOf(*metadata), kMetadataOrder);
            parent.AddText(name, content);
            parent.Finish();
        }
    }
    void AddMetadata() {
        const std::string name = root_.Qualified(gpx::kMetadata);
        const std::string& separator = root_.ChildLayout().separator;
        root_.Add(gpx::kMetadata,
                  separator + "<" + name + ">" + newMetadata_ + separator + "</" + name + ">");
    }
    SavedElement ElementOf(const SavedChild& child) {
        return saving_.ElementAt(saving_.Source().PlaceOf(child.begin));
    }

    Saving& saving_;
    TextEdits& edits_;
    ElementEdits& root_;
    const GpxDocument& document_;
    /// As they were read.
    icu::UnicodeString name_;
    std::optional<double> time_;
    std::string newMetadata_;
};

void EditObject(Saving& saving, TextEdits& edits, const SavedElement& element, const GpxRoute& route) {
    EditRoute(saving, edits, element, route);
}
void EditObject(Saving& saving, TextEdits& edits, const SavedElement& element, const GpxTrack& track) {
    EditTrack(saving, edits, element, track);
}
void WriteObject(standard::Writing& writing, const GpxRoute& route) {
    standard::WriteRoute(writing, route);
}
void WriteObject(standard::Writing& writing, const GpxTrack& track) {
    standard::WriteTrack(writing, track);
}

/// The routes or the tracks of the document.
template <class Path>
class SavedPaths final : public SavedList {
public:
    SavedPaths(Saving& saving, const SavedElement& root, const std::vector<Path>& paths,
               std::string_view kind)
        : saving_(saving), root_(root), paths_(paths), kind_(kind) {}

    std::size_t Count() const override { return paths_.size(); }
    const SourceText* SourceOf(std::size_t index) const override {
        return Access::GetSource(paths_[index].GetElement());
    }
    std::uint64_t PlaceOf(std::size_t index) const override {
        return Access::GetPlace(paths_[index].GetElement());
    }
    bool IsChanged(std::size_t) const override { return true; }
    void Edit(std::size_t index, const SavedElement& element, TextEdits& edits) override {
        saving_.Writing().SetObject(kind_, index + 1);
        EditObject(saving_, edits, element, paths_[index]);
    }
    std::string Render(std::size_t index, const ElementLayout& layout) override {
        saving_.Writing().SetObject(kind_, index + 1);
        return RenderObject(
            saving_, root_, SourceOf(index), PlaceOf(index), layout, 1,
            [&](const SavedElement& element, TextEdits& edits) { Edit(index, element, edits); },
            [&] { WriteObject(saving_.Writing(), paths_[index]); });
    }

private:
    Saving& saving_;
    const SavedElement& root_;
    const std::vector<Path>& paths_;
    std::string_view kind_;
};

} // namespace

void EditDocument(Saving& saving, TextEdits& edits, const GpxDocument& document) {
    ElementEdits root(saving, edits, saving.ElementAt(saving.Source().RootPlace()), kRootOrder);
    HeadEditing(saving, edits, root, document).Edit();
    const Access::ReadCounts& counts = Access::GetReadCounts(document);
    SavePoints(saving, edits, root, {gpx::kWpt, counts.waypoints, &document.GetUnreadElements()},
               document.GetWaypoints(), 1);
    SavedPaths routes(saving, root.Element(), document.GetRoutes(), "route");
    SaveList(saving, edits, root, {gpx::kRte, counts.routes}, routes);
    SavedPaths tracks(saving, root.Element(), document.GetTracks(), "track");
    SaveList(saving, edits, root, {gpx::kTrk, counts.tracks}, tracks);
    root.Finish();
}

} // namespace vexaTransferLib::saving
