// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/PointForm.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/model/SourceValues.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/ValueText.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace vexaTransferLib::standard {

namespace {

constexpr std::array<std::string_view, 18> kPoint = {
    "ele", "time", "magvar", "geoidheight", "name", "cmt",  "desc", "src",           "link",
    "sym", "type", "fix",    "sat",         "hdop", "vdop", "pdop", "ageofdgpsdata", "dgpsid"};
// Only a track point of GPX 1.0 has a course and a speed.
constexpr std::array<std::string_view, 20> kTrackPoint10 = {
    "ele",  "time", "course", "speed", "magvar", "geoidheight", "name", "cmt",  "desc",          "src",
    "link", "sym",  "type",   "fix",   "sat",    "hdop",        "vdop", "pdop", "ageofdgpsdata", "dgpsid"};

// The values that the model has no member for, or the fast comparison knows.
constexpr std::array<std::string_view, 10> kNotInModel = {
    "ele", "time", "course", "speed", "sat", "hdop", "vdop", "pdop", "ageofdgpsdata", "dgpsid"};

bool IsIn(std::span<const std::string_view> names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Checks the children of a point, one after another.
class FormCheck {
public:
    FormCheck(NamespaceCursor& names, const SourceText& source, GpxPointType type, bool is10, PointForm& form)
        : names_(names), source_(source), fields_(FieldsOf(type, is10)), type_(type), is10_(is10),
          form_(form) {}

    const char* Check(const ScannedChild& child) {
        if (child.kind != NamespaceKind::kGpx)
            return CheckForeign(child);
        if (!child.prefix.empty() || !names_.IsRoots(child.prefix, source_.PlaceOf(child.begin)))
            form_.isStandard = false;
        if (child.name == gpx::kExtensions)
            return CheckExtensions();
        const std::size_t rank = RankOf(child.name);
        // Only links may be repeated.
        if (rank < next_ || rank == fields_.size())
            form_.isStandard = false;
        next_ = child.name == gpx::kLink || child.name == gpx::kUrl ? rank : rank + 1;
        return ReadValue(child);
    }

private:
    const char* CheckForeign(const ScannedChild& child) {
        next_ = fields_.size();
        if (!is10_)
            form_.isStandard = false;
        if (child.kind == NamespaceKind::kGroundspeak)
            form_.hasOtherValues = true;
        return nullptr;
    }
    const char* CheckExtensions() {
        if (is10_ || next_ > fields_.size())
            form_.isStandard = false;
        next_ = fields_.size() + 1;
        if (type_ != kGpxTrackPoint)
            form_.hasOtherValues = true;
        return nullptr;
    }
    // `url` and `urlname` are where the link is.
    std::size_t RankOf(std::string_view name) const {
        if (name == gpx::kUrl || name == gpx::kUrlname || name == gpx::kLink) {
            if (is10_ == (name == gpx::kLink))
                return fields_.size();
            name = gpx::kLink;
        }
        return static_cast<std::size_t>(std::find(fields_.begin(), fields_.end(), name) - fields_.begin());
    }
    const char* ReadValue(const ScannedChild& child) {
        const bool isElevation = child.name == gpx::kEle;
        if (!isElevation && child.name != gpx::kTime) {
            form_.hasOtherValues = form_.hasOtherValues || !IsIn(kNotInModel, child.name);
            return nullptr;
        }
        const ScannedLeaf leaf = ScanLeaf(child.tag, child.begin);
        const std::string_view text = text::Trimmed(leaf.text);
        if (!leaf.isSimple)
            form_.hasOtherValues = true;
        else if (isElevation)
            form_.elevation = NumberIn(text);
        else
            form_.time = TimeIn(text);
        return leaf.end;
    }

    NamespaceCursor& names_;
    const SourceText& source_;
    std::span<const std::string_view> fields_;
    GpxPointType type_;
    bool is10_;
    PointForm& form_;
    /// The rank that the next child has at least.
    std::size_t next_ = 0;
};

bool IsEqual(const std::optional<double>& number, const double* value) {
    return value != nullptr ? number == *value : !number;
}

} // namespace

std::span<const std::string_view> FieldsOf(GpxPointType type, bool is10) {
    if (is10 && type == kGpxTrackPoint)
        return kTrackPoint10;
    return kPoint;
}

bool PointForm::IsSimple(const GpxPoint& point) const {
    using Access = GpxModelAccess;
    if (hasOtherValues || Access::GetRareData(point) != nullptr || Access::GetRawFix(point) != 0 ||
        Access::GetRawRoutePointType(point) != 0)
        return false;
    const double longitudeRead = longitude.value_or(0.0);
    return latitude == Access::GetLatitude(point) && (longitudeRead == Access::GetLongitude(point)) &&
           IsEqual(elevation, Access::GetElevation(point)) && IsEqual(time, Access::GetTime(point));
}

PointForm ExamineForm(NamespaceCursor& names, const SourceText& source, const char* begin, GpxPointType type,
                      bool is10) {
    PointForm form;
    const ScannedChild element = ScanChild(names, source, begin);
    const std::uint64_t place = source.PlaceOf(begin);
    form.isStandard =
        element.prefix.empty() && names.IsRoots(element.prefix, place) && source.IsInRootScope(place);
    const complete::Position position = complete::PositionOf(element.tag);
    form.latitude = position.latitude;
    form.longitude = position.longitude;
    FormCheck check(names, source, type, is10, form);
    form.end = ForEachChild(names, source, element.tag,
                            [&](const ScannedChild& child) { return check.Check(child); });
    return form;
}

void SortForeign(const SourceElements& children, GpxPointType type, bool is10, ForeignParts& parts) {
    const std::span<const std::string_view> fields = FieldsOf(type, is10);
    for (const SourceElement& child : children) {
        if (child.child.kind != NamespaceKind::kGpx)
            parts.direct.push_back(child);
        else if (child.child.name == gpx::kExtensions)
            parts.extensions.push_back(child);
        else if (!IsIn(fields, child.child.name) && child.child.name != gpx::kUrl &&
                 child.child.name != gpx::kUrlname)
            parts.other.push_back(child);
    }
}

} // namespace vexaTransferLib::standard
