// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string_view>

namespace vexagpx {

/// The schemas by which documents are checked: of GPX 1.0 and 1.1, of both versions of geocaches, and of the vendor's
/// elements. Put into the program during the build, so that nothing is fetched.
extern const std::array<std::string_view, 5> kSchemaTexts;

} // namespace vexagpx
