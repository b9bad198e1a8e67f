// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/EditArguments.h>

#include <vexagpx/arguments/SharedArguments.h>
#include <vexagpx/arguments/ValueChecks.h>

namespace vexagpx {

void CheckEditFiles(const EditOptions& options) {
    if (options.inPlace && !options.out.empty())
        throw CLI::ValidationError("--in-place changes IN, and there is an OUT.");
    if (options.out.empty() && !options.inPlace && !options.dryRun)
        throw CLI::ValidationError("OUT is missing: a file to write, or --in-place, or --dry-run.");
    if (options.json && options.out == "-")
        throw CLI::ValidationError("--json and OUT - both write to standard output.");
}

void AddEdit(CLI::App& command, Invocation& invocation, EditOptions& options) {
    AddArgument(command, "IN", options.in, "GPX file; - is standard input");
    AddText(command, "OUT", options.out, "GPX file to write; - is standard output")->type_name("");
    command.add_flag("--in-place", options.inPlace, "Replace IN by the result, as a whole or not at all");
    command.add_flag("--dry-run", options.dryRun, "Write nothing, and tell what would change");
    command.add_flag("--json", options.json, "Tell what changed as a line of JSON");
    AddColours(command);
    AddProgress(command, invocation);
    AddTrust(command, options.rules);
    AddLimits(command, options.rules.archives);
}

void AddPathChoice(CLI::App& command, PathChoice& choice) {
    command.add_option("--track", choice.tracks, "Change only this track, by its number; may be\nrepeated")
        ->type_name("N")
        ->allow_extra_args(false)
        ->check(CLI::Validator(RequireNumber, ""));
    command.add_option("--route", choice.routes, "Change only this route, by its number; may be\nrepeated")
        ->type_name("N")
        ->allow_extra_args(false)
        ->check(CLI::Validator(RequireNumber, ""));
}

} // namespace vexagpx
