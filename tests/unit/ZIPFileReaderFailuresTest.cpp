// SPDX-License-Identifier: MIT

// What the reader refuses, and how it reads damaged archives.

#include <vexaTransferLib/ZIPFileReader.h>

#include "support/ContractChecks.h"
#include "support/TestFiles.h"
#include "support/ZipFiles.h"

#include "support/ZipBuilder.h"
#include <common/dbc.h>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;
using namespace ::testing_support;

constexpr char kSource[] = "LibCore/vexaTransferLib/ZIPFileReader.cpp";
constexpr char kClosed[] = "Zip file not opened for reading.";
constexpr char kNoFile[] = "No file specified for reading.";
constexpr char kNoArchive[] = "Could not open ZIP for reading.";
constexpr char kNoInfo[] = "Could not obtain file info for current file.";
constexpr char kNotOpened[] = "Could not open file at the current position within the zip file.";
constexpr char kNotClosed[] = "Could not close file at the current position within the zip file.";
constexpr char kCrcError[] = "Encountered CRC error in current file.";
constexpr int kNoEntryOpen = -102;
constexpr int kBadData = -3;
constexpr int kStreamCutOff = -5;
constexpr int kFileError = -1;
constexpr std::size_t kEndRecordSize = 22;

std::vector<ZipEntry> ThreeEntries() {
    return {{.name = "first.txt", .content = "some words, some words"},
            {.name = "folder/second.txt", .content = "stored words", .method = kZipStored},
            {.name = "third.txt", .content = Lines(20)}};
}

TEST(ZipFileReaderFailuresTest, RefusesAnEmptyPathWithAReport) {
    icu::UnicodeString bogus;
    bogus.setToBogus();
    for (const icu::UnicodeString& path : {icu::UnicodeString(), bogus})
        EXPECT_FAILURE(ZipFileReader{path}, dbc::precondition_error, kNoFile, kSource);
    EXPECT_FAILURE(ZipFileReader::OpenFile(""), dbc::precondition_error, kNoFile, kSource);
}

// For these names the system would open another file: one with a shorter name, or one with other characters.
TEST(ZipFileReaderFailuresTest, RefusesAPathThatNoFileCanHaveWithAReport) {
    const ArchiveFile file(BuildZip(ThreeEntries()));
    const ArchiveFile replaced(BuildZip(ThreeEntries()), "\xEF\xBF\xBD.zip");
    icu::UnicodeString lone = replaced.Path();
    lone.findAndReplace(u"\uFFFD", icu::UnicodeString(char16_t{0xD800}));
    const icu::UnicodeString paths[] = {file.Path() + char16_t{0}, file.Path() + char16_t{0} + u"x", lone,
                                        file.Path() + char16_t{0xDC00}, char16_t{0xD83D} + file.Path()};
    for (const icu::UnicodeString& path : paths)
        EXPECT_FAILURE(ZipFileReader{path}, dbc::precondition_error, kNoFile, kSource);
    for (const char* end : {"", "x"})
        EXPECT_FAILURE(ZipFileReader::OpenFile(Utf8(file.Path()) + '\0' + end), dbc::precondition_error,
                       kNoFile, kSource);
}

