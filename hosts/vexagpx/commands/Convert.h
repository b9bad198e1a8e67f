// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <string>

namespace vexagpx {

struct ConvertOptions {
    std::string in;
    std::string out;
    std::string version = "1.1";
    std::string applicationName = "vexagpx";
    std::string applicationUrl = "https://tarvik.example/";
    InputRules rules;
};

/// The `convert` command. False after a failure, which has been reported on standard error; the file to write is then
/// unchanged. For an archive whose number of GPX entries is not one, `out` is a folder, to which each entry is written
/// under its name.
bool Convert(const ConvertOptions& options, Output& standardOutput);

} // namespace vexagpx
