// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxUrl.h>

#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ContractSources.h>
#include <vexaTransferLib/text/OptionalText.h>

#include <common/dbc.h>

namespace vexaTransferLib {

// Contract reports name these lines for the checks of the writers (in writer/), which run on behalf of this class.
namespace text::sites {

static constexpr CheckSiteMaker Here{kGpxUrlSource};

constinit const CheckSite kLinkVersion = Here(); // LinkWriter.cpp: neither GPX 1.0 nor 1.1
constinit const CheckSite kLinkOutput = Here();  // LinkWriter.cpp: the text is too large

} // namespace text::sites

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

} // namespace vexaTransferLib
