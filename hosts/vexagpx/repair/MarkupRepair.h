// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/editing/ChangeList.h>

#include <string>
#include <string_view>

namespace vexagpx {

/// Mends the markup of a GPX document in UTF-8 that is not well-formed or has no version or namespace, and copies the rest.
/// Takes time and memory linear in the text, however deep its elements are.
/// \throws std::runtime_error when there is no element of GPX in it
std::string RepairMarkup(std::string_view text, ChangeList& changes);

} // namespace vexagpx
