// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/Commands.h>
#include <vexagpx/arguments/EditArguments.h>
#include <vexagpx/arguments/SharedArguments.h>
#include <vexagpx/commands/Repair.h>

#include <memory>

namespace vexagpx {

namespace {

constexpr char kExamples[] =
    "Mends encoding, markup, prefixes and the root of a file that cannot be read; of\n"
    "one that is cut off, the whole points stay. A readable file stays as it is.\n"
    "\n"
    "Examples:\n"
    "  vexagpx repair broken.gpx whole.gpx\n"
    "  vexagpx repair broken.gpx --dry-run\n";

} // namespace

void AddRepair(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<RepairOptions>();
    CLI::App& command = AddCommand(app, invocation, {"repair", "Mend a file that cannot be read", kExamples},
                                   options, Repair);
    AddEdit(command, invocation, options->edit);
    command.parse_complete_callback([options] { CheckEditFiles(options->edit); });
}

} // namespace vexagpx
