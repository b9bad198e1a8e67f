// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/Commands.h>
#include <vexagpx/arguments/SharedArguments.h>
#include <vexagpx/arguments/ValueChecks.h>
#include <vexagpx/commands/Split.h>
#include <vexagpx/terminal/Units.h>

#include <memory>
#include <string>

namespace vexagpx {

namespace {

constexpr char kExamples[] = "Each part is a file of its own in FOLDER, with the metadata of IN and the\n"
                             "texts of its tracks. Waypoints go to the part of their time; those without a\n"
                             "time, and routes, go to the first one.\n"
                             "\n"
                             "Examples:\n"
                             "  vexagpx split tour.gpx parts --pause 4h\n"
                             "  vexagpx split tour.gpx days --day --zone Europe/Zurich\n"
                             "  vexagpx split tour.gpx parts --every 10km\n";

} // namespace

void AddSplit(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<SplitOptions>();
    CLI::App& command =
        AddCommand(app, invocation, {"split", "Split tracks into several files", kExamples}, options, Split);
    AddArgument(command, "IN", options->in, "GPX file; - is standard input");
    AddArgument(command, "FOLDER", options->folder, "Where to write the parts; made if it is not there");
    const auto setPause = [options](const std::string& text) { options->pause = ParseDuration(text); };
    CLI::Option* const pause = command
                                   .add_option_function<std::string>(
                                       "--pause", setPause, "Where no point follows for so long: 4h, 30min")
                                   ->check(CLI::Validator(RequirePause, ""))
                                   ->type_name("DURATION");
    CLI::Option* const day = command.add_flag("--day", options->byDay, "At midnight")->excludes(pause);
    const auto setEvery = [options](const std::string& text) { options->every = ParseLength(text); };
    CLI::Option* const every =
        command.add_option_function<std::string>("--every", setEvery, "After so much of the way: 10km, 5mi")
            ->check(CLI::Validator(RequireLengthAboveZero, ""))
            ->type_name("LENGTH")
            ->excludes(pause)
            ->excludes(day);
    AddText(command, "--zone", options->zone, "The time zone whose midnight counts; UTC\notherwise")
        ->check(CLI::Validator(RequireZone, ""))
        ->type_name("ZONE")
        ->needs(day);
    command.add_flag("--dry-run", options->dryRun, "Write nothing, and tell what would be written");
    command.add_flag("--json", options->json, "Tell it as a line of JSON");
    AddColours(command);
    AddProgress(command, invocation);
    AddTrust(command, options->rules);
    AddLimits(command, options->rules.archives);
    command.parse_complete_callback([pause, day, every] {
        if (pause->count() + day->count() + every->count() == 0)
            throw CLI::ValidationError("Either --pause, --day or --every is needed.");
    });
}

} // namespace vexagpx
