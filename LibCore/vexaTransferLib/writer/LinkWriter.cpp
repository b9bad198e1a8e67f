// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/LinkWriter.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/writer/Elements.h>

#include <unicode/unistr.h>

namespace vexaTransferLib {

void GpxUrl::AppendToString(const GpxVersion& version, icu::UnicodeString& out) const {
    writer::UnicodeSink sink(out);
    writer::WriteLink(sink, version, *this);
    writer::RequireNotBogus(out, text::sites::kLinkOutput);
}

namespace writer {

void WriteLink(TextSink& sink, const GpxVersion& version, const GpxUrl& link) {
    using Access = GpxModelAccess;
    text::Require(version.IsGpx10() || version.IsGpx11(), text::sites::kLinkVersion,
                  "GPX URLs can only be written to version 1.0 or 1.1 files.");
    if (version.IsGpx10()) {
        AppendTextElement(sink, "url", Access::GetUrl(link));
        AppendTextElement(sink, "urlname", Access::GetText(link));
        return;
    }
    sink.Ascii("<link href=\"");
    sink.Escaped(Access::GetUrl(link));
    sink.Ascii("\">", kEndOfLine);
    AppendTextElement(sink, "text", Access::GetText(link));
    AppendTextElement(sink, "type", Access::GetType(link));
    sink.Ascii("</link>", kEndOfLine);
}

} // namespace writer

} // namespace vexaTransferLib
