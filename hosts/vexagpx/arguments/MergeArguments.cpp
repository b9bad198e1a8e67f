// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/Commands.h>
#include <vexagpx/arguments/SharedArguments.h>
#include <vexagpx/commands/Merge.h>

#include <algorithm>
#include <memory>
#include <string>

namespace vexagpx {

namespace {

constexpr char kExamples[] = "The metadata is that of the first file, which otherwise stays as it is. Of\n"
                             "waypoints with two versions the newer one stays; geocaches get the logs of\n"
                             "both. Points that are there already are not added again, and no gap is\n"
                             "bridged. The same merge twice changes nothing.\n"
                             "\n"
                             "Examples:\n"
                             "  vexagpx merge monday.gpx tuesday.gpx -o both.gpx\n"
                             "  vexagpx merge old.gpx new.gpx -o all.gpx --conflicts left-out.gpx\n"
                             "  vexagpx merge a.gpx b.gpx c.gpx -o tour.gpx --by time\n";

} // namespace

void AddMerge(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<MergeOptions>();
    CLI::App& command =
        AddCommand(app, invocation, {"merge", "Put several files together", kExamples}, options, Merge);
    AddArgument(command, "FILE", options->files, "GPX files, two or more; - is standard input");
    AddText(command, "-o,--output", options->edit.out, "GPX file to write; - is standard output")
        ->type_name("OUT");
    const auto setOrder = [options](const std::string& text) { options->byTime = text == "time"; };
    command
        .add_option_function<std::string>("--by", setOrder,
                                          "The order of tracks: code, as they come, or\ntime")
        ->type_name("ORDER")
        ->check(CLI::IsMember({"code", "time"}).description(""));
    AddText(command, "--conflicts", options->conflicts,
            "GPX file to write, for versions of waypoints\nthat are left out")
        ->type_name("OUT");
    command.add_flag("--in-place", options->edit.inPlace,
                     "Replace the first FILE by the result, as a whole\nor not at all");
    command.add_flag("--dry-run", options->edit.dryRun, "Write nothing, and tell what would change");
    command.add_flag("--json", options->edit.json, "Tell what changed as a line of JSON");
    AddColours(command);
    AddProgress(command, invocation);
    AddTrust(command, options->edit.rules);
    AddLimits(command, options->edit.rules.archives);
    command.parse_complete_callback([options] {
        if (options->files.size() < 2)
            throw CLI::ValidationError("Two files or more are needed.");
        if (std::count(options->files.begin(), options->files.end(), "-") > 1)
            throw CLI::ValidationError("Only one of the files can be standard input.");
        if (options->edit.inPlace && !options->edit.out.empty())
            throw CLI::ValidationError("--in-place changes the first FILE, and there is an OUT.");
        if (options->edit.out.empty() && !options->edit.inPlace && !options->edit.dryRun)
            throw CLI::ValidationError("-o is missing: a file to write, or --in-place, or --dry-run.");
        if (options->edit.json && options->edit.out == "-")
            throw CLI::ValidationError("--json and -o - both write to standard output.");
        if (options->conflicts == "-")
            throw CLI::ValidationError("--conflicts takes a file, and not standard output.");
        if (!options->conflicts.empty() && options->conflicts == options->edit.out)
            throw CLI::ValidationError("-o and --conflicts both write to " + options->conflicts + ".");
        options->edit.in = options->files.front();
    });
}

} // namespace vexagpx
