// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/ObjectEdits.h>

#include <vexaTransferLib/complete/CompleteReaders.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/standard/PointFields.h>
#include <vexaTransferLib/standard/StandardWriters.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::saving {

namespace {

using Access = GpxModelAccess;
using Place = standard::PieceOutput::Place;

// In the order of the schemas, with the points last.
constexpr std::string_view kRouteOrder[] = {gpx::kName, gpx::kCmt,        gpx::kDesc,
                                            gpx::kSrc,  gpx::kLink,       gpx::kNumber,
                                            gpx::kType, gpx::kExtensions, gpx::kRtept};
constexpr std::string_view kTrackOrder[] = {gpx::kName, gpx::kCmt,        gpx::kDesc,
                                            gpx::kSrc,  gpx::kLink,       gpx::kNumber,
                                            gpx::kType, gpx::kExtensions, gpx::kTrkseg};
constexpr std::string_view kSegmentOrder[] = {gpx::kTrkpt, gpx::kExtensions};

constexpr int kPathDepth = 1;
constexpr int kSegmentDepth = 2;

/// What routes and tracks have in common, while an element is edited.
class PathEditing {
public:
    /// \param fields what the element has but points and segments
    PathEditing(Saving& saving, TextEdits& edits, const SavedElement& element, ElementEdits::Order order,
                const std::vector<GpxElement>& fields)
        : saving_(saving), edits_(edits), parent_(saving, edits, element, order) {
        for (const GpxElement& field : fields) {
            const ScannedChild child = saving.ElementAt(Access::GetPlace(field)).child;
            if (child.kind == NamespaceKind::kGpx && child.name != gpx::kExtensions)
                complete::ReadPathChild(saving.Context(), child, read_);
        }
    }

    ElementEdits& Parent() { return parent_; }
    const complete::PathParts& Read() const { return read_; }

    void EditPathText(std::string_view name, const icu::UnicodeString& text, const icu::UnicodeString& read) {
        if (text == read)
            return;
        if (name == gpx::kType && saving_.Is10() && parent_.Find(name) == nullptr)
            saving_.Writing().ReportUnwritten(name,
                                              "GPX 1.0 has no place for the type of a route or a track.");
        else
            EditText(parent_, name, saving_.Escaped(text, Place::kContent));
    }
    void EditPathLink(const GpxUrl* link) {
        GpxTrack before;
        read_.link.GiveTo(before);
        if (!standard::IsSameLink(link, Access::GetLink(before)))
            EditLink(saving_, edits_, parent_, link, Access::GetLink(before));
    }
    /// \param text empty for none
    void EditVendorElement(const text::ElementName& name, std::string_view text) {
        const auto writeNew = [&](int depth) {
            standard::WriteVendorElement(saving_.Writing(), name, text, depth);
        };
        EditForeign(
            saving_, edits_, parent_,
            [&](const ScannedChild& child) { return child.Is(NamespaceKind::kTarvik, name.Local()); },
            text.empty() ? nullptr : std::function<void(int)>(writeNew));
    }

private:
    Saving& saving_;
    TextEdits& edits_;
    ElementEdits parent_;
    complete::PathParts read_;
};

/// The segments of one track.
class SavedSegments final : public SavedList {
public:
    SavedSegments(Saving& saving, const SavedElement& parent, const GpxTrack& track)
        : saving_(saving), parent_(parent), track_(track) {}

    std::size_t Count() const override { return track_.GetSegmentCount(); }
    const SourceText* SourceOf(std::size_t index) const override {
        return Access::GetSource(ElementOf(index));
    }
    std::uint64_t PlaceOf(std::size_t index) const override { return Access::GetPlace(ElementOf(index)); }
    bool IsChanged(std::size_t) const override { return true; }
    void Edit(std::size_t index, const SavedElement& element, TextEdits& edits) override {
        saving_.Writing().SetSegment(index + 1);
        ElementEdits segment(saving_, edits, element, kSegmentOrder);
        SavePoints(saving_, edits, segment,
                   {gpx::kTrkpt, Access::ReadPoints(track_, index), &track_.GetUnreadElements()},
                   Access::GetSegments(track_)[index], kSegmentDepth + 1);
        AddJoined(index, segment);
        segment.Finish();
        saving_.Writing().SetSegment(0);
    }
    std::string Render(std::size_t index, const ElementLayout& layout) override {
        if (!ElementOf(index))
            return RenderPoints(index, layout);
        return RenderObject(
            saving_, parent_, SourceOf(index), PlaceOf(index), layout, kSegmentDepth,
            [&](const SavedElement& element, TextEdits& edits) { Edit(index, element, edits); },
            [&] { standard::WriteSegment(saving_.Writing(), track_, index); });
    }

private:
    GpxElement ElementOf(std::size_t index) const { return Access::GetSegmentElement(track_, index); }

