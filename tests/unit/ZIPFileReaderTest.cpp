// SPDX-License-Identifier: MIT
#include <vexaTransferLib/ZIPFileReader.h>

#include "support/ContractChecks.h"
#include "support/TestFiles.h"
#include "support/ZipFiles.h"

#include "support/ZipBuilder.h"
#include <common/dbc.h>

#include <gtest/gtest.h>

#include <climits>
#include <filesystem>
#include <iterator>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;
using namespace ::testing_support;

constexpr char kNotClosed[] = "Could not close file at the current position within the zip file.";
constexpr int kNoEntryOpen = -102;

static_assert(std::has_virtual_destructor_v<ZipFileReader>);
static_assert(!std::is_default_constructible_v<ZipFileReader>);
static_assert(!std::is_copy_constructible_v<ZipFileReader>);
static_assert(!std::is_copy_assignable_v<ZipFileReader>);
static_assert(!std::is_convertible_v<icu::UnicodeString, ZipFileReader>);

/// The rest of the open entry.
std::string ReadToEnd(ZipFileReader& reader, unsigned int piece = 4096) {
    std::string bytes;
    std::string buffer(piece, '\0');
    int count = 0;
    while ((count = reader.ReadFromCurrentFile(buffer.data(), piece)) > 0)
        bytes.append(buffer, 0, static_cast<std::size_t>(count));
    if (count < 0)
        throw std::runtime_error("reading gave " + std::to_string(count));
    return bytes;
}

std::string ReadTree(ZipFileReader& reader, unsigned int piece = 4096) {
    reader.OpenCurrentFile();
    const std::string bytes = ReadToEnd(reader, piece);
    reader.CloseCurrentFile();
    return bytes;
}

/// The current entry's name, each code unit as the byte of its value.
std::string NameBytes(const ZipFileReader& reader) {
    const icu::UnicodeString name = reader.GetCurrentFileName();
    std::string bytes;
    for (int i = 0; i < name.length(); ++i) {
        EXPECT_LE(name.charAt(i), 0xFF);
        bytes += static_cast<char>(name.charAt(i));
    }
    return bytes;
}

std::vector<ZipEntry> ThreeEntries() {
    return {{.name = "short.txt", .content = "some words"},
            {.name = "empty.txt"},
            {.name = "long.txt", .content = Lines(3000), .method = kZipStored}};
}

TEST(ZipFileReaderTest, WalksTheEntriesInTheirOrder) {
    const ArchiveFile file(BuildZip(ThreeEntries()));
    ZipFileReader reader(file.Path());
    EXPECT_EQ(reader.GetFileCount(), 3u);
    EXPECT_EQ(NameBytes(reader), "short.txt") << "a new reader is at the first entry";
    EXPECT_TRUE(reader.GoToFirstFile());
    EXPECT_EQ(NameBytes(reader), "short.txt");
    EXPECT_TRUE(reader.GoToNextFile());
    EXPECT_EQ(NameBytes(reader), "empty.txt");
    EXPECT_TRUE(reader.GoToNextFile());
    EXPECT_EQ(NameBytes(reader), "long.txt");
    EXPECT_FALSE(reader.GoToNextFile());
    EXPECT_FALSE(reader.GoToNextFile());
    EXPECT_EQ(NameBytes(reader), "long.txt") << "a move that fails at the end keeps the current entry";
    EXPECT_EQ(ReadTree(reader), Lines(3000));
    EXPECT_TRUE(reader.GoToFirstFile());
    EXPECT_EQ(NameBytes(reader), "short.txt");
}

TEST(ZipFileReaderTest, ReadsAFreshReadersFirstEntryWithoutAMove) {
    const ArchiveFile file(BuildZip(ThreeEntries()));
    ZipFileReader reader(file.Path());
    EXPECT_EQ(ReadTree(reader), "some words");
}

struct Layout {
    const char* title;
    ZipEntry entry; // its method, flags and layout, for all entries
    ZipOptions options = {};
};

