// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vexagpx {

/// Writes "vexagpx: ", the message and a line feed to standard error. Control characters, which a file name
/// may hold, do not reach the terminal.
void Complain(const std::string& message);

/// Where Complain writes; standard error at first. The report filter hands over the one behind it, so that
/// messages keep their place between the lines of standard output.
void SetComplaintDescriptor(int fd);

} // namespace vexagpx
