// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/PointForm.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/model/SourceValues.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/ValueText.h>

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

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

// In the order of PointForm::texts.
constexpr std::array<std::string_view, 6> kTexts = {"name", "cmt", "desc", "src", "sym", "type"};

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
        if (child.kind == NamespaceKind::kGroundspeak || child.kind == NamespaceKind::kTarvik)
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
        if (!isElevation && child.name != gpx::kTime)
            return ReadText(child);
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

    const char* ReadText(const ScannedChild& child) {
        const auto found = std::find(kTexts.begin(), kTexts.end(), child.name);
        if (found == kTexts.end()) {
            form_.hasOtherValues = form_.hasOtherValues || !IsIn(kNotInModel, child.name);
            return nullptr;
        }
        const ScannedLeaf leaf = ScanLeaf(child.tag, child.begin);
        form_.texts[static_cast<std::size_t>(found - kTexts.begin())] = leaf.text;
        form_.hasOtherValues = form_.hasOtherValues || !leaf.isSimple;
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

// Compares without a copy.
bool PointForm::HasText(std::size_t index, const icu::UnicodeString& text) const {
    const std::string_view bytes = texts[index];
    const auto size = static_cast<std::int32_t>(bytes.size());
    if (text.length() > size || (text.isEmpty() && size != 0))
        return false;
    const char16_t* const units = text.getBuffer();
    std::int32_t unit = 0;
    for (std::int32_t i = 0; i < size;) {
        char32_t read = 0;
        char32_t wanted = 0;
        U8_NEXT_UNSAFE(bytes.data(), i, read);
        if (unit == text.length())
            return false;
        U16_NEXT(units, unit, text.length(), wanted);
        if (read != wanted)
            return false;
    }
    return unit == text.length();
}

bool PointForm::HasTexts(const GpxModelAccess::RareData* rare) const {
    if (rare == nullptr)
        return std::all_of(texts.begin(), texts.end(), [](std::string_view text) { return text.empty(); });
    const bool hasOthers = rare->magneticVariation || rare->geoidHeight || rare->url || rare->geocache ||
                           !rare->formAttributes.empty() || rare->symbolNumber != 0 || !rare->guid.isEmpty();
    return !hasOthers && HasText(0, rare->name) && HasText(1, rare->comment) &&
           HasText(2, rare->description) && HasText(3, rare->source) && HasText(4, rare->symbol) &&
           HasText(5, rare->type);
}

std::span<const std::string_view> FieldsOf(GpxPointType type, bool is10) {
    if (is10 && type == kGpxTrackPoint)
        return kTrackPoint10;
    return kPoint;
}

bool PointForm::IsSimple(const GpxPoint& point) const {
    using Access = GpxModelAccess;
    if (hasOtherValues || !HasTexts(Access::GetRareData(point)) || Access::GetRawFix(point) != 0 ||
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
    if (form.isStandard && source.HasScopeIn(place, source.PlaceOf(form.end)))
        form.isStandard = IsPlainGpx(names, source, begin, form.end);
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