void PrintTo(const Layout& layout, std::ostream* out) {
    *out << layout.title;
}

class ZipLayoutTest : public testing::TestWithParam<Layout> {};

TEST_P(ZipLayoutTest, ReadsWhatWasPacked) {
    std::vector<ZipEntry> entries = ThreeEntries();
    for (ZipEntry& entry : entries) {
        const ZipEntry named = entry;
        entry = GetParam().entry;
        entry.name = named.name;
        entry.content = named.content;
    }
    const ArchiveFile file(BuildZip(entries, GetParam().options));
    ZipFileReader reader(file.Path());
    EXPECT_EQ(reader.GetFileCount(), entries.size());
    bool found = reader.GoToFirstFile();
    for (const ZipEntry& entry : entries) {
        ASSERT_TRUE(found);
        EXPECT_EQ(NameBytes(reader), entry.name);
        EXPECT_EQ(reader.GetCurrentFileInfo().size, entry.content.size());
        EXPECT_EQ(ReadTree(reader), entry.content);
        found = reader.GoToNextFile();
    }
    EXPECT_FALSE(found);
}

const std::string kStub = "a program that unpacks itself";

const Layout kLayouts[] = {
    {"Stored", {.method = kZipStored}},
    {"Deflated", {}},
    {"SignedDescriptors", {.descriptor = ZipDescriptor::kSigned}},
    {"UnsignedDescriptors", {.descriptor = ZipDescriptor::kUnsigned}},
    {"StoredWithDescriptors", {.method = kZipStored, .descriptor = ZipDescriptor::kSigned}},
    {"Utf8Flag", {.flags = kZipUtf8Flag}},
    {"EntryComments", {.comment = "a comment"}},
    {"ExtraFields", {.localExtra = {"UT\1\0x", 5}, .centralExtra = {"UT\2\0xy", 6}}},
    {"ArchiveComment",
     {},
     {.comment = "Gr\xC3\xBC\xC3\x9F"
                 "e"}},
    {"LongestComment", {}, {.comment = std::string(65513, 'c')}},
    {"StubThatOffsetsCount", {}, {.stub = kStub}},
    {"StubThatOffsetsDoNotCount", {}, {.stub = kStub, .offsetsCountStub = false}},
    {"StubAndComment", {}, {.comment = "a comment", .stub = kStub, .offsetsCountStub = false}},
    {"Zip64EndRecord", {}, {.zip64 = true}},
    {"Zip64EndRecordAndComment", {}, {.comment = "a comment", .zip64 = true}},
    {"Zip64EndRecordAndStub", {}, {.stub = kStub, .zip64 = true}},
    {"Zip64InLocalHeaders", {.zip64 = Zip64Extra::kLocal}},
    {"Zip64InAllHeaders", {.zip64 = Zip64Extra::kBoth}},
    {"Zip64InAllHeadersStored", {.method = kZipStored, .zip64 = Zip64Extra::kBoth}},
    {"Zip64Everywhere", {.zip64 = Zip64Extra::kBoth}, {.zip64 = true}},
    {"Zip64WithDescriptors",
     {.descriptor = ZipDescriptor::kSigned, .zip64 = Zip64Extra::kBoth},
     {.zip64 = true}},
    {"Zip64WithOtherExtraFields",
     {.zip64 = Zip64Extra::kBoth, .localExtra = {"UT\1\0x", 5}, .centralExtra = {"UT\2\0xy", 6}},
     {.zip64 = true}},
    {"Zip64StubThatOffsetsCount", {.zip64 = Zip64Extra::kBoth}, {.stub = kStub}},
    {"Zip64StubThatOffsetsDoNotCount",
     {.zip64 = Zip64Extra::kBoth},
     {.stub = kStub, .offsetsCountStub = false}},
    {"Zip64EndRecordAndStubThatOffsetsDoNotCount",
     {},
     {.stub = kStub, .offsetsCountStub = false, .zip64 = true}},
    {"Zip64LongestComment",
     {.zip64 = Zip64Extra::kBoth},
     {.comment = std::string(65535, 'c'), .zip64 = true}},
    {"Zip64LongestCommentAndPlainEnd", {.zip64 = Zip64Extra::kBoth}, {.comment = std::string(65535, 'c')}},
    {"Zip64CommentWithAnEndMark",
     {.zip64 = Zip64Extra::kBoth},
     {.comment = "PK\5\6" + std::string(100, 'c') + "PK\5\6", .zip64 = true}},
    {"Zip64CommentWithAnArchive",
     {.zip64 = Zip64Extra::kBoth},
     {.comment = BuildZip({{.name = "other"}}) + "x",
      .stub = kStub,
      .offsetsCountStub = false,
      .zip64 = true}},
};

