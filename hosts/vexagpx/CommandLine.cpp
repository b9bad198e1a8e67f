// SPDX-License-Identifier: MIT
#include <vexagpx/CommandLine.h>

#include <vexagpx/UsageError.h>
#include <vexagpx/arguments/Commands.h>
#include <vexagpx/arguments/MarkedArguments.h>
#include <vexagpx/arguments/SharedArguments.h>
#include <vexagpx/process/Messages.h>

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vexagpx {

namespace {

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
    AddDiff(app, invocation);
    AddSet(app, invocation);
    AddCut(app, invocation);
    AddMerge(app, invocation);
    AddSplit(app, invocation);
    AddSimplify(app, invocation);
    AddReverse(app, invocation);
    AddRepair(app, invocation);
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
               "  vexagpx diff monday.gpx tuesday.gpx\n"
               "  vexagpx set walk.gpx --in-place --name 'Lake loop'\n"
               "  vexagpx cut walk.gpx public.gpx --around 46.95,7.45,500m\n"
               "  vexagpx merge monday.gpx tuesday.gpx -o both.gpx\n"
               "  vexagpx split tour.gpx days --day\n"
               "  vexagpx simplify walk.gpx short.gpx --error 5m\n"
               "  vexagpx reverse walk.gpx back.gpx\n"
               "  vexagpx repair broken.gpx whole.gpx\n"
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
