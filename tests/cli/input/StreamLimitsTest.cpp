// SPDX-License-Identifier: MIT

// How many bytes of a stream the tool copies at most.

#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <thread>

#include <sys/stat.h>

namespace {

using cli::Failed;
using cli::Folder;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using testing::IsEmpty;

/// Every command that takes a stream, without the stream.
const std::vector<std::vector<std::string>> kCommands = {
    {"show"}, {"dump"}, {"info"}, {"check"}, {"convert"}, {"zip", "list"}, {"zip", "test"}};

/// A command on standard input or on a file, with options.
std::vector<std::string> Arguments(std::vector<std::string> command, const std::string& file,
                                   const std::string& option) {
    const bool writes = command[0] == "convert";
    command.push_back(option);
    command.push_back(file);
    if (writes)
        command.emplace_back("-");
    return command;
}

std::string InputFor(const std::vector<std::string>& command) {
    return command[0] == "zip" ? testing_support::BuildZip({{.name = "a.gpx", .content = cli::Gpx("")}})
                               : cli::Gpx("<wpt lat='1' lon='2'/>");
}

std::string TooLong(std::size_t most, const std::string& file) {
    return "vexagpx: The stream has more than " + std::to_string(most) + " bytes (--max-stream-size). (" +
           file + ")\n";
}

TEST(StreamLimitsTest, TheSizeOfStandardInputIsAnOption) {
    for (const std::vector<std::string>& command : kCommands) {
        const Folder temporary;
        const std::string input = InputFor(command);
        for (const std::size_t most : {input.size(), input.size() - 1}) {
            const Result result = Tool(Arguments(command, "-", "--max-stream-size=" + std::to_string(most)))
                                      .Stdin(input)
                                      .Set("TMPDIR", temporary.Path())
                                      .Run();
            EXPECT_EQ(result.status, most == input.size() ? 0 : 1) << command[0];
            EXPECT_EQ(result.err, most == input.size() ? "" : TooLong(most, "-")) << command[0];
            EXPECT_THAT(temporary.Names(), IsEmpty()) << command[0];
        }
    }
}

TEST(StreamLimitsTest, TheSizeOfAPipeIsAnOption) {
    for (const std::vector<std::string>& command : kCommands) {
        const Folder folder;
        const std::string pipe = folder.File("pipe");
        ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
        const std::string input = InputFor(command);
        std::thread writer([&] { folder.Write("pipe", input); });
        const std::size_t most = input.size() - 1;
        const Result result = RunTool(Arguments(command, pipe, "--max-stream-size=" + std::to_string(most)));
        writer.join();
        EXPECT_EQ(result.status, 1) << command[0];
        EXPECT_EQ(result.err, TooLong(most, pipe)) << command[0];
    }
}

TEST(StreamLimitsTest, AStreamWithoutAnEndEnds) {
    for (const std::vector<std::string>& command : kCommands) {
        const Folder temporary;
        const Result result = Tool(Arguments(command, "/dev/zero", "--max-stream-size=1MB"))
                                  .Set("TMPDIR", temporary.Path())
                                  .Run();
        EXPECT_EQ(result.status, 1) << command[0];
        EXPECT_EQ(result.err, TooLong(1 << 20, "/dev/zero")) << command[0];
        EXPECT_THAT(temporary.Names(), IsEmpty()) << command[0];
    }
}

TEST(StreamLimitsTest, AFileIsNoStream) {
    const Folder folder;
    folder.Write("a.gpx", cli::Gpx(""));
    EXPECT_EQ(RunTool({"dump", "a.gpx", "--max-stream-size=1"}, folder.Path()).status, 0);
}

TEST(StreamLimitsTest, AStreamLeavesHalfOfTheFreeSpace) {
    const std::string input = cli::Gpx("");
    for (const std::size_t room : {2 * input.size(), 2 * input.size() - 1, std::size_t{0}}) {
        const Folder temporary;
        const Result result = Tool({"dump", "-"})
                                  .Stdin(input)
                                  .Set("TMPDIR", temporary.Path())
                                  .Set("LD_PRELOAD", VEXAGPX_INTERFERENCE)
                                  .Set("ASAN_OPTIONS", "verify_asan_link_order=0")
                                  .Set("VEXAGPX_TEST_FREE", std::to_string(room))
                                  .Run();
        const bool isFine = room == 2 * input.size();
        EXPECT_EQ(result.status, isFine ? 0 : 1) << room;
        EXPECT_EQ(result.err, isFine
                                  ? ""
                                  : "vexagpx: The stream takes more than half of the space that is free for "
                                    "temporary files; TMPDIR can name another folder for them. (-)\n")
            << room;
        EXPECT_THAT(temporary.Names(), IsEmpty()) << room;
    }
}

} // namespace
