// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/FieldSources.h>

#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/IcuText.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace vexaTransferLib::reader {

namespace {

// Appends the names and texts of the elements in an element, in their order.
void AppendChildren(const NodeView& element, icu::UnicodeString& content) {
    std::vector<ChildWalk> open{ChildWalk(element)};
    icu::UnicodeString text;
    while (!open.empty()) {
        NodeView child;
        if (!open.back().Next(child)) {
            open.pop_back();
            content.append(u'>');
        } else if (child.IsElement()) {
            content.append(u'<').append(child.LocalName(), -1).append(u' ');
            open.emplace_back(child);
        } else if (child.IsTextWithContent() && child.TextContent(text)) {
            content.append(text);
        }
    }
}

bool HasElements(const NodeView& element) {
    ChildWalk children(element);
    for (NodeView child; children.Next(child);)
        if (child.IsElement())
            return true;
    return false;
}

// The content by which two elements of one field are compared: its text, or what is in its elements, and the address
// of a link.
icu::UnicodeString ContentOf(const NodeView& element) {
    icu::UnicodeString content;
    if (HasElements(element))
        AppendChildren(element, content);
    else
        element.TextContent(content);
    if (const char16_t* const href = element.Attribute(gpx::kHref))
        content.append(u'\n').append(href, -1);
    text::ThrowIfBogus(content);
    return content;
}

GpxSkippedElement AsReplaced(const NodeView& element) {
    return SkipReporter::Describe(element, kGpxReplaced, "Another element was kept in its place.", true);
}

} // namespace

// The content is built once, however many elements are compared with it.
const icu::UnicodeString& FieldSources::ContentOf(Source& source) {
    if (!source.details)
        source.details = std::make_unique<Details>();
    if (!source.details->content)
        source.details->content = reader::ContentOf(source.element);
    return *source.details->content;
}

GpxSkippedElement FieldSources::AsReplaced(const Source& source) {
    return source.element.IsNull() ? source.details->description : reader::AsReplaced(source.element);
}

const FieldSources::Source* FieldSources::Find(const char16_t* field) const {
    const auto found = std::find_if(sources_.begin(), sources_.end(),
                                    [&](const Source& source) { return Equals(source.field, field); });
    return found != sources_.end() ? &*found : nullptr;
}

FieldSources::Source* FieldSources::Find(const char16_t* field) {
    return const_cast<Source*>(std::as_const(*this).Find(field));
}

FieldSources::Source FieldSources::Describe(const char16_t* field, const NodeView& element) {
    return {field,
            {},
            std::make_unique<Details>(Details{reader::AsReplaced(element), reader::ContentOf(element)})};
}

void FieldSources::Replace(const char16_t* field, const NodeView& element) {
    Source now = lifetime_ == Lifetime::kLong ? Source{field, element, nullptr} : Describe(field, element);
    Source* const source = Find(field);
    if (source == nullptr) {
        sources_.push_back(std::move(now));
        return;
    }
    Source lost = std::exchange(*source, std::move(now));
    if (!ContentOf(lost).isEmpty() && ContentOf(lost) != ContentOf(*source))
        reporter_.Notify(AsReplaced(lost));
}

void FieldSources::Clear(const char16_t* field) {
    const Source* const source = Find(field);
    if (source == nullptr)
        return;
    const GpxSkippedElement lost = AsReplaced(*source);
    sources_.erase(sources_.begin() + (source - sources_.data()));
    reporter_.Notify(lost);
}

void FieldSources::NotifyIgnored(const char16_t* field, const NodeView& element) {
    const icu::UnicodeString content = reader::ContentOf(element);
    Source* const source = Find(field);
    if (!content.isEmpty() && (source == nullptr || ContentOf(*source) != content))
        reporter_.Notify(reader::AsReplaced(element));
}

} // namespace vexaTransferLib::reader
