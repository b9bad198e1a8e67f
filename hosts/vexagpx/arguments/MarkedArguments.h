// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vexagpx {

/// The arguments of the command line in the order that CLI11 expects: the last one first, without the program's name.
/// Those that CLI11 would take for something else are marked.
std::vector<std::string> Marked(int argc, char** argv);

/// Removes the mark from a value. Returns no error, as a check of CLI11 does.
std::string Unmark(std::string& text);

} // namespace vexagpx
