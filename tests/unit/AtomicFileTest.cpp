// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/AtomicFile.h>

#include "support/ChildProcess.h"
#include "support/TestFiles.h"

#include <vexaTransferLib/GpxError.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <string>
#include <thread>

namespace vexaTransferLib::standard {
namespace {

namespace fs = std::filesystem;
using testing_support::CurrentFolder;
using testing_support::InChild;
using testing_support::ReadBytes;
using testing_support::TemporaryFolder;
using testing_support::WriteBytes;

constexpr char kNotCreated[] = "Unable to create the GPX file. Target could be write protected or full.";
constexpr char kNotWritten[] = "Unable to write the GPX file. Target could be write protected or full.";

void Replace(const fs::path& target, const std::string& bytes, bool isAtomic = true) {
    AtomicFile file(target.string(), isAtomic);
    file.Write(bytes);
    file.Commit();
}

std::size_t CountIn(const fs::path& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

unsigned ModeOf(const fs::path& path) {
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777U;
}

// The error of writing to the target: its text and the number of the system's error; empty when there is none.
std::string ErrorOf(const fs::path& target, bool isAtomic = true, const std::string& bytes = "new") {
    try {
        Replace(target, bytes, isAtomic);
    } catch (const GpxWriteError& error) {
        EXPECT_EQ(error.Details().file, target.string());
        return std::string(error.what()) + ' ' + std::to_string(error.Details().systemError);
    }
    return {};
}

class UmaskScope {
public:
    explicit UmaskScope(mode_t mask) : former_(::umask(mask)) {}
    ~UmaskScope() { ::umask(former_); }
    UmaskScope(const UmaskScope&) = delete;
    UmaskScope& operator=(const UmaskScope&) = delete;

private:
    mode_t former_;
};

TEST(AtomicFileTest, AFileIsMadeWithItsBytes) {
    const TemporaryFolder folder;
    for (const bool isAtomic : {true, false}) {
        const fs::path target = folder / (isAtomic ? "a" : "b");
        Replace(target, "some bytes", isAtomic);
        EXPECT_EQ(ReadBytes(target), "some bytes");
    }
    EXPECT_EQ(CountIn(folder / ""), 2U);
}

TEST(AtomicFileTest, ANewFileHasTheModeThatTheMaskLeaves) {
    const TemporaryFolder folder;
    for (const mode_t mask : {mode_t{022}, mode_t{077}, mode_t{0}}) {
        const UmaskScope scope(mask);
        for (const bool isAtomic : {true, false}) {
            const fs::path target = folder / (std::to_string(mask) + (isAtomic ? "a" : "b"));
            Replace(target, "x", isAtomic);
            EXPECT_EQ(ModeOf(target), 0666U & ~mask) << mask;
        }
    }
}

TEST(AtomicFileTest, AFileThatIsReplacedKeepsItsMode) {
    const TemporaryFolder folder;
    const fs::path target = folder / "a";
    for (const unsigned mode : {0600U, 0644U, 0666U, 0755U}) {
        WriteBytes(target, "old");
        ASSERT_EQ(::chmod(target.c_str(), mode), 0);
        for (const bool isAtomic : {true, false}) {
            Replace(target, "new", isAtomic);
            EXPECT_EQ(ModeOf(target), mode);
            EXPECT_EQ(ReadBytes(target), "new");
        }
    }
}

TEST(AtomicFileTest, TheTargetChangesWhenTheFileIsCommitted) {
    const TemporaryFolder folder;
    const fs::path target = folder / "a";
    WriteBytes(target, "old");
    AtomicFile file(target.string(), true);
    file.Write("new");
    EXPECT_EQ(ReadBytes(target), "old");
    EXPECT_EQ(CountIn(folder / ""), 2U);
    file.Commit();
    EXPECT_EQ(ReadBytes(target), "new");
    EXPECT_EQ(CountIn(folder / ""), 1U);
}

TEST(AtomicFileTest, AFileThatIsNotCommittedLeavesTheTargetAndNothingBesideIt) {
    const TemporaryFolder folder;
    WriteBytes(folder / "a", "old");
    for (const char* name : {"a", "b"}) {
        AtomicFile file((folder / name).string(), true);
        file.Write("new");
    }
    EXPECT_EQ(ReadBytes(folder / "a"), "old");
    EXPECT_EQ(CountIn(folder / ""), 1U);
}

TEST(AtomicFileTest, SymbolicLinksAreFollowed) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "in");
    WriteBytes(folder / "in/target", "old");
    fs::create_symlink("in/target", folder / "link");
    fs::create_symlink("link", folder / "second");
    Replace(folder / "second", "new");
    EXPECT_TRUE(fs::is_symlink(folder / "second"));
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_FALSE(fs::is_symlink(folder / "in/target"));
    EXPECT_EQ(ReadBytes(folder / "in/target"), "new");
    EXPECT_EQ(CountIn(folder / "in"), 1U);
}

TEST(AtomicFileTest, ASymbolicLinkToAFileThatIsNotThereMakesIt) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "in");
    fs::create_symlink("in/target", folder / "link");
    fs::create_symlink(folder / "link", folder / "second");
    for (const bool isAtomic : {true, false}) {
        Replace(folder / "second", "new", isAtomic);
        EXPECT_TRUE(fs::is_symlink(folder / "second"));
        EXPECT_TRUE(fs::is_symlink(folder / "link"));
        EXPECT_EQ(ReadBytes(folder / "in/target"), "new");
        fs::remove(folder / "in/target");
    }
}

