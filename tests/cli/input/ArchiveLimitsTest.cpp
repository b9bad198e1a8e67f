// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/ZipBuilder.h"

namespace {

using cli::Failed;
using cli::Folder;
using cli::Result;
using cli::RunTool;
using testing::HasSubstr;
using testing_support::BuildZip;
using testing_support::Deflated;
using testing_support::ZipEntry;

constexpr std::uint64_t kGibibyte = std::uint64_t{1} << 30;

std::string Zeros(std::size_t size) {
    return std::string(size, '\0');
}

const ZipEntry kGood = {.name = "good.gpx", .content = cli::Gpx("")};

Result TestZip(const std::vector<ZipEntry>& entries, const std::vector<std::string>& options = {}) {
    const Folder folder;
    folder.Write("a.zip", BuildZip(entries));
    std::vector<std::string> arguments = {"zip", "test", "a.zip"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunTool(arguments, folder.Path());
}

void ExpectFine(const Result& result) {
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, HasSubstr(" 0 bad."));
}

/// What unpacks to so many bytes may have any ratio.
constexpr std::size_t kAnyRatioUpTo = std::size_t{4} << 20;

/// An entry of zeros that grows to `ratio` times its packed size and `more` bytes, and to more than 4 MiB. Empty blocks
/// are added to the stream until it has the required length.
ZipEntry GrowingEntry(std::size_t ratio, std::size_t more) {
    const std::string emptyBlock("\0\0\0\xFF\xFF", 5);
    for (std::size_t packedSize = kAnyRatioUpTo / ratio + 1;; ++packedSize) {
        const std::string content = Zeros(packedSize * ratio + more);
        std::string packed = Deflated(content);
        if (packed.size() > packedSize || (packedSize - packed.size()) % emptyBlock.size() != 0)
            continue;
        while (packed.size() < packedSize)
            packed.insert(0, emptyBlock);
        return {.name = "zeros.gpx", .content = content, .packed = packed};
    }
}

TEST(ArchiveLimitsTest, AnEntryMayGrowTo200TimesItsSizeAndNoByteMore) {
    ExpectFine(TestZip({GrowingEntry(200, 0)}));
    const Result result = TestZip({GrowingEntry(200, 1), kGood});
    EXPECT_TRUE(Failed(result, "zeros.gpx"));
    EXPECT_EQ(result.err, "vexagpx: The entry grows to more than 4 MiB and 200 times its size in the archive "
                          "(--max-ratio). (a.zip, zeros.gpx)\n");
    EXPECT_EQ(result.out, "2 entries tested, 1 bad.\n");
}

TEST(ArchiveLimitsTest, ASmallEntryMayGrowToAnyRatio) {
    const auto zeros = [](std::size_t size) { return ZipEntry{.name = "z", .content = Zeros(size)}; };
    ExpectFine(TestZip({zeros(kAnyRatioUpTo)}));
    ExpectFine(TestZip({zeros(kAnyRatioUpTo / 2), zeros(kAnyRatioUpTo / 2)}));
    EXPECT_TRUE(Failed(TestZip({zeros(kAnyRatioUpTo + 1)}), "(--max-ratio)"));
    EXPECT_TRUE(Failed(TestZip({zeros(kAnyRatioUpTo / 2), zeros(kAnyRatioUpTo / 2 + 1)}),
                       "With this entry the archive grows to more than 4 MiB and 200 times its size"));
}

TEST(ArchiveLimitsTest, TheRatioIsAnOption) {
    ExpectFine(TestZip({GrowingEntry(300, 0)}, {"--max-ratio", "300"}));
    EXPECT_TRUE(Failed(TestZip({GrowingEntry(300, 1)}, {"--max-ratio", "300"}), "300 times"));
    ExpectFine(TestZip({GrowingEntry(300, 1)}, {"--max-ratio=301"}));
    ExpectFine(TestZip({{.name = "a", .content = "stored", .method = 0}}, {"--max-ratio=1"}));
    ExpectFine(TestZip({{.name = "none", .method = 0}, {.name = "d/"}}, {"--max-ratio=1"}));
    EXPECT_TRUE(
        Failed(TestZip({{.name = "a", .content = Zeros(kAnyRatioUpTo + 1)}}, {"--max-ratio=1"}), "1 times"));
}

TEST(ArchiveLimitsTest, TheSizeOfAnEntryIsAnOption) {
    for (const auto& [limit, size] :
         {std::pair{"1000", 1000u}, {"1000B", 1000u}, {"1KB", 1024u}, {"2k", 2048u}}) {
        const std::string option = std::string("--max-entry-size=") + limit;
        ExpectFine(TestZip({{.name = "a", .content = Zeros(size), .method = 0}}, {option}));
        const Result result =
            TestZip({{.name = "b.gpx", .content = Zeros(size + 1), .method = 0}, kGood}, {option});
        EXPECT_TRUE(Failed(result, "b.gpx")) << limit;
        EXPECT_THAT(result.err, HasSubstr(std::to_string(size) + " bytes")) << limit;
        EXPECT_THAT(result.err, HasSubstr("--max-entry-size")) << limit;
        EXPECT_EQ(result.out, "2 entries tested, 1 bad.\n") << limit;
    }
}

TEST(ArchiveLimitsTest, AnEntryMayHaveAGibibyteByDefault) {
    // No entry has so many bytes here: a gibibyte is refused for its ratio, a byte more for its size.
    EXPECT_TRUE(Failed(TestZip({{.name = "a", .content = "x", .size = kGibibyte}}), "--max-ratio"));
    EXPECT_TRUE(Failed(TestZip({{.name = "a", .content = "x", .size = kGibibyte + 1}}), "--max-entry-size"));
    EXPECT_TRUE(
        Failed(TestZip({{.name = "a", .content = "x", .size = kGibibyte + 1}}, {"--max-entry-size=2GB"}),
               "--max-ratio"));
}

TEST(ArchiveLimitsTest, TheTotalSizeOfAllEntriesIsAnOption) {
    const ZipEntry first = {.name = "a", .content = Zeros(600), .method = 0};
    const ZipEntry second = {.name = "b", .content = Zeros(400), .method = 0};
    ExpectFine(TestZip({first, second, {.name = "none"}}, {"--max-total-size=1000"}));
    const Result result = TestZip({first, second, {.name = "c", .content = "x"}}, {"--max-total-size=1000"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "vexagpx: With this entry the archive unpacks to more than 1000 bytes "
                          "(--max-total-size). (a.zip, c)\n");
    EXPECT_EQ(result.out, "3 entries tested, 1 bad.\n");
}

// The entry is refused for the size that it states; the entries that fit are read.
TEST(ArchiveLimitsTest, AnEntryThatDoesNotFitIntoTheTotalIsNotCounted) {
    const Result result = TestZip({{.name = "a", .content = Zeros(900), .method = 0},
                                   {.name = "large", .content = Zeros(101), .method = 0},
                                   {.name = "c", .content = Zeros(100), .method = 0}},
                                  {"--max-total-size=1000"});
    EXPECT_TRUE(Failed(result, "1000 bytes (--max-total-size). (a.zip, large)"));
    EXPECT_EQ(result.out, "3 entries tested, 1 bad.\n");
}

// The bytes that were unpacked from a bad entry count, too.
TEST(ArchiveLimitsTest, BadEntriesCountAsFarAsTheyAreUnpacked) {
    const Result result = TestZip({{.name = "bad", .content = Zeros(600), .method = 0, .crc = 1},
                                   {.name = "b", .content = Zeros(401), .method = 0}},
                                  {"--max-total-size=1000"});
    EXPECT_TRUE(Failed(result, "CRC error"));
    EXPECT_TRUE(Failed(result, "(--max-total-size). (a.zip, b)"));
}

TEST(ArchiveLimitsTest, AnArchiveMayUnpackTo4GibibytesByDefault) {
    // No entry has so many bytes here: it is refused for the total, or found too short.
    constexpr std::uint64_t kMost = 0xFFFFFFFE;
    const ZipEntry large = {.name = "large", .content = "x", .size = kMost};
    const std::vector<std::string> options = {"--max-entry-size=8GB", "--max-ratio=9999999999"};
    const auto twoEntries = [&](const std::string& content) {
        return TestZip({{.name = "a", .content = content, .method = 0}, large}, options);
    };
    EXPECT_TRUE(
        Failed(twoEntries("12"), "The entry ends before the size that the archive states. (a.zip, large)"));
    EXPECT_TRUE(Failed(twoEntries("123"), "more than 4294967296 bytes (--max-total-size). (a.zip, large)"));
}

// The last entry states a packed size that is larger than the whole archive, so that its own ratio looks small.
TEST(ArchiveLimitsTest, TheRatioHoldsForAllEntriesTogether) {
    const ZipEntry first = GrowingEntry(200, 0);
    const auto archiveOf = [&first](std::size_t lastSize) {
        return BuildZip({first, {.name = "last", .content = Zeros(lastSize), .compressedSize = 1000000}},
                        {.comment = std::string(30000, 'c')});
    };
    const std::size_t most = 200 * archiveOf(7700000).size();
    const auto test = [&](std::size_t lastSize) {
        const Folder folder;
        folder.Write("a.zip", archiveOf(lastSize));
        return RunTool({"zip", "test", "a.zip"}, folder.Path());
    };
    const std::size_t half = first.content.size() / 2;
    ExpectFine(test(most - 3 * half));
    const Result result = test(most - half);
    EXPECT_TRUE(Failed(result, "With this entry the archive grows to more than 4 MiB and 200 times its size "
                               "(--max-ratio). (a.zip, last)"));
    EXPECT_EQ(result.out, "2 entries tested, 1 bad.\n");
    EXPECT_TRUE(Failed(test(most + half),
                       "The entry grows to more than 4 MiB and 200 times its size in the archive"));
}

TEST(ArchiveLimitsTest, StatedSizesThatAreFalseAreReported) {
    std::string text;
    for (int i = 0; text.size() < 5000; ++i)
        text += "line " + std::to_string(i) + "\n";
    const std::string zeros = Zeros(8000000);
    // The bytes after the entry can be taken for a part of it.
    const ZipEntry filler = {.name = "filler", .content = std::string(20000, 'f'), .method = 0};
    const std::size_t packed = Deflated(zeros).size();
    const std::vector<std::pair<const char*, ZipEntry>> rows = {
        {"a bomb", {.content = zeros}},
        {"a bomb that states a small size", {.content = zeros, .size = 100}},
        {"a bomb that states the largest size allowed", {.content = zeros, .size = packed * 200}},
        {"a bomb that states a large packed size", {.content = zeros, .compressedSize = 1000000}},
        {"a bomb that states the largest packed size", {.content = zeros, .compressedSize = 0xFFFFFFFE}},
        {"a smaller size", {.content = text, .size = text.size() - 1}},
        {"no size", {.content = text, .size = 0}},
        {"a larger size", {.content = text, .size = text.size() + 1}},
        {"a larger size, stored", {.content = text, .method = 0, .size = text.size() + 1}},
        {"a smaller packed size", {.content = text, .compressedSize = Deflated(text).size() / 2}},
        {"a smaller packed size, stored", {.content = text, .method = 0, .compressedSize = text.size() - 1}},
        {"no packed size", {.content = text, .compressedSize = 0}},
    };
    for (auto [reason, entry] : rows) {
        entry.name = "false.gpx";
        const Folder folder;
        folder.Write("a.zip", BuildZip({entry, kGood, filler}));
        const Result result = RunTool({"zip", "test", "a.zip"}, folder.Path());
        EXPECT_TRUE(Failed(result, "false.gpx")) << reason;
        EXPECT_EQ(result.out, "3 entries tested, 1 bad.\n") << reason;
        EXPECT_TRUE(Failed(RunTool({"zip", "extract", "a.zip", "out"}, folder.Path()), "false.gpx"))
            << reason;
        EXPECT_THAT(folder.Tree(), testing::ElementsAre("a.zip", "out/", "out/filler", "out/good.gpx"))
            << reason;
    }
}

TEST(ArchiveLimitsTest, NothingOfABombIsPrinted) {
    const Folder folder;
    folder.Write("a.zip", BuildZip({{.name = "bomb.gpx", .content = Zeros(kAnyRatioUpTo + 1)}}));
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"zip", "cat", "a.zip", "bomb.gpx"},
                                               {"dump", "a.zip"},
                                               {"show", "a.zip"},
                                               {"info", "a.zip"},
                                               {"convert", "a.zip", "-"}}) {
        const Result result = RunTool(arguments, folder.Path());
        EXPECT_TRUE(Failed(result, "bomb.gpx")) << arguments[0];
        EXPECT_THAT(result.err, HasSubstr("--max-ratio")) << arguments[0];
        EXPECT_EQ(result.out, "") << arguments[0];
    }
}

