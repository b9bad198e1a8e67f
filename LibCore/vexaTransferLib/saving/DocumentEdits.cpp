// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/ObjectEdits.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/standard/StandardWriters.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::saving {

namespace {

using Access = GpxModelAccess;

// In the order of the schemas of both versions.
constexpr std::string_view kRootOrder[] = {
    gpx::kMetadata, gpx::kName,   gpx::kDesc, gpx::kAuthor, gpx::kEmail, gpx::kLink,      gpx::kTime,
    gpx::kKeywords, gpx::kBounds, gpx::kWpt,  gpx::kRte,    gpx::kTrk,   gpx::kExtensions};

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
    EditHead(saving, edits, root, document);
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