TEST(AtomicFileTest, SymbolicLinksInARingAreRefused) {
    const TemporaryFolder folder;
    fs::create_symlink("b", folder / "a");
    fs::create_symlink("a", folder / "b");
    for (const bool isAtomic : {true, false})
        EXPECT_EQ(ErrorOf(folder / "a", isAtomic), kNotCreated + (' ' + std::to_string(ELOOP)));
    EXPECT_EQ(CountIn(folder / ""), 2U);
}

TEST(AtomicFileTest, ARelativeNameIsOneOfTheCurrentFolder) {
    const TemporaryFolder folder;
    const CurrentFolder current(folder / "");
    Replace("a", "new");
    EXPECT_EQ(ReadBytes(folder / "a"), "new");
    EXPECT_EQ(CountIn(folder / ""), 1U);
}

TEST(AtomicFileTest, AMissingFolderAndAFolderAsTargetAreRefused) {
    const TemporaryFolder folder;
    for (const bool isAtomic : {true, false}) {
        EXPECT_EQ(ErrorOf(folder / "no/a", isAtomic), kNotCreated + (' ' + std::to_string(ENOENT)));
        EXPECT_EQ(ErrorOf(folder / "", isAtomic), kNotCreated + (' ' + std::to_string(EISDIR)));
    }
    EXPECT_EQ(ErrorOf("", true), kNotCreated + (' ' + std::to_string(ENOENT)));
    EXPECT_EQ(CountIn(folder / ""), 0U);
}

TEST(AtomicFileTest, AWriteProtectedFileIsRefusedAlthoughItsFolderIsNot) {
    const TemporaryFolder folder;
    const fs::path target = folder / "a";
    WriteBytes(target, "old");
    ASSERT_EQ(::chmod((folder / "").c_str(), 0777), 0);
    ASSERT_EQ(::chmod(target.c_str(), 0444), 0);
    constexpr uid_t kNobody = 65534;
    for (const bool isAtomic : {true, false}) {
        const int status = InChild([&] {
            if (::geteuid() == 0 && ::setuid(kNobody) != 0)
                return 2;
            return ErrorOf(target, isAtomic) == kNotCreated + (' ' + std::to_string(EACCES)) ? 0 : 1;
        });
        EXPECT_EQ(status, 0) << isAtomic;
    }
    EXPECT_EQ(ReadBytes(target), "old");
    EXPECT_EQ(CountIn(folder / ""), 1U);
}

TEST(AtomicFileTest, AFullDiskIsReportedAndLeavesTheTarget) {
    const TemporaryFolder folder;
    const fs::path target = folder / "a";
    WriteBytes(target, "old");
    const int status = InChild([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1000, 1000};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0)
            return 2;
        return ErrorOf(target, true, std::string(5000, 'x')) == kNotWritten + (' ' + std::to_string(EFBIG))
                   ? 0
                   : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(ReadBytes(target), "old");
    EXPECT_EQ(CountIn(folder / ""), 1U);
}

TEST(AtomicFileTest, ADeviceIsWrittenDirectly) {
    for (const bool isAtomic : {true, false}) {
        EXPECT_EQ(ErrorOf("/dev/full", isAtomic), kNotWritten + (' ' + std::to_string(ENOSPC)));
        EXPECT_EQ(ErrorOf("/dev/null", isAtomic), "");
    }
}

TEST(AtomicFileTest, APipeIsWrittenDirectly) {
    const TemporaryFolder folder;
    const fs::path target = folder / "pipe";
    ASSERT_EQ(::mkfifo(target.c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { received = ReadBytes(target); });
    Replace(target, std::string(200'000, 'x'));
    reader.join();
    EXPECT_EQ(received, std::string(200'000, 'x'));
    EXPECT_TRUE(fs::is_fifo(target));
    EXPECT_EQ(CountIn(folder / ""), 1U);
}

TEST(AtomicFileTest, AProcessThatIsKilledLeavesTheTargetWhole) {
    const TemporaryFolder folder;
    const fs::path target = folder / "a";
    constexpr int kSteps = 5;
    for (int last = 0; last <= kSteps; ++last) {
        WriteBytes(target, "old");
        const int status = InChild([&] {
            AtomicFile file(target.string(), true);
            for (int step = 0; step < last; ++step)
                file.Write("new");
            if (last == kSteps)
                file.Commit();
            ::raise(SIGKILL);
            return 0;
        });
        ASSERT_TRUE(WIFSIGNALED(status)) << last;
        EXPECT_EQ(ReadBytes(target), last == kSteps ? "newnewnewnewnew" : "old") << last;
    }
}

} // namespace
} // namespace vexaTransferLib::standard
