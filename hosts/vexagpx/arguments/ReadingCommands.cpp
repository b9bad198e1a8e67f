// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/Commands.h>
#include <vexagpx/arguments/SharedArguments.h>
#include <vexagpx/arguments/ValueChecks.h>
#include <vexagpx/commands/Caches.h>
#include <vexagpx/commands/Check.h>
#include <vexagpx/commands/Dump.h>
#include <vexagpx/commands/Index.h>
#include <vexagpx/commands/Info.h>
#include <vexagpx/commands/Show.h>
#include <vexagpx/commands/Stats.h>

#include <vexaTrackLib/GeocacheFilter.h>
#include <vexaTrackLib/GeocacheKey.h>

#include <memory>
#include <string>

namespace vexagpx {

namespace {

constexpr char kShowExamples[] = "Examples:\n"
                                 "  vexagpx show walk.gpx\n"
                                 "  vexagpx show --all *.gpx | less\n"
                                 "  vexagpx show --json *.gpx | jq .contents.trackPoints\n";
constexpr char kStatsExamples[] =
    "Ascent is counted between valleys and peaks that differ by the climb at least, a\n"
    "stay that is shorter than the pause is none. The manual defines each figure.\n"
    "\n"
    "Examples:\n"
    "  vexagpx stats walk.gpx\n"
    "  vexagpx stats --climb 10m --pause 5min --units imperial walk.gpx\n"
    "  vexagpx stats --total *.gpx\n"
    "  vexagpx stats --json walk.gpx | jq .allTracks.distance\n";
constexpr char kCachesExamples[] =
    "A CONDITION compares code, name, owner, type, size, country, state, hint,\n"
    "difficulty, terrain, bugs, logs, distance, placed or found by = != < <= > >=,\n"
    "or texts by ~ (contains); available and archived stand alone, or after \"not\".\n"
    "\"and\" joins conditions. KEY is one of the same words.\n"
    "\n"
    "Examples:\n"
    "  vexagpx caches pocket-query.zip\n"
    "  vexagpx caches query.gpx query-wpts.gpx --sort -terrain --hint\n"
    "  vexagpx caches queries --where 'difficulty>=4 and type~mystery'\n"
    "  vexagpx caches query.zip --near 47.5,8.25 --within 2km --logs 3\n"
    "  vexagpx caches query.zip --where 'found<2024-01-01 and available' --csv\n";
constexpr char kDumpExamples[] = "Examples:\n"
                                 "  vexagpx dump walk.gpx\n"
                                 "  vexagpx dump *.gpx > models.jsonl\n"
                                 "  curl -s https://example.org/walk.gpx | vexagpx dump -\n";
constexpr char kInfoExamples[] = "Examples:\n"
                                 "  vexagpx info *.gpx\n"
                                 "  vexagpx info --json pocket-query.zip\n";
constexpr char kIndexExamples[] =
    "The exit status is 1 when something could not be read, which is listed with the\n"
    "reason.\n"
    "\n"
    "Examples:\n"
    "  vexagpx index tracks\n"
    "  vexagpx index --duplicates tracks old-tracks.zip\n"
    "  vexagpx index --json tracks > index.jsonl\n";
constexpr char kCheckExamples[] =
    "\"(lost)\" marks data that the document does not have. The exit status is 1 when\n"
    "something is marked so or not valid, or when a file cannot be read.\n"
    "\n"
    "Examples:\n"
    "  vexagpx check walk.gpx\n"
    "  vexagpx check --all walk.gpx | less\n"
    "  vexagpx check --keep *.gpx\n"
    "  vexagpx check --schema walk.gpx\n"
    "  vexagpx check --summary tracks\n"
    "  vexagpx check --json *.gpx > reports.jsonl\n";

void AddCacheSelection(CLI::App& command, CachesOptions& options) {
    AddText(command, "--where", options.conditions,
            "List only those that meet the CONDITION;\n"
            "may be repeated")
        ->type_name("CONDITION")
        ->allow_extra_args(false)
        ->check(Parsed(vexaTrackLib::GeocacheFilter::Parse));
    AddText(command, "--sort", options.order, "Sort by KEY; -KEY: the greatest first")
        ->type_name("KEY")
        ->check(Parsed(vexaTrackLib::GeocacheOrder::Parse));
    CLI::Option* const near =
        AddText(command, "--near", options.near, "Tell how far they are from LAT,LON and sort by it")
            ->type_name("PLACE")
            ->check(CLI::Validator(RequirePlace, ""));
    AddText(command, "--within", options.within, "List only those so near: 500m, 2km, 1mi")
        ->type_name("LENGTH")
        ->check(CLI::Validator(RequireLength, ""))
        ->needs(near);
}

} // namespace

void AddShow(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<ShowOptions>();
    CLI::App& command =
        AddCommand(app, invocation, {"show", "Show what is in GPX files", kShowExamples}, options, Show);
    AddFiles(command, invocation, *options);
    AddColours(command);
    AddAsHost(command, options->rules, "Show what other programs with this library get");
    command.add_flag("--all", options->all, "List every waypoint, route, track and geocache");
    command.add_flag("--json", options->json, "Print a line of JSON for each document, with all\nof them");
}

void AddStats(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<StatsOptions>();
    CLI::App& command =
        AddCommand(app, invocation, {"stats", "Show how far, high, long and fast tracks go", kStatsExamples},
                   options, Stats);
    AddFiles(command, invocation, *options);
    AddColours(command);
    AddAsHost(command, options->rules, "Measure what other programs with this library get");
    const auto setClimb = [options](const std::string& text) {
        options->figures.climb = ParseLength(text).value();
    };
    command
        .add_option_function<std::string>("--climb", setClimb,
                                          "Height that a peak is above a valley at least")
        ->check(CLI::Validator(RequireLength, ""))
        ->type_name("LENGTH")
        ->default_str("5m");
    const auto setPause = [options](const std::string& text) {
        options->figures.pause = ParseDuration(text).value();
    };
    command.add_option_function<std::string>("--pause", setPause, "Shortest stay that counts as a pause")
        ->check(CLI::Validator(RequirePause, ""))
        ->type_name("DURATION")
        ->default_str("2min");
    const auto setUnits = [options](const std::string& text) {
        options->units = text == "imperial" ? Units::kImperial : Units::kMetric;
    };
    command.add_option_function<std::string>("--units", setUnits, "metric or imperial")
        ->check(CLI::IsMember({"metric", "imperial"}).description(""))
        ->type_name("UNITS")
        ->default_str("metric");
    command.add_flag("--total", options->total, "Add the sums of all files");
    command.add_flag("--json", options->json,
                     "Print a line of JSON for each document, in metres\nand seconds");
}

void AddCaches(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<CachesOptions>();
    CLI::App& command = AddCommand(
        app, invocation, {"caches", "List geocaches with their waypoints", kCachesExamples}, options, Caches);
    AddFiles(command, invocation, *options);
    AddColours(command);
    AddCacheSelection(command, *options);
    command.add_option("--logs", options->logs, "Show the N newest logs")
        ->type_name("N")
        ->check(CLI::Validator(RequireNumber, ""));
    command.add_flag("--hint", options->hint, "Show the hints");
    command.add_flag("--text", options->text, "Show the descriptions as plain text");
    CLI::Option* const json =
        command.add_flag("--json", options->json, "Print a line of JSON for each geocache");
    command.add_flag("--csv", options->csv, "Print comma-separated values")->excludes(json);
}

void AddDump(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<DumpOptions>();
    CLI::App& command =
        AddCommand(app, invocation, {"dump", "Print GPX files as JSON, one line for each", kDumpExamples},
                   options, Dump);
    AddFiles(command, invocation, *options);
    AddAsHost(command, options->rules, "Print what other programs with this library get");
}

void AddInfo(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<InfoOptions>();
    CLI::App& command =
        AddCommand(app, invocation,
                   {"info", "Show metadata, time and bounds, from file heads", kInfoExamples}, options, Info);
    AddFiles(command, invocation, *options);
    AddColours(command);
    command.add_flag("--json", options->json, "Print a line of JSON for each file");
}

void AddIndex(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<IndexOptions>();
    CLI::App& command = AddCommand(
        app, invocation, {"index", "List files with what they have and find equal ones", kIndexExamples},
        options, Index);
    AddFiles(command, invocation, *options);
    AddColours(command);
    command.add_flag("--duplicates", options->duplicates,
                     "List groups of documents with equal content,\n"
                     "whatever their white space, creator and version");
    command.add_flag("--json", options->json, "Print a line of JSON for each document");
}

void AddCheck(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<CheckOptions>();
    options->rules.asHost = true;
    CLI::App& command = AddCommand(
        app, invocation, {"check", "Report what of GPX files is read and what is not", kCheckExamples},
        options, Check);
    AddFiles(command, invocation, *options);
    AddColours(command);
    command.add_flag_callback(
        "--keep",
        [options] {
            options->keep = true;
            options->rules.asHost = false;
        },
        "Check what convert does: read completely, write\n"
        "as the same version and as 1.1, and read again");
    command.add_flag("--summary", options->summary, "Group what is wrong with all files by causes")
        ->excludes("--keep");
    command.add_flag("--schema", options->schema,
                     "Also check by the schemas of GPX, of geocaches and\n"
                     "of the vendor, which needs no network");
    command.add_flag("--all", options->all, "List equal items one by one, not with a count");
    command.add_flag("--json", options->json, "Print a line of JSON for each document");
}

} // namespace vexagpx
