// SPDX-License-Identifier: MIT

// Files whose size needs more than 32 bits with a sign.

#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <cstdint>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace {

using cli::Folder;
using cli::Gpx;
using cli::Result;
using cli::RunTool;

constexpr std::uintmax_t kLargeSize = (std::uintmax_t{1} << 31) + 4096;

/// Creates large files as holes, which take no space if the file system supports them.
class LargeFilesTest : public testing::Test {
protected:
    void SetUp() override {
        Grow(folder_.Write("hole", ""));
        if (error_)
            GTEST_SKIP() << "no file of 2 GiB can be made here: " << error_.message();
        std::filesystem::remove(folder_.File("hole"));
    }

    void Grow(const std::string& path) { std::filesystem::resize_file(path, kLargeSize, error_); }

    Folder folder_;
    std::error_code error_;
};

TEST_F(LargeFilesTest, TheHeadOfADocumentIsRead) {
    Grow(folder_.Write("walk.gpx",
                       "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'>"
                       "<metadata><time>2020-01-01T00:00:00Z</time></metadata><wpt lat='1' lon='2'/>"));
    const Result result = RunTool({"info", "--json", "walk.gpx"}, folder_.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(
        result.out,
        R"({"file":"walk.gpx","time":"2020-01-01T00:00:00Z","head":{"version":"1.1","time":"2020-01-01T00:00:00Z","end":"object"}})"
        "\n");
}

TEST_F(LargeFilesTest, ADocumentIsReadToWhereItIsWrong) {
    Grow(folder_.Write("walk.gpx", "<gpx version='1.1'>"));
    // A command that reads completely would need more memory than a 32-bit process has.
    const Result result = RunTool({"check", "walk.gpx"}, folder_.Path());
    EXPECT_TRUE(cli::Failed(result, "(line 1, column "));
}

TEST_F(LargeFilesTest, AnArchiveIsRead) {
    const std::string bytes = testing_support::BuildZip({{.name = "walk.gpx", .content = Gpx("")}});
    // Bytes before an archive, such as a program that unpacks it, do not matter.
    Grow(folder_.Write("walk.zip", ""));
    const int file = ::open(folder_.File("walk.zip").c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    ASSERT_EQ(::write(file, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    ASSERT_EQ(::close(file), 0);
    const Result result = RunTool({"zip", "list", "walk.zip"}, folder_.Path());
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "walk.gpx\n");
    EXPECT_EQ(RunTool({"zip", "test", "walk.zip"}, folder_.Path()).status, 0);
}

} // namespace