TEST(ZipFileReaderFailuresTest, AnArchiveWithoutEntriesOpensAndHasNone) {
    const std::string archives[] = {BuildZip({}),
                                    BuildZip({}, {.comment = "nothing in here"}),
                                    BuildZip({}, {.comment = "PK\5\6 in the comment of nothing at all"}),
                                    BuildZip({}, {.stub = "a stub"}),
                                    BuildZip({}, {.stub = "a stub", .offsetsCountStub = false}),
                                    BuildZip({}, {.comment = std::string(300, 'c')}),
                                    BuildZip({}, {.comment = std::string(65535, 'c')}),
                                    BuildZip({}, {.comment = BuildZip({})}),
                                    BuildZip({}, {.comment = BuildZip(ThreeEntries())})};
    for (const std::string& archive : archives) {
        SCOPED_TRACE(testing::PrintToString(archive.substr(0, 100)));
        const ArchiveFile file(archive);
        ZipFileReader reader(file.Path());
        char byte = 'x';
        EXPECT_EQ(reader.GetFileCount(), 0u);
        EXPECT_FALSE(reader.GoToFirstFile());
        EXPECT_FALSE(reader.GoToNextFile());
        EXPECT_FAILURE(reader.GetCurrentFileName(), dbc::precondition_error, kNoInfo, "");
        EXPECT_FAILURE(reader.GetCurrentFileInfo(), dbc::precondition_error, kNoInfo, "");
        EXPECT_FAILURE(reader.GetCurrentFileRange(), dbc::precondition_error, kNotOpened, "");
        EXPECT_FAILURE(reader.OpenCurrentFile(), dbc::precondition_error, kNotOpened, "");
        EXPECT_FAILURE(reader.CloseCurrentFile(), dbc::precondition_error, kNotClosed, "");
        EXPECT_EQ(reader.ReadFromCurrentFile(&byte, 1), kNoEntryOpen);
        EXPECT_EQ(byte, 'x');
        reader.Close();
        EXPECT_FAILURE(reader.GoToFirstFile(), dbc::precondition_error, kClosed, kSource);
    }
}

TEST(ZipFileReaderFailuresTest, AClosedReaderRefusesEveryOperation) {
    const ArchiveFile file(BuildZip(ThreeEntries()));
    ZipFileReader reader(file.Path());
    reader.OpenCurrentFile();
    reader.Close();
    char byte = 'x';
    for (int i = 0; i < 2; ++i) {
        EXPECT_FAILURE(reader.GoToFirstFile(), dbc::precondition_error, kClosed, kSource);
        EXPECT_FAILURE(reader.GoToNextFile(), dbc::precondition_error, kClosed, kSource);
        EXPECT_FAILURE(reader.GetFileCount(), dbc::precondition_error, kClosed, kSource);
        EXPECT_FAILURE(reader.GetCurrentFileName(), dbc::precondition_error, kClosed, kSource);
        EXPECT_FAILURE(reader.GetCurrentFileInfo(), dbc::precondition_error, kClosed, kSource);
        EXPECT_FAILURE(reader.GetCurrentFileRange(), dbc::precondition_error, kClosed, kSource);
        EXPECT_FAILURE(reader.OpenCurrentFile(), dbc::precondition_error, kClosed, kSource);
        EXPECT_FAILURE(reader.ReadFromCurrentFile(&byte, 1), dbc::precondition_error, kClosed, kSource);
        EXPECT_FAILURE(reader.ReadFromCurrentFile(nullptr, 1), dbc::precondition_error, kClosed, kSource);
        EXPECT_FAILURE(reader.CloseCurrentFile(), dbc::precondition_error, kClosed, kSource);
        EXPECT_EQ(CaptureStandardError([&] { reader.Close(); }), "");
    }
    EXPECT_EQ(byte, 'x');
}

