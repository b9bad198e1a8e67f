// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/StandardWriters.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::standard {

namespace {

using Access = GpxModelAccess;

constexpr std::string_view kFields11[] = {gpx::kName, gpx::kCmt,    gpx::kDesc, gpx::kSrc,
                                          gpx::kLink, gpx::kNumber, gpx::kType};

/// What routes and tracks write before their points.
class FieldsWriter {
public:
    FieldsWriter(Writing& writing, const SourceElements& elements) : writing_(writing), elements_(elements) {
        for (const SourceElement& element : elements)
            if (element.child.kind == NamespaceKind::kGpx && element.child.name != gpx::kExtensions)
                complete::ReadPathChild(writing.ContextOf(*element.source), element.child, read_);
    }

    /// \param text the model's; null when the model has no such text
    void WriteText(std::string_view name, const icu::UnicodeString* text) {
        const icu::UnicodeString* const before = ReadText(name);
        const bool isAsRead = text == nullptr || before == nullptr || *text == *before;
        if (name == gpx::kType && writing_.Is10()) {
            if ((text != nullptr && !text->isEmpty()) || Has(name))
                writing_.ReportUnwritten(name, "GPX 1.0 has no place for the type of a route or a track.");
            return;
        }
        if (!isAsRead && text->isEmpty())
            return;
        if (!isAsRead)
            WriteTextElement(writing_, name, *text, kDepth);
        CopyAll(name, isAsRead);
    }
    void WriteLink(const GpxUrl* link, bool isInModel) {
        const bool isAsRead =
            !isInModel || (link == nullptr ? read_.link.address.isEmpty()
                                           : Access::GetUrl(*link) == read_.link.address &&
                                                 Access::GetText(*link) == read_.link.text &&
                                                 Access::GetType(*link) == read_.link.type);
        WriteLinks(writing_, elements_, link, isAsRead, kDepth);
    }
    void WriteForeignElements(ForeignParts parts) {
        for (const SourceElement& element : elements_) {
            if (element.child.kind != NamespaceKind::kGpx)
                parts.direct.push_back(element);
            else if (element.child.name == gpx::kExtensions)
                parts.extensions.push_back(element);
            else if (!IsField(element.child.name))
                parts.other.push_back(element);
        }
        WriteForeign(writing_, parts, kDepth);
    }

private:
    static constexpr int kDepth = 2;

    static bool IsField(std::string_view name) {
        for (const std::string_view field : kFields11)
            if (field == name)
                return true;
        return name == gpx::kUrl || name == gpx::kUrlname;
    }
    bool Has(std::string_view name) const {
        for (const SourceElement& element : elements_)
            if (element.child.IsGpx(name))
                return true;
        return false;
    }
    const icu::UnicodeString* ReadText(std::string_view name) const {
        if (name == gpx::kName)
            return &read_.name;
        if (name == gpx::kDesc)
            return &read_.description;
        if (name == gpx::kSrc)
            return &read_.source;
        return name == gpx::kType ? &read_.type : nullptr;
    }
    void CopyAll(std::string_view name, bool copiesFirst) {
        bool isFirst = true;
        for (const SourceElement& element : elements_) {
            if (!element.child.IsGpx(name))
                continue;
            if (copiesFirst || !isFirst) {
                writing_.StartLine(kDepth);
                CopyElement(writing_, element);
            }
            isFirst = false;
        }
    }

