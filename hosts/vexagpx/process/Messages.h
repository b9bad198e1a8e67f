// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace vexagpx {

/// Writes "vexagpx: ", the message and a line feed to standard error. What a terminal would obey
/// (IsTerminalControl), which a file name may contain, becomes a question mark.
void PrintError(const std::string& message);
/// What PrintError writes.
std::string ErrorLine(const std::string& message);

/// Does the work; what it throws is told, and false returned. A failure of standard output passes.
/// \param about named when memory runs out; other failures name what they are about
bool RunReportingErrors(const std::string& about, const std::function<bool()>& work);

/// Where PrintError writes; standard error at first. The report filter hands over the one behind it, so that
/// messages keep their place between the lines of standard output.
void SetErrorDescriptor(int fd);
int ErrorDescriptor();

/// Replaces the last line of the terminal that standard error is, until it is cleared or something is
/// complained about.
void ShowStatus(const std::string& line);
/// Leaves the line empty when there is a status. Fit for a signal handler.
void ClearStatus();

} // namespace vexagpx
