// SPDX-License-Identifier: MIT
#include "support/ZipBuilder.h"
#include "support/ZipFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;
using ::testing_support::BuildZip;
using ::testing_support::kZipStored;

std::string ContentOf(ZipFileReader& reader) {
    std::string all;
    for (bool found = reader.GoToFirstFile(); found; found = reader.GoToNextFile())
        all += ReadEntry(reader).bytes;
    return all;
}

TEST(ZipFileReaderThreadsTest, ThreadsReadOneArchiveEachWithItsReader) {
    constexpr int kThreads = 8;
    constexpr int kRounds = 20;
    const ArchiveFile file(BuildZip({{.name = "short.txt", .content = "some words"},
                                     {.name = "empty.txt"},
                                     {.name = "long.txt", .content = Lines(3000), .method = kZipStored}}));
    const std::string expected = "some words" + Lines(3000);
    std::vector<int> right(kThreads, 0);
    std::vector<std::thread> threads;
    for (int& count : right)
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                ZipFileReader reader(file.Path());
                count += ContentOf(reader) == expected ? 1 : 0;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(right, std::vector<int>(kThreads, kRounds));
}

} // namespace
} // namespace vexaTransferLib