    Writing& writing_;
    const SourceElements& elements_;
    complete::PathParts read_;
};

void StartElement(Writing& writing, std::string_view name, const GpxElement& element, int depth) {
    writing.StartLine(depth);
    writing.Out().AppendAll("<", name);
    // Only the start tag is looked at.
    if (const SourceText* const source = Access::GetSource(element)) {
        const char* const begin = source->At(Access::GetPlace(element));
        CopyAttributes(writing, {source, ScanChild(writing.NamesOf(*source), *source, begin), nullptr},
                       [](std::string_view) { return false; });
    }
    writing.Out().Append(">");
}

void EndElement(Writing& writing, std::string_view name, int depth) {
    writing.StartLine(depth);
    writing.Out().AppendAll("</", name, ">");
}

/// Elements of a list in the order of their places, as far as they are within an element.
class PartOfList {
public:
    PartOfList(const std::vector<GpxElement>& elements, const GpxElement& parent)
        : elements_(elements), source_(Access::GetSource(parent)), from_(Access::GetPlace(parent)) {
        if (elements.empty() || source_ == nullptr)
            return;
        to_ = source_->PlaceOf(source_->EndOf(source_->At(from_)));
        const auto first =
            std::partition_point(elements.begin(), elements.end(), [&](const GpxElement& element) {
                return Access::GetPlace(element) <= from_;
            });
        next_ = static_cast<std::size_t>(first - elements.begin());
    }
    bool HasBefore(const GpxPoint& point) const {
        return IsWithin() && Access::GetSource(point) == source_ &&
               Access::GetPlace(elements_[next_]) < Access::GetPlace(point);
    }
    bool HasMore() const { return IsWithin(); }
    const GpxElement& Take() { return elements_[next_++]; }

private:
    bool AtEnd() const { return next_ == elements_.size(); }
    bool IsWithin() const {
        if (AtEnd() || source_ == nullptr || Access::GetSource(elements_[next_]) != source_)
            return false;
        const std::uint64_t place = Access::GetPlace(elements_[next_]);
        return place > from_ && place < to_;
    }

    const std::vector<GpxElement>& elements_;
    const SourceText* source_;
    std::uint64_t from_;
    std::uint64_t to_ = 0;
    std::size_t next_ = 0;
};

void WriteUnread(Writing& writing, const GpxElement& element, int depth) {
    writing.StartLine(depth);
    CopyElement(writing, writing.ElementOf(element));
}

template <class Points>
void WritePoints(Writing& writing, const Points& points, GpxPointType type, PartOfList unread, int depth) {
    PointWriter writer(writing, type, depth);
    std::size_t number = 0;
    for (const GpxPoint& point : points) {
        writing.SetPoint(++number);
        while (unread.HasBefore(point))
            WriteUnread(writing, unread.Take(), depth);
        writer.Write(point);
    }
    writing.SetPoint(0);
    while (unread.HasMore())
        WriteUnread(writing, unread.Take(), depth);
}

// What a segment has besides points. GPX 1.0 has no place for it.
void WriteSegmentFields(Writing& writing, const std::vector<GpxElement>& fields) {
    ForeignParts parts;
    for (const GpxElement& field : fields) {
        const SourceElement element = writing.ElementOf(field);
        if (writing.Is10())
            writing.ReportUnwritten(element.child.name, "GPX 1.0 has no place for it in a segment.");
        else if (element.child.kind != NamespaceKind::kGpx)
            parts.direct.push_back(element);
        else if (element.child.name == gpx::kExtensions)
            parts.extensions.push_back(element);
        else
            parts.other.push_back(element);
    }
    if (!writing.Is10())
        WriteForeign(writing, parts, 3);
}

} // namespace

void WriteVendorElement(Writing& writing, std::string_view name, std::string_view text, int depth) {
    writing.StartLine(depth);
    writing.Out().AppendAll("<", name, " xmlns:tarvik=\"", text::kTarvikUri, "\">", text, "</", name, ">");
}

void WriteSegment(Writing& writing, const GpxTrack& track, std::size_t index) {
    writing.SetSegment(index + 1);
    const GpxTrack::Segments& segments = Access::GetSegments(track);
    const GpxElement element = track.GetSegmentElement(segments.begin() + static_cast<std::ptrdiff_t>(index));
    StartElement(writing, gpx::kTrkseg, element, 2);
    WritePoints(writing, segments[index], kGpxTrackPoint, {track.GetUnreadElements(), element}, 3);
    for (const GpxElement& joined : Access::GetJoinedElements(track, index))
        for (PartOfList unread(track.GetUnreadElements(), joined); unread.HasMore();)
            WriteUnread(writing, unread.Take(), 3);
    WriteSegmentFields(writing, Access::GetSegmentFields(track, index));
    EndElement(writing, gpx::kTrkseg, 2);
    writing.SetSegment(0);
}