INSTANTIATE_TEST_SUITE_P(Layouts, ZipLayoutTest, testing::ValuesIn(kLayouts),
                         [](const auto& row) { return std::string(row.param.title); });

struct Named {
    std::string stored;
    std::string given;
};

TEST(ZipFileReaderTest, GivesNamesByteForByte) {
    const Named names[] = {
        {"wpt.gpx", "wpt.gpx"},
        {"caches/", "caches/"},
        {"caches/north/one.gpx", "caches/north/one.gpx"},
        {"../../etc/x", "../../etc/x"},
        {"/absolute", "/absolute"},
        {"C:\\back\\slash", "C:\\back\\slash"},
        {"", ""},
        {"Gr\xC3\xB6\xC3\x9F"
         "e \xE6\x97\xA5 \xF0\x9F\x97\xBB",
         "Gr\xC3\xB6\xC3\x9F"
         "e \xE6\x97\xA5 \xF0\x9F\x97\xBB"},
        {"Gro\xE1"
         "er \x9A"
         "mlaut \xAB",
         "Gro\xE1"
         "er \x9A"
         "mlaut \xAB"},
        {"\x01\x7F\x80\xFF", "\x01\x7F\x80\xFF"},
        {{"zero\0byte", 9}, "zero"},
        {std::string(1022, 'n'), std::string(1022, 'n')},
        {std::string(1023, 'n'), std::string(1023, 'n')},
        {std::string(1024, 'n'), std::string(1023, 'n')},
        {std::string(1025, '\xFE'), std::string(1023, '\xFE')},
        {std::string(65535, 'n'), std::string(1023, 'n')},
        {"twice", "twice"},
        {"twice", "twice"},
    };
    std::vector<ZipEntry> entries;
    for (const Named& name : names)
        entries.push_back({.name = name.stored, .content = "of " + name.stored.substr(0, 5)});
    const ArchiveFile file(BuildZip(entries));
    ZipFileReader reader(file.Path());
    bool found = reader.GoToFirstFile();
    for (const Named& name : names) {
        ASSERT_TRUE(found);
        EXPECT_EQ(NameBytes(reader), name.given);
        EXPECT_EQ(reader.GetCurrentFileInfo().nameLength, name.stored.size());
        EXPECT_EQ(ReadTree(reader), "of " + name.stored.substr(0, 5));
        found = reader.GoToNextFile();
    }
    EXPECT_FALSE(found);
}

TEST(ZipFileReaderTest, PiecesOfAnySizeGiveTheSame) {
    for (const std::uint16_t method : {kZipStored, kZipDeflated}) {
        const ArchiveFile file(BuildZip({{.name = "a", .content = Lines(3000), .method = method}}));
        ZipFileReader reader(file.Path());
        for (const unsigned int piece : {1u, 7u, 4096u, 16384u, 16385u, 1u << 20})
            EXPECT_EQ(ReadTree(reader, piece), Lines(3000)) << method << " in pieces of " << piece;
    }
}

