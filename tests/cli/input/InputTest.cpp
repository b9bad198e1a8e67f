// SPDX-License-Identifier: MIT
#include "support/Signals.h"
#include "support/Tool.h"

#include <chrono>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using cli::Data;
using cli::Folder;
using cli::Gpx;
using cli::Lines;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

TEST(InputTest, AFileThatIsNotWellFormedIsReportedWithLineAndColumn) {
    for (const char* command : {"show", "dump"}) {
        const Result result = RunTool({command, "not-well-formed.gpx"}, Data(""));
        EXPECT_EQ(result.status, 1) << command;
        EXPECT_EQ(result.out, "") << command;
        EXPECT_EQ(result.err, "vexagpx: One or more errors encountered while parsing the GPX file: "
                              "not-well-formed.gpx (line 3, column 23: expected end of tag 'name') Correct "
                              "the tag in the line that is named, or write the file again.\n")
            << command;
    }
}

TEST(InputTest, AFileThatIsNotThereIsReported) {
    const Folder folder;
    const Result result = RunTool({"dump", "missing.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "vexagpx: Unable to read the file: missing.gpx (No such file or directory)\n");
}

TEST(InputTest, MessagesWithoutAPathAreFollowedByTheFileAndTheLine) {
    const Folder folder;
    folder.Write("root.gpx", "<other/>");
    folder.Write("version.gpx", "<gpx/>");
    folder.Write("new.gpx", "<gpx version='1.2'/>");
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"root.gpx", "The GPX document element was not found. (root.gpx, line 1, column 9) Export it as GPX "
                     "from the program that made it."},
        {"version.gpx", "Unable to read the GPX version. (version.gpx, line 1, column 7) Add version=\"1.1\" "
                        "to the gpx element."},
        {"new.gpx", "Unsupported GPX version string. (new.gpx, line 1, column 21) Write version=\"1.1\" or "
                    "\"1.0\" in the gpx element, as its namespace says."},
        {Data("no-position.gpx"), "Unable to read a GPX point's latitude. (" + Data("no-position.gpx") +
                                      ", line 3, column 23) Remove the point, or correct its lat and lon."},
        {"", "The GPX file path was empty or invalid."},
    };
    for (const auto& [file, message] : rows) {
        const Result result = RunTool({"dump", "--as-host", file}, folder.Path());
        EXPECT_EQ(result.status, 1) << file;
        EXPECT_EQ(result.out, "") << file;
        EXPECT_EQ(result.err, "vexagpx: " + message + "\n") << file;
    }
}

TEST(InputTest, SeveralFilesGoOnAfterABadOneInOrder) {
    for (const char* command : {"show", "dump"}) {
        const Result good = RunTool({command, "empty.gpx"}, Data(""));
        const Result result = Tool({command, "empty.gpx", "not-well-formed.gpx", "missing.gpx", "empty.gpx"})
                                  .In(Data(""))
                                  .Run();
        EXPECT_EQ(result.status, 1) << command;
        const std::string gap = command == std::string("show") ? "\n" : "";
        EXPECT_EQ(result.out, good.out + gap + good.out) << command;
        EXPECT_EQ(Lines(result.err).size(), 2U) << command;
    }
}

TEST(InputTest, MessagesKeepTheirPlaceBetweenTheFiles) {
    const std::string good = RunTool({"dump", "--as-host", "empty.gpx"}, Data("")).out;
    const Result result = Tool({"dump", "--as-host", "empty.gpx", "not-well-formed.gpx", "dropped-point.gpx",
                                "no-position.gpx", "empty.gpx"})
                              .In(Data(""))
                              .MergeOutput()
                              .Run();
    const std::vector<std::string> lines = Lines(result.out);
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[0] + "\n", good);
    EXPECT_THAT(lines[1], HasSubstr("not-well-formed.gpx"));
    EXPECT_THAT(lines[2], StartsWith("{\"file\":\"dropped-point.gpx\""));
    EXPECT_THAT(lines[3], HasSubstr("no-position.gpx"));
    EXPECT_EQ(lines[4] + "\n", good);
}

TEST(InputTest, StandardInputIsADocumentNamedDash) {
    const std::string document = ReadFile(Data("empty.gpx"));
    EXPECT_EQ(Tool({"dump", "--as-host", "-"}).Stdin(document).Run().out,
              R"({"file":"-","waypoints":[],"routes":[],"tracks":[]})"
              "\n");
    EXPECT_THAT(Tool({"show", "--as-host", "-"}).Stdin(document).Run().out,
                StartsWith("-\n  Name       -\n"));
    const Result mixed = Tool({"dump", Data("empty.gpx"), "-"}).Stdin(document).Run();
    EXPECT_EQ(Lines(mixed.out).size(), 2U);
    EXPECT_EQ(mixed.status, 0);
}

