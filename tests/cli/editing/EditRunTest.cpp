// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <filesystem>

namespace {

using cli::Folder;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using testing_support::BuildZip;
using testing_support::ZipEntry;

const std::string kStart = "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'>";
const std::string kRoute = kStart + "<rte><rtept lat='1' lon='1'/><rtept lat='2' lon='2'/></rte></gpx>";
const std::string kBack = kStart + "<rte><rtept lat='2' lon='2'/><rtept lat='1' lon='1'/></rte></gpx>";

Result Reverse(const Folder& folder, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "reverse");
    return RunTool(arguments, folder.Path());
}

TEST(EditRunTest, TheInputStaysAsItIs) {
    const Folder folder;
    folder.Write("a.gpx", kRoute);
    EXPECT_EQ(Reverse(folder, {"a.gpx", "b.gpx"}).status, 0);
    EXPECT_EQ(ReadFile(folder.File("a.gpx")), kRoute);
    EXPECT_EQ(ReadFile(folder.File("b.gpx")), kBack);
}

TEST(EditRunTest, TheInputIsReplacedOnlyWhenThatIsWanted) {
    const Folder folder;
    folder.Write("a.gpx", kRoute);
    const Result result = Reverse(folder, {"a.gpx", "--in-place"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("\na.gpx was written.\n"));
    EXPECT_EQ(ReadFile(folder.File("a.gpx")), kBack);
    EXPECT_THAT(folder.Names(), ElementsAre("a.gpx"));
}

TEST(EditRunTest, AResultDoesNotReplaceWhatItIsMadeOf) {
    const Folder folder;
    folder.Write("a.gpx", kRoute);
    std::filesystem::create_symlink("a.gpx", folder.File("link.gpx"));
    std::filesystem::create_hard_link(folder.File("a.gpx"), folder.File("hard.gpx"));
    for (const char* out : {"a.gpx", "./a.gpx", "link.gpx", "hard.gpx"}) {
        const Result result = Reverse(folder, {"a.gpx", out});
        EXPECT_EQ(result.status, 1) << out;
        EXPECT_EQ(result.err,
                  "vexagpx: The result would replace what it is made of; write another file, or use "
                  "--in-place. (a.gpx)\n");
        EXPECT_EQ(ReadFile(folder.File("a.gpx")), kRoute);
    }
    EXPECT_EQ(RunTool({"repair", "a.gpx", "a.gpx"}, folder.Path()).status, 1);
    EXPECT_EQ(ReadFile(folder.File("a.gpx")), kRoute);
}

TEST(EditRunTest, AFileThatDoesNotChangeIsNotReplaced) {
    const Folder folder;
    folder.Write("a.gpx", kStart + "</gpx>");
    const auto before = std::filesystem::last_write_time(folder.File("a.gpx"));
    const Result result = Reverse(folder, {"a.gpx", "--in-place"});
    EXPECT_EQ(result.out, "a.gpx\nNothing is to change.\n");
    EXPECT_EQ(std::filesystem::last_write_time(folder.File("a.gpx")), before);
}

TEST(EditRunTest, ADryRunWritesNothing) {
    const Folder folder;
    folder.Write("a.gpx", kRoute);
    for (const std::vector<std::string>& more : {std::vector<std::string>{}, {"b.gpx"}, {"--in-place"}}) {
        std::vector<std::string> arguments = {"a.gpx", "--dry-run"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const Result result = Reverse(folder, arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, "a.gpx\n  Route 1: 2 points reversed\nNothing was written.\n");
    }
    EXPECT_THAT(folder.Names(), ElementsAre("a.gpx"));
    EXPECT_EQ(ReadFile(folder.File("a.gpx")), kRoute);
}

TEST(EditRunTest, AResultOnStandardOutputIsToldOfOnStandardError) {
    const Folder folder;
    folder.Write("a.gpx", kRoute);
    const Result result = Reverse(folder, {"a.gpx", "-"});
    EXPECT_EQ(result.out, kBack);
    EXPECT_EQ(result.err, "a.gpx\n  Route 1: 2 points reversed\nStandard output was written.\n");
}

TEST(EditRunTest, StandardInputIsRead) {
    const Folder folder;
    const Result result = Tool({"reverse", "-", "-"}).In(folder.Path()).Stdin(kRoute).Run();
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, kBack);
}

TEST(EditRunTest, WhatCannotBeReplacedIsRefused) {
    const Folder folder;
    const Result pipe = Tool({"reverse", "-", "--in-place"}).In(folder.Path()).Stdin(kRoute).Run();
    EXPECT_EQ(pipe.status, 1);
    EXPECT_THAT(pipe.err,
                StartsWith("vexagpx: Only a GPX file can be changed in place, not a pipe or a gzip file."));
}

TEST(EditRunTest, ArchivesAndFoldersAreRefusedWithAdvice) {
    const Folder folder;
    ZipEntry entry;
    entry.name = "a.gpx";
    entry.content = kRoute;
    folder.Write("a.zip", BuildZip({entry}));
    EXPECT_EQ(Reverse(folder, {"a.zip", "b.gpx"}).err,
              "vexagpx: An archive cannot be changed; vexagpx zip extract writes what is in it. (a.zip)\n");
    EXPECT_THAT(Reverse(folder, {".", "b.gpx"}).err, HasSubstr("This is a folder, and one file is needed"));
    EXPECT_THAT(folder.Names(), ElementsAre("a.zip"));
}

TEST(EditRunTest, AFileThatCannotBeReadLeavesAllAsItWas) {
    const Folder folder;
    folder.Write("a.gpx", kStart + "<rte>");
    folder.Write("b.gpx", "before");
    const Result result = Reverse(folder, {"a.gpx", "b.gpx"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr("Get it again from where it comes; its end is missing."));
    EXPECT_EQ(ReadFile(folder.File("b.gpx")), "before");
}

TEST(EditRunTest, APathThatThereIsNotIsRefused) {
    const Folder folder;
    folder.Write("a.gpx", kRoute);
    EXPECT_THAT(Reverse(folder, {"a.gpx", "b.gpx", "--track", "1"}).err,
                HasSubstr("There is no track 1; the document has 0 tracks."));
    EXPECT_THAT(Reverse(folder, {"a.gpx", "b.gpx", "--route", "1", "--route", "2"}).err,
                HasSubstr("There is no route 2; the document has 1 route."));
    EXPECT_THAT(folder.Names(), ElementsAre("a.gpx"));
}

TEST(EditRunTest, OfManyChangesTheFirstOnesAreListed) {
    const Folder folder;
    std::string routes;
    for (int i = 0; i < 1500; ++i)
        routes += "<rte><rtept lat='1' lon='1'/><rtept lat='2' lon='2'/></rte>";
    folder.Write("a.gpx", kStart + routes + "</gpx>");
    const Result result = Reverse(folder, {"a.gpx", "--dry-run"});
    EXPECT_THAT(result.out, HasSubstr("  Route 1000: 2 points reversed\n  and 500 other changes\n"));
    EXPECT_THAT(Reverse(folder, {"a.gpx", "--dry-run", "--json"}).out, HasSubstr("\"changeCount\":1500,"));
}

} // namespace
