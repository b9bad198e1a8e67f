// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/LinkReader.h>

#include <vexaTransferLib/reader/FailureIsolation.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/ToldValues.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <utility>

namespace vexaTransferLib::reader {

namespace {

constexpr ChildMessages kMessages = {"Unable to read GPX link child elements.",
                                     "Unable to read a GPX link child node.", text::sites::kLinkChildren,
                                     text::sites::kLinkChild};

void ReadLinkChild(ReadContext& context, FieldSources& sources, const NodeView& child, GpxUrl& link) {
    icu::UnicodeString text;
    if (Equals(child.LocalName(), gpx::kText)) {
        if (ReadText(context, child, text)) {
            link.SetUrlText(text);
            sources.Set(gpx::kText, child);
        }
    } else if (Equals(child.LocalName(), gpx::kType)) {
        if (ReadText(context, child, text)) {
            link.SetUrlType(text);
            sources.Set(gpx::kType, child);
        }
    } else {
        context.reporter.SkipUnknown(child);
    }
}

} // namespace

void ReadLink(ReadContext& context, const NodeView& node, GpxUrl& link) {
    icu::UnicodeString href;
    text::Ensure(ReadTextAttribute(node, gpx::kHref, href), text::sites::kLinkHref,
                 "A link element was missing the href attribute.");
    GpxUrl read(href);
    FieldSources sources(context.reporter, FieldSources::Lifetime::kLong);
    ForEachIsolatedChild(context, node, kMessages,
                         [&](const NodeView& child) { ReadLinkChild(context, sources, child, read); });
    link = std::move(read);
}

} // namespace vexaTransferLib::reader
