// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/Commands.h>
#include <vexagpx/arguments/SharedArguments.h>
#include <vexagpx/commands/Diff.h>

#include <memory>
#include <string>

namespace vexagpx {

namespace {

constexpr char kExamples[] =
    "Tells what was added, removed, moved, renamed and given another time, new logs\n"
    "of geocaches, and other values that changed. What is only written in another\n"
    "way is no difference. Exit status: 0 no differences, 1 some, 2 a file cannot\n"
    "be read, or wrong arguments.\n"
    "\n"
    "Examples:\n"
    "  vexagpx diff monday.gpx tuesday.gpx\n"
    "  vexagpx diff before.gpx after.gpx --json\n";

} // namespace

void AddDiff(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<DiffOptions>();
    CLI::App& command = AddCommand(app, invocation,
                                   {"diff", "Tell what differs between two files", kExamples}, options, Diff);
    AddArgument(command, "OLD", options->oldFile, "GPX file; - is standard input");
    AddArgument(command, "NEW", options->newFile, "GPX file; - is standard input");
    command.add_flag("--json", options->json, "Tell it as a line of JSON");
    AddColours(command);
    AddProgress(command, invocation);
    AddTrust(command, options->rules);
    AddLimits(command, options->rules.archives);
    command.parse_complete_callback([options] {
        if (options->oldFile == "-" && options->newFile == "-")
            throw CLI::ValidationError("Only one of OLD and NEW can be standard input.");
    });
}

} // namespace vexagpx
