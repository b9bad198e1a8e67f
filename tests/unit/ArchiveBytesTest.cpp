// SPDX-License-Identifier: MIT
#include <vexaTransferLib/zip/ArchiveBytes.h>

#include "support/ZipFiles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace vexaTransferLib::zip {
namespace {

std::string PathOf(const testing_support::ArchiveFile& file) {
    std::string path;
    return file.Path().toUTF8String(path);
}

TEST(ArchiveBytesTest, NumbersHaveTheLowestByteFirst) {
    const std::string bytes = "x\x01\x02\x03\x04\x05\x06\x07\xF8";
    EXPECT_EQ(Number16(bytes, 1), 0x0201U);
    EXPECT_EQ(Number32(bytes, 1), 0x04030201U);
    EXPECT_EQ(Number64(bytes, 1), 0xF807060504030201U);
}

TEST(ArchiveBytesTest, BytesAreReadAtAnyPlaceAndInAnyOrder) {
    const testing_support::ArchiveFile file("0123456789");
    ArchiveBytes bytes(PathOf(file));
    EXPECT_EQ(bytes.Size(), 10U);
    EXPECT_EQ(bytes.ReadAt(8, std::size_t{5}), "89");
    EXPECT_EQ(bytes.ReadAt(0, std::size_t{3}), "012");
    EXPECT_EQ(bytes.ReadAt(10, std::size_t{1}), "");
    EXPECT_EQ(bytes.ReadAt(std::uint64_t{1} << 63, std::size_t{1}), "");
    EXPECT_EQ(bytes.ReadAt(4, std::size_t{0}), "");
    EXPECT_EQ(bytes.ReadAt(4, std::size_t{1}), "4");
}

TEST(ArchiveBytesTest, AFileThatCannotBeOpenedHasNoBytes) {
    ArchiveBytes bytes("/nonexistent/archive.zip");
    EXPECT_EQ(bytes.Size(), 0U);
    EXPECT_EQ(bytes.ReadAt(0, std::size_t{1}), "");
}

} // namespace
} // namespace vexaTransferLib::zip
