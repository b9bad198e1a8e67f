// SPDX-License-Identifier: MIT
#include "support/Tool.h"

namespace {

using cli::Folder;
using cli::Result;
using cli::RunTool;
using testing::HasSubstr;
using testing::StartsWith;

const std::vector<std::vector<std::string>> kCommands = {
    {"show"},     {"stats"},   {"caches"},      {"dump"},       {"info"},        {"plot"},
    {"check"},    {"convert"}, {"export"},      {"index"},      {"clean"},       {"zip"},
    {"diff"},     {"repair"},  {"set"},         {"cut"},        {"merge"},       {"split"},
    {"simplify"}, {"reverse"}, {"zip", "list"}, {"zip", "cat"}, {"zip", "test"}, {"zip", "extract"}};

std::string Joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

TEST(UsageTest, WrongUsageExitsWith2AndSaysSoOnStandardErrorOnly) {
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {"show"},
        {"stats"},
        {"stats", "a.gpx", "--climb", "5"},
        {"stats", "a.gpx", "--climb", "-5m"},
        {"stats", "a.gpx", "--climb", "5 miles"},
        {"stats", "a.gpx", "--pause", "0.5s"},
        {"stats", "a.gpx", "--pause", "2m"},
        {"stats", "a.gpx", "--pause", ""},
        {"stats", "a.gpx", "--units", "nautical"},
        {"dump"},
        {"convert"},
        {"convert", "only-in.gpx"},
        {"convert", "a", "b", "c"},
        {"clean", "a", "b"},
        {"index"},
        {"index", "--all", "a.gpx"},
        {"export"},
        {"export", "a.gpx", "b.kml"},
        {"export", "a.gpx", "--format", "shp"},
        {"export", "a.gpx", "--layer", "caches"},
        {"frobnicate"},
        {"frobnicate", "a.gpx"},
        {"show", "--no-such-option", "a.gpx"},
        {"--no-such-option"},
        {"convert", "a", "b", "--gpx", "1.2"},
        {"convert", "a", "b", "--gpx", ""},
        {"convert", "a", "b", "--gpx", "1"},
        {"convert", "a", "b", "--gpx"},
        {"convert", "a", "b", "--app", ""},
        {"convert", "a", "b", "--url", ""},
        {"convert", "a", "b", "--app="},
        {"dump", "--all", "a.gpx"},
        {"show", "a.gpx", "--debug-log"},
        {"show", "dump", "--gpx", "1.1"},
        {"info"},
        {"info", "--all", "a.gpx"},
        {"plot", "a.gpx"},
        {"plot", "-o", "a.html"},
        {"plot", "a.gpx", "-o", "a.gpx"},
        {"check"},
        {"check", "--gpx", "1.1", "a.gpx"},
        {"diff", "a.gpx"},
        {"diff", "-", "-"},
        {"set", "a.gpx", "b.gpx"},
        {"set", "a.gpx", "--name", "n"},
        {"set", "a.gpx", "b.gpx", "--time", "yesterday"},
        {"set", "a.gpx", "b.gpx", "--email", "ann"},
        {"set", "a.gpx", "b.gpx", "--rename", "a"},
        {"set", "a.gpx", "b.gpx", "--rename", "a", ""},
        {"set", "a.gpx", "b.gpx", "--shift-time", "1"},
        {"set", "a.gpx", "b.gpx", "--strip", "heartrate,love"},
        {"cut", "a.gpx", "b.gpx"},
        {"cut", "a.gpx", "b.gpx", "--around", "46,7"},
        {"cut", "a.gpx", "b.gpx", "--around", "46,7,0m"},
        {"cut", "a.gpx", "b.gpx", "--around", "91,7,5m"},
        {"cut", "a.gpx", "b.gpx", "--box", "47,7,46,8"},
        {"cut", "a.gpx", "b.gpx", "--box", "46,7,47"},
        {"cut", "a.gpx", "b.gpx", "--box", "46,7,47,8", "--around", "46,7,5m"},
        {"cut", "a.gpx", "b.gpx", "--from", "yesterday"},
        {"merge", "a.gpx", "-o", "b.gpx"},
        {"merge", "a.gpx", "b.gpx"},
        {"merge", "-", "-", "-o", "b.gpx"},
        {"merge", "a.gpx", "b.gpx", "-o", "c.gpx", "--by", "name"},
        {"merge", "a.gpx", "b.gpx", "-o", "-", "--json"},
        {"split", "a.gpx", "--day"},
        {"split", "a.gpx", "parts"},
        {"split", "a.gpx", "parts", "--day", "--pause", "4h"},
        {"split", "a.gpx", "parts", "--every", "10km", "--day"},
        {"split", "a.gpx", "parts", "--pause", "0s"},
        {"split", "a.gpx", "parts", "--every", "0km"},
        {"split", "a.gpx", "parts", "--every", "10km", "--zone", "Europe/Zurich"},
        {"split", "a.gpx", "parts", "--day", "--zone", "Nowhere/Town"},
        {"simplify", "a.gpx", "--error", "5m"},
        {"simplify", "a.gpx", "b.gpx"},
        {"simplify", "a.gpx", "b.gpx", "--error", "5"},
        {"simplify", "a.gpx", "b.gpx", "--error", "0m"},
        {"simplify", "a.gpx", "b.gpx", "--points", "1"},
        {"simplify", "a.gpx", "b.gpx", "--points", "5", "--error", "5m"},
        {"simplify", "a.gpx", "b.gpx", "--error", "5m", "--in-place"},
        {"simplify", "a.gpx", "-", "--error", "5m", "--json"},
        {"repair", "a.gpx"},
        {"reverse"},
        {"reverse", "a.gpx"},
        {"reverse", "a.gpx", "b.gpx", "--track", "0"},
        {"clean", "--no-progress", "a.html"},
        {"clean", "--max-ratio", "5", "a.html"},
        {"zip"},
        {"zip", "a.zip"},
        {"zip", "frobnicate", "a.zip"},
        {"zip", "list"},
        {"zip", "list", "a.zip", "b.zip"},
        {"zip", "list", "--overwrite", "a.zip"},
        {"zip", "cat", "a.zip"},
        {"zip", "cat", "a.zip", "b.gpx", "c.gpx"},
        {"zip", "test"},
        {"zip", "test", "--json", "a.zip"},
        {"zip", "extract", "a.zip"},
        {"zip", "extract", "a.zip", "b", "c"},
        {"zip", "list", "a.zip", "--max-entries"},
    };
    for (const std::vector<std::string>& arguments : wrong) {
        const Result result = RunTool(arguments);
        const std::string shown = testing::PrintToString(arguments);
        EXPECT_EQ(result.status, 2) << shown;
        EXPECT_EQ(result.out, "") << shown;
        EXPECT_THAT(result.err, StartsWith("vexagpx: ")) << shown;
        EXPECT_THAT(result.err, HasSubstr("--help")) << shown;
    }
}

