// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

using cli::Data;
using cli::Folder;
using cli::Lines;
using cli::Result;
using cli::RunTool;
using nlohmann::json;
using testing_support::BuildZip;
using testing_support::kZipEncryptedFlag;
using testing_support::kZipStored;
using testing_support::kZipSymbolicLink;
using testing_support::ZipEntry;

constexpr std::uint32_t DosTime(std::uint32_t year, std::uint32_t month, std::uint32_t day,
                                std::uint32_t hour, std::uint32_t minute, std::uint32_t second) {
    return (year - 1980) << 25 | month << 21 | day << 16 | hour << 11 | minute << 5 | second / 2;
}

constexpr std::uint32_t kTime = DosTime(2024, 5, 1, 6, 7, 8);

Result ListOf(const std::string& archive) {
    const Folder folder;
    folder.Write("a.zip", archive);
    return RunTool({"zip", "list", "--json", "a.zip"}, folder.Path());
}

json Listed(const ZipEntry& entry) {
    const Result result = ListOf(BuildZip({entry}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    return json::parse(result.out);
}

TEST(ZipListJsonTest, PrintsALineForEachEntryOfTheSamples) {
    const std::string day = cli::ReadFile(Data("day.gpx"));
    const Result result = ListOf(BuildZip({
        {.name = "tracks/", .method = kZipStored, .dosTime = kTime},
        {.name = "tracks/day.gpx", .content = day, .method = kZipStored, .dosTime = kTime},
        {.name = "Gr\xC3\xB6\xC3\x9F"
                 "e.gpx",
         .method = 12,
         .dosTime = kTime,
         .packed = "?",
         .size = 7},
        {.name = "secret", .method = kZipStored, .flags = kZipEncryptedFlag, .dosTime = kTime},
        {.name = "link",
         .content = "day.gpx",
         .method = kZipStored,
         .externalAttributes = kZipSymbolicLink,
         .dosTime = kTime},
    }));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, cli::ReadFile(Data("zip-list.jsonl")));
}

TEST(ZipListJsonTest, NamesAreThoseThatCatTakes) {
    for (const std::string name : {"\"quoted\"\\x41", "\x1B[2J", "\xFF\x80", "a\nb", "\xE2\x80\xAE", ""}) {
        const Folder folder;
        folder.Write("a.zip", BuildZip({{.name = name, .content = "content"}}));
        const Result list = RunTool({"zip", "list", "a.zip"}, folder.Path());
        const Result result = RunTool({"zip", "list", "--json", "a.zip"}, folder.Path());
        ASSERT_EQ(Lines(result.out).size(), 1U);
        const std::string entry = json::parse(result.out)["entry"];
        EXPECT_EQ(entry + "\n", list.out);
        EXPECT_EQ(RunTool({"zip", "cat", "a.zip", "--", entry}, folder.Path()).out, "content");
    }
}

TEST(ZipListJsonTest, ATimeThatIsNoDateIsLeftOut) {
    EXPECT_EQ(Listed({.name = "a", .dosTime = DosTime(2107, 12, 31, 23, 59, 58)})["localTime"],
              "2107-12-31T23:59:58");
    for (const std::uint32_t time :
         {0U, 0xFFFFFFFFU, DosTime(2023, 2, 29, 0, 0, 0), DosTime(2023, 1, 1, 24, 0, 0),
          DosTime(2023, 1, 1, 0, 60, 0), DosTime(2023, 1, 1, 0, 0, 60)})
        EXPECT_FALSE(Listed({.name = "a", .dosTime = time}).contains("localTime")) << time;
}

TEST(ZipListJsonTest, ValuesThatNoEntryHasAreShownAsStated) {
    constexpr std::uint64_t kHuge = 0x7FFFFFFFFFFFFFFF;
    const json huge = Listed({.name = "a",
                              .zip64 = testing_support::Zip64Extra::kBoth,
                              .crc = 0xFFFFFFFF,
                              .size = kHuge,
                              .compressedSize = 1});
    EXPECT_EQ(huge["size"], kHuge);
    EXPECT_EQ(huge["compressedSize"], 1);
    EXPECT_EQ(huge["crc32"], "ffffffff");
    const json unknown = Listed({.name = "a", .size = 0xFFFFFFFF, .compressedSize = 0xFFFFFFFF});
    EXPECT_FALSE(unknown.contains("size"));
    EXPECT_FALSE(unknown.contains("compressedSize"));
    const json method = Listed({.name = "a", .method = 65535, .packed = ""});
    EXPECT_EQ(method["method"], 65535);
    EXPECT_FALSE(method.contains("methodName"));
}

TEST(ZipListJsonTest, ANameOfMoreThan1023BytesIsMarked) {
    const json listed = Listed({.name = std::string(2000, 'x')});
    EXPECT_EQ(listed["entry"], std::string(1023, 'x'));
    EXPECT_EQ(listed["nameIsCut"], true);
    EXPECT_FALSE(Listed({.name = std::string(1023, 'x')}).contains("nameIsCut"));
}

TEST(ZipListJsonTest, WhatComesBeforeADamageIsListed) {
    std::string archive = BuildZip({{.name = "good"}, {.name = "bad"}});
    archive.at(archive.rfind("PK\1\2")) = 'X';
    const Result result = ListOf(archive);
    EXPECT_TRUE(cli::Failed(result, "(a.zip)"));
    ASSERT_EQ(Lines(result.out).size(), 1U);
    EXPECT_EQ(json::parse(result.out)["entry"], "good");
}

TEST(ZipListJsonTest, EveryOneOfManyEntriesIsListed) {
    const std::vector<ZipEntry> entries(20000, {.name = "x", .method = kZipStored});
    const Result result = ListOf(BuildZip(entries));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 20000);
}

} // namespace
