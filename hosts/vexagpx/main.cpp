// SPDX-License-Identifier: MIT
#include <vexagpx/Clean.h>
#include <vexagpx/Convert.h>
#include <vexagpx/Dump.h>
#include <vexagpx/Messages.h>
#include <vexagpx/Output.h>
#include <vexagpx/Posix.h>
#include <vexagpx/ReportFilter.h>
#include <vexagpx/Show.h>

#include <CLI/CLI.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include <algorithm>
#include <csignal>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

using vexagpx::Complain;
using vexagpx::Output;

constexpr int kFine = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;

constexpr char kShowExamples[] = "Examples:\n"
                                 "  vexagpx show walk.gpx\n"
                                 "  vexagpx show --all *.gpx | less\n";
constexpr char kDumpExamples[] = "Examples:\n"
                                 "  vexagpx dump walk.gpx\n"
                                 "  vexagpx dump *.gpx > models.jsonl\n"
                                 "  curl -s https://example.org/walk.gpx | vexagpx dump -\n";
constexpr char kConvertExamples[] =
    "Examples:\n"
    "  vexagpx convert old.gpx new.gpx\n"
    "  vexagpx convert --app MyApp --url https://example.org/ in.gpx out.gpx\n"
    "  vexagpx convert walk.gpx walk.gpx\n"
    "  unzip -p walk.zip | vexagpx convert - walk.gpx\n";
constexpr char kCleanExamples[] = "Examples:\n"
                                  "  vexagpx clean description.html\n"
                                  "  echo '[b]Hello[/b] &amp; welcome' | vexagpx clean\n";

/// What the command line asks for.
struct Request {
    std::string debugLog;
    std::vector<std::string> files;
    bool all = false;
    vexagpx::ConvertRequest convert;
    std::string cleanFile = "-";
    /// Does the work; false after a failure that has been told.
    std::function<bool(Output&)> command;
};

std::string RequireText(const std::string& text) {
    return text.empty() ? "must not be empty" : "";
}

CLI::App* AddCommand(CLI::App& app, Request& request, const std::string& name, const std::string& description,
                     const std::string& examples) {
    CLI::App* command = app.add_subcommand(name, description);
    command->footer(examples);
    command->add_option("--debug-log", request.debugLog, "Keep the library's contract report in this file")
        ->type_name("FILE");
    return command;
}

void AddFiles(CLI::App& command, Request& request) {
    command.add_option("FILE", request.files, "GPX files; - is standard input")->required()->type_name("");
}

void AddShow(CLI::App& app, Request& request) {
    CLI::App* command = AddCommand(app, request, "show", "Show what is in GPX files", kShowExamples);
    AddFiles(*command, request);
    command->add_flag("--all", request.all, "List every waypoint, route, track and geocache");
    command->callback([&request] {
        request.command = [&request](Output& out) { return vexagpx::Show(request.files, request.all, out); };
    });
}

void AddDump(CLI::App& app, Request& request) {
    CLI::App* command =
        AddCommand(app, request, "dump", "Print the whole model, one line of JSON for a file", kDumpExamples);
    AddFiles(*command, request);
    command->callback([&request] {
        request.command = [&request](Output& out) { return vexagpx::Dump(request.files, out); };
    });
}

void AddConvert(CLI::App& app, Request& request) {
    vexagpx::ConvertRequest& convert = request.convert;
    CLI::App* command =
        AddCommand(app, request, "convert", "Read a GPX file and write it again", kConvertExamples);
    command->add_option("IN", convert.in, "GPX file to read; - is standard input")->required()->type_name("");
    command
        ->add_option("OUT", convert.out,
                     "GPX file to write, IN too; - is standard output.\n"
                     "Replaced only by a complete, well-formed result")
        ->required()
        ->type_name("");
    command->add_option("--gpx", convert.version, "GPX version to write: 1.0 or 1.1")
        ->type_name("VERSION")
        ->check(CLI::IsMember({"1.0", "1.1"}).description(""))
        ->capture_default_str();
    command->add_option("--app", convert.applicationName, "Name of the application that writes")
        ->type_name("NAME")
        ->check(CLI::Validator(RequireText, ""))
        ->capture_default_str();
    command->add_option("--url", convert.applicationUrl, "Address of the application")
        ->type_name("URL")
        ->check(CLI::Validator(RequireText, ""))
        ->capture_default_str();
    command->callback([&request] {
        request.command = [&request](Output& out) { return vexagpx::Convert(request.convert, out); };
    });
}

void AddClean(CLI::App& app, Request& request) {
    CLI::App* command =
        AddCommand(app, request, "clean", "Turn web text in UTF-8 into plain text", kCleanExamples);
    command->add_option("FILE", request.cleanFile, "Text or HTML; - or nothing is standard input")
        ->type_name("");
    command->callback([&request] {
        request.command = [&request](Output& out) { return vexagpx::Clean(request.cleanFile, out); };
    });
}

