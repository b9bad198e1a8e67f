// SPDX-License-Identifier: MIT
#include <vexagpx/process/TemporaryFolder.h>

#include "support/Tool.h"

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

using cli::Folder;
using testing::ElementsAre;
using testing::IsEmpty;
using vexagpx::TemporaryFolder;

namespace fs = std::filesystem;

namespace {

class TemporaryFolderTest : public testing::Test {
protected:
    TemporaryFolderTest() {
        if (const char* const before = std::getenv("TMPDIR"))
            before_ = before;
        ::setenv("TMPDIR", place.Path().c_str(), 1);
    }
    ~TemporaryFolderTest() override {
        if (before_)
            ::setenv("TMPDIR", before_->c_str(), 1);
        else
            ::unsetenv("TMPDIR");
    }

    const Folder place;

private:
    std::optional<std::string> before_;
};

TEST_F(TemporaryFolderTest, IsRemovedWithItsFile) {
    {
        const TemporaryFolder folder("walk.gpx");
        EXPECT_THAT(folder.FilePath(), testing::StartsWith(place.Path() + "/vexagpx-"));
        EXPECT_THAT(folder.FilePath(), testing::EndsWith("/walk.gpx"));
        place.Write(folder.FilePath().substr(place.Path().size() + 1), "x");
        EXPECT_EQ(place.Tree().size(), 2U);
    }
    EXPECT_THAT(place.Names(), IsEmpty());
}

TEST_F(TemporaryFolderTest, IsRemovedWithoutItsFileToo) {
    static_cast<void>(TemporaryFolder("walk.gpx"));
    EXPECT_THAT(place.Names(), IsEmpty());
}

TEST_F(TemporaryFolderTest, RemovesItsOwnFileAndNotAnotherThatIsNowAtItsPath) {
    const Folder elsewhere;
    elsewhere.Write("walk.gpx", "a stranger's");
    {
        const TemporaryFolder folder("walk.gpx");
        const fs::path path = fs::path(folder.FilePath()).parent_path();
        place.Write("ours", "");
        fs::rename(path, place.File("moved"));
        fs::rename(place.File("ours"), place.File("moved/walk.gpx"));
        fs::create_directory_symlink(elsewhere.Path(), path);
    }
    EXPECT_THAT(elsewhere.Names(), ElementsAre("walk.gpx"));
    EXPECT_FALSE(fs::exists(place.File("moved/walk.gpx")));
}

TEST_F(TemporaryFolderTest, ANameThatIsTooLongLeavesNothing) {
    EXPECT_THROW(TemporaryFolder(std::string(256, 'n')), std::system_error);
    EXPECT_THAT(place.Names(), IsEmpty());
}

TEST_F(TemporaryFolderTest, AMissingTMPDIRIsReported) {
    ::setenv("TMPDIR", place.File("missing").c_str(), 1);
    try {
        TemporaryFolder folder("walk.gpx");
        FAIL() << folder.FilePath();
    } catch (const std::system_error& error) {
        EXPECT_STREQ(error.what(), "Unable to create a temporary folder: No such file or directory");
    }
}

} // namespace