TEST(ArchiveLimitsTest, TheNumberOfEntriesIsAnOption) {
    const std::vector<ZipEntry> four(4, {.name = "a"});
    ExpectFine(TestZip(four, {"--max-entries=4"}));
    const Result result = TestZip(four, {"--max-entries=3"});
    EXPECT_TRUE(Failed(result, "more than 3 entries (--max-entries). (a.zip)"));
    EXPECT_EQ(result.out, "");
}

TEST(ArchiveLimitsTest, AnArchiveMayHave100000EntriesByDefault) {
    std::vector<ZipEntry> entries(100000, {.name = "a", .method = 0});
    const Folder folder;
    folder.Write("a.zip", BuildZip(entries, {.zip64 = true}));
    const Result most = RunTool({"zip", "list", "a.zip"}, folder.Path());
    EXPECT_EQ(most.status, 0) << most.err;
    EXPECT_EQ(most.out.size(), 2 * entries.size());
    entries.push_back({.name = "one more"});
    folder.Write("a.zip", BuildZip(entries, {.zip64 = true}));
    const Result more = RunTool({"zip", "list", "a.zip"}, folder.Path());
    EXPECT_TRUE(Failed(more, "more than 100000 entries (--max-entries)"));
    EXPECT_EQ(more.out, "");
    EXPECT_EQ(RunTool({"zip", "list", "a.zip", "--max-entries", "100001"}, folder.Path()).status, 0);
}

