// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace vexaTransferLib::testing_support {

/// False for what GPX 1.1 has a place for and GPX 1.0 has not: copyright, a second link, the extensions of
/// `metadata` and so on. The path is one of MissingContent.
bool HasPlaceInGpx10(std::string_view path);

} // namespace vexaTransferLib::testing_support
