// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/Commands.h>
#include <vexagpx/arguments/EditArguments.h>
#include <vexagpx/arguments/SharedArguments.h>
#include <vexagpx/arguments/ValueChecks.h>
#include <vexagpx/commands/Set.h>

#include <algorithm>
#include <memory>
#include <string>

namespace vexagpx {

namespace {

constexpr char kExamples[] = "An empty text removes a value. Sensors: heartrate, cadence, temperature,\n"
                             "watertemperature, power, speed, course, depth. Everything else of the file\n"
                             "stays byte for byte.\n"
                             "\n"
                             "Examples:\n"
                             "  vexagpx set walk.gpx --in-place --name 'Lake loop' --author Ann\n"
                             "  vexagpx set walk.gpx out.gpx --rename WP01 Hut --drop-waypoint WP02\n"
                             "  vexagpx set walk.gpx out.gpx --shift-time -1h --strip heartrate,cadence\n";

std::string RequireTimeOrNothing(const std::string& text) {
    return text.empty() ? "" : RequireTime(text);
}

std::string RequireAddress(const std::string& text) {
    const std::size_t at = text.rfind('@');
    const bool isAddress = at != std::string::npos && at > 0 && at + 1 < text.size();
    return text.empty() || isAddress ? "" : "must be an address, such as ann@example.org";
}

std::string RequireShift(const std::string& text) {
    return ParseShift(text) ? "" : "must be a duration such as -1h or 90s (s, min, h)";
}

std::string RequireSensor(const std::string& text) {
    return FindSensor(text)
               ? ""
               : "must be of heartrate, cadence, temperature, watertemperature, power, speed, course, depth";
}

void AddHeadOptions(CLI::App& command, SetOptions& options) {
    AddText(command, "--name", options.name, "The name of the document")->type_name("TEXT");
    AddText(command, "--description", options.description, "Its description")->type_name("TEXT");
    AddText(command, "--keywords", options.keywords, "Its keywords, with commas between them")
        ->type_name("TEXT");
    AddText(command, "--author", options.author, "The name of its author")->type_name("TEXT");
    AddText(command, "--email", options.email, "The address of its author")
        ->check(CLI::Validator(RequireAddress, ""))
        ->type_name("TEXT");
    AddText(command, "--time", options.time, "When it was made: 2024-05-01T08:30Z")
        ->check(CLI::Validator(RequireTimeOrNothing, ""))
        ->type_name("TIME");
}

void AddPointOptions(CLI::App& command, SetOptions& options) {
    AddText(command, "--rename", options.renames, "Rename waypoints, routes and tracks;\nmay be repeated")
        ->check([](const std::string& text) { return RequireText(text); })
        ->type_name("OLD NEW")
        ->allow_extra_args(false);
    AddText(command, "--drop-waypoint", options.drops,
            "Remove the waypoints with this name;\nmay be repeated")
        ->type_name("TEXT")
        ->allow_extra_args(false);
    const auto setShift = [&options](const std::string& text) { options.shift = ParseShift(text); };
    command.add_option_function<std::string>("--shift-time", setShift, "Add to the times of all points")
        ->check(CLI::Validator(RequireShift, ""))
        ->type_name("DURATION");
    command.add_option("--strip", options.strips, "Remove what sensors measured from points")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(CLI::Validator(RequireSensor, ""))
        ->type_name("SENSORS");
}

} // namespace

void AddSet(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<SetOptions>();
    CLI::App& command =
        AddCommand(app, invocation, {"set", "Change values of a file", kExamples}, options, Set);
    AddEdit(command, invocation, options->edit);
    AddHeadOptions(command, *options);
    AddPointOptions(command, *options);
    command.parse_complete_callback([options] {
        CheckEditFiles(options->edit);
        if (options->IsEmpty())
            throw CLI::ValidationError(
                "There is nothing to set: --name, --time, --rename and others say what.");
    });
}

} // namespace vexagpx
