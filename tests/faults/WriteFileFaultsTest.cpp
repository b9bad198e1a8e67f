// SPDX-License-Identifier: MIT

// Writing to files that cannot be opened, written or closed.

#include <vexaTransferLib/GpxDocument.h>

#include "support/CFiles.h"
#include "support/ContractChecks.h"
#include "support/SampleDocument.h"
#include "support/TestFiles.h"
#include "support/ZipFiles.h"

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr char kSource[] = "LibCore/vexaTransferLib/GpxDocument.cpp";
constexpr char kCreateFailed[] = "Unable to create the GPX file. Target could be write protected or full.";
constexpr char kWriteFailed[] = "Unable to write the GPX file. Target could be write protected or full.";
const GpxVersion k11(1, 1);

class WriteFileFaultsTest : public testing::Test {
protected:
    void Write(const std::filesystem::path& path) { document.WriteToFile(k11, u"App", u"x", AsPath(path)); }
    void WriteWith(CFileFaults& faults, const std::filesystem::path& path) {
        const CFileFaultsScope scope(faults);
        Write(path);
    }
    void ExpectWritten(const std::filesystem::path& path) {
        Write(path);
        EXPECT_EQ(ReadBytes(path), whole);
    }

    const GpxDocument document = FullDocument();
    const std::string whole{document.GetAsByteString(k11, u"App", u"x").buffer.get()};
    const TemporaryFolder folder;
    const std::filesystem::path file = folder / "out.gpx";
};

TEST_F(WriteFileFaultsTest, AFileThatCannotBeOpenedIsLeftAsItWas) {
    for (const int error : {EACCES, EROFS, ENOSPC, EMFILE, ENOMEM, EIO}) {
        WriteBytes(file, "before");
        {
            CFileFaults faults;
            faults.openError = error;
            EXPECT_FAILURE(WriteWith(faults, file), dbc::postcondition_error, kCreateFailed, kSource);
            EXPECT_EQ(faults.closed, 0U);
        }
        EXPECT_EQ(ReadBytes(file), "before");
        ExpectWritten(file);
    }
}

TEST_F(WriteFileFaultsTest, AFileThatIsCutOffIsLeftAsFarAsItGotAndClosed) {
    for (const std::size_t room : {std::size_t{0}, std::size_t{1}, whole.size() / 2, whole.size() - 1}) {
        {
            CFileFaults faults;
            faults.room = room;
            EXPECT_FAILURE(WriteWith(faults, file), dbc::postcondition_error, kWriteFailed, kSource);
            EXPECT_EQ(faults.opened, 1U);
            EXPECT_EQ(faults.closed, 1U);
        }
        EXPECT_EQ(ReadBytes(file), whole.substr(0, room));
        ExpectWritten(file);
    }
}

TEST_F(WriteFileFaultsTest, RoomForEveryByteIsEnough) {
    CFileFaults faults;
    faults.room = whole.size();
    WriteWith(faults, file);
    EXPECT_EQ(faults.room, 0U);
    EXPECT_EQ(faults.closed, 1U);
    EXPECT_EQ(ReadBytes(file), whole);
}

// A network file system may report a full disk only when the file is closed.
TEST_F(WriteFileFaultsTest, AFileThatDoesNotCloseWellIsReported) {
    {
        CFileFaults faults;
        faults.failsToClose = true;
        EXPECT_FAILURE(WriteWith(faults, file), dbc::postcondition_error, kWriteFailed, kSource);
        EXPECT_EQ(faults.closed, 1U) << "never closed twice";
    }
    ExpectWritten(file);
}

TEST_F(WriteFileFaultsTest, AFullDiskIsReportedEvenWhereTheFileCannotBeUnbuffered) {
    const std::filesystem::path full = "/dev/full";
    if (!std::filesystem::exists(full))
        GTEST_SKIP() << "this machine has no " << full;
    CFileFaults faults;
    faults.failsToUnbuffer = true;
    EXPECT_FAILURE(WriteWith(faults, full), dbc::postcondition_error, kWriteFailed, kSource);
    ASSERT_LT(GpxDocument().GetAsByteString(k11, u"App", u"x").length, 4096U) << "must fit a buffer";
    const auto writeSmall = [&] {
        const CFileFaultsScope scope(faults);
        GpxDocument().WriteToFile(k11, u"App", u"x", AsPath(full));
    };
    EXPECT_FAILURE(writeSmall(), dbc::postcondition_error, kWriteFailed, kSource);
    EXPECT_EQ(faults.closed, 2U);
    WriteWith(faults, file);
    EXPECT_EQ(ReadBytes(file), whole);
}

TEST_F(WriteFileFaultsTest, AProtectedTargetIsLeftAsItWas) {
    if (geteuid() == 0)
        GTEST_SKIP() << "root may write every file";
    WriteBytes(file, "before");
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    EXPECT_FAILURE(Write(file), dbc::postcondition_error, kCreateFailed, kSource);
    EXPECT_EQ(ReadBytes(file), "before");
    std::filesystem::permissions(folder / "", std::filesystem::perms::owner_exec);
    EXPECT_FAILURE(Write(folder / "new.gpx"), dbc::postcondition_error, kCreateFailed, kSource);
    std::filesystem::permissions(folder / "", std::filesystem::perms::owner_all);
    EXPECT_FALSE(std::filesystem::exists(folder / "new.gpx"));
}

TEST_F(WriteFileFaultsTest, LinksThatLeadNowhereOrInCirclesAreRefused) {
    std::filesystem::create_symlink(folder / "missing/out.gpx", folder / "nowhere.gpx");
    std::filesystem::create_symlink(folder / "circle.gpx", folder / "circle.gpx");
    for (const char* name : {"nowhere.gpx", "circle.gpx"})
        EXPECT_FAILURE(Write(folder / name), dbc::postcondition_error, kCreateFailed, kSource);
}

TEST_F(WriteFileFaultsTest, APipeTakesTheWholeText) {
    const std::filesystem::path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    // The reader is open all the time, so that neither side waits for the other.
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    ASSERT_LT(whole.size(), 65536U) << "must fit a pipe";
    Write(pipe);
    std::string read(whole.size() + 1, '\0');
    const ssize_t count = ::read(reader, read.data(), read.size());
    close(reader);
    EXPECT_EQ(read.substr(0, count > 0 ? static_cast<std::size_t>(count) : 0), whole);
}

// The converter would replace a lone surrogate by U+FFFD.
TEST_F(WriteFileFaultsTest, ANameThatIsNoTextIsRefusedAndNoLookAlikeWritten) {
    icu::UnicodeString name = AsPath(folder / "a");
    name.append(char16_t{0xD800}).append(u".gpx", -1);
    WriteBytes(folder / "a\uFFFD.gpx", "as it was");
    EXPECT_FAILURE(document.WriteToFile(k11, u"App", u"x", name), dbc::postcondition_error, kCreateFailed,
                   kSource);
    EXPECT_EQ(ReadBytes(folder / "a\uFFFD.gpx"), "as it was");
}

} // namespace
} // namespace vexaTransferLib
