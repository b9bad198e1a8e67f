// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>

#include <string>

namespace vexagpx {

/// The `clean` command. False after a failure, which has been told on standard error.
bool Clean(const std::string& file, Output& out);

} // namespace vexagpx
