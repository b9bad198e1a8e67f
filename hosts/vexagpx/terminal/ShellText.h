// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vexagpx {

/// A file argument as a person types it into a shell: quoted where needed, so that the command gets it unchanged and
/// takes it for a file.
std::string ShellText(const std::string& argument);

} // namespace vexagpx
