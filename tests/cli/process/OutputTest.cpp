// SPDX-License-Identifier: MIT
#include <vexagpx/process/Output.h>

#include "support/Signals.h"
#include "support/Tool.h"

#include <csignal>
#include <stdexcept>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using cli::Data;
using cli::Result;
using cli::Tool;
using testing::HasSubstr;

const std::vector<std::vector<std::string>> kCommands = {
    {"show", Data("hand-written.gpx")},
    {"dump", Data("hand-written.gpx")},
    {"clean", Data("web-text.html")},
    {"convert", Data("hand-written.gpx"), "-"},
    {"export", Data("hand-written.gpx"), "--format", "geojson", "--layer", "waypoints"},
    {"convert", Data("hand-written.gpx"), "/dev/stdout"},
};

TEST(OutputTest, PiecesMayBeTakenInPlaceOfADescriptor) {
    std::vector<std::string> pieces;
    vexagpx::Output out([&pieces](std::string_view piece) { pieces.emplace_back(piece); });
    out.Write("a");
    out.Write("b");
    EXPECT_THAT(pieces, testing::IsEmpty());
    out.Close();
    EXPECT_THAT(pieces, testing::ElementsAre("ab"));
    EXPECT_EQ(out.TerminalColumns(), std::nullopt);
}

TEST(OutputTest, AFullDeviceIsReported) {
    for (const std::vector<std::string>& command : kCommands) {
        const Result result = Tool(command).StdoutTo("/dev/full").Run();
        EXPECT_EQ(result.status, 1) << command[0];
        EXPECT_EQ(result.err, "vexagpx: Unable to write to standard output: No space left on device\n")
            << command[0];
    }
}

TEST(OutputTest, ClosedStandardOutputIsReported) {
    for (const std::vector<std::string>& command : kCommands) {
        const Result result = Tool(command).CloseStdout().Run();
        EXPECT_EQ(result.status, 1) << command[0];
        EXPECT_EQ(result.err, "vexagpx: Unable to write to standard output: Bad file descriptor\n")
            << command[0];
    }
}

/// A pipe that nobody reads.
class ClosedPipe {
public:
    ClosedPipe() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe can be made");
        ::close(ends[0]);
        fd_ = ends[1];
    }
    ~ClosedPipe() { ::close(fd_); }
    ClosedPipe(const ClosedPipe&) = delete;
    ClosedPipe& operator=(const ClosedPipe&) = delete;

    int Get() const { return fd_; }

private:
    int fd_ = -1;
};

TEST(OutputTest, APipeWithoutAReaderEndsTheProgramInSilence) {
    for (const std::vector<std::string>& command : kCommands) {
        const ClosedPipe pipe;
        const Result result = Tool(command).StdoutTo("/proc/self/fd/" + std::to_string(pipe.Get())).Run();
        EXPECT_EQ(result.status, -SIGPIPE) << command[0];
        EXPECT_EQ(result.err, "") << command[0];
    }
}

TEST(OutputTest, APipeWithoutAReaderLeavesNoTemporaryFiles) {
    const ClosedPipe pipe;
    const cli::Folder temporary;
    const Result result = Tool({"dump", "-"})
                              .Stdin(cli::ReadFile(Data("hand-written.gpx")))
                              .Set("TMPDIR", temporary.Path())
                              .StdoutTo("/proc/self/fd/" + std::to_string(pipe.Get()))
                              .Run();
    EXPECT_EQ(result.status, -SIGPIPE);
    EXPECT_THAT(temporary.Names(), testing::IsEmpty());
}

// As other tools do. A program that ignores the signal, and so does what it starts, wants the error.
TEST(OutputTest, APipeWithoutAReaderIsReportedWhereTheSignalIsIgnored) {
    const ClosedPipe pipe;
    const cli::Folder folder;
    const std::string errors = folder.Write("errors", "");
    const std::string file = Data("hand-written.gpx");
    const pid_t child = ::fork();
    if (child == 0) {
        cli::ResetSignals(SIGPIPE);
        ::dup2(pipe.Get(), STDOUT_FILENO);
        ::dup2(::open(errors.c_str(), O_WRONLY), STDERR_FILENO);
        ::execl(VEXAGPX_TOOL, "vexagpx", "dump", file.c_str(), nullptr);
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << status;
    EXPECT_EQ(cli::ReadFile(errors), "vexagpx: Unable to write to standard output: Broken pipe\n");
}

TEST(OutputTest, ACommandThatPrintsNothingNeedsNoStandardOutput) {
    EXPECT_EQ(Tool({"clean"}).Stdin("").CloseStdout().Run().status, 0);
    const cli::Folder folder;
    EXPECT_EQ(Tool({"convert", Data("hand-written.gpx"), folder.File("out.gpx")}).CloseStdout().Run().status,
              0);
}

TEST(OutputTest, ClosedStandardErrorDoesNoHarm) {
    const Result result =
        Tool({"dump", Data("empty.gpx"), Data("not-well-formed.gpx"), Data("dropped-point.gpx")})
            .CloseStderr()
            .Run();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(cli::Lines(result.out).size(), 2U);
    EXPECT_THAT(result.out, testing::Not(HasSubstr("ASSERT")));
}

TEST(OutputTest, AFailureStopsTheFilesThatFollow) {
    const Result result = Tool({"dump", Data("hand-written.gpx"), "missing.gpx"}).StdoutTo("/dev/full").Run();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "vexagpx: Unable to write to standard output: No space left on device\n");
}

} // namespace