TEST(ZipFileReaderTest, AReadFillsTheBufferAndPastTheEndGivesZero) {
    const ArchiveFile file(BuildZip({{.name = "a", .content = "0123456789"}}));
    ZipFileReader reader(file.Path());
    reader.OpenCurrentFile();
    char buffer[] = "xxxxxxxxxxxxxxx";
    EXPECT_EQ(reader.ReadFromCurrentFile(buffer, 0), 0);
    EXPECT_EQ(std::string(buffer), "xxxxxxxxxxxxxxx");
    EXPECT_EQ(reader.ReadFromCurrentFile(buffer, 4), 4);
    EXPECT_EQ(std::string(buffer), "0123xxxxxxxxxxx");
    EXPECT_EQ(reader.ReadFromCurrentFile(buffer, 0), 0);
    EXPECT_EQ(reader.ReadFromCurrentFile(buffer, 8), 6);
    EXPECT_EQ(std::string(buffer), "456789xxxxxxxxx");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(reader.ReadFromCurrentFile(buffer, 8), 0);
    EXPECT_EQ(std::string(buffer), "456789xxxxxxxxx");
    reader.CloseCurrentFile();
}

TEST(ZipFileReaderTest, ASizeAboveIntMaxCountsAsIntMax) {
    for (const std::uint16_t method : {kZipStored, kZipDeflated}) {
        const ArchiveFile file(BuildZip({{.name = "a", .content = "0123456789", .method = method}}));
        ZipFileReader reader(file.Path());
        for (const unsigned int size : {UINT_MAX, static_cast<unsigned int>(INT_MAX) + 1}) {
            char buffer[] = "xxxxxxxxxxxxxxx";
            reader.OpenCurrentFile();
            EXPECT_EQ(reader.ReadFromCurrentFile(buffer, size), 10);
            EXPECT_EQ(std::string(buffer), "0123456789xxxxx");
            EXPECT_EQ(reader.ReadFromCurrentFile(buffer, size), 0);
            reader.CloseCurrentFile();
        }
    }
}

TEST(ZipFileReaderTest, AReadWithoutABufferIsRefusedAndLosesNothing) {
    const ArchiveFile file(BuildZip({{.name = "a", .content = "0123456789"}}));
    ZipFileReader reader(file.Path());
    reader.OpenCurrentFile();
    EXPECT_EQ(reader.ReadFromCurrentFile(nullptr, 4), kNoEntryOpen);
    EXPECT_EQ(reader.ReadFromCurrentFile(nullptr, UINT_MAX), kNoEntryOpen);
    EXPECT_EQ(reader.ReadFromCurrentFile(nullptr, 0), 0);
    EXPECT_EQ(ReadToEnd(reader), "0123456789");
    reader.CloseCurrentFile();
}

TEST(ZipFileReaderTest, OpeningAgainStartsAtTheFirstEntry) {
    const ArchiveFile file(BuildZip(ThreeEntries()));
    ZipFileReader reader(file.Path());
    char buffer[4];
    reader.OpenCurrentFile();
    EXPECT_EQ(reader.ReadFromCurrentFile(buffer, sizeof buffer), 4);
    reader.OpenCurrentFile();
    EXPECT_EQ(ReadToEnd(reader), "some words");
    reader.CloseCurrentFile();
    EXPECT_EQ(ReadTree(reader), "some words");
    EXPECT_FAILURE(reader.CloseCurrentFile(), dbc::precondition_error, kNotClosed, "");
}

TEST(ZipFileReaderTest, AMoveClosesTheOpenEntry) {
    const ArchiveFile file(BuildZip(ThreeEntries()));
    ZipFileReader reader(file.Path());
    char buffer[4];
    const auto readSome = [&] {
        reader.OpenCurrentFile();
        EXPECT_EQ(reader.ReadFromCurrentFile(buffer, sizeof buffer), 4);
    };
    const auto expectNoneOpen = [&] {
        EXPECT_EQ(reader.ReadFromCurrentFile(buffer, sizeof buffer), kNoEntryOpen);
        EXPECT_FAILURE(reader.CloseCurrentFile(), dbc::precondition_error, kNotClosed, "");
    };
    readSome();
    EXPECT_TRUE(reader.GoToNextFile());
    expectNoneOpen();
    EXPECT_EQ(ReadTree(reader), "");
    EXPECT_TRUE(reader.GoToNextFile());
    readSome();
    EXPECT_FALSE(reader.GoToNextFile());
    expectNoneOpen();
    EXPECT_EQ(ReadTree(reader), Lines(3000));
    readSome();
    EXPECT_TRUE(reader.GoToFirstFile());
    expectNoneOpen();
    EXPECT_EQ(ReadTree(reader), "some words");
}

