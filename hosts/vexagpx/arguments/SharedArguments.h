// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/CommandLine.h>
#include <vexagpx/arguments/MarkedArguments.h>
#include <vexagpx/input/InputRules.h>

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

namespace vexagpx {

/// An option or argument whose value is text as the user typed it.
/// \param value a text or a list of texts
template <class Value>
CLI::Option* AddText(CLI::App& command, const std::string& name, Value& value,
                     const std::string& description) {
    return command.add_option(name, value, description)->transform(CLI::Validator(Unmark, ""));
}

/// An argument that must be given.
template <class Value>
void AddArgument(CLI::App& command, const std::string& name, Value& value, const std::string& description) {
    AddText(command, name, value, description)->required()->type_name("");
}

// What several commands take.

void AddDebugLog(CLI::App& command, Invocation& invocation);
void AddProgress(CLI::App& command, Invocation& invocation);
/// Colours are no matter of a command's options: what writes to standard output knows whether it uses them.
void AddColours(CLI::App& command);
void AddTrust(CLI::App& command, InputRules& rules);
void AddAsHost(CLI::App& command, InputRules& rules, const std::string& description);
void AddLimits(CLI::App& command, ArchiveLimits& limits);

struct CommandHelp {
    std::string name;
    std::string description;
    std::string examples;
};

CLI::App& AddCommandGroup(CLI::App& parent, Invocation& invocation, const CommandHelp& help);

/// \{
/// \param options filled in by parsing; kept alive by the invocation
/// \param run returns the exit status, or false after a failure, which it has reported
template <class Options>
CLI::App& AddCommand(CLI::App& parent, Invocation& invocation, const CommandHelp& help,
                     const std::shared_ptr<Options>& options, int (*run)(const Options&, Output&)) {
    CLI::App& command = AddCommandGroup(parent, invocation, help);
    command.callback([&invocation, options, run] {
        invocation.command = [options, run](Output& out) { return run(*options, out); };
    });
    return command;
}
template <class Options>
CLI::App& AddCommand(CLI::App& parent, Invocation& invocation, const CommandHelp& help,
                     const std::shared_ptr<Options>& options, bool (*run)(const Options&, Output&)) {
    CLI::App& command = AddCommandGroup(parent, invocation, help);
    command.callback([&invocation, options, run] {
        invocation.command = [options, run](Output& out) { return run(*options, out) ? kSuccess : kFailure; };
    });
    return command;
}
/// \}

/// What the commands take that read any number of GPX files.
template <class Options>
void AddFiles(CLI::App& command, Invocation& invocation, Options& options) {
    AddArgument(command, "FILE", options.files, "GPX files, ZIP archives, folders;\n- is standard input");
    AddProgress(command, invocation);
    AddTrust(command, options.rules);
    AddLimits(command, options.rules.archives);
}

} // namespace vexagpx
