// SPDX-License-Identifier: MIT
#include <vexagpx/output/AtomicFile.h>

#include <vexagpx/process/Signals.h>

#include "support/ResourceLimit.h"
#include "support/Tool.h"
#include "support/Umask.h"

#include "support/ZipBuilder.h"

#include <csignal>
#include <filesystem>
#include <stdexcept>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

using namespace vexagpx;

using cli::Data;
using cli::Folder;
using cli::ReadFile;
using cli::RunTool;
using cli::Umask;
using testing::ElementsAre;

constexpr auto kReplaced = AtomicFile::Existing::kReplaced;
constexpr auto kKept = AtomicFile::Existing::kKept;

FileInFolder FileIn(const std::string& folder, const std::string& name) {
    return {OpenFolder(folder), name, "shown/" + name};
}

struct stat StatusOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
    return status;
}

mode_t ModeOf(const std::string& path) {
    return StatusOf(path).st_mode & 07777;
}

/// The message of the exception; empty when there is none.
template <class Action>
std::string MessageOf(Action action) {
    try {
        action();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return {};
}

TEST(AtomicFileTest, IsThereWithItsContentOnlyAfterTheCommit) {
    const Folder folder;
    AtomicFile file(FileIn(folder.Path(), "a"), kKept);
    file.Write("one ");
    file.Write("two");
    ASSERT_EQ(folder.Names().size(), 1U);
    const std::string temporary = folder.Names().front();
    EXPECT_THAT(temporary, testing::StartsWith(".vexagpx-"));
    EXPECT_EQ(ModeOf(folder.File(temporary)), 0600U);
    file.Commit();
    EXPECT_THAT(folder.Names(), ElementsAre("a"));
    EXPECT_EQ(ReadFile(folder.File("a")), "one two");
}

TEST(AtomicFileTest, LeavesNothingWithoutACommit) {
    const Folder folder;
    folder.Write("old", "as it was");
    for (const char* name : {"old", "new"})
        AtomicFile(FileIn(folder.Path(), name), kReplaced).Write("bytes");
    EXPECT_THAT(folder.Names(), ElementsAre("old"));
    EXPECT_EQ(ReadFile(folder.File("old")), "as it was");
}

TEST(AtomicFileTest, RefusesWhatIsNoFileToReplace) {
    const Folder folder;
    folder.Write("file", "as it was");
    fs::create_directory(folder.File("folder"));
    fs::create_symlink("file", folder.File("link"));
    fs::create_symlink("missing", folder.File("dangling"));
    ASSERT_EQ(::mkfifo(folder.File("pipe").c_str(), 0600), 0);
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"folder", "Is a directory"},
        {"link", "Too many levels of symbolic links"},
        {"dangling", "Too many levels of symbolic links"},
        {"pipe", "File exists"},
        {"", "Is a directory"},
        {std::string(256, 'n'), "File name too long"},
    };
    const std::vector<std::string> before = folder.Tree();
    for (const auto& [name, reason] : rows)
        EXPECT_EQ(MessageOf([&, name = name] { AtomicFile(FileIn(folder.Path(), name), kReplaced); }),
                  "Unable to write the file: shown/" + name + " (" + reason + ")");
    for (const char* name : {"file", "folder", "link", "dangling", "pipe"})
        EXPECT_EQ(MessageOf([&] { AtomicFile(FileIn(folder.Path(), name), kKept); }),
                  "Unable to write the file: shown/" + std::string(name) + " (File exists)");
    EXPECT_EQ(folder.Tree(), before);
    EXPECT_EQ(ReadFile(folder.File("file")), "as it was");
}

TEST(AtomicFileTest, AFileThatAppearsMeanwhileIsKeptWhenFilesAreKept) {
    const Folder folder;
    AtomicFile file(FileIn(folder.Path(), "a"), kKept);
    file.Write("new");
    folder.Write("a", "a stranger's");
    EXPECT_EQ(MessageOf([&] { file.Commit(); }), "Unable to write the file: shown/a (File exists)");
    EXPECT_EQ(ReadFile(folder.File("a")), "a stranger's");
}

TEST(AtomicFileTest, ALinkThatComesIntoItsPlaceMeanwhileIsReplacedAndNotFollowed) {
    const Folder folder;
    folder.Write("elsewhere", "as it was");
    AtomicFile file(FileIn(folder.Path(), "a"), kReplaced);
    file.Write("new");
    fs::create_symlink("elsewhere", folder.File("a"));
    file.Commit();
    EXPECT_FALSE(fs::is_symlink(folder.File("a")));
    EXPECT_EQ(ReadFile(folder.File("a")), "new");
    EXPECT_EQ(ReadFile(folder.File("elsewhere")), "as it was");
}

/// Puts a link to "elsewhere" in place of the folder "sub", which becomes "moved".
void SwapForLink(const Folder& folder) {
    fs::rename(folder.File("sub"), folder.File("moved"));
    fs::create_directory_symlink("elsewhere", folder.File("sub"));
}

