// SPDX-License-Identifier: MIT
#include <vexagpx/CommandLine.h>

#include <vexagpx/commands/Check.h>
#include <vexagpx/commands/Clean.h>
#include <vexagpx/commands/Dump.h>
#include <vexagpx/commands/Info.h>
#include <vexagpx/commands/Show.h>
#include <vexagpx/commands/Zip.h>
#include <vexagpx/process/Messages.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <memory>
#include <string>
#include <system_error>

namespace vexagpx {

namespace {

constexpr char kShowExamples[] = "Examples:\n"
                                 "  vexagpx show walk.gpx\n"
                                 "  vexagpx show --all *.gpx | less\n";
constexpr char kDumpExamples[] = "Examples:\n"
                                 "  vexagpx dump walk.gpx\n"
                                 "  vexagpx dump *.gpx > models.jsonl\n"
                                 "  curl -s https://example.org/walk.gpx | vexagpx dump -\n";
constexpr char kCheckExamples[] =
    "\"(lost)\" marks what a document could have held; with any of it, and when a\n"
    "file cannot be read, the exit status is 1.\n"
    "\n"
    "Examples:\n"
    "  vexagpx check walk.gpx\n"
    "  vexagpx check --all walk.gpx | less\n"
    "  vexagpx check --json *.gpx > reports.jsonl\n";
constexpr char kConvertExamples[] =
    "Examples:\n"
    "  vexagpx convert old.gpx new.gpx\n"
    "  vexagpx convert --app MyApp --url https://example.org/ in.gpx out.gpx\n"
    "  vexagpx convert walk.gpx walk.gpx\n"
    "  unzip -p walk.zip | vexagpx convert - walk.gpx\n";
constexpr char kCleanExamples[] = "Examples:\n"
                                  "  vexagpx clean description.html\n"
                                  "  echo '[b]Hello[/b] &amp; welcome' | vexagpx clean\n";

constexpr char kInfoExamples[] = "Examples:\n"
                                 "  vexagpx info *.gpx\n"
                                 "  vexagpx info --json pocket-query.zip\n";
constexpr char kZipExamples[] = "Examples:\n"
                                "  vexagpx zip list pocket-query.zip\n"
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

CLI::App* AddCommand(CLI::App& app, Request& request, const std::string& name, const std::string& description,
                     const std::string& examples) {
    CLI::App* command = app.add_subcommand(name, description);
    command->footer(examples);
    command->add_option("--debug-log", request.debugLog, "Keep the library's contract report in this file")
        ->type_name("FILE");
    return command;
}

void AddProgress(CLI::App& command, Request& request) {
    command.add_flag("--no-progress", request.noProgress, "Show no progress while long files are read");
}

void AddTrust(CLI::App& command, Request& request) {
    command.add_flag("--trust", request.rules.isTrusted,
                     "Follow document types and entities and set\n"
                     "no limits: not for files from strangers");
}

void AddFiles(CLI::App& command, Request& request) {
    command.add_option("FILE", request.files, "GPX files or ZIP archives; - is standard input")
        ->required()
        ->type_name("");
    AddProgress(command, request);
    AddTrust(command, request);
}

/// A unit may follow the number of bytes.
std::string RequireSize(const std::string& text) {
    std::uint64_t number = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && number > 0 ? "" : "must be a number above 0";
}

std::string RequireNumber(const std::string& text) {
    const bool isNumber = std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    return isNumber ? RequireSize(text) : "must be a number above 0";
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

void AddLimits(CLI::App& command, Request& request) {
    ArchiveLimits& limits = request.rules.archives;
    AddSize(command, "--max-entry-size", limits.entrySize, "Bytes that an entry may have; 500MB, 2GB", "1GB");
    AddSize(command, "--max-total-size", limits.totalSize, "Bytes that all entries read may have together",
            "4GB");
    AddNumber(command, "--max-ratio", limits.ratio,
              "How many times its size in the archive it may\n"
              "have, and all together the archive's size");
    AddNumber(command, "--max-entries", limits.entries, "Entries that an archive may have");
    AddSize(command, "--max-stream-size", limits.streamSize, "Bytes that standard input or a pipe may have",
            "4GB");
}

void AddShow(CLI::App& app, Request& request) {
    CLI::App* command = AddCommand(app, request, "show", "Show what is in GPX files", kShowExamples);
    AddFiles(*command, request);
    AddLimits(*command, request);
    command->add_flag("--all", request.all, "List every waypoint, route, track and geocache");
    command->callback([&request] {
        request.command = [&request](Output& out) {
            return Show(request.files, request.all, request.rules, out);
        };
    });
}

void AddDump(CLI::App& app, Request& request) {
    CLI::App* command =
        AddCommand(app, request, "dump", "Print the whole model, one line of JSON for a file", kDumpExamples);
    AddFiles(*command, request);
    AddLimits(*command, request);
    command->callback([&request] {
        request.command = [&request](Output& out) { return Dump(request.files, request.rules, out); };
    });
}

void AddInfo(CLI::App& app, Request& request) {
    CLI::App* command =
        AddCommand(app, request, "info", "Show vendor metadata and time, from file heads", kInfoExamples);
    AddFiles(*command, request);
    AddLimits(*command, request);
    command->add_flag("--json", request.json, "Print a line of JSON for each file");
    command->callback([&request] {
        request.command = [&request](Output& out) {
            const auto form = request.json ? InfoForm::kJson : InfoForm::kLine;
            return Info(request.files, request.rules, form, out);
        };
    });
}

void AddCheck(CLI::App& app, Request& request) {
    CLI::App* command =
        AddCommand(app, request, "check", "Tell what of GPX files is read and what is not", kCheckExamples);
    AddFiles(*command, request);
    AddLimits(*command, request);
    command->add_flag("--all", request.all, "List equal things one by one, not with a count");
    command->add_flag("--json", request.json, "Print a line of JSON for each document");
    command->callback([&request] {
        request.command = [&request](Output& out) {
            return Check(request.files, request.rules, {request.json, request.all}, out);
        };
    });
}

void AddConvert(CLI::App& app, Request& request) {
    ConvertRequest& convert = request.convert;
    CLI::App* command =
        AddCommand(app, request, "convert", "Read a GPX file and write it again", kConvertExamples);
    AddProgress(*command, request);
    AddTrust(*command, request);
    AddLimits(*command, request);
    command->add_option("IN", convert.in, "GPX file or ZIP archive; - is standard input")
        ->required()
        ->type_name("");
    command
        ->add_option("OUT", convert.out,
                     "GPX file to write, IN too; - is standard output.\n"
                     "Replaced only by a complete, well-formed result\n"
                     "that says what IN says.\n"
                     "A folder for an archive of several GPX files")
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
        request.command = [&request](Output& out) {
            request.convert.rules = request.rules;
            return Convert(request.convert, out);
        };
    });
}

void AddClean(CLI::App& app, Request& request) {
    CLI::App* command =
        AddCommand(app, request, "clean", "Turn web text in UTF-8 into plain text", kCleanExamples);
    command->add_option("FILE", request.cleanFile, "Text or HTML; - or nothing is standard input")
        ->type_name("");
    command->callback(
        [&request] { request.command = [&request](Output& out) { return Clean(request.cleanFile, out); }; });
}

using ZipCommand = bool (*)(const Request&, Output&);

CLI::App* AddZipCommand(CLI::App& zip, Request& request, const std::string& name,
                        const std::string& description, ZipCommand run) {
    CLI::App* command = AddCommand(zip, request, name, description, kZipExamples);
    command->add_option("ARCHIVE", request.archive, "ZIP archive; - is standard input")
        ->required()
        ->type_name("");
    AddProgress(*command, request);
    AddLimits(*command, request);
    command->callback(
        [&request, run] { request.command = [&request, run](Output& out) { return run(request, out); }; });
    return command;
}

void AddZip(CLI::App& app, Request& request) {
    CLI::App* zip =
        AddCommand(app, request, "zip", "List, read, test and extract ZIP archives", kZipExamples);
    zip->require_subcommand(1);
    AddZipCommand(
        *zip, request, "list", "Print the names of the entries",
        [](const Request& asked, Output& out) { return ZipList(asked.archive, asked.rules.archives, out); });
    AddZipCommand(*zip, request, "cat", "Print the content of an entry",
                  [](const Request& asked, Output& out) {
                      return ZipCat(asked.archive, asked.entry, asked.rules.archives, out);
                  })
        ->add_option("ENTRY", request.entry, "Name as zip list prints it")
        ->required()
        ->type_name("");
    AddZipCommand(
        *zip, request, "test", "Read every entry and tell which are bad",
        [](const Request& asked, Output& out) { return ZipTest(asked.archive, asked.rules.archives, out); });
    CLI::App* extract = AddZipCommand(
        *zip, request, "extract", "Write the entries below a folder", [](const Request& asked, Output& out) {
            return ZipExtract(asked.archive, asked.folder, asked.overwrite, asked.rules.archives, out);
        });
    extract->add_option("DIR", request.folder, "Folder, made when it is not there")
        ->required()
        ->type_name("");
    extract->add_flag("--overwrite", request.overwrite, "Replace files that are there");
}

} // namespace

