// SPDX-License-Identifier: MIT
#include <vexagpx/CommandLine.h>

#include <vexagpx/UsageError.h>
#include <vexagpx/commands/Caches.h>
#include <vexagpx/commands/Check.h>
#include <vexagpx/commands/Clean.h>
#include <vexagpx/commands/Convert.h>
#include <vexagpx/commands/Dump.h>
#include <vexagpx/commands/Export.h>
#include <vexagpx/commands/Index.h>
#include <vexagpx/commands/Info.h>
#include <vexagpx/commands/Plot.h>
#include <vexagpx/commands/Show.h>
#include <vexagpx/commands/Stats.h>
#include <vexagpx/commands/Zip.h>
#include <vexagpx/process/Colours.h>
#include <vexagpx/process/Messages.h>

#include <vexaTrackLib/GeocacheFilter.h>
#include <vexaTrackLib/GeocacheKey.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

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
constexpr char kDumpExamples[] = "Examples:\n"
                                 "  vexagpx dump walk.gpx\n"
                                 "  vexagpx dump *.gpx > models.jsonl\n"
                                 "  curl -s https://example.org/walk.gpx | vexagpx dump -\n";
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
constexpr char kConvertExamples[] =
    "Everything that IN has is in OUT, but for what the GPX version has no place for,\n"
    "which is listed on standard error.\n"
    "\n"
    "Examples:\n"
    "  vexagpx convert old.gpx new.gpx\n"
    "  vexagpx convert --gpx 1.0 new.gpx old.gpx\n"
    "  vexagpx convert --app MyApp --url https://example.org/ in.gpx out.gpx\n"
    "  vexagpx convert walk.gpx walk.gpx\n"
    "  unzip -p walk.zip | vexagpx convert - walk.gpx\n";
constexpr char kExportExamples[] =
    "Without --layer, GeoJSON and KML get waypoints, routes and tracks, and a table\n"
    "gets the waypoints, or else the points. What the format has no place for is\n"
    "listed on standard error.\n"
    "\n"
    "Examples:\n"
    "  vexagpx export walk.gpx -o walk.geojson\n"
    "  vexagpx export walk.gpx -o walk.csv --layer points\n"
    "  vexagpx export pocket-query.zip -o caches.kml\n"
    "  vexagpx export walk.gpx --format geojson | jq .features[0].properties\n";
constexpr char kCleanExamples[] = "Examples:\n"
                                  "  vexagpx clean description.html\n"
                                  "  echo '[b]Hello[/b] &amp; welcome' | vexagpx clean\n";

constexpr char kPlotExamples[] =
    "A picture has a map above a profile of height over distance. A page shows map,\n"
    "profile and figures in any browser, and needs no network.\n"
    "\n"
    "Examples:\n"
    "  vexagpx plot walk.gpx -o walk.svg\n"
    "  vexagpx plot walk.gpx -o walk.pdf --colour height --size 1400x1000\n"
    "  vexagpx plot walk.gpx -o walk.html\n"
    "  vexagpx plot *.gpx -o all.html\n";
constexpr char kIndexExamples[] =
    "The exit status is 1 when something could not be read, which is listed with the\n"
    "reason.\n"
    "\n"
    "Examples:\n"
    "  vexagpx index tracks\n"
    "  vexagpx index --duplicates tracks old-tracks.zip\n"
    "  vexagpx index --json tracks > index.jsonl\n";
constexpr char kInfoExamples[] = "Examples:\n"
                                 "  vexagpx info *.gpx\n"
                                 "  vexagpx info --json pocket-query.zip\n";
constexpr char kZipExamples[] = "Examples:\n"
                                "  vexagpx zip list pocket-query.zip\n"
                                "  vexagpx zip list --json pocket-query.zip | jq .size\n"
                                "  vexagpx zip cat pocket-query.zip 9000001.gpx | head\n"
                                "  vexagpx zip test pocket-query.zip\n"
                                "  vexagpx zip extract pocket-query.zip caches\n";