TEST(UsageTest, AnUnknownCommandIsNamedWithTheNearestOne) {
    const auto message = [](const std::vector<std::string>& arguments) {
        const Result result = RunTool(arguments);
        EXPECT_EQ(result.status, 2);
        return cli::Lines(result.err).at(0);
    };
    EXPECT_EQ(message({"shwo", "a.gpx"}), "vexagpx: There is no command \"shwo\"; did you mean \"show\"?");
    EXPECT_EQ(message({"stat"}), "vexagpx: There is no command \"stat\"; did you mean \"stats\"?");
    EXPECT_EQ(message({"help", "exprot"}),
              "vexagpx: There is no command \"exprot\"; did you mean \"export\"?");
    EXPECT_EQ(message({"zip", "lst", "a.zip"}),
              "vexagpx: There is no command \"lst\"; did you mean \"list\"?");
    EXPECT_EQ(message({"zip", "frobnicate"}),
              "vexagpx: There is no command \"frobnicate\"; the commands are list, cat, test, extract.");
    EXPECT_EQ(message({"frobnicate"}).substr(0, 69),
              "vexagpx: There is no command \"frobnicate\"; the commands are show, sta");
    EXPECT_EQ(message({std::string(100'000, 's')}).substr(0, 35), "vexagpx: There is no command \"sssss");
}

TEST(UsageTest, AnUnknownOptionIsNamedWithTheNearestOne) {
    const auto message = [](const std::vector<std::string>& arguments) {
        const Result result = RunTool(arguments);
        EXPECT_EQ(result.status, 2);
        return cli::Lines(result.err).at(0);
    };
    EXPECT_EQ(message({"show", "--al", "a.gpx"}),
              "vexagpx: show has no option \"--al\"; did you mean \"--all\"?");
    EXPECT_EQ(message({"stats", "-json", "a.gpx"}),
              "vexagpx: stats has no option \"-json\"; did you mean \"--json\"?");
    EXPECT_EQ(message({"convert", "a", "b", "--gpz=1.0"}),
              "vexagpx: convert has no option \"--gpz\"; did you mean \"--gpx\"?");
    EXPECT_EQ(message({"show", "--no-such-thing", "a.gpx"}),
              "vexagpx: show has no option \"--no-such-thing\".");
    EXPECT_EQ(message({"--versoin"}),
              "vexagpx: vexagpx has no option \"--versoin\"; did you mean \"--version\"?");
}

TEST(UsageTest, HelpIsACommandToo) {
    EXPECT_EQ(RunTool({"help"}).out, RunTool({"--help"}).out);
    EXPECT_EQ(RunTool({"help", "stats"}).out, RunTool({"stats", "--help"}).out);
    EXPECT_EQ(RunTool({"help", "zip", "list"}).out, RunTool({"zip", "list", "--help"}).out);
    EXPECT_EQ(RunTool({"help", "show"}).status, 0);
    const Result unknown = RunTool({"help", "zip", "show"});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_EQ(unknown.out, "");
}

TEST(UsageTest, AnInvalidVersionLeavesTheTargetUnchanged) {
    const Folder folder;
    folder.Write("in.gpx", cli::Gpx(""));
    EXPECT_EQ(RunTool({"convert", "in.gpx", "out.gpx", "--gpx", "2.0"}, folder.Path()).status, 2);
    EXPECT_THAT(folder.Names(), testing::ElementsAre("in.gpx"));
}

TEST(UsageTest, HelpGoesToStandardOutputWithExamplesOfEveryCommand) {
    const Result result = RunTool({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    for (const char* command :
         {"show", "stats", "caches", "dump", "info", "check", "convert", "export", "index", "diff", "repair",
          "set", "cut", "merge", "split", "simplify", "reverse", "clean", "zip"})
        EXPECT_THAT(result.out, HasSubstr(std::string("  vexagpx ") + command + " "));
}

TEST(UsageTest, EveryCommandHasHelpWithItsOwnExamples) {
    for (std::vector<std::string> command : kCommands) {
        const std::string name = Joined(command);
        command.push_back("--help");
        const Result result = RunTool(command);
        EXPECT_EQ(result.status, 0) << name;
        EXPECT_EQ(result.err, "") << name;
        EXPECT_THAT(result.out, HasSubstr("Examples:\n")) << name;
        EXPECT_THAT(result.out, HasSubstr("  vexagpx " + name + " ")) << name;
        EXPECT_THAT(result.out, HasSubstr("--debug-log FILE")) << name;
    }
}

TEST(UsageTest, HelpSaysHowToWriteToStandardOutput) {
    EXPECT_THAT(RunTool({"convert", "--help"}).out, HasSubstr("- is standard output"));
}

TEST(UsageTest, HelpFitsATerminal) {
    std::vector<std::vector<std::string>> commands = kCommands;
    commands.emplace_back();
    for (std::vector<std::string>& arguments : commands) {
        arguments.push_back("--help");
        for (const std::string& line : cli::Lines(RunTool(arguments).out))
            EXPECT_LE(line.size(), 80U) << line;
    }
}

TEST(UsageTest, HelpNamesTheLimitsForArchivesAndStreams) {
    for (const std::vector<std::string>& command : kCommands) {
        if (command == std::vector<std::string>{"clean"} || command == std::vector<std::string>{"zip"})
            continue;
        std::vector<std::string> arguments = command;
        arguments.push_back("--help");
        const Result result = RunTool(arguments);
        for (const char* limit :
             {"--max-entry-size SIZE=1GB", "--max-total-size SIZE=4GB", "--max-ratio NUMBER=200",
              "--max-entries NUMBER=100000", "--max-stream-size SIZE=4GB"})
            EXPECT_THAT(result.out, HasSubstr(limit)) << Joined(command);
    }
}

TEST(UsageTest, VersionIsThatOfTheProject) {
    const Result result = RunTool({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "vexagpx " VEXAGPX_PROJECT_VERSION "\n");
    EXPECT_EQ(result.err, "");
}

TEST(UsageTest, AFailedWriteOfHelpOrVersionExitsWith1) {
    for (const char* argument : {"--help", "--version"}) {
        const Result result = cli::Tool({argument}).StdoutTo("/dev/full").Run();
        EXPECT_EQ(result.status, 1) << argument;
        EXPECT_THAT(result.err, StartsWith("vexagpx: Unable to write to standard output: ")) << argument;
    }
}

TEST(UsageTest, FileNamesThatLookLikeSomethingElseAreFileNames) {
    const Folder folder;
    for (const char* name :
         {"show", "[a]", "[b,c]", "--", "-x", "--help", "http:", "file:x", "C:y", "50%", "a b#c?d"})
        folder.Write(name, cli::Gpx("<metadata><name>n</name></metadata>"));
    const Result result = RunTool({"dump", "--as-host", "show", "[a]", "[b,c]", "http:", "file:x", "C:y",
                                   "50%", "a b#c?d", "--", "-x", "--help", "--", "[a]"},
                                  folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    std::vector<std::string> expected;
    for (const std::string name :
         {"show", "[a]", "[b,c]", "http:", "file:x", "C:y", "50%", "a b#c?d", "-x", "--help", "--", "[a]"})
        expected.push_back(R"({"file":")" + name + R"(","name":"n","waypoints":[],"routes":[],"tracks":[]})");
    EXPECT_EQ(cli::Lines(result.out), expected);
}

TEST(UsageTest, OptionsMayBeBeforeOrAfterTheCommandAndTheFiles) {
    const Folder folder;
    folder.Write("a.gpx", cli::Gpx(""));
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"--debug-log", "log", "dump", "a.gpx"},
                                               {"dump", "--debug-log", "log", "a.gpx"},
                                               {"dump", "a.gpx", "--debug-log=log"}}) {
        EXPECT_EQ(RunTool(arguments, folder.Path()).status, 0);
        EXPECT_THAT(folder.Names(), testing::ElementsAre("a.gpx", "log"));
        std::remove(folder.File("log").c_str());
    }
}

} // namespace