/// Two folders, one of which is swapped for a link to the other.
struct Swappable {
    Folder folder;

    Swappable() {
        fs::create_directory(folder.File("sub"));
        fs::create_directory(folder.File("elsewhere"));
    }

    FileInFolder Place() const { return FileIn(folder.File("sub"), "a"); }
};

TEST(AtomicFileTest, IsWrittenToItsFolderWhenALinkReplacesThatFolder) {
    // Before the file is created, while it is written, or before it is committed.
    for (int step = 0; step < 3; ++step) {
        const Swappable places;
        FileInFolder place = places.Place();
        if (step == 0)
            SwapForLink(places.folder);
        AtomicFile file(std::move(place), kReplaced);
        if (step == 1)
            SwapForLink(places.folder);
        file.Write("new");
        if (step == 2)
            SwapForLink(places.folder);
        file.Commit();
        EXPECT_THAT(places.folder.Tree(), ElementsAre("elsewhere/", "moved/", "moved/a", "sub")) << step;
        EXPECT_EQ(ReadFile(places.folder.File("moved/a")), "new");
    }
}

/// Writes a file of another user with the name of the temporary file to the place that the path now leads to.
void PutFileOfAnotherUser(const Folder& folder) {
    const fs::path temporary = fs::directory_iterator(folder.File("sub"))->path().filename();
    SwapForLink(folder);
    folder.Write("elsewhere/" + temporary.string(), "a stranger's");
}

TEST(AtomicFileTest, RemovesItsOwnFileAndNotAnotherThatIsNowAtItsPath) {
    const Swappable places;
    {
        AtomicFile file(places.Place(), kReplaced);
        PutFileOfAnotherUser(places.folder);
    }
    EXPECT_TRUE(fs::is_empty(places.folder.File("moved")));
    EXPECT_EQ(places.folder.Tree().size(), 4U);
}

TEST(AtomicFileTest, ASignalThatEndsTheProgramRemovesOnlyItsOwnFile) {
    const Swappable places;
    const auto DieOfASignal = [&places] {
        std::signal(SIGTERM, SIG_DFL);
        CatchDeadlySignals();
        AtomicFile file(places.Place(), kReplaced);
        PutFileOfAnotherUser(places.folder);
        std::raise(SIGTERM);
    };
    EXPECT_EXIT(DieOfASignal(), testing::KilledBySignal(SIGTERM), "");
    EXPECT_TRUE(fs::is_empty(places.folder.File("moved")));
    EXPECT_EQ(places.folder.Tree().size(), 4U);
}

TEST(AtomicFileTest, HoldsNoDescriptorAfterwards) {
    const Folder folder;
    const auto CountDescriptors = [] {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    };
    const auto before = CountDescriptors();
    for (int i = 0; i < 50; ++i) {
        AtomicFile file(FileIn(folder.Path(), "a"), kReplaced);
        if (i % 2 == 0)
            file.Commit();
    }
    EXPECT_EQ(CountDescriptors(), before);
}

TEST(AtomicFileTest, AFullDiskIsReportedAndLeavesNothing) {
    // Above the size of the files that a build with coverage writes about itself.
    constexpr rlim_t kLimit = rlim_t{4} << 20;
    const Folder folder;
    folder.Write("a.gpx", "as it was");
    folder.Write("in.gpx",
                 cli::Gpx("<wpt lat='1' lon='2'><name>" + std::string(kLimit, 'x') + "</name></wpt>"));
    const cli::Result result = [&] {
        const cli::ResourceLimit limit(RLIMIT_FSIZE, kLimit);
        return RunTool({"convert", "in.gpx", "a.gpx"}, folder.Path());
    }();
    EXPECT_TRUE(cli::Failed(result, "Unable to write the file: a.gpx (File too large)"));
    EXPECT_THAT(folder.Names(), ElementsAre("a.gpx", "in.gpx"));
    EXPECT_EQ(ReadFile(folder.File("a.gpx")), "as it was");
}

struct stat Status(uid_t owner, gid_t group, mode_t mode) {
    struct stat status {};
    status.st_uid = owner;
    status.st_gid = group;
    status.st_mode = S_IFREG | mode;
    return status;
}