    // Of segments that were joined to this one: points that could not be read, and what is no point.
    void AddJoined(std::size_t index, ElementEdits& segment) {
        for (const GpxElement& joined : Access::GetJoinedElements(track_, index))
            for (const GpxElement& unread : track_.GetUnreadElements())
                if (IsWithin(unread, joined))
                    segment.Add(gpx::kTrkpt, Copied(unread, segment));
        const GpxElement own = ElementOf(index);
        for (const GpxElement& field : Access::GetSegmentFields(track_, index))
            if (!IsWithin(field, own))
                segment.Add(gpx::kExtensions, Copied(field, segment));
    }
    static bool IsWithin(const GpxElement& inner, const GpxElement& outer) {
        const SourceText* const source = Access::GetSource(outer);
        if (source == nullptr || source != Access::GetSource(inner))
            return false;
        const std::uint64_t begin = Access::GetPlace(outer);
        const std::uint64_t place = Access::GetPlace(inner);
        return place > begin && place < source->PlaceOf(source->EndOf(source->At(begin)));
    }
    std::string Copied(const GpxElement& element, ElementEdits& segment) {
        return RenderObject(
            saving_, segment.Element(), Access::GetSource(element), Access::GetPlace(element),
            segment.ChildLayout(), 0, [](const SavedElement&, TextEdits&) {},
            [&] {
                saving_.Writing().StartLine(0);
                standard::CopyElement(saving_.Writing(), saving_.Writing().ElementOf(element));
            });
    }
    // A segment without an element has nothing but points.
    std::string RenderPoints(std::size_t index, const ElementLayout& layout) {
        saving_.Writing().SetSegment(index + 1);
        const std::string name = QualifiedBelow(parent_, gpx::kTrkseg);
        const std::vector<GpxPoint>& points = Access::GetSegments(track_)[index];
        const std::string content =
            RenderAllPoints(saving_, parent_, points, layout.Inner(), kSegmentDepth + 1);
        saving_.Writing().SetSegment(0);
        return layout.separator + "<" + name + ">" + content + layout.separator + "</" + name + ">";
    }

    Saving& saving_;
    const SavedElement& parent_;
    const GpxTrack& track_;
};

} // namespace

void EditRoute(Saving& saving, TextEdits& edits, const SavedElement& element, const GpxRoute& route) {
    PathEditing path(saving, edits, element, kRouteOrder, Access::GetFields(route));
    path.EditPathText(gpx::kName, Access::GetName(route), path.Read().name);
    path.EditPathText(gpx::kSrc, Access::GetSource(route), path.Read().source);
    path.EditPathText(gpx::kType, Access::GetType(route), path.Read().type);
    const std::uint32_t type = Access::GetRawRouteType(route);
    if (type != Access::ReadRouteType(route))
        path.EditVendorElement(tarvik::kRouteType, text::kRouteTypeTexts[type]);
    SavePoints(saving, edits, path.Parent(),
               {gpx::kRtept, Access::ReadPoints(route), &route.GetUnreadElements()}, Access::GetPoints(route),
               kPathDepth + 1);
    path.Parent().Finish();
}

void EditTrack(Saving& saving, TextEdits& edits, const SavedElement& element, const GpxTrack& track) {
    PathEditing path(saving, edits, element, kTrackOrder, Access::GetFields(track));
    path.EditPathText(gpx::kName, Access::GetName(track), path.Read().name);
    path.EditPathText(gpx::kDesc, Access::GetDescription(track), path.Read().description);
    path.EditPathText(gpx::kSrc, Access::GetSource(track), path.Read().source);
    path.EditPathLink(Access::GetLink(track));
    path.EditPathText(gpx::kType, Access::GetType(track), path.Read().type);
    SavedSegments segments(saving, element, track);
    SaveList(saving, edits, path.Parent(), {gpx::kTrkseg, Access::ReadSegments(track)}, segments);
    path.Parent().Finish();
}

} // namespace vexaTransferLib::saving