void AddCommands(CLI::App& app, Request& request) {
    app.name("vexagpx");
    app.formatter(std::make_shared<HelpFormatter>());
    app.description("Reads, shows and rewrites GPX files.");
    app.set_version_flag("--version", "vexagpx " VEXAGPX_VERSION, "Print the version and leave");
    app.add_option("--debug-log", request.debugLog, "Keep the library's contract report in this file")
        ->type_name("FILE");
    AddProgress(app, request);
    app.require_subcommand(1);
    AddShow(app, request);
    AddDump(app, request);
    AddInfo(app, request);
    AddCheck(app, request);
    AddConvert(app, request);
    AddClean(app, request);
    AddZip(app, request);
    app.footer("Exit status: 0 fine, 1 input or output failed, or check found something lost, 2\n"
               "wrong usage. Ctrl-C stops the reading of a file and leaves no half result.\n"
               "\n"
               "Examples:\n"
               "  vexagpx show walk.gpx\n"
               "  vexagpx dump *.gpx > models.jsonl\n"
               "  vexagpx info pocket-query.zip\n"
               "  vexagpx check walk.gpx\n"
               "  vexagpx convert --gpx 1.1 old.gpx new.gpx\n"
               "  vexagpx clean description.html\n"
               "  vexagpx zip list pocket-query.zip\n"
               "\n"
               "vexagpx COMMAND --help tells more about a command.");
}

