// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/Commands.h>
#include <vexagpx/arguments/EditArguments.h>
#include <vexagpx/arguments/SharedArguments.h>
#include <vexagpx/arguments/ValueChecks.h>
#include <vexagpx/commands/Reverse.h>
#include <vexagpx/commands/Simplify.h>
#include <vexagpx/terminal/Units.h>

#include <memory>
#include <string>

namespace vexagpx {

namespace {

constexpr char kSimplifyExamples[] =
    "Points are left out that are near enough to the lines between the others; the\n"
    "ends of segments stay. Everything else of the file stays byte for byte.\n"
    "\n"
    "Examples:\n"
    "  vexagpx simplify walk.gpx short.gpx --error 5m\n"
    "  vexagpx simplify walk.gpx device.gpx --points 500\n"
    "  vexagpx simplify walk.gpx --error 10m --dry-run\n";
constexpr char kReverseExamples[] =
    "Nobody went that way at those times, so the points lose them. Everything else\n"
    "of the file stays byte for byte.\n"
    "\n"
    "Examples:\n"
    "  vexagpx reverse walk.gpx back.gpx\n"
    "  vexagpx reverse walk.gpx --track 2 --in-place\n";

} // namespace

void AddSimplify(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<SimplifyOptions>();
    CLI::App& command =
        AddCommand(app, invocation, {"simplify", "Leave out points that do not show", kSimplifyExamples},
                   options, Simplify);
    AddEdit(command, invocation, options->edit);
    AddPathChoice(command, options->paths);
    const auto setError = [options](const std::string& text) { options->error = ParseLength(text).value(); };
    CLI::Option* const error = command
                                   .add_option_function<std::string>(
                                       "--error", setError, "How far off a point may be that is left out")
                                   ->check(CLI::Validator(RequireLengthAboveZero, ""))
                                   ->type_name("LENGTH");
    CLI::Option* const points =
        command.add_option("--points", options->points, "How many points a track or route may have")
            ->check(CLI::Validator(RequireTwo, ""))
            ->type_name("N")
            ->excludes(error);
    command.parse_complete_callback([options, error, points] {
        CheckEditFiles(options->edit);
        if (error->count() + points->count() == 0)
            throw CLI::ValidationError("Either --error or --points is needed.");
    });
}

void AddReverse(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<ReverseOptions>();
    CLI::App& command = AddCommand(
        app, invocation, {"reverse", "Turn tracks and routes around", kReverseExamples}, options, Reverse);
    AddEdit(command, invocation, options->edit);
    AddPathChoice(command, options->paths);
    command.add_flag("--keep-times", options->keepsTimes,
                     "Keep the times of points, which then go backwards");
    command.parse_complete_callback([options] { CheckEditFiles(options->edit); });
}

} // namespace vexagpx