TEST(InputTest, MessagesAboutStandardInputShowADash) {
    const Folder temporary;
    const Result bad = Tool({"dump", "-"})
                           .Stdin(ReadFile(Data("not-well-formed.gpx")))
                           .Set("TMPDIR", temporary.Path())
                           .Run();
    EXPECT_EQ(bad.status, 1);
    EXPECT_EQ(bad.err, "vexagpx: One or more errors encountered while parsing the GPX file: - "
                       "(line 3, column 23: expected end of tag 'name') Correct the tag in the line that is "
                       "named, or write the file again.\n");
    const Result empty = Tool({"dump", "-"}).Stdin("").Set("TMPDIR", temporary.Path()).Run();
    EXPECT_EQ(empty.status, 1);
    EXPECT_EQ(empty.err, "vexagpx: standard input is empty; look where it comes from for the whole file.\n");
    EXPECT_THAT(temporary.Names(), IsEmpty());
}

TEST(InputTest, TheCopyOfStandardInputIsRemoved) {
    const Folder temporary;
    for (const char* file : {"hand-written.gpx", "not-well-formed.gpx", "no-position.gpx"}) {
        Tool({"dump", "-"}).Stdin(ReadFile(Data(file))).Set("TMPDIR", temporary.Path()).Run();
        EXPECT_THAT(temporary.Names(), IsEmpty()) << file;
    }
    Tool({"dump", "-"})
        .Stdin(ReadFile(Data("hand-written.gpx")))
        .Set("TMPDIR", temporary.Path())
        .StdoutTo("/dev/full")
        .Run();
    EXPECT_THAT(temporary.Names(), IsEmpty());
}

TEST(InputTest, ASignalRemovesTheCopyOfStandardInput) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const Folder temporary;
        int ends[2];
        ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            ::dup2(ends[0], STDIN_FILENO);
            ::setenv("TMPDIR", temporary.Path().c_str(), 1);
            cli::ResetSignals();
            ::execl(VEXAGPX_TOOL, "vexagpx", "dump", "-", nullptr);
            ::_exit(127);
        }
        using namespace std::chrono_literals;
        // The copy exists as soon as the tool waits for input.
        const auto copyExists = [&] {
            const std::vector<std::string> names = temporary.Names();
            return !names.empty() && ::access((temporary.File(names[0]) + "/-").c_str(), F_OK) == 0;
        };
        for (int i = 0; i < 1000 && !copyExists(); ++i)
            std::this_thread::sleep_for(10ms);
        EXPECT_TRUE(copyExists());
        ::kill(child, signal);
        int status = 0;
        ::waitpid(child, &status, 0);
        ::close(ends[0]);
        ::close(ends[1]);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        EXPECT_THAT(temporary.Names(), IsEmpty()) << signal;
    }
}

TEST(InputTest, StandardInputThatCannotBeReadIsReported) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"dump", "-"}, {"show", "-"}, {"clean"}, {"clean", "-"}}) {
        const Result result = Tool(arguments).CloseStdin().Run();
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, StartsWith("vexagpx: Unable to read standard input: Bad file descriptor"));
    }
}

TEST(InputTest, ANonexistentTemporaryFolderIsReported) {
    const Result result = Tool({"dump", "-"}).Stdin(Gpx("")).Set("TMPDIR", "/nonexistent/folder").Run();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, StartsWith("vexagpx: Unable to create a temporary folder: "));
}

TEST(InputTest, ANamedPipeCanBeRead) {
    const Folder folder;
    const std::string pipe = folder.File("walk.gpx");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::thread writer([&] { folder.Write("walk.gpx", Gpx("<wpt lat='1' lon='2'/>")); });
    const Result result = RunTool({"dump", "--as-host", pipe});
    writer.join();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out,
                testing::EndsWith(R"("waypoints":[{"latitude":1,"longitude":2}],"routes":[],"tracks":[]})"
                                  "\n"));
}

TEST(InputTest, ANameWithControlCharactersDoesNotReachTheTerminalRaw) {
    const Result result = RunTool({"dump", "no\x1B[31m\nsuch\xC2\x9B.gpx"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Lines(result.err).size(), 1U);
    EXPECT_THAT(result.err, Not(HasSubstr("\x1B")));
    EXPECT_THAT(result.err, Not(HasSubstr("\x9B")));
}

TEST(InputTest, EveryMalformedFileOfTheCorpusIsReportedOrRead) {
    const std::vector<std::string> files = cli::Corpus("gpx-malformed");
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    std::size_t refused = 0;
    for (const std::string& file : files) {
        const Result result = RunTool({"dump", file});
        if (result.status == 0) {
            EXPECT_EQ(result.err, "") << file;
            continue;
        }
        ++refused;
        EXPECT_EQ(result.status, 1) << file;
        EXPECT_EQ(result.out, "") << file;
        EXPECT_THAT(result.err, StartsWith("vexagpx: ")) << file;
        EXPECT_THAT(result.err, HasSubstr(file)) << file;
        EXPECT_EQ(Lines(result.err).size(), 1U) << file;
    }
    EXPECT_GT(refused, files.size() / 2);
}

} // namespace
