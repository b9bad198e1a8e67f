// SPDX-License-Identifier: MIT
#include <vexagpx/export/PathProperties.h>

#include <vexagpx/export/ElementProperties.h>
#include <vexagpx/output/HiddenFields.h>

#include <vexaTransferLib/GpxPathDetails.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

using Kind = ElementField::Kind;

constexpr ElementField kFields[] = {
    {"name", Field::kName, Kind::kText},        {"cmt", Field::kComment, Kind::kText},
    {"desc", Field::kDescription, Kind::kText}, {"src", Field::kSource, Kind::kText},
    {"number", Field::kNumber, Kind::kCount},   {"type", Field::kType, Kind::kText},
};

/// \param fields the elements of the path that are no points
/// \return the number of values in elements that are not taken
std::uint64_t TakeFields(const GpxElement& path, const std::vector<GpxElement>& fields,
                         Properties& properties) {
    const std::string_view nameSpace = path.GetNamespace();
    std::uint64_t foreign = 0;
    bool hasLink = false;
    for (const GpxElement& field : fields) {
        const std::string_view name = field.GetName();
        const bool isForeign = IsForeign(field, nameSpace);
        if (!isForeign && (name == "link" || name == "url"))
            hasLink = true;
        else if (isForeign || !TakeElement(field, kFields, properties))
            foreign += CountValues(field);
    }
    if (hasLink)
        properties.Add(Field::kLinks, GpxPathDetails(path).GetLinks());
    return foreign;
}

/// Twice the number of elements in well-formed XML, or more than that: comments and a ">" in a text count too.
std::uint64_t CountTags(std::string_view xml) {
    std::uint64_t tags = 0;
    char before = 0;
    for (const char byte : xml) {
        tags += byte == '>' ? 1U + (before == '/' ? 1U : 0U) : 0U;
        before = byte;
    }
    return tags;
}

std::uint64_t CountTags(const std::vector<GpxElement>& elements) {
    std::uint64_t tags = 0;
    for (const GpxElement& element : elements)
        tags += CountTags(element.GetXml());
    return tags;
}

/// The elements of points that have nothing but a position, a height and a time.
template <class Iterator>
std::uint64_t CountPlainElements(Iterator begin, Iterator end) {
    std::uint64_t elements = 0;
    double value = 0.0;
    for (Iterator point = begin; point != end; ++point)
        elements += 1U + (point->GetElevation(value) ? 1U : 0U) + (point->GetTime(value) ? 1U : 0U);
    return elements;
}

void AddMissing(std::uint64_t foreign, std::uint64_t known, LeftOut& missing) {
    missing.extensions += foreign > known ? foreign - known : 0;
}

} // namespace

void TakeRoute(const GpxRoute& route, Properties& properties, LeftOut& missing) {
    const std::uint64_t foreign = TakeFields(route.GetElement(), FieldsOf(route), properties);
    TarvikRouteType type = kTarvikRouteStandard;
    const bool hasType = route.GetTarvikRouteType(type);
    if (hasType)
        properties.Add(Field::kRouteType, icu::UnicodeString::fromUTF8(NameOf(type)));
    AddMissing(foreign, hasType ? 1 : 0, missing);
}

void TakeTrack(const GpxTrack& track, Properties& properties, LeftOut& missing) {
    std::uint64_t foreign = TakeFields(track.GetElement(), FieldsOf(track), properties);
    for (const GpxElement& ofSegment : SegmentFieldsOf(track))
        foreign += CountValues(ofSegment);
    const std::optional<std::int32_t> color = ColorOf(track);
    if (color)
        properties.Add(Field::kColor, static_cast<double>(*color));
    AddMissing(foreign, color ? 1 : 0, missing);
}

bool HasPlainPoints(const GpxRoute& route) {
    const std::uint64_t elements = 1 + CountPlainElements(route.GetPointIter(), route.GetPointEndIter());
    return CountTags(route.GetElement().GetXml()) == 2 * elements + CountTags(FieldsOf(route));
}

bool HasPlainPoints(const GpxTrack& track) {
    std::uint64_t elements = 1;
    for (auto segment = track.GetSegmentIter(); segment != track.GetSegmentEndIter(); ++segment)
        elements += 1 + CountPlainElements(segment->begin(), segment->end());
    return CountTags(track.GetElement().GetXml()) ==
           2 * elements + CountTags(FieldsOf(track)) + CountTags(SegmentFieldsOf(track));
}

ExportHead HeadOf(const GpxDocument& document, LeftOut& missing) {
    ExportHead head;
    head.name = DocumentName(document);
    double time = 0.0;
    if (document.GetDocumentTime(time) && IsWritableTime(time))
        head.time = time;
    const auto take = [&](const GpxElement& field) {
        const std::string_view name = field.GetName();
        if (name == "desc" && head.description.isEmpty())
            head.description = field.GetText();
        else if (name != "name" && name != "bounds" && !(name == "time" && head.time))
            missing.metadata += CountValues(field);
    };
    for (const GpxElement& field : FieldsOf(document)) {
        if (field.GetName() != "metadata") {
            take(field);
            continue;
        }
        for (const GpxElement& child : field.GetChildren())
            take(child);
    }
    return head;
}

} // namespace vexagpx