void AddCommands(CLI::App& app, Request& request) {
    app.name("vexagpx");
    app.set_version_flag("--version", "vexagpx " VEXAGPX_VERSION, "Print the version and leave");
    app.add_option("--debug-log", request.debugLog, "Keep the library's contract report in this file")
        ->type_name("FILE");
    app.require_subcommand(1);
    AddShow(app, request);
    AddDump(app, request);
    AddConvert(app, request);
    AddClean(app, request);
    app.footer("Exit status: 0 fine, 1 input or output failed, 2 wrong usage.\n"
               "\n"
               "Examples:\n"
               "  vexagpx show walk.gpx\n"
               "  vexagpx dump *.gpx > models.jsonl\n"
               "  vexagpx convert --gpx 1.1 old.gpx new.gpx\n"
               "  vexagpx clean description.html\n"
               "\n"
               "vexagpx COMMAND --help tells more about a command.");
}

// What CLI11 would misread is hidden behind a mark: it takes a file called "[a]" for a list, and what stands
// behind "--" for options when files stand before it.
constexpr char kMark = '\x01';

/// The arguments as CLI11 wants them: the last one first, the program's name left out.
std::vector<std::string> Marked(int argc, char** argv) {
    std::vector<std::string> arguments;
    bool marksAll = false;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (marksAll || (argument.starts_with('[') && argument.ends_with(']')))
            arguments.push_back(kMark + argument);
        else if (argument == "--")
            marksAll = true;
        else
            arguments.push_back(argument);
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

void Unmark(std::string& text) {
    if (text.starts_with(kMark))
        text.erase(0, 1);
}

void Unmark(Request& request) {
    vexagpx::ConvertRequest& convert = request.convert;
    for (std::string& file : request.files)
        Unmark(file);
    for (std::string* text : {&request.debugLog, &request.cleanFile, &convert.in, &convert.out,
                              &convert.applicationName, &convert.applicationUrl})
        Unmark(*text);
}

/// The exit status when there is nothing more to do: help was asked for, or the arguments are wrong.
std::optional<int> ParseArguments(int argc, char** argv, Request& request, Output& out) {
    CLI::App app("Reads, shows and rewrites GPX files.");
    AddCommands(app, request);
    try {
        app.parse(Marked(argc, argv));
        Unmark(request);
        return std::nullopt;
    } catch (const CLI::CallForHelp&) {
        out.Write(app.help());
    } catch (const CLI::CallForAllHelp&) {
        out.Write(app.help("", CLI::AppFormatMode::All));
    } catch (const CLI::CallForVersion& version) {
        out.Write(std::string(version.what()) + "\n");
    } catch (const CLI::ParseError& error) {
        Complain(error.what());
        Complain("Run with --help for more information.");
        return kUsage;
    }
    out.Close();
    return kFine;
}

/// The XML library's global state, which must outlive every parser.
class XercesPlatform {
public:
    XercesPlatform() { xercesc::XMLPlatformUtils::Initialize(); }
    ~XercesPlatform() { xercesc::XMLPlatformUtils::Terminate(); }
    XercesPlatform(const XercesPlatform&) = delete;
    XercesPlatform& operator=(const XercesPlatform&) = delete;
};

/// \throws std::runtime_error
vexagpx::Descriptor OpenLog(const std::string& path) {
    if (path.empty())
        return vexagpx::Descriptor();
    try {
        return vexagpx::OpenFile(path, O_WRONLY | O_CREAT | O_TRUNC);
    } catch (const std::system_error& error) {
        throw std::runtime_error("Unable to write the debug log: " + path + " (" +
                                 vexagpx::ErrorText(error.code().value()) + ")");
    }
}

int Run(const Request& request, Output& out) {
    vexagpx::ReportFilter filter(OpenLog(request.debugLog));
    bool fine;
    {
        const XercesPlatform platform;
        fine = request.command(out);
    }
    out.Close();
    if (!filter.Finish()) {
        Complain("Unable to write the debug log: " + request.debugLog);
        fine = false;
    }
    return fine ? kFine : kFailed;
}

} // namespace

int main(int argc, char** argv) {
    vexagpx::KeepStandardDescriptors();
    // A failed write is told, not died of.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        Output out(STDOUT_FILENO);
        Request request;
        const std::optional<int> status = ParseArguments(argc, argv, request, out);
        return status ? *status : Run(request, out);
    } catch (const std::exception& failure) {
        Complain(failure.what());
    } catch (const xercesc::XMLException&) {
        Complain("The XML library could not be started.");
    } catch (const xercesc::OutOfMemoryException&) {
        Complain("Out of memory.");
    }
    return kFailed;
}
