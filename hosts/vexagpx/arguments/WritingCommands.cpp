// SPDX-License-Identifier: MIT
#include <vexagpx/arguments/Commands.h>
#include <vexagpx/arguments/SharedArguments.h>
#include <vexagpx/arguments/ValueChecks.h>
#include <vexagpx/commands/Clean.h>
#include <vexagpx/commands/Convert.h>
#include <vexagpx/commands/Export.h>
#include <vexagpx/commands/Plot.h>

#include <memory>
#include <string>

namespace vexagpx {

namespace {

constexpr char kPlotExamples[] =
    "A picture has a map above a profile of height over distance. A page shows map,\n"
    "profile and figures in any browser, and needs no network.\n"
    "\n"
    "Examples:\n"
    "  vexagpx plot walk.gpx -o walk.svg\n"
    "  vexagpx plot walk.gpx -o walk.pdf --colour height --size 1400x1000\n"
    "  vexagpx plot walk.gpx -o walk.html\n"
    "  vexagpx plot *.gpx -o all.html\n";
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

ColourBy ColourByOf(const std::string& name) {
    return name == "height" ? ColourBy::kHeight : name == "speed" ? ColourBy::kSpeed : ColourBy::kNone;
}

} // namespace

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

} // namespace vexagpx
