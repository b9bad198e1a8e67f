// SPDX-License-Identifier: MIT

// Which bytes of the archive's file an entry claims.

#include <vexaTransferLib/ZIPFileReader.h>

#include "support/ContractChecks.h"
#include "support/ZipFiles.h"

#include "support/ZipBuilder.h"
#include <common/dbc.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;
using namespace ::testing_support;

constexpr char kNotClosed[] = "Could not close file at the current position within the zip file.";
constexpr int kNoEntryOpen = -102;

/// The ranges of all entries.
std::vector<std::pair<std::uint64_t, std::uint64_t>> Ranges(const ArchiveFile& file) {
    ZipFileReader reader(file.Path());
    std::vector<std::pair<std::uint64_t, std::uint64_t>> ranges;
    for (bool found = reader.GoToFirstFile(); found; found = reader.GoToNextFile()) {
        const ZipEntryRange range = reader.GetCurrentFileRange();
        ranges.emplace_back(range.begin, range.end);
    }
    return ranges;
}

TEST(ZipFileReaderRangeTest, AnEntryClaimsItsLocalHeaderAndItsPackedBytes) {
    const std::string stub = "a program that unpacks itself";
    const std::pair<ZipEntry, ZipOptions> layouts[] = {
        {{}, {}},
        {{.method = kZipStored}, {}},
        {{.descriptor = ZipDescriptor::kSigned}, {}},
        {{.localExtra = std::string("XX\4\0extr", 8), .centralExtra = std::string("YY\1\0e", 5)}, {}},
        {{.zip64 = Zip64Extra::kLocal}, {}},
        {{.comment = "of the entry"}, {.comment = "of the archive"}},
        {{}, {.stub = stub}},
        {{}, {.stub = stub, .offsetsCountStub = false}},
        {{}, {.stub = stub, .zip64 = true}},
        {{.zip64 = Zip64Extra::kBoth}, {}},
        {{.zip64 = Zip64Extra::kBoth}, {.stub = stub, .offsetsCountStub = false, .zip64 = true}},
    };
    const std::string contents[] = {"some words", "", Lines(3000)};
    const std::string names[] = {"first.txt", "folder/", "a longer name.gpx"};
    for (const auto& [layout, options] : layouts) {
        std::vector<ZipEntry> entries(3, layout);
        for (std::size_t i = 0; i < entries.size(); ++i) {
            entries[i].name = names[i];
            entries[i].content = contents[i];
        }
        const std::string archive = BuildZip(entries, options);
        std::vector<std::pair<std::uint64_t, std::uint64_t>> expected;
        std::size_t header = 0;
        for (const ZipEntry& entry : entries) {
            header = archive.find("PK\3\4", header);
            const std::size_t packed =
                entry.method == kZipStored ? entry.content.size() : Deflated(entry.content).size();
            expected.emplace_back(header, PackedBytesAt(archive, entry.name) + packed);
            header = static_cast<std::size_t>(expected.back().second);
        }
        EXPECT_EQ(Ranges(ArchiveFile(archive)), expected) << &layout - &layouts[0].first;
    }
}

TEST(ZipFileReaderRangeTest, EntriesMayClaimTheSameBytesAndBytesThatAreNotThere) {
    const ZipEntry first = {.name = "a", .content = "0123456789", .method = kZipStored};
    ZipEntry same = first;
    same.offset = 0;
    ZipEntry large = {.name = "b", .content = "x", .compressedSize = 0xFFFFFFFE};
    const std::string archive = BuildZip({first, same, large});
    const std::uint64_t second = 31 + 10;
    const std::uint64_t third = 2 * second;
    using Range = std::pair<std::uint64_t, std::uint64_t>;
    EXPECT_EQ(Ranges(ArchiveFile(archive)),
              (std::vector<Range>{{0, second}, {0, second}, {third, third + 31 + 0xFFFFFFFE}}));
}

TEST(ZipFileReaderRangeTest, AskingClosesTheOpenEntryAndKeepsThePosition) {
    const ArchiveFile file(BuildZip({{.name = "a"}, {.name = "b", .content = "some words"}, {.name = "c"}}));
    ZipFileReader reader(file.Path());
    EXPECT_TRUE(reader.GoToNextFile());
    reader.OpenCurrentFile();
    static_cast<void>(reader.GetCurrentFileRange());
    char byte = 'x';
    EXPECT_EQ(reader.ReadFromCurrentFile(&byte, 1), kNoEntryOpen);
    EXPECT_FAILURE(reader.CloseCurrentFile(), dbc::precondition_error, kNotClosed, "");
    const EntryRead read = ReadEntry(reader);
    EXPECT_FALSE(read.IsFlagged());
    EXPECT_EQ(read.bytes, "some words");
    EXPECT_TRUE(reader.GoToNextFile());
    EXPECT_FALSE(reader.GoToNextFile());
}

} // namespace
} // namespace vexaTransferLib
