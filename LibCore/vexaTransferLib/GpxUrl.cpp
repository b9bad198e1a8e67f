// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxUrl.h>

#include <vexaTransferLib/text/ContractSources.h>
#include <vexaTransferLib/text/OptionalText.h>
#include <vexaTransferLib/writer/Elements.h>

#include <common/dbc.h>

namespace vexaTransferLib {

GpxUrl::GpxUrl(const icu::UnicodeString& url) {
    constexpr char kMessage[] = "GPX URLs must not be empty.";
    dbc::Require(!url.isEmpty(), text::kGpxUrlSource, kMessage);
    text::AssignText(kMessage, url_, url);
}

GpxUrl& GpxUrl::operator=(const GpxUrl& other) {
    if (this != &other)
        *this = GpxUrl(other);
    return *this;
}

GpxUrl::~GpxUrl() = default;

icu::UnicodeString GpxUrl::GetUrl() const {
    return url_;
}

bool GpxUrl::GetUrlText(icu::UnicodeString& text) const {
    return text::CopyText(text, text_);
}

bool GpxUrl::GetUrlType(icu::UnicodeString& type) const {
    return text::CopyText(type, type_);
}

void GpxUrl::SetUrlText(const icu::UnicodeString& text) {
    text::AssignText("The GPX URL text must not be empty.", text_, text);
}

void GpxUrl::SetUrlType(const icu::UnicodeString& type) {
    text::AssignText("The GPX URL type must not be empty.", type_, type);
}

void GpxUrl::AppendToString(const GpxVersion& version, icu::UnicodeString& out) const {
    writer::UnicodeSink sink(out);
    AppendTo(version, sink);
    writer::RequireNotBogus(out, text::kGpxUrlSource);
}

void GpxUrl::AppendTo(const GpxVersion& version, writer::TextSink& sink) const {
    dbc::Require(version.IsGpx10() || version.IsGpx11(), text::kGpxUrlSource,
                 "GPX URLs can only be written to version 1.0 or 1.1 files.");
    if (version.IsGpx10()) {
        writer::AppendTextElement(sink, "url", url_);
        writer::AppendTextElement(sink, "urlname", text_);
        return;
    }
    sink.Ascii("<link href=\"");
    sink.Escaped(url_);
    sink.Ascii("\">\r\n");
    writer::AppendTextElement(sink, "text", text_);
    writer::AppendTextElement(sink, "type", type_);
    sink.Ascii("</link>\r\n");
}

} // namespace vexaTransferLib
