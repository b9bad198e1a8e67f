// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxPathDetails.h>

#include <vexaTransferLib/model/ElementFields.h>
#include <vexaTransferLib/text/ElementNames.h>

namespace vexaTransferLib {

std::optional<std::uint64_t> GpxPathDetails::GetNumber() const {
    return UnsignedOf(FindGpxChild(GetElement(), gpx::kNumber));
}

std::optional<std::int32_t> GpxPathDetails::GetColor() const {
    return VendorIntegerOf(FindVendorElement(GetElement(), tarvik::kColor));
}

std::optional<icu::UnicodeString> GpxPathDetails::GetRouteType() const {
    return TextOf(FindVendorElement(GetElement(), tarvik::kRouteType));
}

} // namespace vexaTransferLib