TEST(ArchiveLimitsTest, MoreEntriesThanStatedAreCountedToo) {
    // 65535 means a number that the record cannot hold.
    const Folder folder;
    folder.Write("a.zip",
                 BuildZip(std::vector<ZipEntry>(65540, {.name = "a", .method = 0}), {.entryCount = 65535}));
    EXPECT_TRUE(Failed(RunTool({"zip", "list", "a.zip", "--max-entries=65539"}, folder.Path()),
                       "more than 65539 entries"));
}

/// Every command that takes an archive, after which options may follow.
const std::vector<std::vector<std::string>> kCommands = {
    {"show", "a.zip"},
    {"dump", "a.zip"},
    {"info", "a.zip"},
    {"info", "--json", "a.zip"},
    {"convert", "a.zip", "out.gpx"},
    {"zip", "test", "a.zip"},
    {"zip", "cat", "a.zip", "good.gpx"},
    {"zip", "extract", "a.zip", "out"},
    {"zip", "list", "a.zip"},
};

TEST(ArchiveLimitsTest, EveryCommandKeepsEveryLimit) {
    for (std::vector<std::string> command : kCommands) {
        const bool listsOnly = command[1] == "list";
        const std::vector<std::pair<std::string, bool>> rows = {{"--max-entry-size=100", !listsOnly},
                                                                {"--max-total-size=100", !listsOnly},
                                                                {"--max-ratio=1", !listsOnly},
                                                                {"--max-entries=1", true},
                                                                {"--max-entry-size=1MB", false},
                                                                {"--max-total-size=1MB", false},
                                                                {"--max-ratio=50", false},
                                                                {"--max-entries=2", false}};
        for (const auto& [option, refused] : rows) {
            const Folder folder;
            // Only of a large entry the ratio counts.
            const std::string rest = option == "--max-ratio=1" ? std::string(kAnyRatioUpTo, ' ') : "";
            folder.Write("a.zip", BuildZip({{.name = kGood.name, .content = kGood.content + rest},
                                            {.name = "none.txt"}}));
            command.push_back(option);
            const Result result = RunTool(command, folder.Path());
            const std::string shown = testing::PrintToString(command);
            if (refused) {
                EXPECT_TRUE(Failed(result, option.substr(0, option.find('=')))) << shown;
            } else {
                EXPECT_EQ(result.status, 0) << shown << result.err;
            }
            command.pop_back();
        }
    }
}

