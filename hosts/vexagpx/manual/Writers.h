// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/manual/CommandModel.h>

#include <string>

namespace vexagpx::manual {

/// Completion scripts for the shells.
std::string BashCompletion(const Command& tool);
std::string ZshCompletion(const Command& tool);
std::string FishCompletion(const Command& tool);

/// The manual page: \p text, in which the lines %SYNOPSIS%, %COMMANDS%, %OPTIONS% and %EXAMPLES% are replaced.
/// \throws std::runtime_error when one of these lines is not there
std::string ManualPage(const Command& tool, const std::string& text);

} // namespace vexagpx::manual
