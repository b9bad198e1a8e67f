// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Archive.h>
#include <vexagpx/process/Output.h>

#include <string>

namespace vexagpx {

/// Writes what the archive states about its current entry as one JSON object on one line.
/// \param file of the archive, as on the command line
void WriteEntryJson(const Archive& archive, const std::string& file, Output& out);

} // namespace vexagpx
