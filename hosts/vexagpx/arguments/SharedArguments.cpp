// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/SharedArguments.h>

#include <vexagpx/arguments/ValueChecks.h>
#include <vexagpx/process/Colours.h>

#include <cstdint>

namespace vexagpx {

namespace {

constexpr char kLimits[] = "Limits for archives and streams";

void AddSize(CLI::App& command, const std::string& name, std::uint64_t& size, const std::string& description,
             const std::string& defaultText) {
    command.add_option(name, size, description)
        ->check(CLI::Validator(RequireSize, ""))
        ->transform(CLI::AsSizeValue(false).description(""))
        ->type_name("SIZE")
        ->default_str(defaultText)
        ->group(kLimits);
}

void AddNumber(CLI::App& command, const std::string& name, std::uint64_t& number,
               const std::string& description) {
    command.add_option(name, number, description)
        ->check(CLI::Validator(RequireNumber, ""))
        ->type_name("NUMBER")
        ->capture_default_str()
        ->group(kLimits);
}

} // namespace

void AddDebugLog(CLI::App& command, Invocation& invocation) {
    AddText(command, "--debug-log", invocation.debugLog, "Write the library's contract reports to this file")
        ->type_name("FILE");
}

void AddProgress(CLI::App& command, Invocation& invocation) {
    command.add_flag("--no-progress", invocation.noProgress, "Show no progress while long files are read");
}

void AddColours(CLI::App& command) {
    const auto use = [](const std::string& when) {
        SetColourUse(when == "always"  ? ColourUse::kAlways
                     : when == "never" ? ColourUse::kNever
                                       : ColourUse::kAuto);
    };
    command
        .add_option_function<std::string>("--colour", use,
                                          "Use colours: auto (in a terminal, unless NO_COLOR\n"
                                          "is set), always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}).description(""))
        ->type_name("WHEN")
        ->default_str("auto");
}

void AddTrust(CLI::App& command, InputRules& rules) {
    command.add_flag("--trust", rules.isTrusted,
                     "Follow document types and entities and set\n"
                     "no limits: only for files that you trust");
}

void AddAsHost(CLI::App& command, InputRules& rules, const std::string& description) {
    command.add_flag("--as-host", rules.asHost, description);
}

void AddLimits(CLI::App& command, ArchiveLimits& limits) {
    AddSize(command, "--max-entry-size", limits.entrySize, "Bytes that an entry may have; 500MB, 2GB", "1GB");
    AddSize(command, "--max-total-size", limits.totalSize, "Bytes that all entries read may have together",
            "4GB");
    AddNumber(command, "--max-ratio", limits.ratio,
              "How many times its packed size an entry may have,\n"
              "and all entries together the archive's size");
    AddNumber(command, "--max-entries", limits.entries, "Entries that an archive may have");
    AddSize(command, "--max-stream-size", limits.streamSize, "Bytes that standard input or a pipe may have",
            "4GB");
}

CLI::App& AddCommandGroup(CLI::App& parent, Invocation& invocation, const CommandHelp& help) {
    CLI::App* command = parent.add_subcommand(help.name, help.description);
    command->footer(help.examples);
    AddDebugLog(*command, invocation);
    return *command;
}

} // namespace vexagpx
