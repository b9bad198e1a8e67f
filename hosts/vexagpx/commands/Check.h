// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <string>
#include <vector>

namespace vexagpx {

struct CheckForm {
    bool json = false; ///< one line for each document instead of text for a person
    bool all = false;  ///< lists every thing by itself instead of counting equal ones
};

/// The `check` command: tells what of the files was read and what was skipped. False when a file could not
/// be read, or when something was skipped that a document could have held.
bool Check(const std::vector<std::string>& files, const InputRules& rules, CheckForm form, Output& out);

} // namespace vexagpx
