// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <vexaTransferLib/GpxDocument.h>

#include <string>
#include <vector>

namespace vexagpx {

/// What is in a document, for a person at a terminal.
/// \param all lists every waypoint, route, track and geocache instead of the first few
void ShowDocument(const vexaTransferLib::GpxDocument& document, const std::string& heading, bool all,
                  Output& out);

/// The `show` command. False when a file could not be read.
bool Show(const std::vector<std::string>& files, bool all, const InputRules& rules, Output& out);

} // namespace vexagpx
