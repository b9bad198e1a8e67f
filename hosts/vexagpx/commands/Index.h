// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <string>
#include <vector>

namespace vexagpx {

struct IndexOptions {
    std::vector<std::string> files;
    InputRules rules;
    bool duplicates = false; ///< also find groups of documents with equal content
    bool json = false;
};

/// Lists files and entries of archives with what they have. A file that cannot be read is listed with the reason.
bool Index(const IndexOptions& options, Output& out);

} // namespace vexagpx
