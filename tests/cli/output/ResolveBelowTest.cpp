// SPDX-License-Identifier: MIT
#include <vexagpx/output/ResolveBelow.h>

#include <vexagpx/output/AtomicFile.h>

#include "support/ResourceLimit.h"
#include "support/Tool.h"

#include <climits>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

using namespace vexagpx;

using cli::Folder;
using testing::ElementsAre;
using testing::IsEmpty;

using Parts = std::vector<std::string>;

FileInFolder Find(const Folder& folder, const Parts& parts) {
    return ResolveBelow(OpenFolder(folder.Path()), "shown", parts);
}

void Write(FileInFolder place, std::string_view bytes) {
    AtomicFile file(std::move(place), AtomicFile::Existing::kReplaced);
    file.Write(bytes);
    file.Commit();
}

TEST(ResolveBelowTest, MakesTheFoldersOnTheWayAndEntersThem) {
    const Folder folder;
    FileInFolder place = Find(folder, {"a", "b", "c.gpx"});
    EXPECT_EQ(place.name, "c.gpx");
    EXPECT_EQ(place.path, "shown/a/b/c.gpx");
    EXPECT_THAT(folder.Tree(), ElementsAre("a/", "a/b/"));
    Write(std::move(place), "x");
    Write(Find(folder, {"a", "d.gpx"}), "x");
    EXPECT_THAT(folder.Tree(), ElementsAre("a/", "a/b/", "a/b/c.gpx", "a/d.gpx"));
}

TEST(ResolveBelowTest, AnEmptyLastPartMeansAFolder) {
    const Folder folder;
    const FileInFolder place = Find(folder, {"a", ""});
    EXPECT_EQ(place.name, "");
    EXPECT_EQ(place.path, "shown/a");
    EXPECT_THAT(folder.Tree(), ElementsAre("a/"));
    EXPECT_EQ(Find(folder, {""}).path, "shown");
}

TEST(ResolveBelowTest, LinksAndWhatIsNoFolderOrFileAreRefusedWithTheirPath) {
    const Folder folder;
    const Folder elsewhere;
    folder.Write("file", "");
    fs::create_directories(folder.File("sub/deep"));
    ASSERT_EQ(::mkfifo(folder.File("pipe").c_str(), 0600), 0);
    fs::create_directory_symlink(elsewhere.Path(), folder.File("link"));
    fs::create_symlink("missing", folder.File("dangling"));
    fs::create_directory_symlink(elsewhere.Path(), folder.File("sub/link"));
    const std::vector<std::pair<Parts, std::string>> rows = {
        {{"link", "x"}, "shown/link is a link"},
        {{"link", ""}, "shown/link is a link"},
        {{"link"}, "shown/link is a link"},
        {{"dangling", "x"}, "shown/dangling is a link"},
        {{"dangling"}, "shown/dangling is a link"},
        {{"sub", "link", "x"}, "shown/sub/link is a link"},
        {{"file", "x"}, "shown/file is no folder"},
        {{"pipe", "x"}, "shown/pipe is no folder"},
        {{"pipe"}, "shown/pipe is no file"},
        {{"sub"}, "shown/sub is no file"},
        {{std::string(256, 'n'), "x"}, "shown/" + std::string(256, 'n') + ": File name too long"},
        {{std::string(256, 'n')}, "shown/" + std::string(256, 'n') + ": File name too long"},
    };
    for (const auto& [parts, reason] : rows) {
        try {
            Find(folder, parts);
            ADD_FAILURE() << reason;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), reason);
        }
    }
    EXPECT_THAT(elsewhere.Names(), IsEmpty());
}

TEST(ResolveBelowTest, ContinuesBelowTheOpenFolderWhenALinkReplacesIt) {
    const Folder folder;
    fs::create_directory(folder.File("out"));
    fs::create_directory(folder.File("elsewhere"));
    const Descriptor out = MakeFolder(folder.File("out"));
    fs::rename(folder.File("out"), folder.File("moved"));
    fs::create_directory_symlink("elsewhere", folder.File("out"));
    Write(ResolveBelow(out, "out", {"sub", "a"}), "x");
    EXPECT_THAT(folder.Tree(), ElementsAre("elsewhere/", "moved/", "moved/sub/", "moved/sub/a", "out"));
}

TEST(ResolveBelowTest, AFolderSwappedForALinkAfterItWasFoundIsNotLeft) {
    const Folder folder;
    fs::create_directory(folder.File("elsewhere"));
    FileInFolder place = Find(folder, {"a", "b", "x"});
    fs::rename(folder.File("a"), folder.File("moved"));
    fs::create_directory_symlink("elsewhere", folder.File("a"));
    fs::create_directory(folder.File("elsewhere/b"));
    Write(std::move(place), "x");
    EXPECT_THAT(folder.Tree(),
                ElementsAre("a", "elsewhere/", "elsewhere/b/", "moved/", "moved/b/", "moved/b/x"));
}

TEST(ResolveBelowTest, AFolderThatMayOnlyBeEnteredIsEnough) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "root may read every folder";
    const Folder folder;
    fs::create_directory(folder.File("out"));
    ASSERT_EQ(::chmod(folder.File("out").c_str(), 0300), 0);
    Write(ResolveBelow(MakeFolder(folder.File("out")), "out", {"a"}), "x");
    ASSERT_EQ(::chmod(folder.File("out").c_str(), 0700), 0);
    EXPECT_THAT(folder.Tree(), ElementsAre("out/", "out/a"));
}

TEST(ResolveBelowTest, ManyFoldersTakeNeitherThatManyDescriptorsNorAPathOfTheirLength) {
    const Folder folder;
    const Descriptor root = OpenFolder(folder.Path());
    constexpr int kDepth = 300;
    const std::string name(20, 'd');
    static_assert(20 * kDepth > PATH_MAX);
    Parts parts(kDepth, name);
    parts.emplace_back("x");
    const cli::ResourceLimit limit(RLIMIT_NOFILE, 32);
    FileInFolder place = ResolveBelow(root, "shown", parts);
    Descriptor deepest = Duplicate(place.folder);
    Write(std::move(place), "deep");
    // A program that removes a folder with its content may not reach that depth.
    EXPECT_EQ(::unlinkat(deepest.Get(), "x", 0), 0);
    for (int i = 0; i < kDepth; ++i) {
        deepest = OpenFolderIn(deepest, "..");
        ASSERT_EQ(::unlinkat(deepest.Get(), name.c_str(), AT_REMOVEDIR), 0);
    }
    EXPECT_THAT(folder.Names(), IsEmpty());
}

} // namespace
