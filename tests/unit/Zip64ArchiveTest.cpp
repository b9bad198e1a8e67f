// SPDX-License-Identifier: MIT

// Archives with values in zip64 form, whole and damaged, through the reader.

#include <vexaTransferLib/ZIPFileReader.h>
#include <vexaTransferLib/zip/Zip64Archive.h>

#include "support/ZipBuilder.h"
#include "support/ZipFiles.h"

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <unistd.h>

namespace vexaTransferLib {
namespace {

using namespace testing_support;
using namespace ::testing_support;

constexpr char kNotOpened[] = "Could not open file at the current position within the zip file.";
constexpr char kCrcError[] = "Encountered CRC error in current file.";
constexpr char kNotClosed[] = "Could not close file at the current position within the zip file.";
constexpr std::size_t kMostBytes = 100000;

std::vector<ZipEntry> TwoEntries() {
    return {{.name = "a.txt", .content = Lines(40), .zip64 = Zip64Extra::kBoth},
            {.name = "b.txt", .content = "some words", .method = kZipStored, .zip64 = Zip64Extra::kBoth}};
}

std::string SmallArchive() {
    return BuildZip(TwoEntries(), {.comment = "c", .stub = "stub", .zip64 = true});
}

struct Content {
    std::string failure; ///< of the archive
    std::vector<std::pair<std::string, EntryRead>> entries;
};

Content ReadAll(const icu::UnicodeString& path) {
    Content content;
    try {
        ZipFileReader reader(path);
        for (bool found = reader.GoToFirstFile(); found; found = reader.GoToNextFile()) {
            std::string name;
            reader.GetCurrentFileName().toUTF8String(name);
            content.entries.emplace_back(name, ReadEntry(reader, kMostBytes));
        }
    } catch (const dbc::precondition_error& error) {
        content.failure = error.what();
    }
    return content;
}

Content ReadArchive(const std::string& bytes) {
    const ArchiveFile file(bytes);
    return ReadAll(file.Path());
}

EntryRead ReadOnly(const ZipEntry& entry) {
    const Content content = ReadArchive(BuildZip({entry}, {.zip64 = true}));
    EXPECT_EQ(content.entries.size(), 1U) << content.failure;
    return content.entries.empty() ? EntryRead{} : content.entries[0].second;
}

bool IsZip64(const std::string& bytes) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    static int number = 0;
    const std::string path =
        folder / ("zip64-" + std::to_string(::getpid()) + "-" + std::to_string(++number));
    WriteBytes(path, bytes);
    const bool isZip64 = zip::Zip64Archive::Open(path) != nullptr;
    std::filesystem::remove(path);
    return isZip64;
}

TEST(Zip64ArchiveTest, OnlyArchivesWithZip64ValuesAreReadHere) {
    EXPECT_TRUE(IsZip64(SmallArchive()));
    EXPECT_TRUE(IsZip64(BuildZip({{.name = "a"}}, {.zip64 = true})));
    EXPECT_TRUE(IsZip64(BuildZip(TwoEntries())));
    EXPECT_FALSE(IsZip64(BuildZip({{.name = "a", .zip64 = Zip64Extra::kLocal}})));
    EXPECT_FALSE(IsZip64(BuildZip({{.name = "a"}, {.name = "b"}}, {.comment = "PK\6\7 of no archive"})));
    EXPECT_FALSE(IsZip64(BuildZip({})));
    EXPECT_FALSE(IsZip64(""));
    EXPECT_FALSE(IsZip64("PK\5\6"));
    EXPECT_FALSE(zip::Zip64Archive::Open("/nonexistent"));
}

TEST(Zip64ArchiveTest, AnEmptyArchiveHasNoEntries) {
    const ArchiveFile file(BuildZip({}, {.zip64 = true}));
    ZipFileReader reader(file.Path());
    EXPECT_EQ(reader.GetFileCount(), 0U);
    EXPECT_FALSE(reader.GoToFirstFile());
    EXPECT_FALSE(reader.GoToNextFile());
}

TEST(Zip64ArchiveTest, FalseStatementsHaveTheMessagesOfOtherArchives) {
    const std::string text = Lines(40);
    ZipEntry good = {.name = "a", .content = text, .zip64 = Zip64Extra::kBoth};
    EXPECT_EQ(ReadOnly(good).bytes, text);
    const auto failureWith = [&good](const std::function<void(ZipEntry&)>& change) {
        ZipEntry entry = good;
        change(entry);
        return ReadOnly(entry).failure;
    };
    static constexpr std::uint64_t kHuge = std::uint64_t{1} << 62;
    EXPECT_EQ(failureWith([](ZipEntry& e) { e.crc = 1; }), kCrcError);
    EXPECT_EQ(failureWith([](ZipEntry& e) { e.compressedSize = kHuge; }), kNotOpened);
    EXPECT_EQ(failureWith([](ZipEntry& e) { e.compressedSize = 0xFFFFFFFFFFFFFFFF; }), kNotOpened);
    EXPECT_EQ(failureWith([](ZipEntry& e) { e.offset = kHuge; }), kNotOpened);
    EXPECT_EQ(failureWith([](ZipEntry& e) { e.offset = 1; }), kNotOpened);
    EXPECT_EQ(failureWith([](ZipEntry& e) { e.localName = "other"; }), kNotOpened);
    EXPECT_EQ(failureWith([](ZipEntry& e) { e.flags = kZipEncryptedFlag; }), kNotOpened);
    EXPECT_EQ(failureWith([](ZipEntry& e) { e.method = 12, e.packed = "x"; }), kNotOpened);
    EXPECT_EQ(failureWith([&](ZipEntry& e) { e.size = text.size() + 1; }), kNotClosed);
    EXPECT_EQ(failureWith([&](ZipEntry& e) { e.size = kHuge; }), kNotClosed);
    EXPECT_EQ(failureWith([&](ZipEntry& e) { e.size = text.size() - 1; }), kCrcError);
    EXPECT_EQ(ReadOnly({.name = "a", .content = text, .zip64 = Zip64Extra::kBoth, .packed = "\xFF"}).end, -3);
    EXPECT_EQ(ReadOnly({.name = "a",
                        .content = text,
                        .zip64 = Zip64Extra::kBoth,
                        .packed = Deflated(text).substr(0, Deflated(text).size() - 3)})
                  .end,
              -5);
}

TEST(Zip64ArchiveTest, EntriesMayClaimTheSameBytes) {
    std::vector<ZipEntry> entries(2, {.name = "a", .content = "0123456789", .zip64 = Zip64Extra::kBoth});
    entries[1].offset = 0;
    const ArchiveFile file(BuildZip(entries, {.zip64 = true}));
    ZipFileReader reader(file.Path());
    const ZipEntryRange first = reader.GetCurrentFileRange();
    EXPECT_TRUE(reader.GoToNextFile());
    const ZipEntryRange second = reader.GetCurrentFileRange();
    EXPECT_EQ(first.begin, second.begin);
    EXPECT_EQ(first.end, second.end);
}

TEST(Zip64ArchiveTest, EveryTruncationIsRefused) {
    const std::string archive = SmallArchive();
    ASSERT_EQ(ReadArchive(archive).entries.size(), 2U);
    ArchiveFile file("");
    for (std::size_t size = 0; size < archive.size(); ++size) {
        file.Write(archive.substr(0, size));
        const Content content = ReadAll(file.Path());
        EXPECT_TRUE(!content.failure.empty() || content.entries.empty() ||
                    content.entries[0].second.IsFlagged())
            << size;
    }
}

TEST(Zip64ArchiveTest, EveryChangedByteIsReportedOrChangesNoContent) {
    const std::string archive = SmallArchive();
    std::map<std::string, std::string> contents;
    for (const ZipEntry& entry : TwoEntries())
        contents[entry.name] = entry.content;
    ArchiveFile file("");
    for (std::size_t at = 0; at < archive.size(); ++at)
        for (const int flip : {0x01, 0x80, 0xFF}) {
            std::string changed = archive;
            changed[at] = static_cast<char>(changed[at] ^ flip);
            file.Write(changed);
            for (const auto& [name, read] : ReadAll(file.Path()).entries)
                if (!read.IsFlagged() && contents.contains(name)) {
                    EXPECT_EQ(read.bytes, contents[name]) << at << " " << flip;
                }
        }
}

TEST(Zip64ArchiveTest, ManyMarksInACommentCostLittle) {
    std::string comment;
    while (comment.size() + 42 <= 65535) {
        const std::size_t rest = 65535 - comment.size() - 42;
        comment += "PK\6\7" + std::string(16, '\0') + "PK\5\6" + std::string(16, '\0');
        comment += static_cast<char>(rest & 0xFF);
        comment += static_cast<char>(rest >> 8);
    }
    comment.resize(65535, 'x');
    const Content content = ReadArchive(BuildZip(TwoEntries(), {.comment = comment, .zip64 = true}));
    ASSERT_EQ(content.entries.size(), 2U) << content.failure;
    EXPECT_EQ(content.entries[1].second.bytes, "some words");
}

TEST(Zip64ArchiveTest, ArchivesOfPythonAreRead) {
    if (std::system("python3 -c 'import zipfile' 2>/dev/null") != 0)
        GTEST_SKIP() << "python3 is not installed";
    const ArchiveFile file("");
    std::string path;
    file.Path().toUTF8String(path);
    const std::string program = "import sys, zipfile\n"
                                "with zipfile.ZipFile(sys.argv[1], \"w\", zipfile.ZIP_DEFLATED) as z:\n"
                                "    for name in \"ab\":\n"
                                "        with z.open(name, \"w\", force_zip64=True) as entry:\n"
                                "            entry.write(b\"some words of \" + name.encode())\n"
                                "    for i in range(70000):\n"
                                "        z.writestr(str(i), b\"\")\n"
                                "    z.comment = b\"PK\\5\\6\" + b\"c\" * 65531\n";
    ASSERT_EQ(std::system(("python3 -c '" + program + "' '" + path + "'").c_str()), 0);
    ZipFileReader reader(file.Path());
    EXPECT_EQ(reader.GetFileCount(), 70002U);
    EXPECT_EQ(ReadEntry(reader).bytes, "some words of a");
    EXPECT_TRUE(reader.GoToNextFile());
    EXPECT_EQ(ReadEntry(reader).bytes, "some words of b");
    std::size_t walked = 2;
    while (reader.GoToNextFile())
        ++walked;
    EXPECT_EQ(walked, 70002U);
}

} // namespace
} // namespace vexaTransferLib