constexpr char kLimits[] = "Limits for archives and streams";

/// Writes `SIZE=1GB` for a default value, which versions of CLI11 write in different ways.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_option_opts(const CLI::Option* option) const override {
        std::string text;
        if (!option->get_type_name().empty())
            text += " " + option->get_type_name();
        if (!option->get_default_str().empty())
            text += "=" + option->get_default_str();
        if (option->get_type_size() == 0)
            return "";
        if (option->get_expected_max() == CLI::detail::expected_max_vector_size)
            text += " ...";
        return option->get_required() ? text + " REQUIRED" : text;
    }
};

std::string RequireText(const std::string& text) {
    return text.empty() ? "must not be empty" : "";
}

/// A unit may follow the number of bytes.
std::string RequireSize(const std::string& text) {
    std::uint64_t number = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && number > 0 ? "" : "must be a number above 0";
}

std::string RequireLength(const std::string& text) {
    return ParseLength(text) ? "" : "must be a length, such as 500m, 2km or 15ft";
}

std::string RequirePause(const std::string& text) {
    const std::optional<double> seconds = ParseDuration(text);
    if (!seconds)
        return "must be a duration such as 90s or 2min (s, min, h)";
    return *seconds >= 1.0 ? "" : "must be a second or more";
}

std::string RequireNumber(const std::string& text) {
    const bool isNumber = std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    return isNumber ? RequireSize(text) : "must be a number above 0";
}

// CLI11 takes an argument such as "[a]" for a list, and an argument after "--" that starts with a dash for an option
// if arguments come before the "--". A mark at the start of such arguments hides what they look like, and is removed
// from the value. An argument that starts with the mark itself gets another one.
constexpr char kMark[] = "\x01";

/// Where the value of "--option=value" starts; 0 for anything else.
std::size_t ValueStart(const std::string& argument) {
    return argument.starts_with("--") ? argument.find('=') + 1 : 0;
}

std::string Marked(std::string argument, bool isFile) {
    const bool isList = argument.starts_with('[') && argument.ends_with(']');
    const std::size_t value = isFile ? 0 : ValueStart(argument);
    if (isFile || isList || argument.compare(value, 1, kMark) == 0)
        argument.insert(value, kMark);
    return argument;
}

