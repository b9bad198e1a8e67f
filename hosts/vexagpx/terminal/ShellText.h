// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vexagpx {

/// A file argument as a person types it into a shell: quoted only where that is needed, so that it reaches the
/// command as it is and is taken for a file.
std::string ShellText(const std::string& argument);

} // namespace vexagpx
