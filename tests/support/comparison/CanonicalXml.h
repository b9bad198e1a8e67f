// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vexaTransferLib::testing_support {

/// The canonical XML of a text, with its comments, made by libxml2. Throws as XmlDocument does, and std::runtime_error for
/// a text that has none.
std::string CanonicalXml(std::string_view text);

} // namespace vexaTransferLib::testing_support
