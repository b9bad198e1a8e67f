// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/editing/ChangeList.h>

#include <string>

namespace vexagpx {

/// The text of an XML document in UTF-8, whatever its declaration says. UTF-16 is known by its byte order mark or its first
/// characters; bytes that are no UTF-8 are taken as windows-1252. The declaration is corrected.
/// \throws std::runtime_error for an encoding that cannot be converted
std::string RepairEncoding(std::string bytes, ChangeList& changes);

} // namespace vexagpx
