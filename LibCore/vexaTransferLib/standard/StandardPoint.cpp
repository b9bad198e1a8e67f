// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/StandardWriters.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/standard/PointExtensions.h>
#include <vexaTransferLib/standard/PointFields.h>
#include <vexaTransferLib/standard/PointForm.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <cstddef>
#include <string_view>

namespace vexaTransferLib::standard {

namespace {

using Access = GpxModelAccess;

void StartPoint(Writing& writing, const GpxPoint& point, const SourceElement& element, bool isAsRead) {
    PieceOutput& out = writing.Out();
    out.AppendAll("<", text::kPointElementNames[Access::GetRawPointType(point)]);
    if (!isAsRead) {
        out.Append(" lat=\"");
        out.AppendNumber(Access::GetLatitude(point));
        out.Append("\" lon=\"");
        out.AppendNumber(Access::GetLongitude(point));
        out.Append("\"");
    }
    if (element.source != nullptr)
        CopyAttributes(writing, element, [&](std::string_view name) {
            return !isAsRead && (name == gpx::kLat || name == gpx::kLon);
        });
}

// A value that was set stands before the other elements of its name, of which the first one counts; one that was
// cleared takes all of them along.
void WriteField(Writing& writing, const SourceElements& children, const PointField& field,
                const GpxPoint& point, bool isAsRead, int depth) {
    const std::size_t before = writing.Out().Count();
    if (!isAsRead)
        field.write(writing, point, depth);
    if (!isAsRead && writing.Out().Count() == before)
        return;
    bool isFirst = true;
    for (const SourceElement& child : children) {
        if (!child.child.IsGpx(field.name))
            continue;
        if (isAsRead || !isFirst) {
            writing.StartLine(depth);
            CopyElement(writing, child);
        }
        isFirst = false;
    }
}

void CopyAll(Writing& writing, const SourceElements& children, std::string_view name, int depth) {
    for (const SourceElement& child : children) {
        if (!child.child.IsGpx(name))
            continue;
        writing.StartLine(depth);
        CopyElement(writing, child);
    }
}

// GPX 1.0 has a place for speed and course, which GPX 1.1 has in `extensions`.
void TakeOnlyIn10(Writing& writing, SourceElements& children) {
    const std::size_t count = children.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (!children[i].child.IsGpx(gpx::kExtensions))
            continue;
        for (const SourceElement& child : writing.ChildrenOf(children[i]))
            if (IsOnlyIn10(child.child))
                children.push_back(child);
    }
}

} // namespace

// A point is written anew when it was changed, or when its element is not as the output must have it.
void PointWriter::Write(const GpxPoint& point) {
    const SourceText* const source = Access::GetSource(point);
    writing_.StartLine(depth_);
    if (source == nullptr) {
        WriteAnew(point, {});
        return;
    }
    const char* const begin = source->At(Access::GetPlace(point));
    if (source == writing_.MainSource()) {
        NamespaceCursor& names = writing_.NamesOf(*source);
        const PointForm form = ExamineForm(names, *source, begin, type_, writing_.Is10());
        if (form.isStandard && form.IsSimple(point)) {
            writing_.Out().Append({begin, static_cast<std::size_t>(form.end - begin)});
            return;
        }
        if (form.isStandard && IsAsRead(point, {source, ScanChild(names, *source, begin), form.end})) {
            writing_.Out().Append({begin, static_cast<std::size_t>(form.end - begin)});
            return;
        }
    }
    WriteAnew(point, writing_.ElementAt(*source, begin));
}

bool PointWriter::IsAsRead(const GpxPoint& point, const SourceElement& element) {
    read_.clear();
    complete::ReadPoint(writing_.ContextOf(*element.source), element.child, type_, read_);
    return !read_.empty() && HasSameValues(point, read_.front());
}

void PointWriter::WriteAnew(const GpxPoint& point, const SourceElement& element) {
    const GpxPoint* read = nullptr;
    if (element.source != nullptr) {
        IsAsRead(point, element);
        read = read_.empty() ? nullptr : &read_.front();
    }
    StartPoint(writing_, point, element, read != nullptr && IsSamePosition(point, *read));
    SourceElements children = writing_.ChildrenOf(element);
    const bool hasOnlyIn10 = writing_.Is10() && type_ == kGpxTrackPoint;
    if (hasOnlyIn10)
        TakeOnlyIn10(writing_, children);
    const std::size_t before = writing_.Out().Count();
    writing_.Out().Append(">");
    const int depth = depth_ + 1;
    for (const std::string_view name : FieldsOf(type_, writing_.Is10())) {
        if (name == gpx::kLink)
            WriteLinks(writing_, children, LinkOf(point),
                       read != nullptr && IsSameLink(LinkOf(point), LinkOf(*read)), depth);
        else if (const PointField* const field = FindPointField(name))
            WriteField(writing_, children, *field, point, read != nullptr && field->isSame(point, *read),
                       depth);
        else
            CopyAll(writing_, children, name, depth);
    }
    const PointExtensions extensions(writing_, point, read);
    ForeignParts parts;
    SortForeign(children, type_, writing_.Is10(), parts);
    parts.isReplaced = [&](const ScannedChild& child) {
        return extensions.IsReplaced(child) || (hasOnlyIn10 && IsOnlyIn10(child));
    };
    if (extensions.HasNew())
        parts.writeNew = [&](int inner) { extensions.WriteNew(inner); };
    WriteForeign(writing_, parts, depth);
    if (writing_.Out().Count() != before + 1)
        writing_.StartLine(depth_);
    writing_.Out().AppendAll("</", text::kPointElementNames[static_cast<std::size_t>(type_)], ">");
}

} // namespace vexaTransferLib::standard
