// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>

#include <functional>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace vexagpx {

// Exit statuses.
inline constexpr int kSuccess = 0;
inline constexpr int kFailure = 1;
inline constexpr int kUsageError = 2;

/// What the command line asks for.
struct Invocation {
    std::string debugLog; ///< empty for none
    bool noProgress = false;
    /// Runs the command with its options. Returns the exit status.
    std::function<int(Output&)> command;
};

/// Gives \p app the tool's commands and options. Parsing with it fills in \p invocation.
void AddCommands(CLI::App& app, Invocation& invocation);

/// The exit status when nothing remains to be done: help was asked for, or the arguments are wrong.
std::optional<int> ParseArguments(int argc, char** argv, Invocation& invocation, Output& out);

} // namespace vexagpx
