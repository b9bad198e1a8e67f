// SPDX-License-Identifier: MIT
#include "support/Tool.h"

namespace {

using cli::Folder;
using cli::Result;
using cli::RunTool;
using testing::HasSubstr;
using testing::StartsWith;

TEST(UsageTest, WrongUsageExitsWith2AndSaysSoOnStandardErrorOnly) {
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {"show"},
        {"dump"},
        {"convert"},
        {"convert", "only-in.gpx"},
        {"convert", "a", "b", "c"},
        {"clean", "a", "b"},
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

TEST(UsageTest, AVersionThatIsNoneLeavesTheTargetAlone) {
    const Folder folder;
    folder.Write("in.gpx", cli::Gpx(""));
    EXPECT_EQ(RunTool({"convert", "in.gpx", "out.gpx", "--gpx", "2.0"}, folder.Path()).status, 2);
    EXPECT_THAT(folder.Names(), testing::ElementsAre("in.gpx"));
}

TEST(UsageTest, HelpGoesToStandardOutputWithExamplesOfEveryCommand) {
    const Result result = RunTool({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    for (const char* command : {"show", "dump", "convert", "clean"})
        EXPECT_THAT(result.out, HasSubstr(std::string("  vexagpx ") + command + " "));
}

TEST(UsageTest, EveryCommandHasHelpWithItsOwnExamples) {
    for (const std::string command : {"show", "dump", "convert", "clean"}) {
        const Result result = RunTool({command, "--help"});
        EXPECT_EQ(result.status, 0) << command;
        EXPECT_EQ(result.err, "") << command;
        EXPECT_THAT(result.out, HasSubstr("Examples:\n")) << command;
        EXPECT_THAT(result.out, HasSubstr("  vexagpx " + command + " ")) << command;
        EXPECT_THAT(result.out, HasSubstr("--debug-log FILE")) << command;
    }
}

TEST(UsageTest, HelpTellsHowToWriteToStandardOutput) {
    EXPECT_THAT(RunTool({"convert", "--help"}).out, HasSubstr("- is standard output"));
}

TEST(UsageTest, HelpFitsATerminal) {
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"--help"}, {"show", "--help"}, {"dump", "--help"}, {"convert", "--help"}, {"clean", "--help"}})
        for (const std::string& line : cli::Lines(RunTool(arguments).out))
            EXPECT_LE(line.size(), 80U) << line;
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
    const Result result = RunTool({"dump", "show", "[a]", "[b,c]", "http:", "file:x", "C:y", "50%", "a b#c?d",
                                   "--", "-x", "--help", "--", "[a]"},
                                  folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(cli::Lines(result.out),
              std::vector<std::string>(12, R"({"name":"n","waypoints":[],"routes":[],"tracks":[]})"));
}

TEST(UsageTest, OptionsMayStandBeforeOrAfterTheCommandAndTheFiles) {
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
