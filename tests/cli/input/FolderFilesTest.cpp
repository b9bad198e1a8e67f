// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <vexagpx/input/FolderFiles.h>

#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using cli::Failed;
using cli::Folder;
using cli::Gpx;
using cli::kWaypoint;
using cli::Lines;
using cli::Result;
using cli::RunTool;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

/// Every command that reads any number of files.
const std::vector<std::vector<std::string>> kCommands = {{"show"}, {"dump"}, {"info"}, {"check"}};

std::vector<std::string> With(std::vector<std::string> command, const std::vector<std::string>& files) {
    command.insert(command.end(), files.begin(), files.end());
    return command;
}

std::string MakeFolder(const Folder& folder, const std::string& name) {
    std::filesystem::create_directories(folder.File(name));
    return folder.File(name);
}

void Link(const std::string& target, const std::string& path) {
    ASSERT_EQ(::symlink(target.c_str(), path.c_str()), 0);
}

/// The list of one folder, with paths relative to it.
std::vector<std::string> FilesIn(const Folder& folder) {
    std::vector<std::string> files = vexagpx::ExpandFolders({folder.Path()});
    for (std::string& file : files)
        file.erase(0, folder.Path().size() + 1);
    return files;
}

TEST(FolderFilesTest, AFolderStandsForItsGpxFilesAndArchivesByTheBytesOfTheirPaths) {
    const Folder folder;
    MakeFolder(folder, "a/b");
    MakeFolder(folder, "x.gpx");
    for (const char* name : {"b.gpx", "B.GPX", "a/b/deep.Zip", "a/z.gpx.GZ", "a-.gpx", "x.gpx/in.gpx",
                             "\xFF.gpx", ".hidden.gpx", "t.txt", "gpx", "a.gpx.bak", "a.gz"})
        folder.Write(name, "");
    EXPECT_THAT(FilesIn(folder), ElementsAre(".hidden.gpx", "B.GPX", "a-.gpx", "a/b/deep.Zip", "a/z.gpx.GZ",
                                             "b.gpx", "x.gpx/in.gpx", "\xFF.gpx"));
}

TEST(FolderFilesTest, OtherArgumentsStayAsTheyAreInTheirOrder) {
    const Folder folder;
    folder.Write("1.gpx", "");
    EXPECT_THAT(vexagpx::ExpandFolders({"z.txt", "-", folder.Path() + "/", "", "missing"}),
                ElementsAre("z.txt", "-", folder.File("1.gpx"), "", "missing"));
}

TEST(FolderFilesTest, LinksToFilesAreFollowedAndLinksToFoldersAreNot) {
    const Folder folder;
    MakeFolder(folder, "a");
    folder.Write("a/1.gpx", "");
    Link("1.gpx", folder.File("a/2.gpx"));
    Link("nowhere", folder.File("a/3.gpx"));
    Link("../a", folder.File("a/circle"));
    Link("/", folder.File("root.gpx"));
    testing::internal::CaptureStderr();
    EXPECT_THAT(FilesIn(folder), ElementsAre("a/1.gpx", "a/2.gpx", "a/3.gpx"));
    EXPECT_EQ(Lines(testing::internal::GetCapturedStderr()).size(), 2U);
    const std::string link = folder.File("a/circle");
    EXPECT_THAT(vexagpx::ExpandFolders({link}), testing::Contains(link + "/1.gpx"))
        << "a link that is an argument is followed";
}

TEST(FolderFilesTest, APipeInAFolderIsNotWaitedFor) {
    const Folder folder;
    ASSERT_EQ(::mkfifo(folder.File("p.gpx").c_str(), 0600), 0);
    folder.Write("q.gpx", "");
    EXPECT_THAT(FilesIn(folder), ElementsAre("q.gpx"));
}

TEST(FolderFilesTest, EveryCommandReadsTheFilesOfAFolderAsIfTheyWereItsArguments) {
    const Folder folder;
    MakeFolder(folder, "walks/more");
    folder.Write("walks/b.gpx", Gpx(kWaypoint));
    folder.Write("walks/bad.gpx", "<gpx");
    folder.Write("walks/more/q.zip",
                 testing_support::BuildZip({{.name = "e.gpx", .content = Gpx(kWaypoint)}}));
    folder.Write("last.gpx", Gpx(kWaypoint));
    for (const std::vector<std::string>& command : kCommands) {
        const Result byFolder = RunTool(With(command, {"walks/", "last.gpx"}), folder.Path());
        const Result byFiles = RunTool(
            With(command, {"walks/b.gpx", "walks/bad.gpx", "walks/more/q.zip", "last.gpx"}), folder.Path());
        EXPECT_EQ(byFolder.status, byFiles.status) << command[0];
        EXPECT_EQ(byFolder.out, byFiles.out) << command[0];
        EXPECT_EQ(byFolder.err, byFiles.err) << command[0];
    }
}

TEST(FolderFilesTest, AFolderWithoutFilesIsAFailureAndTheNextArgumentFollows) {
    const Folder folder;
    MakeFolder(folder, "none/below");
    folder.Write("none/t.txt", "");
    folder.Write("a.gpx", Gpx(kWaypoint));
    for (const std::vector<std::string>& command : kCommands) {
        const Result result = RunTool(With(command, {"none", "a.gpx"}), folder.Path());
        EXPECT_TRUE(Failed(result, "The folder holds no GPX file and no archive. (none)")) << command[0];
        EXPECT_THAT(result.out, HasSubstr(command[0] == "dump" ? "waypoints" : "a.gpx")) << command[0];
    }
    EXPECT_THAT(RunTool({"check", "--json", "none"}, folder.Path()).out,
                HasSubstr("The folder holds no GPX file and no archive. (none)"));
}

TEST(FolderFilesTest, AFolderThatCannotBeReadIsAFailureAndTheOthersAreRead) {
    const Folder folder;
    const std::string closed = MakeFolder(folder, "walks/closed");
    folder.Write("walks/z.gpx", Gpx(kWaypoint));
    ASSERT_EQ(::chmod(folder.Path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(closed.c_str(), 0), 0);
    const Result result = cli::Tool({"show", "walks"}).In(folder.Path()).AsOrdinaryUser().Run();
    ASSERT_EQ(::chmod(closed.c_str(), 0700), 0);
    EXPECT_TRUE(Failed(result, "Unable to read the folder: walks/closed (Permission denied)"));
    EXPECT_THAT(result.out, StartsWith("walks/z.gpx\n"));
}

TEST(FolderFilesTest, ACommandThatTakesOneFileSaysWhatToDoWithAFolder) {
    const Folder folder;
    MakeFolder(folder, "walks");
    folder.Write("walks/z.gpx", Gpx(kWaypoint));
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"convert", "walks", "out"}, {"zip", "list", "walks"}, {"zip", "test", "walks"}}) {
        const Result result = RunTool(arguments, folder.Path());
        EXPECT_EQ(result.status, 1) << arguments[0];
        EXPECT_EQ(result.out, "") << arguments[0];
        EXPECT_EQ(result.err,
                  "vexagpx: This is a folder, and one file is needed: run the command for each file "
                  "in it. (walks)\n")
            << arguments[0];
    }
    EXPECT_FALSE(std::filesystem::exists(folder.File("out")));
}

} // namespace
