// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/LinkReader.h>

#include <vexaTransferLib/reader/Children.h>
#include <vexaTransferLib/reader/CommonElements.h>
#include <vexaTransferLib/reader/ElementTable.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/UnreadAttributes.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <utility>

namespace vexaTransferLib::reader {

namespace {

constexpr ChildMessages kMessages = {"Unable to read GPX link child elements.",
                                     "Unable to read a GPX link child node.", text::sites::kLinkChildren,
                                     text::sites::kLinkChild};

constexpr ElementReader<GpxUrl> kReaders[] = {
    {gpx::kText, gpx::kText, ReadTextInto<&GpxUrl::SetUrlText>},
    {gpx::kType, gpx::kType, ReadTextInto<&GpxUrl::SetUrlType>},
};
constexpr ElementTable<GpxUrl> kElements = {Namespace::kAny, kReaders};

constexpr const char16_t* kAttributes[] = {gpx::kHref};

} // namespace

void ReadLink(ReadContext& context, const NodeView& node, GpxUrl& link) {
    icu::UnicodeString href;
    text::Ensure(ReadTextAttribute(node, gpx::kHref, href), text::sites::kLinkHref,
                 "A link element was missing the href attribute.");
    GpxUrl read(href);
    FieldSources sources(context.reporter, FieldSources::Lifetime::kLong);
    ForEachIsolatedChild(context, node, kMessages, [&](const NodeView& child) {
        ReadElement(kElements, {context, nullptr, child, read, sources});
    });
    ReportUnreadAttributes(context.reporter, node, kAttributes);
    context.reporter.ReportReplaced(node, href, gpx::kHref);
    link = std::move(read);
}

} // namespace vexaTransferLib::reader
