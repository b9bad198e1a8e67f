// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/LinkReader.h>

#include <vexaTransferLib/reader/ChildGuard.h>
#include <vexaTransferLib/reader/ValueReaders.h>

#include <utility>

namespace vexaTransferLib::reader {

namespace {

constexpr ChildMessages kMessages = {"Unable to read GPX link child elements.",
                                     "Unable to read a GPX link child node."};

void ReadLinkChild(const NodeView& child, GpxUrl& link) {
    icu::UnicodeString text;
    if (Equals(child.LocalName(), u"text")) {
        if (ReadText(child, text))
            link.SetUrlText(text);
    } else if (Equals(child.LocalName(), u"type")) {
        if (ReadText(child, text))
            link.SetUrlType(text);
    }
}

} // namespace

void ReadLink(const NodeView& node, GpxUrl& link) {
    icu::UnicodeString href;
    dbc::Ensure(ReadTextAttribute(node, u"href", href), text::kGpxParserSource,
                "A link element was missing the href attribute.");
    GpxUrl read(href);
    ForEachGuardedChild(node, kMessages, [&](const NodeView& child) { ReadLinkChild(child, read); });
    link = std::move(read);
}

} // namespace vexaTransferLib::reader
