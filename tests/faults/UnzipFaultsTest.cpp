// SPDX-License-Identifier: MIT

// Reading an archive while one request for memory, or that request and all later ones, is refused. Each
// request is refused in turn.

#include <vexaTransferLib/ZIPFileReader.h>

#include "support/Attempts.h"
#include "support/Memory.h"
#include "support/TestFiles.h"
#include "support/ZipFiles.h"

#include "support/ZipBuilder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <string_view>

namespace vexaTransferLib {
namespace {

using namespace testing_support;
using namespace ::testing_support;

constexpr int kNoMemory = -4;
constexpr char kNotOpened[] =
    "precondition: Could not open file at the current position within the zip file.";

const std::set<std::string_view> kOutOfMemory = {
    kBadAlloc,
    kNotOpened,
    "precondition: Could not open ZIP for reading.",
    "runtime: Unable to open the converter: utf-8",
    "runtime: Unable to convert the UnicodeString.",
};

const std::string& Archive() {
    static const std::string archive =
        BuildZip({{.name = "an entry whose name has more units than ICU holds.txt", .content = Lines(300)},
                  {.name = "a folder of many units/stored.txt", .content = Lines(20), .method = kZipStored},
                  {.name = "third.txt", .content = Lines(2000)}});
    return archive;
}

/// Reads names and contents, into memory that is never refused, until a read fails. Returns the result of
/// that read, or 0.
int ReadInto(std::string& all, ZipFileReader& reader) {
    std::array<char, 4096> buffer;
    for (bool found = reader.GoToFirstFile(); found; found = reader.GoToNextFile()) {
        const icu::UnicodeString name = reader.GetCurrentFileName();
        {
            const MemoryPause pause;
            all += Utf8(name) + "\n";
        }
        reader.OpenCurrentFile();
        int count = 0;
        while ((count = reader.ReadFromCurrentFile(buffer.data(), buffer.size())) > 0) {
            const MemoryPause pause;
            all.append(buffer.data(), static_cast<std::size_t>(count));
        }
        reader.CloseCurrentFile();
        if (count < 0)
            return count;
    }
    return 0;
}

/// \param lostDescriptors the number of descriptors that minizip leaves open in all: it does not close the
///        file when there is no memory for its handle
template <class Refuse>
void UnzipWithEachRefused(const std::string& what, std::size_t lostDescriptors, Refuse refuse) {
    const ArchiveFile file(Archive(), "an archive whose name has more units than ICU holds.zip");
    const icu::UnicodeString path = file.Path();
    std::string whole;
    {
        ZipFileReader reader(path);
        ASSERT_EQ(ReadInto(whole, reader), 0);
    }
    const std::size_t descriptors = OpenDescriptors();
    const std::size_t calls = ForEachCall([&](std::size_t call) {
        const long blocks = CppMemory::Blocks();
        Attempt attempt;
        {
            std::string all;
            std::unique_ptr<ZipFileReader> reader;
            int read = 0;
            attempt = AttemptWith([&] { return refuse(call); },
                                  [&] {
                                      reader = std::make_unique<ZipFileReader>(path);
                                      read = ReadInto(all, *reader);
                                  });
            EXPECT_TRUE(read == 0 || read == kNoMemory) << read;
            EXPECT_TRUE(attempt.Failure().empty() ? read != 0 || all == whole
                                                  : kOutOfMemory.contains(attempt.Failure()))
                << attempt.Failure() << " after " << all.size() << " bytes";
            EXPECT_TRUE(whole.starts_with(all)) << attempt.Failure();
            if (!reader)
                reader = std::make_unique<ZipFileReader>(path);
            all.clear();
            EXPECT_EQ(ReadInto(all, *reader), 0);
            EXPECT_TRUE(all == whole) << "without a refusal";
        }
        EXPECT_EQ(CppMemory::Blocks(), blocks) << "blocks of memory are lost; " << attempt.Failure();
        return attempt;
    });
    EXPECT_GT(calls, 3U);
    EXPECT_LE(OpenDescriptors(), descriptors + lostDescriptors) << "files stay open";
    Record(what, calls);
}

TEST(UnzipFaultsTest, OneRequestToOperatorNew) {
    UnzipWithEachRefused("new", 0, [](std::size_t call) { return RefusedNew::AtCall(call); });
}

TEST(UnzipFaultsTest, AllFurtherRequestsToOperatorNew) {
    UnzipWithEachRefused("new_on", 0, [](std::size_t call) { return RefusedNew::FromCall(call); });
}

// The requests include those of minizip and zlib.
TEST(UnzipFaultsTest, OneRequestToTheCLibrary) {
#ifndef VEXA_FAULTS_MALLOC
    GTEST_SKIP() << "malloc is the sanitizer's and cannot be replaced";
#endif
    UnzipWithEachRefused("malloc", 1, [](std::size_t call) { return RefusedMalloc::AtCall(call); });
}

TEST(UnzipFaultsTest, AllFurtherRequestsToTheCLibrary) {
#ifndef VEXA_FAULTS_MALLOC
    GTEST_SKIP() << "malloc is the sanitizer's and cannot be replaced";
#endif
    UnzipWithEachRefused("malloc_on", 1, [](std::size_t call) { return RefusedMalloc::FromCall(call); });
}

} // namespace
} // namespace vexaTransferLib
