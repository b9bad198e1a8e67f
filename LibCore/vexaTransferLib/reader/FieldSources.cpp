// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/FieldSources.h>

#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/IcuText.h>

#include <algorithm>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

// The content by which two elements of one field are compared: an attribute for links, the text for all
// others.
icu::UnicodeString ContentOf(const NodeView& element) {
    icu::UnicodeString content;
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
    if (ContentOf(lost) != ContentOf(*source))
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
    Source* const source = Find(field);
    if (source == nullptr || ContentOf(*source) != reader::ContentOf(element))
        reporter_.Notify(reader::AsReplaced(element));
}

} // namespace vexaTransferLib::reader
