// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <vexagpx/input/GzipFile.h>

#include <zlib.h>

#include <algorithm>

namespace {

using cli::Data;
using cli::Failed;
using cli::Folder;
using cli::Gpx;
using cli::kWaypoint;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using testing::ElementsAre;
using testing::HasSubstr;
using vexagpx::ArchiveLimits;
using vexagpx::GzipFile;

std::string Number32(std::uint64_t value) {
    std::string bytes;
    for (int i = 0; i < 4; ++i, value >>= 8)
        bytes += static_cast<char>(value & 0xFF);
    return bytes;
}

std::string Gzip(const std::string& content) {
    const std::string head("\x1F\x8B\x08\0\0\0\0\0\0\xFF", 10);
    const auto crc = crc32_z(0, reinterpret_cast<const Bytef*>(content.data()), content.size());
    return head + testing_support::Deflated(content) + Number32(crc) + Number32(content.size());
}

/// Reads the packed bytes, and unpacks them, in pieces of this size.
std::string Unpack(const std::string& packed, std::size_t piece = 1 << 16, const ArchiveLimits& limits = {}) {
    std::size_t at = 0;
    GzipFile file(
        [&](char* buffer, std::size_t size) {
            const std::size_t count = packed.copy(buffer, std::min(size, piece), at);
            at += count;
            return count;
        },
        limits, "w.gz");
    std::string content;
    std::string buffer(piece, '\0');
    while (const std::size_t count = file.Read(buffer.data(), buffer.size()))
        content.append(buffer, 0, count);
    EXPECT_EQ(file.Read(buffer.data(), buffer.size()), 0U);
    return content;
}

std::string FailureOf(const std::string& packed, const ArchiveLimits& limits = {}) {
    try {
        Unpack(packed, 1 << 16, limits);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

constexpr char kTooEarly[] =
    "The gzip data end too early: the file is not complete. Copy or download it again. (w.gz)";
constexpr char kOtherBytes[] =
    "After the end of the gzip data there are other bytes: the file is damaged or was "
    "joined from several. (w.gz)";

TEST(GzipFileTest, WhatWasPackedIsUnpackedInPiecesOfAnySize) {
    const std::string content = ReadFile(Data("hand-written.gpx"));
    for (const std::size_t piece : std::vector<std::size_t>{1, 2, 7, 1000, 1 << 20})
        EXPECT_EQ(Unpack(Gzip(content), piece), content) << piece;
    EXPECT_EQ(Unpack(Gzip("")), "");
}

TEST(GzipFileTest, MembersAreJoinedAndZerosAfterThemAreSkipped) {
    for (const std::size_t piece : std::vector<std::size_t>{1, 1000}) {
        EXPECT_EQ(Unpack(Gzip("one") + Gzip("") + Gzip("two"), piece), "onetwo");
        EXPECT_EQ(Unpack(Gzip("one") + std::string(1000, '\0'), piece), "one");
    }
}

TEST(GzipFileTest, EveryTruncationIsAnEarlyEnd) {
    const std::string packed = Gzip("one") + Gzip("two");
    const std::size_t first = Gzip("one").size();
    for (std::size_t size = 0; size < packed.size(); ++size)
        EXPECT_EQ(FailureOf(packed.substr(0, size)), size == first ? "" : kTooEarly) << size;
}

TEST(GzipFileTest, OtherBytesAfterTheEndAreAnError) {
    EXPECT_EQ(FailureOf(Gzip("one") + "x"), kOtherBytes);
    EXPECT_EQ(FailureOf(Gzip("one") + std::string(10, '\0') + "x"), kOtherBytes);
    EXPECT_THAT(FailureOf(Gzip("one") + "\x1F" + std::string(30, 'x')),
                HasSubstr("The gzip data are damaged: "));
}

TEST(GzipFileTest, EveryFlippedBitOfDataAndChecksumIsFoundOrChangesNothing) {
    const std::string content = Gpx(kWaypoint);
    const std::string packed = Gzip(content);
    std::size_t found = 0;
    for (std::size_t i = 0; i < packed.size() * 8; ++i) {
        std::string bad = packed;
        bad[i / 8] = static_cast<char>(bad[i / 8] ^ (1 << i % 8));
        try {
            EXPECT_EQ(Unpack(bad), content) << i;
        } catch (const std::runtime_error& error) {
            EXPECT_THAT(error.what(), HasSubstr("(w.gz)"));
            ++found;
        }
    }
    EXPECT_GT(found, (packed.size() - 10) * 8);
}

TEST(GzipFileTest, TheLimitsOfArchivesHold) {
    ArchiveLimits limits;
    limits.entrySize = 1000;
    EXPECT_EQ(Unpack(Gzip(std::string(1000, 'x')), 1 << 16, limits).size(), 1000U);
    EXPECT_EQ(FailureOf(Gzip(std::string(1001, 'x')), limits),
              "The gzip file unpacks to more than 1000 bytes (--max-entry-size). (w.gz)");
    EXPECT_EQ(Unpack(Gzip(std::string(ArchiveLimits::kAnyRatioUpTo, 'x'))).size(),
              ArchiveLimits::kAnyRatioUpTo);
    EXPECT_EQ(FailureOf(Gzip(std::string(ArchiveLimits::kAnyRatioUpTo + 1, 'x'))),
              "The gzip file grows to more than 4 MiB and 200 times its size (--max-ratio). (w.gz)");
}

TEST(GzipFileTest, OneSuffixIsRemoved) {
    EXPECT_EQ(vexagpx::WithoutGzipSuffix("walk.gpx.GZ"), "walk.gpx");
    EXPECT_EQ(vexagpx::WithoutGzipSuffix("walk.gpx"), "walk.gpx");
    EXPECT_EQ(vexagpx::WithoutGzipSuffix("gz"), "gz");
}

/// Every command, on standard input.
const std::vector<std::vector<std::string>> kCommands = {
    {"show", "-"}, {"dump", "-"}, {"info", "-"}, {"check", "-"}, {"convert", "-", "-"}};

TEST(GzipFileTest, EveryCommandReadsAGzipFileAsItsContent) {
    const std::string content = ReadFile(Data("hand-written.gpx"));
    for (std::vector<std::string> command : kCommands) {
        const Folder temporary;
        const Result plain = Tool(command).Stdin(content).Run();
        const Result packed = Tool(command).Stdin(Gzip(content)).Set("TMPDIR", temporary.Path()).Run();
        EXPECT_EQ(packed.out, plain.out) << command[0];
        EXPECT_EQ(packed.err, plain.err) << command[0];
        EXPECT_EQ(packed.status, plain.status) << command[0];
        EXPECT_THAT(temporary.Names(), testing::IsEmpty());
        const Folder folder;
        folder.Write("w.gpx", content);
        folder.Write("w.gpx.gz", Gzip(content));
        command[1] = "w.gpx";
        const Result ofPlain = RunTool(command, folder.Path());
        command[1] = "w.gpx.gz";
        const Result ofFile = RunTool(command, folder.Path());
        EXPECT_EQ(ofFile.status, ofPlain.status) << command[0] << ofFile.err;
        EXPECT_EQ(ofFile.out.size() > ofPlain.out.size() + 20, false) << command[0];
        // Under a name that does not say so.
        folder.Write("w.gpx", Gzip(content));
        command[1] = "w.gpx";
        EXPECT_EQ(RunTool(command, folder.Path()).out, ofPlain.out) << command[0];
    }
}

TEST(GzipFileTest, TheDocumentHasTheNameWithoutTheSuffix) {
    const Folder folder;
    folder.Write("walk.gpx.gz", Gzip(Gpx("")));
    EXPECT_THAT(RunTool({"show", "--as-host", "walk.gpx.gz"}, folder.Path()).out,
                HasSubstr("Name       walk\n"));
}

TEST(GzipFileTest, AnEntryOfAnArchiveIsUnpackedToo) {
    const Folder folder;
    folder.Write("q.zip", testing_support::BuildZip({{.name = "a.gpx.gz", .content = Gzip(Gpx(kWaypoint))},
                                                     {.name = "b.gpx", .content = Gzip(Gpx(kWaypoint))},
                                                     {.name = "c.gpx.gz", .content = Gzip("x") + "y"}}));
    for (const std::string command : {"show", "dump", "info", "check"}) {
        const Result result = RunTool({command, "q.zip"}, folder.Path());
        EXPECT_TRUE(Failed(result, "After the end of the gzip data there are other bytes")) << command;
        EXPECT_THAT(result.err, HasSubstr("(q.zip/c.gpx.gz)"));
        EXPECT_EQ(cli::Lines(result.err).size(), 1U) << command << result.err;
    }
    EXPECT_EQ(RunTool({"convert", "q.zip", "out"}, folder.Path()).status, 1);
    EXPECT_THAT(folder.Tree(), ElementsAre("out/", "out/a.gpx", "out/b.gpx", "q.zip"));
}

TEST(GzipFileTest, WhatIsUnpackedWithinAnArchiveCountsForItsLimits) {
    const Folder folder;
    folder.Write("q.zip",
                 testing_support::BuildZip(
                     {{.name = "a.gpx.gz", .content = Gzip(Gpx("<!--" + std::string(3000, 'x') + "-->"))}}));
    EXPECT_TRUE(
        Failed(RunTool({"show", "q.zip", "--max-total-size=3000"}, folder.Path()), "(--max-total-size)"));
    EXPECT_TRUE(
        Failed(RunTool({"show", "q.zip", "--max-entry-size=3000"}, folder.Path()), "(--max-entry-size)"));
    EXPECT_EQ(RunTool({"show", "q.zip", "--max-total-size=8000"}, folder.Path()).status, 0);
}

TEST(GzipFileTest, AGzipFileIsNotReplacedByWhatIsNotPacked) {
    const Folder folder;
    const std::string packed = Gzip(Gpx(kWaypoint));
    folder.Write("w.gpx.gz", packed);
    EXPECT_TRUE(Failed(RunTool({"convert", "w.gpx.gz", "w.gpx.gz"}, folder.Path()),
                       "The result would replace the gzip file, and is not packed itself. (w.gpx.gz)"));
    EXPECT_EQ(ReadFile(folder.File("w.gpx.gz")), packed);
}

TEST(GzipFileTest, ContentThatIsNotGpxIsNamed) {
    const Folder folder;
    folder.Write("w.gz", Gzip(Gzip(Gpx(""))));
    folder.Write("k.gz", Gzip("<kml/>"));
    folder.Write("q.gz", Gzip(testing_support::BuildZip({{.name = "a.gpx", .content = Gpx(kWaypoint)}})));
    EXPECT_TRUE(Failed(RunTool({"show", "w.gz"}, folder.Path()), "w.gz is a gzip file, not GPX; unpack it"));
    EXPECT_TRUE(Failed(RunTool({"show", "k.gz"}, folder.Path()), "k.gz is a KML file, not GPX; "));
    EXPECT_THAT(RunTool({"show", "q.gz"}, folder.Path()).out, HasSubstr("q.gz: a.gpx\n"));
    EXPECT_EQ(RunTool({"zip", "list", "q.gz"}, folder.Path()).out, "a.gpx\n");
}

} // namespace