void ExpectWrongUsage(const std::vector<std::string>& values) {
    const Folder folder;
    folder.Write("a.zip", BuildZip({kGood}));
    for (const std::vector<std::string>& command : kCommands)
        for (const char* option : {"--max-entry-size=", "--max-total-size=", "--max-ratio=", "--max-entries=",
                                   "--max-stream-size="})
            for (const std::string& value : values) {
                std::vector<std::string> arguments = command;
                arguments.push_back(option + value);
                const Result result = RunTool(arguments, folder.Path());
                const std::string shown = testing::PrintToString(arguments);
                EXPECT_EQ(result.status, 2) << shown << result.err;
                EXPECT_THAT(result.err, testing::StartsWith("vexagpx: ")) << shown;
                EXPECT_THAT(result.err, HasSubstr("--max-")) << shown;
                EXPECT_EQ(result.out, "") << shown;
            }
    EXPECT_THAT(folder.Names(), testing::ElementsAre("a.zip"));
}

TEST(ArchiveLimitsTest, ALimitThatIsNoNumberIsWrongUsage) {
    ExpectWrongUsage({"x", "five", "1.5", "5x"});
}

TEST(ArchiveLimitsTest, ALimitOf0IsWrongUsage) {
    ExpectWrongUsage({"0", "00", "0x0", ""});
}

TEST(ArchiveLimitsTest, ALimitBelow0OrBeyondEveryNumberIsWrongUsage) {
    ExpectWrongUsage({"-1", "99999999999999999999"});
}

} // namespace
