// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxObjectDetails.h>

#include <vexaTransferLib/GpxExtensions.h>
#include <vexaTransferLib/model/ElementFields.h>
#include <vexaTransferLib/text/ElementNames.h>

namespace vexaTransferLib {

std::optional<icu::UnicodeString> GpxObjectDetails::GetName() const {
    return TextOf(FindGpxChild(element_, gpx::kName));
}

std::optional<icu::UnicodeString> GpxObjectDetails::GetComment() const {
    return TextOf(FindGpxChild(element_, gpx::kCmt));
}

std::optional<icu::UnicodeString> GpxObjectDetails::GetDescription() const {
    return TextOf(FindGpxChild(element_, gpx::kDesc));
}

std::optional<icu::UnicodeString> GpxObjectDetails::GetSource() const {
    return TextOf(FindGpxChild(element_, gpx::kSrc));
}

std::optional<icu::UnicodeString> GpxObjectDetails::GetType() const {
    return TextOf(FindGpxChild(element_, gpx::kType));
}

std::vector<GpxLink> GpxObjectDetails::GetLinks() const {
    return LinksOf(element_);
}

std::vector<GpxElement> GpxObjectDetails::GetExtensions() const {
    return ForeignElements(element_);
}

} // namespace vexaTransferLib