TEST(ZipFileReaderTest, AskingForNameAndInfoDoesNotDisturbTheReading) {
    const ArchiveFile file(BuildZip({{.name = "a", .content = Lines(3000)}, {.name = "b"}}));
    ZipFileReader reader(file.Path());
    reader.OpenCurrentFile();
    std::string content;
    char buffer[1000];
    int count = 0;
    while ((count = reader.ReadFromCurrentFile(buffer, sizeof buffer)) > 0) {
        content.append(buffer, static_cast<std::size_t>(count));
        EXPECT_EQ(NameBytes(reader), "a");
        EXPECT_EQ(reader.GetCurrentFileInfo().size, Lines(3000).size());
        EXPECT_EQ(reader.GetFileCount(), 2u);
    }
    EXPECT_EQ(content, Lines(3000));
    reader.CloseCurrentFile();
}

TEST(ZipFileReaderTest, InfoHasSizesAndLinks) {
    const std::string words(1000, 'w');
    constexpr std::uint32_t kRegularFile = 0100644u << 16;
    constexpr std::uint32_t kFolder = 0040755u << 16;
    constexpr std::uint32_t kFileTypeMask = 0170000u << 16;
    constexpr std::uint32_t kSocket = 0140755u << 16;
    const ArchiveFile file(BuildZip({
        {.name = "stored", .content = words, .method = kZipStored, .externalAttributes = kRegularFile},
        {.name = "deflated", .content = words, .externalAttributes = 0120000},
        {.name = "link", .content = "target", .method = kZipStored, .externalAttributes = kZipSymbolicLink},
        {.name = "folder/", .method = kZipStored, .externalAttributes = kFolder},
        {.name = "socket", .method = kZipStored, .externalAttributes = kSocket},
        {.name = "odd", .method = kZipStored, .externalAttributes = kFileTypeMask},
        {.name = "large", .size = 0xFFFFFFFE, .compressedSize = 0xFFFFFFFD},
    }));
    const ZipEntryInfo expected[] = {
        {1000, 1000, 6, false},
        {1000, Deflated(words).size(), 8, false},
        {6, 6, 4, true},
        {0, 0, 7, false},
        {0, 0, 6, false},
        {0, 0, 3, false},
        {0xFFFFFFFE, 0xFFFFFFFD, 5, false},
    };
    ZipFileReader reader(file.Path());
    for (const ZipEntryInfo& info : expected) {
        SCOPED_TRACE(NameBytes(reader));
        EXPECT_EQ(reader.GetCurrentFileInfo().size, info.size);
        EXPECT_EQ(reader.GetCurrentFileInfo().compressedSize, info.compressedSize);
        EXPECT_EQ(reader.GetCurrentFileInfo().nameLength, info.nameLength);
        EXPECT_EQ(reader.GetCurrentFileInfo().isSymbolicLink, info.isSymbolicLink);
        reader.GoToNextFile();
    }
}

TEST(ZipFileReaderTest, InfoHasTheTimeAsItIsStored) {
    for (const std::uint32_t time : {0U, 0x3A2F52AFU, 0xFFFFFFFFU}) {
        for (const auto zip64 :
             {::testing_support::Zip64Extra::kNone, ::testing_support::Zip64Extra::kBoth}) {
            const ArchiveFile file(BuildZip({{.name = "a", .zip64 = zip64, .dosTime = time}}));
            EXPECT_EQ(ZipFileReader(file.Path()).GetCurrentFileInfo().dosTime, time);
        }
    }
}

