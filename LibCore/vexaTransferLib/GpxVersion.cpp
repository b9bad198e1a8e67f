// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxVersion.h>

#include <vexaTransferLib/text/ContractSources.h>

#include <common/dbc.h>

#include <string>

namespace vexaTransferLib {

GpxVersion::GpxVersion(unsigned long major, unsigned long minor)
    : major_(static_cast<std::uint32_t>(major)), minor_(static_cast<std::uint32_t>(minor)) {
    // The arguments are compared and not the fields: 4294967297 becomes 1 when it is cut to 32 bits.
    dbc::Require(major == 1 && minor <= 1, text::kGpxVersionSource,
                 "Only GPX versions 1.0 and 1.1 are supported.");
}

GpxVersion::GpxVersion(const icu::UnicodeString& version) : major_(1), minor_(0) {
    const bool is10 = version == icu::UnicodeString(u"1.0");
    const bool is11 = version == icu::UnicodeString(u"1.1");
    dbc::Require(is10 || is11, text::kGpxVersionSource, "Unsupported GPX version string.");
    minor_ = is11 ? 1 : 0;
}

GpxVersion GpxVersion::GetLatestVersion() {
    return GpxVersion(1, 1);
}

void GpxVersion::GetVersion(unsigned long& major, unsigned long& minor) const {
    major = major_;
    minor = minor_;
}

icu::UnicodeString GpxVersion::GetVersionString() const {
    const std::string text = std::to_string(major_) + '.' + std::to_string(minor_);
    return icu::UnicodeString(text.c_str(), -1, US_INV);
}

} // namespace vexaTransferLib
