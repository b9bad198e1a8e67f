// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/Commands.h>
#include <vexagpx/arguments/EditArguments.h>
#include <vexagpx/arguments/SharedArguments.h>
#include <vexagpx/arguments/ValueChecks.h>
#include <vexagpx/commands/Repair.h>

#include <memory>

namespace vexagpx {

namespace {

constexpr char kExamples[] = "Mends encoding, markup, prefixes and the root of a file; of one that is cut\n"
                             "off, the whole points stay. Everything that is right stays byte for byte.\n"
                             "\n"
                             "Examples:\n"
                             "  vexagpx repair broken.gpx whole.gpx\n"
                             "  vexagpx repair broken.gpx --dry-run\n"
                             "  vexagpx repair old.gpx new.gpx --zone Europe/Zurich --drop-bad-points\n";

} // namespace

void AddRepair(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<RepairOptions>();
    CLI::App& command =
        AddCommand(app, invocation, {"repair", "Mend a file that is broken", kExamples}, options, Repair);
    AddEdit(command, invocation, options->edit);
    AddText(command, "--zone", options->zone, "Give times without a time zone this one")
        ->check(CLI::Validator(RequireZone, ""))
        ->type_name("ZONE");
    command.add_flag("--drop-bad-points", options->dropsBadPoints,
                     "Remove points without a place on the earth");
    command.parse_complete_callback([options] { CheckEditFiles(options->edit); });
}

} // namespace vexagpx
