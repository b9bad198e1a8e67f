// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace vexagpx {

/// Writes "vexagpx: ", the message and a line feed to standard error. Characters that control a terminal
/// (IsTerminalControl), which a file name may contain, become question marks, and so do those that a terminal of ASCII
/// does not have.
void PrintError(const std::string& message);
/// The line that PrintError writes.
std::string ErrorLine(const std::string& message);

/// Writes a text of lines to standard error as it is.
void PrintLines(const std::string& lines);

/// Does the work. When it throws, prints the error and returns false; only an OutputError is not caught.
/// \param about named when memory runs out; other errors name what they are about
bool RunReportingErrors(const std::string& about, const std::function<bool()>& work);

/// Shows a line in place of the terminal's last line, until ClearStatus or PrintError is called.
void ShowStatus(const std::string& line);
/// Clears the line when a status is shown. A signal handler may call it.
void ClearStatus();

} // namespace vexagpx
