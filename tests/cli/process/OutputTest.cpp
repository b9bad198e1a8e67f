// SPDX-License-Identifier: MIT
#include <vexagpx/process/Output.h>

#include "support/Tool.h"

#include <csignal>

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

TEST(OutputTest, APipeWithoutAReaderIsReported) {
    for (const std::vector<std::string>& command : kCommands) {
        const cli::Folder folder;
        int ends[2];
        ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        ::close(ends[0]);
        const Result result = Tool(command).StdoutTo("/proc/self/fd/" + std::to_string(ends[1])).Run();
        ::close(ends[1]);
        EXPECT_EQ(result.status, 1) << command[0];
        EXPECT_EQ(result.err, "vexagpx: Unable to write to standard output: Broken pipe\n") << command[0];
    }
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