TEST(ZipFileReaderTest, InfoHasHowTheEntryIsPacked) {
    constexpr std::uint16_t kStrongEncryption = 0x41;
    struct Packed {
        ZipEntry entry;
        bool isEncrypted;
        bool isNameUtf8;
    };
    const Packed rows[] = {
        {{.name = "stored", .method = kZipStored, .crc = 0}, false, false},
        {{.name = "deflated", .crc = 0x89ABCDEF}, false, false},
        {{.name = "utf8", .flags = kZipUtf8Flag, .crc = 1}, false, true},
        {{.name = "encrypted", .flags = kZipEncryptedFlag, .crc = 0xFFFFFFFF}, true, false},
        {{.name = "strong", .flags = kStrongEncryption | kZipUtf8Flag, .crc = 3}, true, true},
        {{.name = "bzip2", .method = 12, .flags = 0x0400, .packed = "", .crc = 4}, false, false},
        {{.name = "last method", .method = 65535, .flags = 0xFFF7, .packed = "", .crc = 5}, true, true},
    };
    for (const Packed& row : rows) {
        SCOPED_TRACE(row.entry.name);
        const ArchiveFile file(BuildZip({row.entry}));
        const ZipEntryInfo info = ZipFileReader(file.Path()).GetCurrentFileInfo();
        EXPECT_EQ(info.method, row.entry.method);
        EXPECT_EQ(info.flags, row.entry.flags);
        EXPECT_EQ(info.crc, row.entry.crc);
        EXPECT_EQ(info.isEncrypted, row.isEncrypted);
        EXPECT_EQ(info.isNameUtf8, row.isNameUtf8);
    }
}

TEST(ZipFileReaderTest, SizesInZip64FormAreFound) {
    constexpr std::uint64_t kSize = 5'000'000'000;
    constexpr std::uint64_t kCompressedSize = 4'900'000'000;
    const ArchiveFile file(BuildZip(
        {{.name = "large", .zip64 = Zip64Extra::kBoth, .size = kSize, .compressedSize = kCompressedSize}}));
    const ZipFileReader reader(file.Path());
    const ZipEntryInfo info = reader.GetCurrentFileInfo();
    EXPECT_EQ(info.size, kSize);
    EXPECT_EQ(info.compressedSize, kCompressedSize);
}

TEST(ZipFileReaderTest, EntriesWithAndWithoutZip64FormAreReadInOneArchive) {
    for (const bool endRecordToo : {false, true}) {
        std::vector<ZipEntry> entries = ThreeEntries();
        for (ZipEntry& entry : entries)
            entry.zip64 = Zip64Extra::kBoth;
        entries.insert(entries.begin() + 1, {.name = "plain.txt", .content = "a plain entry"});
        const ArchiveFile file(BuildZip(entries, {.zip64 = endRecordToo}));
        ZipFileReader reader(file.Path());
        EXPECT_EQ(reader.GetFileCount(), entries.size());
        for (const ZipEntry& entry : entries) {
            EXPECT_EQ(NameBytes(reader), entry.name);
            EXPECT_EQ(ReadTree(reader), entry.content);
            EXPECT_EQ(reader.GoToNextFile(), &entry != &entries.back());
        }
    }
}

