// SPDX-License-Identifier: MIT Reads archives made by other programs if a folder of them is beside the source
// tree.

#include <vexaTransferLib/ZIPFileReader.h>

#include "support/ContractChecks.h"
#include "support/ZipFiles.h"

#include <common/dbc.h>

#include <gtest/gtest.h>
#include <zlib.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr char kNoArchive[] = "Could not open ZIP for reading.";
constexpr char kNotOpened[] = "Could not open file at the current position within the zip file.";
constexpr char kCrcError[] = "Encountered CRC error in current file.";

/// The entries of the corpus: the checksum of the content, or how reading it ends.
struct CorpusEntry {
    std::string name;
    std::size_t size;
    std::string outcome;

    bool operator==(const CorpusEntry&) const = default;
};

void PrintTo(const CorpusEntry& entry, std::ostream* out) {
    *out << testing::PrintToString(entry.name) << " " << entry.size << " " << entry.outcome;
}

using CorpusEntries = std::vector<CorpusEntry>;

const std::filesystem::path kCorpus = std::filesystem::path(VEXA_SHARED) / "corpus" / "zip";
constexpr char kShort[] = "6b7471e8";
constexpr char kLong[] = "f0c1656a";
constexpr char kNothing[] = "00000000";

std::string LongName(std::size_t length) {
    const std::string unit = "a-very-long-entry-name/";
    const std::string tail = "-" + std::to_string(length) + ".gpx";
    std::string name;
    while (name.size() < length - tail.size())
        name += unit;
    return (name.substr(0, length - tail.size()) + tail).substr(0, 1023);
}

/// The entries of each file that is an archive.
std::map<std::string, CorpusEntries> CorpusArchives() {
    const CorpusEntries three = {
        {"short.txt", 60, kShort}, {"nothing.txt", 0, kNothing}, {"long.txt", 9092, kLong}};
    const CorpusEntry good = {"good.txt", 60, kShort};
    return {
        {"archive-comment.zip", {{"one.txt", 60, kShort}, good}},
        {"bad-deflate.zip", {good, {"broken-stream.txt", 9092, "read -3"}}},
        {"cp437-names.zip",
         {{"Gro\xE1"
           "er \x9Amlaut T\x84st.gpx",
           176, "069293a6"},
          {"\xA5"
           "and\xA3 \xAB \xF8.gpx",
           176, "11baf766"}}},
        {"crc-mismatch.zip",
         {good,
          {"stored-altered.txt", 9092, kCrcError},
          {"deflated-wrong-crc.txt", 9092, kCrcError},
          {"last-good.txt", 60, kShort}}},
        {"data-descriptors.zip",
         {{"signed.txt", 9092, kLong},
          {"plain.txt", 9092, kLong},
          {"between.txt", 60, kShort},
          {"stored-signed.txt", 60, kShort}}},
        {"deflated.zip", three},
        {"empty.zip", {}},
        {"encrypted-flag.zip", {good, {"secret.txt", 9092, kNotOpened}}},
        {"long-names.zip",
         {{LongName(255), 178, "5bd67072"},
          {LongName(1023), 179, "41f5a03a"},
          {LongName(1024), 179, "242c9e7a"},
          {LongName(1100), 179, "143ebbb4"},
          good}},
        {"nested-folders.zip",
         {{"caches/", 0, kNothing},
          {"caches/north/", 0, kNothing},
          {"caches/north/one.gpx", 178, "5dbedefc"},
          {"caches/south/", 0, kNothing},
          {"caches/south/two.gpx", 178, "a56df469"},
          {"no/folder/entry/three.gpx", 180, "c14c5d7e"},
          {"empty/", 0, kNothing}}},
        {"pocket-query.zip", {{"9000001.gpx", 244259, "31e9c46e"}, {"9000001-wpts.gpx", 35942, "acfc19ed"}}},
        {"stored.zip", three},
        {"stub-in-front.zip", three},
        {"stub-not-counted.zip", three},
        {"unsupported-method.zip",
         {good, {"bzip2.txt", 9092, kNotOpened}, {"method-99.txt", 60, kNotOpened}}},
        {"utf8-names.zip",
         {{"Gr\u00F6\u00DFe/H\u00FCttenweg.gpx", 176, "4d1b6466"},
          {"\u010Capljina \u2013 \u017Dabljak.gpx", 176, "7463c926"},
          {"\u65E5\u672C/\u5BCC\u58EB\u5C71\U0001F5FB.gpx", 176, "634bade6"}}},
    };
}

