// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Input.h>
#include <vexagpx/input/InputRules.h>

#include <vexaTransferLib/GpxDocument.h>

#include <string>

namespace vexagpx {

/// Opens a file whose document is to be changed.
/// \throws std::runtime_error for a folder, an archive, and what cannot be opened
InputFile OpenForEditing(const std::string& argument, const InputRules& rules);

/// Reads a file completely.
/// \throws what FileParser::ReadFile and OpenForEditing throw
vexaTransferLib::GpxDocument ReadForEditing(const std::string& argument, const InputRules& rules);

} // namespace vexagpx