TEST(ZipFileReaderTest, CloseAndTheDestructorLetGoOfTheFile) {
    const ArchiveFile file(BuildZip(ThreeEntries()));
    const std::size_t before = OpenDescriptors();
    {
        ZipFileReader reader(file.Path());
        EXPECT_EQ(OpenDescriptors(), before + 1);
        reader.OpenCurrentFile();
        reader.Close();
        EXPECT_EQ(OpenDescriptors(), before);
    }
    {
        const std::unique_ptr<ZipFileReader> reader = std::make_unique<ZipFileReader>(file.Path());
        reader->OpenCurrentFile();
        EXPECT_EQ(OpenDescriptors(), before + 1);
    }
    EXPECT_EQ(OpenDescriptors(), before);
    { const ZipFileReader none(ArchiveFile(BuildZip({})).Path()); }
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(ZipFileReaderTest, OpensPathsOutsideAscii) {
    const ArchiveFile file(BuildZip(ThreeEntries()),
                           "H\xC3\xBCtte \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x97\xBB.zip");
    ZipFileReader reader(file.Path());
    EXPECT_EQ(ReadTree(reader), "some words");
    const ArchiveFile empty(BuildZip({}), "\xC3\x9C.zip");
    EXPECT_EQ(ZipFileReader(empty.Path()).GetFileCount(), 0u);
}

TEST(ZipFileReaderTest, OpensAFileByTheBytesOfItsPath) {
    const TemporaryFolder folder;
    for (const char* name : {"plain.zip", "H\xC3\xBCtte.zip", "H\xFCtte.zip", "\xFF\xFE", "\xED\xA0\x80",
                             "\xEF\xBF\xBD", "a:b", "%41", "\x01"}) {
        SCOPED_TRACE(testing::PrintToString(name));
        const std::string path = (folder / name).string();
        WriteBytes(path, BuildZip({{.name = "a", .content = name}}));
        ZipFileReader reader = ZipFileReader::OpenFile(path);
        EXPECT_EQ(ReadTree(reader), name);
        WriteBytes(path, BuildZip({}));
        EXPECT_EQ(ZipFileReader::OpenFile(path).GetFileCount(), 0u);
    }
}

TEST(ZipFileReaderTest, ReadersOnOneArchiveAreIndependent) {
    const ArchiveFile file(BuildZip(ThreeEntries()));
    ZipFileReader first(file.Path());
    ZipFileReader second(file.Path());
    first.OpenCurrentFile();
    char buffer[4];
    EXPECT_EQ(first.ReadFromCurrentFile(buffer, sizeof buffer), 4);
    EXPECT_TRUE(second.GoToNextFile());
    EXPECT_TRUE(second.GoToNextFile());
    EXPECT_EQ(ReadTree(second), Lines(3000));
    second.Close();
    EXPECT_EQ(ReadToEnd(first), " words");
    EXPECT_EQ(NameBytes(first), "short.txt");
}

TEST(ZipFileReaderTest, ReadsManyEntries) {
    std::vector<ZipEntry> entries;
    for (int i = 0; i < 200; ++i)
        entries.push_back({.name = "w/" + std::to_string(i), .content = Lines(i)});
    const ArchiveFile file(BuildZip(entries));
    ZipFileReader reader(file.Path());
    EXPECT_EQ(reader.GetFileCount(), 200u);
    bool found = reader.GoToFirstFile();
    for (const ZipEntry& entry : entries) {
        ASSERT_TRUE(found);
        EXPECT_EQ(NameBytes(reader), entry.name);
        EXPECT_EQ(ReadTree(reader), entry.content);
        found = reader.GoToNextFile();
    }
    EXPECT_FALSE(found);
}

struct Stated {
    ZipOptions options;
    unsigned long count;
};

TEST(ZipFileReaderTest, FindsMoreEntriesThanAPlainEndRecordCanState) {
    constexpr std::size_t kEntries = 65536;
    const std::vector<ZipEntry> entries(kEntries, {.name = "n", .method = kZipStored});
    const Stated rows[] = {{{.zip64 = true}, kEntries}, {{.entryCount = 65535}, 65535}};
    for (const Stated& row : rows) {
        const ArchiveFile file(BuildZip(entries, row.options));
        ZipFileReader reader(file.Path());
        EXPECT_EQ(reader.GetFileCount(), row.count);
        std::size_t walked = 0;
        for (bool found = reader.GoToFirstFile(); found; found = reader.GoToNextFile())
            ++walked;
        EXPECT_EQ(walked, kEntries) << "where " << row.count << " are stated";
    }
}

} // namespace
} // namespace vexaTransferLib