constexpr const char* kCorpusRefused[] = {"end-record-cut.zip", "not-a-zip.zip", "signature-in-comment.zip",
                                          "truncated.zip", "zero-bytes.zip"};

CorpusEntry ReadCorpusEntry(ZipFileReader& reader) {
    std::string name;
    const icu::UnicodeString stored = reader.GetCurrentFileName();
    for (int i = 0; i < stored.length(); ++i)
        name += static_cast<char>(stored.charAt(i));
    const EntryRead read = ReadEntry(reader);
    std::string outcome = read.failure;
    if (outcome.empty() && read.end < 0)
        outcome = "read " + std::to_string(read.end);
    if (outcome.empty()) {
        char hex[9];
        const uLong crc = crc32_z(0, reinterpret_cast<const Bytef*>(read.bytes.data()), read.bytes.size());
        std::snprintf(hex, sizeof hex, "%08lx", crc);
        outcome = hex;
    }
    return {name, static_cast<std::size_t>(reader.GetCurrentFileInfo().size), outcome};
}

CorpusEntries ReadCorpusArchive(const std::string& file) {
    ZipFileReader reader(AsPath(kCorpus / file));
    CorpusEntries entries;
    for (bool found = reader.GoToFirstFile(); found; found = reader.GoToNextFile())
        entries.push_back(ReadCorpusEntry(reader));
    EXPECT_EQ(reader.GetFileCount(), entries.size());
    return entries;
}

#define SKIP_WITHOUT_CORPUS()                                                                                \
    if (!std::filesystem::is_directory(kCorpus))                                                             \
    GTEST_SKIP() << "there is no corpus of ZIP files beside the source tree"

TEST(ZipCorpusTest, ArchivesAreReadAsFarAsTheyAreGood) {
    SKIP_WITHOUT_CORPUS();
    for (const auto& [file, entries] : CorpusArchives()) {
        SCOPED_TRACE(file);
        EXPECT_EQ(ReadCorpusArchive(file), entries);
    }
}

TEST(ZipCorpusTest, AnIncompleteArchiveIsRefused) {
    SKIP_WITHOUT_CORPUS();
    for (const char* file : kCorpusRefused) {
        SCOPED_TRACE(file);
        EXPECT_FAILURE(ZipFileReader(AsPath(kCorpus / file)), dbc::precondition_error, kNoArchive, "");
    }
}

TEST(ZipCorpusTest, ManyEntriesAreAllRead) {
    SKIP_WITHOUT_CORPUS();
    const CorpusEntries entries = ReadCorpusArchive("many-entries.zip");
    ASSERT_EQ(entries.size(), 200u);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const std::string number = std::to_string(10000 + i).substr(1);
        EXPECT_EQ(entries[i].name, "w/" + number + ".gpx");
        EXPECT_EQ(entries[i].size, 180u);
        EXPECT_EQ(entries[i].outcome.size(), 8u) << entries[i].outcome;
    }
    EXPECT_EQ(entries.front().outcome, "70e8cd9c");
    EXPECT_EQ(entries[7].outcome, "1531f3dc");
}

TEST(ZipCorpusTest, SizesInZip64FormAreRead) {
    SKIP_WITHOUT_CORPUS();
    const CorpusEntries read = {{"one.txt", 9092, kLong}, {"two.txt", 60, kShort}};
    EXPECT_EQ(ReadCorpusArchive("zip64.zip"), read);
}

TEST(ZipCorpusTest, EveryFileHasItsTest) {
    SKIP_WITHOUT_CORPUS();
    std::set<std::string> tested = {"many-entries.zip", "zip64.zip"};
    for (const auto& [file, entries] : CorpusArchives())
        tested.insert(file);
    tested.insert(std::begin(kCorpusRefused), std::end(kCorpusRefused));
    std::set<std::string> there;
    for (const auto& entry : std::filesystem::directory_iterator(kCorpus))
        there.insert(entry.path().filename().string());
    EXPECT_EQ(tested, there);
}

} // namespace
} // namespace vexaTransferLib