/// The arguments in the order that CLI11 expects: the last one first, without the program's name.
std::vector<std::string> Marked(int argc, char** argv) {
    std::vector<std::string> arguments;
    bool marksAll = false;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--" && !marksAll)
            marksAll = true;
        else
            arguments.push_back(Marked(argument, marksAll));
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

/// Returns no error.
std::string Unmark(std::string& text) {
    if (text.starts_with(kMark))
        text.erase(0, 1);
    return "";
}

/// An option or argument whose value is text as the user typed it.
/// \param value a text or a list of texts
template <class Value>
CLI::Option* AddText(CLI::App& command, const std::string& name, Value& value,
                     const std::string& description) {
    return command.add_option(name, value, description)->transform(CLI::Validator(Unmark, ""));
}

/// An argument that must be given.
template <class Value>
void AddArgument(CLI::App& command, const std::string& name, Value& value, const std::string& description) {
    AddText(command, name, value, description)->required()->type_name("");
}

void AddDebugLog(CLI::App& command, Invocation& invocation) {
    AddText(command, "--debug-log", invocation.debugLog, "Write the library's contract reports to this file")
        ->type_name("FILE");
}

void AddProgress(CLI::App& command, Invocation& invocation) {
    command.add_flag("--no-progress", invocation.noProgress, "Show no progress while long files are read");
}

/// Colours are no matter of a command's options: what writes to standard output knows whether it uses them.
void AddColours(CLI::App& command) {
    const auto use = [](const std::string& when) {
        SetColourUse(when == "always"  ? ColourUse::kAlways
                     : when == "never" ? ColourUse::kNever
                                       : ColourUse::kAuto);
    };
    command
        .add_option_function<std::string>("--colour", use,
                                          "Use colours: auto (in a terminal, unless NO_COLOR\n"
                                          "is set), always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}).description(""))
        ->type_name("WHEN")
        ->default_str("auto");
}

void AddTrust(CLI::App& command, InputRules& rules) {
    command.add_flag("--trust", rules.isTrusted,
                     "Follow document types and entities and set\n"
                     "no limits: only for files that you trust");
}

void AddAsHost(CLI::App& command, InputRules& rules, const std::string& description) {
    command.add_flag("--as-host", rules.asHost, description);
}

void AddSize(CLI::App& command, const std::string& name, std::uint64_t& size, const std::string& description,
             const std::string& defaultText) {
    command.add_option(name, size, description)
        ->check(CLI::Validator(RequireSize, ""))
        ->transform(CLI::AsSizeValue(false).description(""))
        ->type_name("SIZE")
        ->default_str(defaultText)
        ->group(kLimits);
}

void AddNumber(CLI::App& command, const std::string& name, std::uint64_t& number,
               const std::string& description) {
    command.add_option(name, number, description)
        ->check(CLI::Validator(RequireNumber, ""))
        ->type_name("NUMBER")
        ->capture_default_str()
        ->group(kLimits);
}

void AddLimits(CLI::App& command, ArchiveLimits& limits) {
    AddSize(command, "--max-entry-size", limits.entrySize, "Bytes that an entry may have; 500MB, 2GB", "1GB");
    AddSize(command, "--max-total-size", limits.totalSize, "Bytes that all entries read may have together",
            "4GB");
    AddNumber(command, "--max-ratio", limits.ratio,
              "How many times its packed size an entry may have,\n"
              "and all entries together the archive's size");
    AddNumber(command, "--max-entries", limits.entries, "Entries that an archive may have");
    AddSize(command, "--max-stream-size", limits.streamSize, "Bytes that standard input or a pipe may have",
            "4GB");
}

struct CommandHelp {
    std::string name;
    std::string description;
    std::string examples;
};

CLI::App& AddCommandGroup(CLI::App& parent, Invocation& invocation, const CommandHelp& help) {
    CLI::App* command = parent.add_subcommand(help.name, help.description);
    command->footer(help.examples);
    AddDebugLog(*command, invocation);
    return *command;
}

/// \param options filled in by parsing; kept alive by the invocation
template <class Options>
CLI::App& AddCommand(CLI::App& parent, Invocation& invocation, const CommandHelp& help,
                     const std::shared_ptr<Options>& options, bool (*run)(const Options&, Output&)) {
    CLI::App& command = AddCommandGroup(parent, invocation, help);
    command.callback([&invocation, options, run] {
        invocation.command = [options, run](Output& out) { return run(*options, out); };
    });
    return command;
}

/// What the commands take that read any number of GPX files.
template <class Options>
void AddFiles(CLI::App& command, Invocation& invocation, Options& options) {
    AddArgument(command, "FILE", options.files, "GPX files, ZIP archives, folders;\n- is standard input");
    AddProgress(command, invocation);
    AddTrust(command, options.rules);
    AddLimits(command, options.rules.archives);
}

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

/// A check that takes the message of an exception for the error.
template <class Parse>
CLI::Validator Parsed(Parse parse) {
    return CLI::Validator(
        [parse](const std::string& text) {
            try {
                parse(text);
                return std::string();
            } catch (const std::invalid_argument& error) {
                return std::string(error.what());
            }
        },
        "");
}

std::string RequirePlace(const std::string& text) {
    return ParsePlace(text) ? "" : "must be a latitude and a longitude, such as 47.5,8.25";
}

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

ColourBy ColourByOf(const std::string& name) {
    return name == "height" ? ColourBy::kHeight : name == "speed" ? ColourBy::kSpeed : ColourBy::kNone;
}

void AddPlot(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<PlotOptions>();
    CLI::App& command = AddCommand(
        app, invocation, {"plot", "Draw GPX files as a picture or a page", kPlotExamples}, options, Plot);
    AddFiles(command, invocation, *options);
    AddText(command, "-o,--output", options->out,
            "File to write: its ending .svg, .png, .pdf or\n"
            ".html says what")
        ->type_name("OUT")
        ->required()
        ->check(CLI::Validator([](const std::string& path) { return FindPlotNameError(path); }, ""));
    command
        .add_option_function<std::string>(
            "--size", [options](const std::string& text) { ReadPictureSize(text, options->picture); },
            "Width and height of a picture in pixels")
        ->type_name("SIZE")
        ->check(CLI::Validator(
            [](const std::string& text) {
                PictureOptions ignored;
                return ReadPictureSize(text, ignored);
            },
            ""))
        ->default_str("1000x800");
    command
        .add_option_function<std::string>(
            "--colour", [options](const std::string& name) { options->picture.colourBy = ColourByOf(name); },
            "What the colours of a picture show: none (one\n"
            "for each track), height or speed")
        ->type_name("COLOURS")
        ->check(CLI::IsMember({"none", "height", "speed"}).description(""))
        ->default_str("none");
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

void AddConvert(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App& command =
        AddCommand(app, invocation, {"convert", "Read a GPX file and write it again", kConvertExamples},
                   options, Convert);
    AddAsHost(command, options->rules,
              "Read and write as other programs with this library\n"
              "do, which lose what it has no model of");
    AddProgress(command, invocation);
    AddTrust(command, options->rules);
    AddLimits(command, options->rules.archives);
    AddArgument(command, "IN", options->in, "GPX file or ZIP archive; - is standard input");
    AddArgument(command, "OUT", options->out,
                "GPX file to write, IN too; - is standard output.\n"
                "Replaced only by a complete, well-formed result\n"
                "that says what IN says.\n"
                "A folder for an archive of several GPX files");
    command.add_option("--gpx", options->version, "GPX version to write: 1.0 or 1.1")
        ->type_name("VERSION")
        ->check(CLI::IsMember({"1.0", "1.1"}).description(""))
        ->capture_default_str();
    AddText(command, "--app", options->applicationName, "Name of the application that writes")
        ->type_name("NAME")
        ->check(CLI::Validator(RequireText, ""))
        ->capture_default_str();
    AddText(command, "--url", options->applicationUrl, "Address of the application")
        ->type_name("URL")
        ->check(CLI::Validator(RequireText, ""))
        ->capture_default_str();
}

void AddExport(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<ExportOptions>();
    CLI::App& command = AddCommand(
        app, invocation, {"export", "Write GeoJSON, CSV or KML for maps and tables", kExportExamples},
        options, Export);
    AddArgument(command, "IN", options->in, "GPX file or ZIP archive; - is standard input");
    AddText(command, "-o,--output", options->out, "File to write; - is standard output")
        ->type_name("OUT")
        ->capture_default_str();
    AddText(command, "--format", options->format,
            "geojson, csv or kml; otherwise the end of the\n"
            "name of OUT says it")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"geojson", "csv", "kml"}).description(""));
    AddText(command, "--layer", options->layer,
            "Write only these: waypoints, routes, tracks, or\n"
            "points, which are those of routes and tracks")
        ->type_name("LAYER")
        ->check(CLI::IsMember({"waypoints", "routes", "tracks", "points"}).description(""));
    AddProgress(command, invocation);
    AddTrust(command, options->rules);
    AddLimits(command, options->rules.archives);
}

