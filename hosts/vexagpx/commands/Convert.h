// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <string>

namespace vexagpx {

struct ConvertRequest {
    std::string in;
    std::string out;
    std::string version = "1.1";
    std::string applicationName = "vexagpx";
    std::string applicationUrl = "https://tarvik.example/";
    InputRules rules;
};

/// The `convert` command. False after a failure, which has been told on standard error; the target is then as
/// it was. Of an archive with other than one GPX entry the target is a folder, in which each entry has its
/// place by its name.
bool Convert(const ConvertRequest& request, Output& standardOutput);

} // namespace vexagpx
