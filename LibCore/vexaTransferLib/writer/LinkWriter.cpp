// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/LinkWriter.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ElementNames.h>
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
        AppendTextElement(sink, gpx::kUrl, Access::GetUrl(link));
        AppendTextElement(sink, gpx::kUrlname, Access::GetText(link));
        return;
    }
    sink.Ascii("<", gpx::kLink, " ", gpx::kHref, "=\"");
    sink.Escaped(Access::GetUrl(link));
    sink.Ascii("\">", kEndOfLine);
    AppendTextElement(sink, gpx::kText, Access::GetText(link));
    AppendTextElement(sink, gpx::kType, Access::GetType(link));
    AppendLineEnd(sink, gpx::kLink);
}

} // namespace writer

} // namespace vexaTransferLib
