// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <string>
#include <vector>

namespace vexagpx {

struct CheckOptions {
    std::vector<std::string> files;
    InputRules rules;
    bool json = false;    ///< a line of JSON for each document instead of text for a person
    bool keep = false;    ///< about reading completely and writing by the standard, and not as hosts do
    bool summary = false; ///< the causes of all files, grouped, instead of a report for each; not with `keep`
    bool schema = false;  ///< also checks by the schemas of GPX
    bool all = false;     ///< lists every occurrence by itself instead of counting equal ones
};

/// The `check` command: says what of the files is read and what is skipped, or what is lost when they are written
/// again. False when a file could not be read, or when something is lost.
bool Check(const CheckOptions& options, Output& out);

} // namespace vexagpx
