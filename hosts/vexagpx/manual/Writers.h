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
/// \param examples of the commands with what they print, as in examples.txt
/// \throws std::runtime_error when one of these lines is not there, or a command has no example
std::string ManualPage(const Command& tool, const std::string& text, const std::string& examples);

} // namespace vexagpx::manual