namespace {

// What CLI11 would misread is hidden behind a mark: it takes a file called "[a]" for a list, and what stands
// behind "--" for options when files stand before it. What begins with the mark itself gets another.
constexpr char kMark[] = "\x01";

/// Where the value of "--option=value" begins; 0 of anything else.
std::size_t ValueBegin(const std::string& argument) {
    return argument.starts_with("--") ? argument.find('=') + 1 : 0;
}

std::string Marked(std::string argument, bool isFile) {
    const bool isList = argument.starts_with('[') && argument.ends_with(']');
    const std::size_t value = isFile ? 0 : ValueBegin(argument);
    if (isFile || isList || argument.compare(value, 1, kMark) == 0)
        argument.insert(value, kMark);
    return argument;
}

/// The arguments as CLI11 wants them: the last one first, the program's name left out.
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

void Unmark(std::string& text) {
    if (text.starts_with(kMark))
        text.erase(0, 1);
}

void Unmark(Request& request) {
    ConvertRequest& convert = request.convert;
    for (std::string& file : request.files)
        Unmark(file);
    for (std::string* text :
         {&request.debugLog, &request.cleanFile, &request.archive, &request.entry, &request.folder,
          &convert.in, &convert.out, &convert.applicationName, &convert.applicationUrl})
        Unmark(*text);
}

} // namespace

std::optional<int> ParseArguments(int argc, char** argv, Request& request, Output& out) {
    CLI::App app;
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
        PrintError(error.what());
        PrintError("Run with --help for more information.");
        return kUsage;
    }
    out.Close();
    return kFine;
}

} // namespace vexagpx
