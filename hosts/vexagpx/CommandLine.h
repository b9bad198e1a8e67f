// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/commands/Convert.h>
#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vexagpx {

// Exit statuses.
inline constexpr int kFine = 0;
inline constexpr int kFailed = 1;
inline constexpr int kUsage = 2;

/// What the command line asks for.
struct Request {
    std::string debugLog;
    std::vector<std::string> files;
    bool all = false;
    bool json = false;
    bool noProgress = false;
    bool overwrite = false;
    std::string archive;
    std::string entry;
    std::string folder;
    InputRules rules;
    ConvertRequest convert;
    std::string cleanFile = "-";
    /// Does the work; false after a failure that has been told.
    std::function<bool(Output&)> command;
};

/// Gives \p app the tool's commands and options, which write into \p request.
void AddCommands(CLI::App& app, Request& request);

/// The exit status when there is nothing more to do: help was asked for, or the arguments are wrong.
std::optional<int> ParseArguments(int argc, char** argv, Request& request, Output& out);

} // namespace vexagpx
