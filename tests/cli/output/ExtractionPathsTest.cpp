// SPDX-License-Identifier: MIT
#include <vexagpx/output/AtomicFile.h>
#include <vexagpx/output/ExtractionPaths.h>

#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <filesystem>

namespace {

namespace fs = std::filesystem;

TEST(ExtractionPathsTest, TheFolderIsFollowedOnceAndKeptWhenALinkTakesItsPlace) {
    const cli::Folder folder;
    folder.Write("a.zip", testing_support::BuildZip({{.name = "first"}, {.name = "sub/second"}}));
    fs::create_directory(folder.File("real"));
    fs::create_directory(folder.File("elsewhere"));
    fs::create_directory_symlink("real", folder.File("out"));
    const vexagpx::InputFile file(folder.File("a.zip"));
    vexagpx::Archive archive(file, {});
    vexagpx::ExtractionPaths paths(folder.File("out"));
    while (archive.Next()) {
        vexagpx::AtomicFile(paths.FileFor(archive), vexagpx::AtomicFile::Existing::kKept).Commit();
        fs::remove(folder.File("out"));
        fs::create_directory_symlink("elsewhere", folder.File("out"));
    }
    EXPECT_THAT(folder.Tree(), testing::ElementsAre("a.zip", "elsewhere/", "out", "real/", "real/first",
                                                    "real/sub/", "real/sub/second"));
}

} // namespace
