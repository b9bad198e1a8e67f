// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/LinkReader.h>

#include <vexaTransferLib/reader/ChildGuard.h>
#include <vexaTransferLib/reader/KeptElements.h>
#include <vexaTransferLib/reader/ToldValues.h>

#include <utility>

namespace vexaTransferLib::reader {

namespace {

constexpr ChildMessages kMessages = {"Unable to read GPX link child elements.",
                                     "Unable to read a GPX link child node.", text::places::kLinkChildren,
                                     text::places::kLinkChild};

void ReadLinkChild(ReadContext& context, KeptElements& kept, const NodeView& child, GpxUrl& link) {
    icu::UnicodeString text;
    if (Equals(child.LocalName(), u"text")) {
        if (ReadText(context, child, text)) {
            link.SetUrlText(text);
            kept.Keep(u"text", child);
        }
    } else if (Equals(child.LocalName(), u"type")) {
        if (ReadText(context, child, text)) {
            link.SetUrlType(text);
            kept.Keep(u"type", child);
        }
    } else {
        context.receipt.Unknown(child);
    }
}

} // namespace

void ReadLink(ReadContext& context, const NodeView& node, GpxUrl& link) {
    icu::UnicodeString href;
    text::Ensure(ReadTextAttribute(node, u"href", href), text::places::kLinkHref,
                 "A link element was missing the href attribute.");
    GpxUrl read(href);
    KeptElements kept(context.receipt, KeptElements::Elements::kStay);
    ForEachGuardedChild(context, node, kMessages,
                        [&](const NodeView& child) { ReadLinkChild(context, kept, child, read); });
    link = std::move(read);
}

} // namespace vexaTransferLib::reader
