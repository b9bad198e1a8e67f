// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/Commands.h>
#include <vexagpx/arguments/EditArguments.h>
#include <vexagpx/arguments/SharedArguments.h>
#include <vexagpx/arguments/ValueChecks.h>
#include <vexagpx/commands/Cut.h>

#include <memory>
#include <string>

namespace vexagpx {

namespace {

constexpr char kExamples[] = "What lies there is removed; --keep removes everything else. A hole in a track\n"
                             "starts a new segment, a route becomes several. Of a place no trace is left:\n"
                             "lines through it are divided, links and texts that give its coordinates are\n"
                             "removed, and the bounds are corrected. Names told in words stay.\n"
                             "\n"
                             "Examples:\n"
                             "  vexagpx cut walk.gpx public.gpx --around 46.95,7.45,500m\n"
                             "  vexagpx cut walk.gpx morning.gpx --keep --to 2024-05-01T12:00\n"
                             "  vexagpx cut walk.gpx valley.gpx --keep --box 46.5,7,47,7.5\n";

std::string RequireCircle(const std::string& text) {
    return ParseCircle(text) ? "" : "must be a latitude, a longitude and a radius, such as 47.5,8.25,500m";
}

std::string RequireBox(const std::string& text) {
    return ParseBox(text)
               ? ""
               : "must be its southern, western, northern and eastern edge, such as 47,8,47.5,8.25";
}

} // namespace

void AddCut(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<CutOptions>();
    CLI::App& command =
        AddCommand(app, invocation, {"cut", "Cut a place or a time out", kExamples}, options, Cut);
    AddEdit(command, invocation, options->edit);
    CLI::Option* const around =
        AddText(command, "--around", options->around, "LAT,LON,LENGTH: a circle, such as 47.5,8.25,500m")
            ->check(CLI::Validator(RequireCircle, ""))
            ->type_name("CIRCLE");
    CLI::Option* const box = AddText(command, "--box", options->box, "S,W,N,E: its edges in degrees")
                                 ->check(CLI::Validator(RequireBox, ""))
                                 ->type_name("BOX")
                                 ->excludes(around);
    CLI::Option* const from =
        AddText(command, "--from", options->from, "What is not before this time, in UTC")
            ->check(CLI::Validator(RequireTime, ""))
            ->type_name("TIME");
    CLI::Option* const to = AddText(command, "--to", options->to, "What is not after this time, in UTC")
                                ->check(CLI::Validator(RequireTime, ""))
                                ->type_name("TIME");
    command.add_flag("--keep", options->keeps, "Keep what lies there, and remove everything else");
    command.parse_complete_callback([options, around, box, from, to] {
        CheckEditFiles(options->edit);
        if (around->count() + box->count() + from->count() + to->count() == 0)
            throw CLI::ValidationError("Either --around, --box, --from or --to is needed.");
    });
}

} // namespace vexagpx