void WriteRoute(Writing& writing, const GpxRoute& route) {
    const SourceElements elements = writing.ElementsOf(Access::GetFields(route));
    StartElement(writing, gpx::kRte, route.GetElement(), 1);
    FieldsWriter fields(writing, elements);
    fields.WriteText(gpx::kName, &Access::GetName(route));
    fields.WriteText(gpx::kCmt, nullptr);
    fields.WriteText(gpx::kDesc, nullptr);
    fields.WriteText(gpx::kSrc, &Access::GetSource(route));
    fields.WriteLink(nullptr, false);
    fields.WriteText(gpx::kNumber, nullptr);
    fields.WriteText(gpx::kType, &Access::GetType(route));
    std::size_t read = kTarvikRouteStandard;
    for (const SourceElement& element : elements)
        if (element.child.IsGpx(gpx::kExtensions))
            complete::ReadRouteExtensions(writing.ContextOf(*element.source), element.child, read);
        else
            complete::ReadRouteVendorElement(writing.ContextOf(*element.source), element.child, read);
    const std::size_t type = Access::GetRawRouteType(route);
    ForeignParts parts;
    // A plain route may come from one whose type did not allow its points.
    if (type != kTarvikRouteStandard && type != read && type < text::kRouteTypeTexts.size()) {
        parts.isReplaced = [](const ScannedChild& child) {
            return child.Is(NamespaceKind::kTarvik, tarvik::kRouteType.Local());
        };
        parts.writeNew = [&](int depth) {
            WriteVendorElement(writing, tarvik::kRouteType, text::kRouteTypeTexts[type], depth);
        };
    }
    fields.WriteForeignElements(parts);
    WritePoints(writing, Access::GetPoints(route), kGpxRoutePoint,
                {route.GetUnreadElements(), route.GetElement()}, 2);
    EndElement(writing, gpx::kRte, 1);
}

void WriteTrack(Writing& writing, const GpxTrack& track) {
    const SourceElements elements = writing.ElementsOf(Access::GetFields(track));
    StartElement(writing, gpx::kTrk, track.GetElement(), 1);
    FieldsWriter fields(writing, elements);
    fields.WriteText(gpx::kName, &Access::GetName(track));
    fields.WriteText(gpx::kCmt, nullptr);
    fields.WriteText(gpx::kDesc, &Access::GetDescription(track));
    fields.WriteText(gpx::kSrc, &Access::GetSource(track));
    fields.WriteLink(Access::GetLink(track), true);
    fields.WriteText(gpx::kNumber, nullptr);
    fields.WriteText(gpx::kType, &Access::GetType(track));
    GpxTrack read;
    for (const SourceElement& element : elements)
        if (element.child.IsGpx(gpx::kExtensions))
            complete::ReadTrackExtensions(writing.ContextOf(*element.source), element.child, read);
        else
            complete::ReadTrackVendorElement(writing.ContextOf(*element.source), element.child, read);
    const std::int16_t color = Access::GetColor(track);
    ForeignParts parts;
    if (color >= 0 && color != Access::GetColor(read)) {
        parts.isReplaced = [](const ScannedChild& child) {
            return child.Is(NamespaceKind::kTarvik, tarvik::kColor.Local());
        };
        parts.writeNew = [&](int depth) {
            WriteVendorElement(writing, tarvik::kColor, std::to_string(color), depth);
        };
    }
    fields.WriteForeignElements(parts);
    for (std::size_t i = 0; i < track.GetSegmentCount(); ++i)
        WriteSegment(writing, track, i);
    EndElement(writing, gpx::kTrk, 1);
}

} // namespace vexaTransferLib::standard
