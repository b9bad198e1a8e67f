// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <csignal>

namespace {

using cli::Data;
using cli::Folder;
using cli::Lines;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

TEST(ReportLogTest, TheReportStaysOffTheScreen) {
    for (const char* command : {"show", "dump"}) {
        const Result result = RunTool({command, Data("dropped-point.gpx")});
        EXPECT_EQ(result.status, 0) << command;
        EXPECT_EQ(result.err, "") << command;
        EXPECT_THAT(result.out, Not(HasSubstr("ASSERT"))) << command;
    }
    const Result failed = RunTool({"dump", "--as-host", Data("no-position.gpx")});
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(Lines(failed.err).size(), 1U);
    EXPECT_THAT(failed.err, Not(HasSubstr("ASSERT")));
}

TEST(ReportLogTest, TheDebugLogKeepsTheReport) {
    const Folder folder;
    const Result result =
        RunTool({"--debug-log", "log", "dump", "--as-host", Data("dropped-point.gpx")}, folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    const std::vector<std::string> lines = Lines(ReadFile(folder.File("log")));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_THAT(lines[0], MatchesRegex("ASSERT failed at LibCore/vexaTransferLib/GpxParser\\.cpp:[0-9]+"));
    EXPECT_THAT(lines[1], MatchesRegex("ASSERT failed at LibCore/vexaTransferLib/GpxPoint\\.cpp:[0-9]+"));
}

TEST(ReportLogTest, TheDebugLogHoldsNothingElseAndStartsAnew) {
    const Folder folder;
    folder.Write("log", "old\n");
    const Result result = RunTool({"dump", Data("not-well-formed.gpx"), "--debug-log", "log"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Lines(result.err).size(), 1U);
    EXPECT_EQ(ReadFile(folder.File("log")), "");
}

TEST(ReportLogTest, AllCommandsTakeADebugLog) {
    const Folder folder;
    EXPECT_EQ(RunTool({"show", "--as-host", "--debug-log", "show", Data("dropped-point.gpx")}, folder.Path())
                  .status,
              0);
    EXPECT_EQ(Lines(ReadFile(folder.File("show"))).size(), 2U);
    EXPECT_EQ(RunTool({"convert", "--as-host", "--debug-log", "conv", Data("dropped-point.gpx"), "o"},
                      folder.Path())
                  .status,
              0);
    EXPECT_EQ(Lines(ReadFile(folder.File("conv"))).size(), 2U);
    EXPECT_EQ(RunTool({"clean", "--debug-log", "clean", Data("web-text.html")}, folder.Path()).status, 0);
    EXPECT_EQ(ReadFile(folder.File("clean")), "");
}

TEST(ReportLogTest, ADebugLogThatCannotBeOpenedIsAnError) {
    const Folder folder;
    for (const char* log : {"missing/log", "."}) {
        const Result result = RunTool({"dump", "--debug-log", log, Data("empty.gpx")}, folder.Path());
        EXPECT_EQ(result.status, 1) << log;
        EXPECT_EQ(result.out, "") << log;
        EXPECT_THAT(result.err, testing::StartsWith(
                                    "vexagpx: Unable to write the debug log: " + std::string(log) + " ("));
    }
}

TEST(ReportLogTest, ADebugLogThatCannotBeWrittenIsAnError) {
    const Result result =
        RunTool({"dump", "--as-host", "--debug-log", "/dev/full", Data("dropped-point.gpx")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Lines(result.out).size(), 1U);
    EXPECT_EQ(result.err, "vexagpx: Unable to write the debug log: /dev/full\n");
}

TEST(ReportLogTest, ManyReportsDoNotBlock) {
    std::string points;
    for (int i = 0; i < 20000; ++i)
        points += "<trkpt/>";
    const Folder folder;
    folder.Write("in.gpx", cli::Gpx("<trk><trkseg>" + points + "</trkseg></trk>"));
    const Result result = RunTool({"dump", "--as-host", "--debug-log", "log", "in.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(Lines(ReadFile(folder.File("log"))).size(), 20000U);
}

/// Runs the tool with a library that writes to its standard error while it reads standard input.
Tool Disturbed(const std::string& words) {
    Tool tool({"dump", "-"});
    tool.Stdin(ReadFile(Data("dropped-point.gpx")))
        .Set("LD_PRELOAD", VEXAGPX_INTERFERENCE)
        .Set("ASAN_OPTIONS", "verify_asan_link_order=0")
        .Set("VEXAGPX_TEST_WORDS", words);
    return tool;
}

TEST(ReportLogTest, AnythingElseOnStandardErrorIsShown) {
    for (const std::string words : {"a warning\n", "two\nlines\n", "vexagpx: Assertion `x' failed.\n",
                                    "ASSERT failed at noon\n", "ASSERT\n"}) {
        const Result result = Disturbed(words).Run();
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, words);
        EXPECT_EQ(Lines(result.out).size(), 1U);
    }
}

TEST(ReportLogTest, LastWordsOfACrashAreShown) {
    const Result result = Disturbed("last words without a line end").Set("VEXAGPX_TEST_ABORT", "1").Run();
    EXPECT_EQ(result.status, -SIGABRT);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "last words without a line end");
}

} // namespace
