// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/ObjectEdits.h>

#include <vexaTransferLib/complete/CompleteReaders.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/standard/PointExtensions.h>
#include <vexaTransferLib/standard/PointFields.h>
#include <vexaTransferLib/standard/PointForm.h>
#include <vexaTransferLib/standard/StandardWriters.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::saving {

namespace {

using Access = GpxModelAccess;
using standard::RareOf;

/// One point, while its element is edited.
class PointEditing {
public:
    PointEditing(Saving& saving, TextEdits& edits, const SavedElement& element, const GpxPoint& point,
                 const GpxPoint& read)
        : saving_(saving), edits_(edits), point_(point), read_(read),
          parent_(saving, edits, element, standard::FieldsOf(point.GetPointType(), saving.Is10())) {}

    void Edit() {
        EditPosition();
        for (const std::string_view name : standard::FieldsOf(point_.GetPointType(), saving_.Is10())) {
            const standard::PointField* const field = standard::FindPointField(name);
            if (name == gpx::kLink)
                EditPointLink();
            else if (field != nullptr && !field->isSame(point_, read_))
                EditText(parent_, name, ContentOf(*field));
        }
        EditExtensions();
        parent_.Finish();
    }

private:
    void EditPosition() {
        const ScannedTag& tag = parent_.Element().child.tag;
        if (Access::GetLatitude(point_) != Access::GetLatitude(read_))
            parent_.SetAttribute(tag, gpx::kLat, Number(Access::GetLatitude(point_)));
        if (Access::GetLongitude(point_) != Access::GetLongitude(read_))
            parent_.SetAttribute(tag, gpx::kLon, Number(Access::GetLongitude(point_)));
    }
    std::string Number(double number) {
        return saving_.Rendered({}, 0, [&] { saving_.Writing().Out().AppendNumber(number); });
    }
    // What is between the tags of the element as it is written.
    std::string ContentOf(const standard::PointField& field) {
        const std::string xml = saving_.Rendered({}, 0, [&] { field.write(saving_.Writing(), point_, 0); });
        const std::size_t tags = field.name.size() + 2;
        return xml.empty() ? xml : xml.substr(tags, xml.size() - 2 * tags - 1);
    }
    void EditPointLink() {
        const GpxUrl* const link = standard::LinkOf(point_);
        const GpxUrl* const read = standard::LinkOf(read_);
        if (!standard::IsSameLink(link, read))
            EditLink(saving_, edits_, parent_, link, read);
    }
    // The element of a geocache is edited when both have one.
    void EditExtensions() {
        standard::PointExtensions extensions(saving_.Writing(), point_, &read_);
        const GpxGroundspeakCache* const cache = RareOf(point_).geocache.get();
        const GpxGroundspeakCache* const readCache = RareOf(read_).geocache.get();
        if (extensions.HasNewGeocache() && cache != nullptr && readCache != nullptr &&
            cache->element == readCache->element) {
            extensions.LeaveGeocache();
            EditGeocache(saving_, edits_, *cache, *readCache);
        }
        const auto writeNew = [&](int depth) { extensions.WriteNew(depth); };
        EditForeign(
            saving_, edits_, parent_, [&](const ScannedChild& child) { return extensions.IsReplaced(child); },
            extensions.HasNew() ? std::function<void(int)>(writeNew) : nullptr);
    }

    Saving& saving_;
    TextEdits& edits_;
    const GpxPoint& point_;
    const GpxPoint& read_;
    ElementEdits parent_;
};

constexpr int kWaypointDepth = 1;

/// The points of one element.
class SavedPoints final : public SavedList {
public:
    SavedPoints(Saving& saving, const SavedElement& parent, const std::vector<GpxPoint>& points, int depth)
        : saving_(saving), parent_(parent), points_(points), depth_(depth) {}

    std::size_t Count() const override { return points_.size(); }
    const SourceText* SourceOf(std::size_t index) const override { return Access::GetSource(points_[index]); }
    std::uint64_t PlaceOf(std::size_t index) const override { return Access::GetPlace(points_[index]); }
    bool IsChanged(std::size_t index) const override { return Access::IsChanged(points_[index]); }
    void Edit(std::size_t index, const SavedElement& element, TextEdits& edits) override {
        Announce(index + 1);
        EditPoint(saving_, edits, element, points_[index]);
        Announce(0);
    }
    std::string Render(std::size_t index, const ElementLayout& layout) override {
        const GpxPoint& point = points_[index];
        Announce(index + 1);
        std::string text = RenderObject(
            saving_, parent_, SourceOf(index), PlaceOf(index), layout, depth_,
            [&](const SavedElement& element, TextEdits& edits) {
                if (Access::IsChanged(point))
                    EditPoint(saving_, edits, element, point);
            },
            [&] { standard::PointWriter(saving_.Writing(), point.GetPointType(), depth_).Write(point); });
        Announce(0);
        return text;
    }

private:
    // For reports.
    void Announce(std::size_t number) {
        if (depth_ == kWaypointDepth)
            saving_.Writing().SetObject("waypoint", number);
        else
            saving_.Writing().SetPoint(number);
    }

    Saving& saving_;
    const SavedElement& parent_;
    const std::vector<GpxPoint>& points_;
    int depth_;
};

} // namespace

void EditPoint(Saving& saving, TextEdits& edits, const SavedElement& element, const GpxPoint& point) {
    std::vector<GpxPoint> read;
    complete::ReadPoint(saving.Context(), element.child, point.GetPointType(), read);
    if (!read.empty() && !standard::HasSameValues(point, read.front()))
        PointEditing(saving, edits, element, point, read.front()).Edit();
}

void SavePoints(Saving& saving, TextEdits& edits, ElementEdits& parent, const ListKind& kind,
                const std::vector<GpxPoint>& points, int depth) {
    SavedPoints list(saving, parent.Element(), points, depth);
    SaveList(saving, edits, parent, kind, list);
}

std::string RenderAllPoints(Saving& saving, const SavedElement& parent, const std::vector<GpxPoint>& points,
                            const ElementLayout& layout, int depth) {
    SavedPoints list(saving, parent, points, depth);
    std::string text;
    for (std::size_t i = 0; i < points.size(); ++i)
        text += list.Render(i, layout);
    return text;
}

} // namespace vexaTransferLib::saving
