// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/Commands.h>
#include <vexagpx/arguments/SharedArguments.h>
#include <vexagpx/arguments/ValueChecks.h>
#include <vexagpx/commands/Zip.h>

#include <memory>
#include <string>

namespace vexagpx {

namespace {

constexpr char kZipExamples[] = "Examples:\n"
                                "  vexagpx zip list pocket-query.zip\n"
                                "  vexagpx zip list --json pocket-query.zip | jq .size\n"
                                "  vexagpx zip cat pocket-query.zip 9000001.gpx | head\n"
                                "  vexagpx zip test pocket-query.zip\n"
                                "  vexagpx zip extract pocket-query.zip caches\n";

/// What all zip commands take.
void AddArchive(CLI::App& command, Invocation& invocation, ZipOptions& options) {
    AddArgument(command, "ARCHIVE", options.archive, "ZIP archive; - is standard input");
    AddProgress(command, invocation);
    AddLimits(command, options.limits);
}

void AddZipList(CLI::App& zip, Invocation& invocation) {
    const auto options = std::make_shared<ZipListOptions>();
    CLI::App& command = AddCommand(zip, invocation, {"list", "Print the names of the entries", kZipExamples},
                                   options, ZipList);
    AddArchive(command, invocation, *options);
    command.add_flag("--json", options->json,
                     "Print a line of JSON for each entry, with sizes,\nmethod and time");
}

void AddZipCat(CLI::App& zip, Invocation& invocation) {
    const auto options = std::make_shared<ZipCatOptions>();
    CLI::App& command =
        AddCommand(zip, invocation, {"cat", "Print the content of an entry", kZipExamples}, options, ZipCat);
    AddArchive(command, invocation, *options);
    AddArgument(command, "ENTRY", options->entry, "Name as zip list prints it");
}

void AddZipTest(CLI::App& zip, Invocation& invocation) {
    const auto options = std::make_shared<ZipOptions>();
    AddArchive(AddCommand(zip, invocation, {"test", "Read every entry and report the bad ones", kZipExamples},
                          options, ZipTest),
               invocation, *options);
}

void AddZipExtract(CLI::App& zip, Invocation& invocation) {
    const auto options = std::make_shared<ZipExtractOptions>();
    CLI::App& command = AddCommand(
        zip, invocation, {"extract", "Write the entries below a folder", kZipExamples}, options, ZipExtract);
    AddArchive(command, invocation, *options);
    AddArgument(command, "DIR", options->folder, "Folder, created when missing");
    command.add_flag("--overwrite", options->overwrite, "Replace existing files");
}

} // namespace

void AddZip(CLI::App& app, Invocation& invocation) {
    CLI::App& zip =
        AddCommandGroup(app, invocation, {"zip", "List, read, test and extract ZIP archives", kZipExamples});
    zip.require_subcommand(1);
    AddZipList(zip, invocation);
    AddZipCat(zip, invocation);
    AddZipTest(zip, invocation);
    AddZipExtract(zip, invocation);
}

} // namespace vexagpx
