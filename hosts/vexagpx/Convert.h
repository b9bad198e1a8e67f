// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/Output.h>

#include <string>

namespace vexagpx {

struct ConvertRequest {
    std::string in;
    std::string out;
    std::string version = "1.1";
    std::string applicationName = "vexagpx";
    std::string applicationUrl = "https://tarvik.example/";
};

/// The `convert` command. False after a failure, which has been told on standard error; the target is then as
/// it was.
bool Convert(const ConvertRequest& request, Output& standardOutput);

} // namespace vexagpx