TEST(ReplacementModeTest, NeverKeepsMoreThanPermissionsAndLessWhenOwnerOrGroupChange) {
    struct Row {
        mode_t old;
        mode_t same;         ///< owner and group as before
        mode_t otherOwner;   ///< with the usual mode 0644
        mode_t otherGroup;   ///< the same
        mode_t anotherUsual; ///< other owner and group, with the usual mode 0666
    };
    const Row rows[] = {
        {0644, 0644, 0644, 0644, 0644},  {0640, 0640, 0640, 0600, 0600},  {0600, 0600, 0600, 0600, 0600},
        {0400, 0400, 0400, 0400, 0400},  {0666, 0666, 0644, 0644, 0666},  {0660, 0660, 0640, 0600, 0600},
        {0777, 0777, 0644, 0644, 0666},  {0604, 0604, 0604, 0600, 0600},  {0646, 0646, 0644, 0644, 0644},
        {0664, 0664, 0644, 0644, 0644},  {04755, 0755, 0644, 0644, 0644}, {02755, 0755, 0644, 0644, 0644},
        {06755, 0755, 0644, 0644, 0644}, {01666, 0666, 0644, 0644, 0666}, {07777, 0777, 0644, 0644, 0666},
        {0000, 0000, 0000, 0000, 0000},
    };
    for (const Row& row : rows) {
        const struct stat old = Status(1, 2, row.old);
        EXPECT_EQ(ReplacementMode(old, Status(1, 2, 0600), 0644), row.same) << std::oct << row.old;
        EXPECT_EQ(ReplacementMode(old, Status(9, 2, 0600), 0644), row.otherOwner) << std::oct << row.old;
        EXPECT_EQ(ReplacementMode(old, Status(1, 9, 0600), 0644), row.otherGroup) << std::oct << row.old;
        EXPECT_EQ(ReplacementMode(old, Status(9, 9, 0600), 0666), row.anotherUsual) << std::oct << row.old;
    }
}

TEST(ReplacementModeTest, GrantsNoPermissionThatTheOldFileDidNot) {
    for (mode_t mode = 0; mode <= 07777; ++mode)
        for (const uid_t owner : {1U, 9U})
            for (const gid_t group : {2U, 9U}) {
                const mode_t kept = ReplacementMode(Status(1, 2, mode), Status(owner, group, 0600), 0666);
                EXPECT_EQ(kept & ~mode, 0U) << std::oct << mode;
                EXPECT_EQ(kept & ~0777U, 0U) << std::oct << mode;
            }
}

/// The tool replaces "old.gpx" in each way that it can.
class ReplacedByToolTest : public testing::TestWithParam<std::vector<std::string>> {
protected:
    static constexpr uid_t kOtherUser = 54321;

    ReplacedByToolTest() : mask(022) {
        folder.Write("in.gpx", cli::Gpx(""));
        folder.Write("a.zip", testing_support::BuildZip({{.name = "old.gpx", .content = cli::Gpx("")},
                                                         {.name = "new.gpx", .content = cli::Gpx("")}}));
        folder.Write("old.gpx", "as it was");
    }

    void Replace() const {
        ASSERT_EQ(RunTool(GetParam(), folder.Path()).status, 0);
        EXPECT_NE(ReadFile(folder.File("old.gpx")), "as it was");
    }

    const Umask mask;
    const Folder folder;
};

INSTANTIATE_TEST_SUITE_P(Ways, ReplacedByToolTest,
                         testing::Values(std::vector<std::string>{"convert", "in.gpx", "old.gpx"},
                                         std::vector<std::string>{"convert", "a.zip", "."},
                                         std::vector<std::string>{"zip", "extract", "--overwrite", "a.zip",
                                                                  "."}));

TEST_P(ReplacedByToolTest, TheModeIsKeptWithoutItsSpecialBits) {
    for (const auto& [before, after] : std::vector<std::pair<mode_t, mode_t>>{
             {06755, 0755}, {04711, 0711}, {02750, 0750}, {01644, 0644}, {0666, 0666}, {0600, 0600}}) {
        ASSERT_EQ(::chmod(folder.File("old.gpx").c_str(), before), 0);
        ASSERT_EQ(ModeOf(folder.File("old.gpx")), before);
        Replace();
        EXPECT_EQ(ModeOf(folder.File("old.gpx")), after);
        folder.Write("old.gpx", "as it was");
    }
}

TEST_P(ReplacedByToolTest, AFileOfAnotherUserKeepsNoSpecialBits) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give a file to somebody else";
    for (const auto& [before, after] : std::vector<std::pair<mode_t, mode_t>>{
             {06755, 0644}, {04777, 0644}, {02770, 0600}, {0666, 0644}, {0640, 0600}, {0600, 0600}}) {
        folder.Write("old.gpx", "as it was");
        const std::string path = folder.File("old.gpx");
        ASSERT_EQ(::chown(path.c_str(), kOtherUser, kOtherUser), 0);
        ASSERT_EQ(::chmod(path.c_str(), before), 0);
        Replace();
        EXPECT_EQ(StatusOf(path).st_uid, ::geteuid());
        EXPECT_EQ(ModeOf(path), after) << std::oct << before;
        fs::remove(path);
    }
}

TEST_P(ReplacedByToolTest, AnotherNameOfTheOldFileKeepsContentAndMode) {
    fs::create_hard_link(folder.File("old.gpx"), folder.File("other-name"));
    ASSERT_EQ(::chmod(folder.File("old.gpx").c_str(), 04755), 0);
    Replace();
    EXPECT_EQ(ReadFile(folder.File("other-name")), "as it was");
    EXPECT_EQ(ModeOf(folder.File("other-name")), 04755U);
    EXPECT_EQ(ModeOf(folder.File("old.gpx")), 0755U);
}

} // namespace