void AddClean(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<CleanOptions>();
    CLI::App& command = AddCommand(
        app, invocation, {"clean", "Turn web text in UTF-8 into plain text", kCleanExamples}, options, Clean);
    AddText(command, "FILE", options->file, "Text or HTML; - or nothing is standard input")->type_name("");
}

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

void AddZip(CLI::App& app, Invocation& invocation) {
    CLI::App& zip =
        AddCommandGroup(app, invocation, {"zip", "List, read, test and extract ZIP archives", kZipExamples});
    zip.require_subcommand(1);
    AddZipList(zip, invocation);
    AddZipCat(zip, invocation);
    AddZipTest(zip, invocation);
    AddZipExtract(zip, invocation);
}

} // namespace

void AddCommands(CLI::App& app, Invocation& invocation) {
    app.name("vexagpx");
    app.formatter(std::make_shared<HelpFormatter>());
    app.description("Reads, shows and rewrites GPX files.");
    app.set_version_flag("--version", "vexagpx " VEXAGPX_VERSION, "Print the version and exit");
    AddDebugLog(app, invocation);
    AddProgress(app, invocation);
    app.require_subcommand(1);
    AddShow(app, invocation);
    AddStats(app, invocation);
    AddCaches(app, invocation);
    AddDump(app, invocation);
    AddInfo(app, invocation);
    AddPlot(app, invocation);
    AddIndex(app, invocation);
    AddCheck(app, invocation);
    AddConvert(app, invocation);
    AddExport(app, invocation);
    AddClean(app, invocation);
    AddZip(app, invocation);
    app.footer("Exit status: 0 success, 1 input or output failed or check found a loss, 2 wrong\n"
               "usage. Ctrl-C stops the reading of a file and leaves no incomplete result.\n"
               "\n"
               "Examples:\n"
               "  vexagpx show walk.gpx\n"
               "  vexagpx stats walk.gpx\n"
               "  vexagpx caches pocket-query.zip --sort terrain\n"
               "  vexagpx dump *.gpx > models.jsonl\n"
               "  vexagpx info pocket-query.zip\n"
               "  vexagpx plot walk.gpx -o walk.html\n"
               "  vexagpx index --duplicates tracks\n"
               "  vexagpx check walk.gpx\n"
               "  vexagpx convert --gpx 1.1 old.gpx new.gpx\n"
               "  vexagpx export walk.gpx -o walk.geojson\n"
               "  vexagpx clean description.html\n"
               "  vexagpx zip list pocket-query.zip\n"
               "\n"
               "vexagpx help COMMAND describes a command.");
}

