// SPDX-License-Identifier: MIT

// Entries that claim the same bytes of an archive's file.

#include <vexagpx/input/EntryOverlaps.h>

#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <random>

namespace {

using cli::Failed;
using cli::Folder;
using cli::Result;
using cli::RunTool;
using testing::ElementsAre;
using testing::HasSubstr;
using testing_support::BuildZip;
using testing_support::ZipEntry;
using vexagpx::FindOverlaps;
using vexaTransferLib::ZipEntryRange;

constexpr std::uint64_t kEndless = ~std::uint64_t{0};
using Ranges = std::vector<std::optional<ZipEntryRange>>;

TEST(EntryOverlapsTest, AnEntryThatReachesIntoOneAfterItOrSharesItsStartIsRefused) {
    struct Row {
        const char* reason;
        Ranges ranges;
        std::vector<bool> refused;
    };
    const std::optional<ZipEntryRange> none;
    const Row rows[] = {
        {"no entries", {}, {}},
        {"one", {{{0, 10}}}, {false}},
        {"one without an end", {{{0, kEndless}}}, {false}},
        {"one after another", {{{0, 10}}, {{10, 20}}, {{20, 30}}}, {false, false, false}},
        {"gaps", {{{5, 10}}, {{11, 20}}}, {false, false}},
        {"another order", {{{20, 30}}, {{0, 10}}, {{10, 20}}}, {false, false, false}},
        {"a byte of the next", {{{0, 11}}, {{10, 20}}}, {true, false}},
        {"a byte of the next, another order", {{{10, 20}}, {{0, 11}}}, {false, true}},
        {"one within another", {{{0, 100}}, {{10, 20}}, {{100, 110}}}, {true, false, false}},
        {"two within another", {{{0, 100}}, {{10, 20}}, {{30, 40}}}, {true, false, false}},
        {"all of the rest", {{{0, kEndless}}, {{10, kEndless}}, {{20, 30}}}, {true, true, false}},
        {"one header", {{{0, 10}}, {{0, 10}}, {{0, 10}}}, {false, true, true}},
        {"one header, different ends", {{{0, 9}}, {{0, 10}}, {{0, 8}}}, {false, true, true}},
        {"one header, and the next", {{{0, 11}}, {{0, 10}}, {{10, 12}}}, {true, true, false}},
        {"after one header", {{{5, 9}}, {{0, 5}}, {{5, 9}}}, {false, false, true}},
        {"entries that cannot be read", {none, {{0, 11}}, none, {{10, 20}}}, {false, true, false, false}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(FindOverlaps(row.ranges), row.refused) << row.reason;
}

TEST(EntryOverlapsTest, RangesThatAreNotRefusedDoNotOverlap) {
    std::mt19937 random(20260101);
    const auto below = [&random](std::uint64_t end) { return random() % end; };
    for (int round = 0; round < 2000; ++round) {
        Ranges ranges(static_cast<std::size_t>(below(12)));
        for (std::optional<ZipEntryRange>& range : ranges)
            if (const std::uint64_t begin = below(40); below(8) > 0)
                range = ZipEntryRange{begin, begin + 1 + below(10)};
        const std::vector<bool> refused = FindOverlaps(ranges);
        for (std::size_t i = 0; i < ranges.size(); ++i) {
            bool overlapsOneAfter = false;
            for (std::size_t j = 0; j < ranges.size(); ++j) {
                if (i == j || !ranges[i] || !ranges[j])
                    continue;
                const bool isAfter = ranges[j]->begin > ranges[i]->begin;
                overlapsOneAfter = overlapsOneAfter || (isAfter && ranges[j]->begin < ranges[i]->end) ||
                                   (j < i && ranges[j]->begin == ranges[i]->begin);
            }
            EXPECT_EQ(refused[i], overlapsOneAfter) << "round " << round << ", range " << i;
        }
    }
}

const std::string kRefusal = "vexagpx: The entry claims bytes that belong to another entry of the archive. ";

Result TestZip(const std::string& archive) {
    const Folder folder;
    folder.Write("a.zip", archive);
    return RunTool({"zip", "test", "a.zip"}, folder.Path());
}

TEST(EntryOverlapsTest, OfEntriesThatShareAHeaderOnlyTheFirstIsUnpacked) {
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += "line " + std::to_string(i * i) + "\n";
    const std::vector<ZipEntry> entries(60, {.name = "text", .content = text, .offset = 0});
    const std::size_t size = BuildZip({entries[0]}).find("PK\1\2");
    const std::string whole = BuildZip(entries, {.directoryOffset = size});
    const std::string directory = whole.substr(whole.find("PK\1\2"));
    const Result result = TestZip(whole.substr(0, size) + directory);
    EXPECT_TRUE(Failed(result, "(a.zip, text)"));
    EXPECT_EQ(result.out, "60 entries tested, 59 bad.\n");
    EXPECT_EQ(cli::Lines(result.err), std::vector<std::string>(59, kRefusal + "(a.zip, text)"));
}

TEST(EntryOverlapsTest, AnEntryAroundAnotherOneIsRefusedAndTheOthersAreNot) {
    const std::string inner = BuildZip({{.name = "inner.gpx", .content = cli::Gpx("")}});
    const ZipEntry outer = {
        .name = "outer.gpx", .content = inner.substr(0, inner.find("PK\1\2")), .method = 0};
    const std::size_t place = testing_support::PackedBytesAt(BuildZip({outer}), "outer.gpx");
    const Folder folder;
    folder.Write("a.zip", BuildZip({outer,
                                    {.name = "inner.gpx", .content = cli::Gpx(""), .offset = place},
                                    {.name = "good.gpx", .content = cli::Gpx("")}}));
    const std::string refusal = kRefusal + "(a.zip, outer.gpx)\n";
    const Result test = RunTool({"zip", "test", "a.zip"}, folder.Path());
    EXPECT_EQ(test.status, 1);
    EXPECT_EQ(test.err, refusal);
    EXPECT_EQ(test.out, "3 entries tested, 1 bad.\n");
    for (const char* command : {"show", "dump", "info", "check"}) {
        const Result result = RunTool({command, "a.zip"}, folder.Path());
        EXPECT_TRUE(Failed(result, "outer.gpx)")) << command;
        EXPECT_THAT(result.err, HasSubstr(refusal)) << command;
        EXPECT_THAT(result.out, HasSubstr("good.gpx")) << command;
    }
    EXPECT_EQ(RunTool({"zip", "cat", "a.zip", "outer.gpx"}, folder.Path()).err, refusal);
    EXPECT_EQ(RunTool({"zip", "cat", "a.zip", "inner.gpx"}, folder.Path()).out, cli::Gpx(""));
    EXPECT_EQ(RunTool({"zip", "cat", "a.zip", "good.gpx"}, folder.Path()).out, cli::Gpx(""));
    EXPECT_EQ(RunTool({"zip", "extract", "a.zip", "out"}, folder.Path()).err, refusal);
    EXPECT_THAT(folder.Tree(), ElementsAre("a.zip", "out/", "out/good.gpx", "out/inner.gpx"));
    EXPECT_EQ(RunTool({"convert", "a.zip", "gpx"}, folder.Path()).err, refusal);
    const Result list = RunTool({"zip", "list", "a.zip"}, folder.Path());
    EXPECT_EQ(list.status, 0);
    EXPECT_EQ(list.out, "outer.gpx\ninner.gpx\ngood.gpx\n");
}

} // namespace