TEST(ZipFileReaderFailuresTest, RefusesWhatIsNoArchive) {
    const std::string archive = BuildZip(ThreeEntries());
    const std::string endRecord = BuildZip({});
    const std::string bytes[] = {
        "",
        "P",
        "PK\5\6",
        "this is no archive",
        std::string(kEndRecordSize, '\0'),
        std::string(100000, '\0'),
        archive.substr(0, archive.find("PK\1\2")),
        endRecord.substr(0, 21),
        endRecord + "x",
        BuildZip({}, {.comment = "a comment", .commentLength = 10}),
        BuildZip({}, {.entryCount = 1}),
        BuildZip({}, {.entryCount = 0, .entriesOnDisk = 1}),
        BuildZip({}, {.entryCount = 1, .entriesOnDisk = 0}),
        BuildZip(ThreeEntries(), {.comment = std::string(65514, 'c')}),
        BuildZip(ThreeEntries(), {.comment = std::string(65535, 'c')}),
        BuildZip({}, {.comment = std::string(65535, 'c'), .stub = "a stub"}),
        BuildZip({}, {.comment = std::string(65535, 'c'), .stub = "a stub", .offsetsCountStub = false}),
        BuildZip(ThreeEntries(), {.diskNumber = 1}),
        BuildZip(ThreeEntries(), {.entriesOnDisk = 2}),
        BuildZip(ThreeEntries(), {.directorySize = 100000}),
        BuildZip(ThreeEntries(), {.directoryOffset = 100000}),
    };
    ArchiveFile file("");
    const std::size_t before = OpenDescriptors();
    for (const std::string& content : bytes) {
        SCOPED_TRACE(testing::PrintToString(content.substr(0, 40)) + " of " + std::to_string(content.size()));
        file.Write(content);
        EXPECT_FAILURE(ZipFileReader(file.Path()), dbc::precondition_error, kNoArchive, "");
    }
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(ZipFileReaderFailuresTest, RefusesPathsThatHoldNoReadableFile) {
    const TemporaryFolder folder;
    WriteBytes(folder / "file", "a file");
    const std::filesystem::path paths[] = {
        folder / "",           folder / "missing.zip",         folder / "missing/a",
        folder / "file/a.zip", folder / std::string(300, 'n'), "/dev/null",
        "/proc/self/mem"};
    const std::size_t before = OpenDescriptors();
    for (const std::filesystem::path& path : paths) {
        SCOPED_TRACE(path.string());
        EXPECT_FAILURE(ZipFileReader(AsPath(path)), dbc::precondition_error, kNoArchive, "");
        EXPECT_FAILURE(ZipFileReader::OpenFile(path.string()), dbc::precondition_error, kNoArchive, "");
    }
    EXPECT_EQ(OpenDescriptors(), before);
}

// The pipe has no writer, so that opening it would wait.
TEST(ZipFileReaderFailuresTest, RefusesAPipeWithoutWaitingForIt) {
    const TemporaryFolder folder;
    const std::filesystem::path pipe = folder / "pipe.zip";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FAILURE(ZipFileReader(AsPath(pipe)), dbc::precondition_error, kNoArchive, "");
}

/// Bytes that this process has read from files so far; empty when the system does not count them.
std::optional<std::uint64_t> BytesRead() {
    std::ifstream counters("/proc/self/io");
    std::string name;
    std::uint64_t value = 0;
    while (counters >> name >> value)
        if (name == "rchar:")
            return value;
    return std::nullopt;
}

TEST(ZipFileReaderFailuresTest, OpeningReadsTheEndOfTheFileAndNotAllOfIt) {
    constexpr std::size_t kSize = std::size_t{1} << 25;
    constexpr std::uint64_t kEnough = kSize / 8;
    const ArchiveFile archive(BuildZip(ThreeEntries(), {.stub = std::string(kSize, '\0')}));
    const ArchiveFile none(std::string(kSize, '\0'));
    const std::optional<std::uint64_t> before = BytesRead();
    if (!before)
        GTEST_SKIP() << "the system does not count the bytes that are read";
    { const ZipFileReader reader(archive.Path()); }
    EXPECT_THROW(ZipFileReader(none.Path()), dbc::precondition_error);
    const std::uint64_t read = *BytesRead() - *before;
    EXPECT_GT(read, 22u);
    EXPECT_LT(read, kEnough);
}

TEST(ZipFileReaderFailuresTest, RefusesAFileWithoutThePermissionToReadIt) {
    if (geteuid() == 0)
        GTEST_SKIP() << "root may read every file";
    const TemporaryFolder folder;
    for (const std::string& archive : {BuildZip(ThreeEntries()), BuildZip({})}) {
        const std::filesystem::path path = folder / ("of " + std::to_string(archive.size()));
        WriteBytes(path, archive);
        std::filesystem::permissions(path, std::filesystem::perms::none);
        EXPECT_FAILURE(ZipFileReader(AsPath(path)), dbc::precondition_error, kNoArchive, "");
    }
}

TEST(ZipFileReaderFailuresTest, AnArchiveCutAnywhereIsRefused) {
    const std::string archive = BuildZip(ThreeEntries());
    ArchiveFile file("");
    for (std::size_t length = 0; length < archive.size(); ++length) {
        SCOPED_TRACE(length);
        file.Write(archive.substr(0, length));
        EXPECT_FAILURE(ZipFileReader(file.Path()), dbc::precondition_error, kNoArchive, "");
    }
}

TEST(ZipFileReaderFailuresTest, AnArchiveCutInItsCommentIsReadWhole) {
    const std::string comment = "a comment that is cut";
    const std::string archive = BuildZip(ThreeEntries(), {.comment = comment});
    ArchiveFile file("");
    for (std::size_t length = archive.size() - comment.size(); length < archive.size(); ++length) {
        SCOPED_TRACE(length);
        file.Write(archive.substr(0, length));
        ZipFileReader reader(file.Path());
        for (const ZipEntry& entry : ThreeEntries()) {
            const EntryRead read = ReadEntry(reader);
            EXPECT_FALSE(read.IsFlagged());
            EXPECT_EQ(read.bytes, entry.content);
            EXPECT_EQ(reader.GoToNextFile(), entry.name != "third.txt");
        }
    }
}

// The last signature in the file counts, wherever it is.
TEST(ZipFileReaderFailuresTest, ASignatureInTheCommentHidesTheEntriesAndGivesNoOthers) {
    const std::string whole = BuildZip(ThreeEntries());
    const std::string comments[] = {"it holds PK\5\6", "it holds PK\5\6 and more than the length of a record",
                                    whole.substr(whole.size() - kEndRecordSize)};
    ArchiveFile file("");
    for (const std::string& comment : comments) {
        SCOPED_TRACE(testing::PrintToString(comment));
        file.Write(BuildZip(ThreeEntries(), {.comment = comment}));
        std::string failure;
        std::string all;
        try {
            ZipFileReader reader(file.Path());
            for (bool found = reader.GoToFirstFile(); found; found = reader.GoToNextFile())
                all += ReadEntry(reader).bytes;
        } catch (const dbc::precondition_error& error) {
            failure = error.what();
        }
        EXPECT_TRUE(failure.empty() || failure == kNoArchive) << failure;
        EXPECT_TRUE(all.empty() || all == "some words, some wordsstored words" + Lines(20)) << all;
    }
}

TEST(ZipFileReaderFailuresTest, RefusesEntriesThatItCannotRead) {
    std::vector<ZipEntry> entries = {
        {.name = "encrypted", .content = "words", .flags = kZipEncryptedFlag},
        {.name = "encrypted, stored", .content = "words", .method = kZipStored, .flags = kZipEncryptedFlag},
        {.name = "other local name", .content = "words", .localName = "a local name"},
        {.name = "offset of no entry", .content = "words", .offset = 1},
        {.name = "offset outside", .content = "words", .offset = 1000000},
        {.name = "size unknown", .content = "words", .size = 0xFFFFFFFF},
        {.name = "size unknown", .content = "words", .method = kZipStored, .size = 0xFFFFFFFF},
        {.name = "packed size unknown", .content = "words", .compressedSize = 0xFFFFFFFF},
    };
    for (const int method : {1, 2, 3, 4, 5, 6, 7, 9, 10, 12, 14, 93, 95, 98, 99, 256, 264, 65535})
        entries.push_back({.name = "method",
                           .content = "words",
                           .method = static_cast<std::uint16_t>(method),
                           .packed = "packed words"});
    entries.push_back({.name = "good", .content = "good words"});
    const ArchiveFile file(BuildZip(entries));
    ZipFileReader reader(file.Path());
    char byte = 'x';
    for (std::size_t i = 0; i + 1 < entries.size(); ++i) {
        SCOPED_TRACE(entries[i].name + " " + std::to_string(entries[i].method));
        EXPECT_FAILURE(reader.GetCurrentFileRange(), dbc::precondition_error, kNotOpened, "");
        EXPECT_FAILURE(reader.OpenCurrentFile(), dbc::precondition_error, kNotOpened, "");
        EXPECT_EQ(reader.ReadFromCurrentFile(&byte, 1), kNoEntryOpen);
        EXPECT_FAILURE(reader.CloseCurrentFile(), dbc::precondition_error, kNotClosed, "");
        EXPECT_EQ(reader.GetCurrentFileInfo().size, entries[i].size.value_or(5));
        EXPECT_TRUE(reader.GoToNextFile());
    }
    EXPECT_EQ(ReadEntry(reader).bytes, "good words");
    EXPECT_EQ(byte, 'x');
}

TEST(ZipFileReaderFailuresTest, ReadingAndClosingNeedAnOpenEntry) {
    const ArchiveFile file(BuildZip(ThreeEntries()));
    ZipFileReader reader(file.Path());
    std::string buffer = "xxxx";
    EXPECT_EQ(reader.ReadFromCurrentFile(buffer.data(), 4), kNoEntryOpen);
    EXPECT_EQ(reader.ReadFromCurrentFile(nullptr, 4), kNoEntryOpen);
    EXPECT_EQ(buffer, "xxxx");
    EXPECT_FAILURE(reader.CloseCurrentFile(), dbc::precondition_error, kNotClosed, "");
    EXPECT_FALSE(ReadEntry(reader).IsFlagged());
    EXPECT_EQ(reader.ReadFromCurrentFile(buffer.data(), 4), kNoEntryOpen);
    EXPECT_FAILURE(reader.CloseCurrentFile(), dbc::precondition_error, kNotClosed, "");
}

void ExpectCrcError(ZipFileReader& reader, const std::string& content) {
    reader.OpenCurrentFile();
    std::string bytes(content.size() + 1, '\0');
    const auto size = static_cast<unsigned int>(bytes.size());
    EXPECT_EQ(reader.ReadFromCurrentFile(bytes.data(), size), static_cast<int>(content.size()));
    EXPECT_EQ(reader.ReadFromCurrentFile(bytes.data(), size), 0);
    EXPECT_FAILURE(reader.CloseCurrentFile(), dbc::precondition_error, kCrcError, "");
    EXPECT_EQ(reader.ReadFromCurrentFile(bytes.data(), size), kNoEntryOpen);
    EXPECT_FAILURE(reader.CloseCurrentFile(), dbc::precondition_error, kNotClosed, "");
}

TEST(ZipFileReaderFailuresTest, EveryAlteredByteOfAStoredEntryIsACrcError) {
    const std::string archive = BuildZip(ThreeEntries());
    const std::string content = ThreeEntries()[1].content;
    const std::size_t begin = PackedBytesAt(archive, "folder/second.txt");
    ArchiveFile file("");
    for (std::size_t at = 0; at < content.size(); ++at) {
        SCOPED_TRACE(at);
        std::string altered = archive;
        altered[begin + at] = static_cast<char>(altered[begin + at] ^ 0x20);
        file.Write(altered);
        ZipFileReader reader(file.Path());
        EXPECT_FALSE(ReadEntry(reader).IsFlagged());
        EXPECT_TRUE(reader.GoToNextFile());
        ExpectCrcError(reader, content);
        EXPECT_TRUE(reader.GoToNextFile());
        EXPECT_FALSE(ReadEntry(reader).IsFlagged());
    }
}

TEST(ZipFileReaderFailuresTest, AWrongChecksumIsACrcErrorOnceTheEntryIsReadToItsEnd) {
    const ArchiveFile file(BuildZip({{.name = "deflated", .content = Lines(9), .crc = 1},
                                     {.name = "stored", .content = Lines(9), .method = kZipStored, .crc = 1},
                                     {.name = "empty", .crc = 1},
                                     {.name = "cut short", .content = Lines(9), .size = 10}}));
    const std::string contents[] = {Lines(9), Lines(9), "", Lines(9).substr(0, 10)};
    ZipFileReader reader(file.Path());
    for (const std::string& content : contents) {
        ExpectCrcError(reader, content);
        ExpectCrcError(reader, content);
        char byte = 'x';
        if (!content.empty()) {
            reader.OpenCurrentFile();
            EXPECT_EQ(reader.ReadFromCurrentFile(&byte, 1), 1);
            EXPECT_EQ(CaptureStandardError([&] { reader.CloseCurrentFile(); }), "") << "not read to its end";
        }
        reader.GoToNextFile();
    }
}

TEST(ZipFileReaderFailuresTest, AReadReportsDamageAndTheEntryCanStillBeClosed) {
    struct Damaged {
        ZipEntry entry;
        int result;
    };
    const std::string content = Lines(3000);
    const Damaged rows[] = {
        {{.name = "no deflate stream", .content = content, .packed = std::string(500, '\xFF')}, kBadData},
        {{.name = "cut stream", .content = content, .packed = Deflated(content).substr(0, 300)},
         kStreamCutOff},
        {{.name = "less packed", .content = content, .compressedSize = 300}, kStreamCutOff},
        {{.name = "more packed than there is", .content = content, .compressedSize = 300000}, kFileError},
        {{.name = "more stored than there is",
          .content = content,
          .method = kZipStored,
          .size = 300000,
          .compressedSize = 300000},
         kFileError},
    };
    for (const Damaged& row : rows) {
        SCOPED_TRACE(row.entry.name);
        const ArchiveFile file(BuildZip({row.entry}));
        ZipFileReader reader(file.Path());
        reader.OpenCurrentFile();
        std::string buffer(400000, '\0');
        const auto size = static_cast<unsigned int>(buffer.size());
        EXPECT_EQ(reader.ReadFromCurrentFile(buffer.data(), size), row.result);
        EXPECT_EQ(reader.ReadFromCurrentFile(buffer.data(), size), row.result);
        EXPECT_EQ(CaptureStandardError([&] { reader.CloseCurrentFile(); }), "");
        EXPECT_EQ(reader.ReadFromCurrentFile(buffer.data(), size), kNoEntryOpen);
    }
}

struct EndsEarly {
    ZipEntry entry;
    std::string content; ///< that can be read
};

std::vector<EndsEarly> EntriesThatEndEarly() {
    const std::string content = Lines(300);
    const std::string half = content.substr(0, content.size() / 2);
    const std::size_t more = content.size() + 1;
    return {
        {{.name = "stream ends", .content = content, .packed = Deflated(half)}, half},
        {{.name = "more stated", .content = content, .size = more}, content},
        {{.name = "more stated, stored", .content = content, .method = kZipStored, .size = more}, content},
        {{.name = "less stored", .content = content, .method = kZipStored, .compressedSize = half.size()},
         half},
        {{.name = "nothing", .content = "x", .packed = Deflated("")}, ""},
        {{.name = "nothing stored", .method = kZipStored, .size = 1}, ""},
    };
}

// The checksum is then not checked.
TEST(ZipFileReaderFailuresTest, AnEntryThatEndsBeforeItsStatedSizeDoesNotClose) {
    for (const auto& [entry, content] : EntriesThatEndEarly()) {
        SCOPED_TRACE(entry.name);
        const ArchiveFile file(BuildZip({entry, {.name = "next", .content = "good words"}}));
        ZipFileReader reader(file.Path());
        for (const bool asksForTheName : {false, true}) {
            if (asksForTheName)
                static_cast<void>(reader.GetCurrentFileName());
            const EntryRead read = ReadEntry(reader);
            EXPECT_EQ(read.bytes, content);
            EXPECT_EQ(read.end, 0);
            EXPECT_EQ(read.failure, kNotClosed);
            EXPECT_FAILURE(reader.CloseCurrentFile(), dbc::precondition_error, kNotClosed, "");
        }
        EXPECT_TRUE(reader.GoToNextFile());
        EXPECT_EQ(ReadEntry(reader).failure, "") << "a sound entry after it";
    }
}

TEST(ZipFileReaderFailuresTest, AnEntryThatWasReadInPartCloses) {
    for (const auto& [entry, content] : EntriesThatEndEarly()) {
        SCOPED_TRACE(entry.name);
        const ArchiveFile file(BuildZip({entry}));
        ZipFileReader reader(file.Path());
        std::string buffer(content.size() + 1, 'x');
        const auto readUpTo = [&](std::size_t size) {
            reader.OpenCurrentFile();
            EXPECT_EQ(reader.ReadFromCurrentFile(buffer.data(), 0), 0);
            if (size > 0) {
                EXPECT_EQ(reader.ReadFromCurrentFile(buffer.data(), static_cast<unsigned int>(size)),
                          static_cast<int>(size));
            }
        };
        for (const std::size_t size : {std::size_t{0}, content.size() / 2, content.size()}) {
            readUpTo(size);
            EXPECT_EQ(CaptureStandardError([&] { reader.CloseCurrentFile(); }), "");
        }
        // An entry that was read to its end may be opened again and closed early.
        reader.OpenCurrentFile();
        while (reader.ReadFromCurrentFile(buffer.data(), static_cast<unsigned int>(buffer.size())) > 0) {
        }
        reader.OpenCurrentFile();
        EXPECT_EQ(CaptureStandardError([&] { reader.CloseCurrentFile(); }), "");
    }
}

TEST(ZipFileReaderFailuresTest, AnAlteredDeflateStreamIsFlaggedOrRight) {
    const std::string content = Lines(60);
    const std::string archive = BuildZip({{.name = "a", .content = content}});
    const std::size_t begin = PackedBytesAt(archive, "a");
    ArchiveFile file("");
    int flagged = 0;
    for (std::size_t at = begin; at < archive.find("PK\1\2"); ++at)
        for (const int bit : {0x01, 0x10, 0x80}) {
            std::string altered = archive;
            altered[at] = static_cast<char>(altered[at] ^ bit);
            file.Write(altered);
            ZipFileReader reader(file.Path());
            const EntryRead read = ReadEntry(reader);
            flagged += read.IsFlagged() ? 1 : 0;
            EXPECT_TRUE(read.IsFlagged() || read.bytes == content) << at;
            const bool isShort = read.bytes.size() < content.size();
            EXPECT_TRUE(read.failure.empty() || read.failure == (isShort ? kNotClosed : kCrcError))
                << read.failure;
            EXPECT_TRUE(read.end == 0 || read.failure.empty()) << "closing what could not be read succeeds";
        }
    EXPECT_GT(flagged, 0);
}

TEST(ZipFileReaderFailuresTest, ADamagedDirectoryEndsTheWalkBeforeTheStatedCount) {
    std::string archive = BuildZip(ThreeEntries());
    const std::size_t first = archive.find("PK\1\2");
    const std::size_t second = archive.find("PK\1\2", first + 1);
    archive[second] = 'X';
    ArchiveFile file(archive);
    {
        ZipFileReader reader(file.Path());
        EXPECT_TRUE(reader.GoToFirstFile());
        EXPECT_FALSE(reader.GoToNextFile());
        EXPECT_FALSE(reader.GoToNextFile());
        EXPECT_EQ(reader.GetFileCount(), 3u);
        EXPECT_TRUE(reader.GoToFirstFile());
        EXPECT_EQ(ReadEntry(reader).bytes, ThreeEntries()[0].content);
    }
    archive[first] = 'X';
    file.Write(archive);
    ZipFileReader reader(file.Path());
    EXPECT_EQ(reader.GetFileCount(), 3u);
    EXPECT_FAILURE(reader.GetCurrentFileName(), dbc::precondition_error, kNoInfo, "");
    EXPECT_FAILURE(reader.GetCurrentFileInfo(), dbc::precondition_error, kNoInfo, "");
    EXPECT_FAILURE(reader.OpenCurrentFile(), dbc::precondition_error, kNotOpened, "");
    EXPECT_FALSE(reader.GoToFirstFile());
    EXPECT_FALSE(reader.GoToNextFile());
}

TEST(ZipFileReaderFailuresTest, ACountAboveTheDirectorysEntriesEndsTheWalkEarly) {
    const ArchiveFile file(BuildZip(ThreeEntries(), {.entryCount = 100}));
    ZipFileReader reader(file.Path());
    EXPECT_EQ(reader.GetFileCount(), 100u);
    EXPECT_TRUE(reader.GoToFirstFile());
    EXPECT_TRUE(reader.GoToNextFile());
    EXPECT_TRUE(reader.GoToNextFile());
    EXPECT_FALSE(reader.GoToNextFile());
}

void AskForTheRange(ZipFileReader& reader, std::size_t archiveSize) {
    constexpr std::size_t kLocalHeader = 30;
    try {
        const ZipEntryRange range = reader.GetCurrentFileRange();
        ASSERT_LE(range.begin + kLocalHeader, archiveSize);
        ASSERT_GE(range.end, range.begin + kLocalHeader);
    } catch (const dbc::precondition_error& error) {
        ASSERT_EQ(error.what(), std::string(kNotOpened));
    }
}

/// Walks through all entries and reads them; each failure must have a message of the reader.
void WalkWhatever(const icu::UnicodeString& path, std::size_t archiveSize) {
    constexpr std::size_t kDirectoryRecord = 46;
    constexpr std::size_t kBestCompression = 1100;
    static const std::set<std::string> kMessages = {"",         kNoArchive, kNoInfo,
                                                    kNotOpened, kNotClosed, kCrcError};
    std::string failure;
    try {
        ZipFileReader reader(path);
        std::size_t walked = 0;
        for (bool found = reader.GoToFirstFile(); found; found = reader.GoToNextFile()) {
            ASSERT_LE(++walked, archiveSize / kDirectoryRecord);
            ASSERT_LT(reader.GetCurrentFileName().length(), 1024);
            static_cast<void>(reader.GetCurrentFileInfo());
            ASSERT_NO_FATAL_FAILURE(AskForTheRange(reader, archiveSize));
            const std::size_t limit = kBestCompression * archiveSize;
            const EntryRead read = ReadEntry(reader, limit);
            ASSERT_LT(read.bytes.size(), limit);
            ASSERT_EQ(kMessages.count(read.failure), 1u) << read.failure;
        }
    } catch (const dbc::precondition_error& error) {
        failure = error.what();
    }
    ASSERT_EQ(kMessages.count(failure), 1u) << failure;
}

TEST(ZipFileReaderFailuresTest, WithstandsEveryMutation) {
    std::vector<ZipEntry> described = ThreeEntries();
    for (ZipEntry& entry : described)
        entry.descriptor = ZipDescriptor::kSigned;
    std::vector<ZipEntry> large = ThreeEntries();
    for (ZipEntry& entry : large)
        entry.zip64 = Zip64Extra::kBoth;
    const std::string archives[] = {BuildZip(ThreeEntries()), BuildZip({}, {.comment = "a comment"}),
                                    BuildZip(described, {.comment = "a comment", .stub = "a stub"}),
                                    BuildZip(large, {.zip64 = true})};
    constexpr int kRounds = 600;
    std::mt19937 random(20240607);
    const auto below = [&random](std::size_t end) { return random() % end; };
    ArchiveFile file("");
    const std::string written = CaptureStandardError([&] {
        for (const std::string& archive : archives)
            for (int round = 0; round < kRounds; ++round) {
                std::string mutated = archive;
                // Half of the mutations change the directory and the end record, which hold the structure.
                const std::size_t from =
                    round % 2 == 0 ? 0 : std::min(archive.find("PK\1\2"), archive.size() - kEndRecordSize);
                for (std::size_t changes = 1 + below(4); changes > 0; --changes)
                    mutated[from + below(mutated.size() - from)] =
                        below(3) == 0 ? '\xFF' : static_cast<char>(below(256));
                file.Write(mutated);
                ASSERT_NO_FATAL_FAILURE(WalkWhatever(file.Path(), mutated.size())) << "round " << round;
            }
    });
    EXPECT_EQ(written, "");
}

} // namespace
} // namespace vexaTransferLib