namespace {

/// Does what "help COMMAND..." asks for.
int Help(const CLI::App& app, const std::vector<std::string>& words, Output& out) {
    const CLI::App* command = &app;
    std::string path;
    for (const std::string& word : words) {
        path += (path.empty() ? "" : " ") + command->get_name();
        const std::vector<const CLI::App*> below =
            command->get_subcommands([&word](const CLI::App* one) { return one->get_name() == word; });
        if (below.empty()) {
            PrintError(UnknownCommandText(*command, word));
            PrintError("Run with --help for more information.");
            return kUsageError;
        }
        command = below.front();
    }
    out.Write(command->help(path));
    out.Close();
    return kSuccess;
}

} // namespace

std::optional<int> ParseArguments(int argc, char** argv, Invocation& invocation, Output& out) {
    CLI::App app;
    AddCommands(app, invocation);
    if (argc > 1 && std::string_view(argv[1]) == "help")
        return Help(app, std::vector<std::string>(argv + 2, argv + argc), out);
    try {
        app.parse(Marked(argc, argv));
        return std::nullopt;
    } catch (const CLI::CallForHelp&) {
        out.Write(app.help());
    } catch (const CLI::CallForAllHelp&) {
        out.Write(app.help("", CLI::AppFormatMode::All));
    } catch (const CLI::CallForVersion& version) {
        out.Write(std::string(version.what()) + "\n");
    } catch (const CLI::ParseError& error) {
        PrintError(UsageErrorText(app, error));
        PrintError("Run with --help for more information.");
        return kUsageError;
    }
    out.Close();
    return kSuccess;
}

} // namespace vexagpx
