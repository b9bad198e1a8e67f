// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <thread>

#include <sys/stat.h>

namespace {

using cli::Failed;
using cli::Folder;
using cli::Lines;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using testing::HasSubstr;
using testing::IsEmpty;
using testing_support::BuildZip;
using testing_support::ZipEntry;

const std::string kLong = [] {
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += "line " + std::to_string(i * i) + "\n";
    return text;
}();

std::string BitFlipped(std::string bytes, std::size_t at) {
    bytes.at(at) ^= 1;
    return bytes;
}

/// Runs a zip command on an archive of these bytes.
Result Zip(const std::string& command, const std::string& archive,
           const std::vector<std::string>& more = {}) {
    const Folder folder;
    folder.Write("a.zip", archive);
    std::vector<std::string> arguments = {"zip", command, "a.zip"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return RunTool(arguments, folder.Path());
}

void ExpectOutput(const Result& result, const std::string& out) {
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, out);
}

TEST(ZipTest, ListPrintsTheNamesInTheOrderOfTheArchive) {
    const std::string archive =
        BuildZip({{.name = "b.gpx"}, {.name = "a/"}, {.name = "a/c d.txt"}, {.name = "Größe.gpx"}});
    ExpectOutput(Zip("list", archive), "b.gpx\na/\na/c d.txt\nGröße.gpx\n");
}

TEST(ZipTest, CatPrintsTheBytesOfTheEntry) {
    std::string everyByte;
    for (unsigned i = 0; i < 70000; ++i)
        everyByte.push_back(static_cast<char>(i * i / 251));
    for (const std::uint16_t method : {testing_support::kZipStored, testing_support::kZipDeflated}) {
        const std::string archive = BuildZip({{.name = "other", .content = "no"},
                                              {.name = "all", .content = everyByte, .method = method},
                                              {.name = "none", .method = method}});
        ExpectOutput(Zip("cat", archive, {"all"}), everyByte);
        ExpectOutput(Zip("cat", archive, {"none"}), "");
    }
}

const std::vector<std::string> kOddNames = {
    "plain.gpx",
    "a\nb",
    "a\\x0Ab",
    "\x1B[31mred",
    "a\xE2\x80\xAE"
    "xpg.exe",
    "\\x41",
    "\\x5Cx41",
    "A",
    "Gr\x94\xE1"
    "e.gpx",
    "größe.gpx",
    "[list]",
    "-x",
    "--help",
    "--",
    " blank ",
    "a\rb",
    "\tb",
    "dir\\file",
    "dir/file",
    "../up",
    "/absolute",
    "C:\\drive",
    "日本/🗻.gpx",
    "\xFF\xFE",
    "\xC2\x85next",
    "\xEF\xBF\xBD",
    "list",
    "zip",
    "*",
    "",
};

std::string OddArchive(const std::vector<std::string>& names) {
    std::vector<ZipEntry> entries;
    for (const std::string& name : names)
        entries.push_back({.name = name, .content = "content of <" + name + ">"});
    return BuildZip(entries);
}

TEST(ZipTest, EveryPrintedNameBringsExactlyItsOwnContent) {
    for (const bool reversed : {false, true}) {
        std::vector<std::string> names = kOddNames;
        if (reversed)
            std::reverse(names.begin(), names.end());
        const std::string archive = OddArchive(names);
        const Result list = Zip("list", archive);
        EXPECT_EQ(list.status, 0);
        const std::vector<std::string> printed = Lines(list.out);
        ASSERT_EQ(printed.size(), names.size()) << list.out;
        for (std::size_t i = 0; i < names.size(); ++i)
            EXPECT_EQ(Zip("cat", archive, {"--", printed[i]}).out, "content of <" + names[i] + ">")
                << printed[i];
    }
}

TEST(ZipTest, CatTakesThePrintedName) {
    const std::string archive =
        BuildZip({{.name = "a\nb", .content = "escaped"}, {.name = "f\x81r", .content = "decoded"}});
    ExpectOutput(Zip("cat", archive, {"a\\x0Ab"}), "escaped");
    ExpectOutput(Zip("cat", archive, {"für"}), "decoded");
}

TEST(ZipTest, PrintedNamesAreValidUtf8WithoutControls) {
    const Result list = Zip("list", OddArchive(kOddNames));
    for (const std::string& line : Lines(list.out)) {
        for (const char byte : line)
            EXPECT_TRUE(static_cast<unsigned char>(byte) >= 0x20 && byte != 0x7F) << line;
        EXPECT_THAT(line, testing::Not(HasSubstr("\xE2\x80\xAE")));
    }
    EXPECT_THAT(Lines(list.out),
                testing::IsSupersetOf({"a\\x0Ab", "a\\x5Cx0Ab", "\\x1B[31mred", "\\x5Cx41",
                                       "a\\xE2\\x80\\xAExpg.exe", "Größe.gpx", "größe.gpx"}));
}

TEST(ZipTest, OfTwoEntriesOfOneNameCatTakesTheFirst) {
    const std::string archive =
        BuildZip({{.name = "a", .content = "first"}, {.name = "a", .content = "second"}});
    ExpectOutput(Zip("cat", archive, {"a"}), "first");
    ExpectOutput(Zip("list", archive), "a\na\n");
    ExpectOutput(Zip("test", archive), "2 entries tested, 0 bad.\n");
}

TEST(ZipTest, AnEntryThatIsNotThereIsReported) {
    const std::string archive = BuildZip({{.name = "a.gpx", .content = "x"}});
    for (const char* name : {"b.gpx", "A.GPX", "a", "./a.gpx", "a.gpx/", ""}) {
        const Result result = Zip("cat", archive, {name});
        EXPECT_TRUE(Failed(result, "a.zip")) << name;
        EXPECT_EQ(result.out, "") << name;
    }
}

struct BadEntry {
    const char* reason;
    ZipEntry entry;
};

std::vector<BadEntry> BadEntries() {
    const std::string packed = testing_support::Deflated(cli::ReadFile(cli::Data("hand-written.gpx")));
    return {
        {"an altered stored byte", {.content = kLong, .method = 0, .packed = BitFlipped(kLong, 1000)}},
        {"a wrong checksum", {.content = kLong, .crc = 1}},
        {"a wrong checksum of nothing", {.method = 0, .crc = 1}},
        {"an impossible block type", {.content = kLong, .packed = "\x07" + std::string(100, '\0')}},
        {"an altered stream",
         {.content = cli::ReadFile(cli::Data("hand-written.gpx")),
          .packed = BitFlipped(packed, packed.size() / 2)}},
        {"encrypted", {.content = kLong, .flags = testing_support::kZipEncryptedFlag}},
        {"packed with bzip2", {.content = kLong, .method = 12, .packed = kLong}},
        {"an unknown method", {.content = kLong, .method = 99, .packed = kLong}},
        {"a larger size than it has", {.content = kLong, .size = kLong.size() + 1}},
        {"a larger size, stored", {.content = kLong, .method = 0, .size = kLong.size() + 1}},
        {"a smaller size than it has", {.content = kLong, .size = 100}},
        {"a smaller size, stored", {.content = kLong, .method = 0, .size = kLong.size() - 1}},
        {"a stream that ends early",
         {.content = kLong, .packed = testing_support::Deflated(kLong.substr(1000))}},
        {"no local header there", {.content = kLong, .offset = 3}},
    };
}

TEST(ZipTest, TestReadsEveryEntryAndNamesTheBadOnes) {
    for (BadEntry bad : BadEntries()) {
        bad.entry.name = "bad one\n.gpx";
        const std::string archive = BuildZip(
            {{.name = "first.gpx", .content = "good"}, bad.entry, {.name = "last.gpx", .content = kLong}});
        const Result result = Zip("test", archive);
        EXPECT_TRUE(Failed(result, "bad one\\x0A.gpx")) << bad.reason;
        EXPECT_EQ(Lines(result.err).size(), 1U) << bad.reason << result.err;
        EXPECT_THAT(result.err, testing::Not(HasSubstr("--max-"))) << bad.reason;
        EXPECT_EQ(result.out, "3 entries tested, 1 bad.\n") << bad.reason;
        EXPECT_TRUE(Failed(Zip("cat", archive, {"bad one\\x0A.gpx"}), "bad one\\x0A.gpx")) << bad.reason;
        ExpectOutput(Zip("cat", archive, {"last.gpx"}), kLong);
        EXPECT_EQ(Lines(Zip("list", archive).out).size(), 3U) << bad.reason;
    }
}

TEST(ZipTest, EntriesWithAPasswordOrAnotherMethodAreReported) {
    const std::vector<std::pair<ZipEntry, std::string>> rows = {
        {{.flags = testing_support::kZipEncryptedFlag}, "protected by a password and cannot be read"},
        {{.method = 99, .flags = testing_support::kZipEncryptedFlag, .packed = "x"},
         "protected by a password and cannot be read"},
        {{.method = 1, .packed = "x"}, "packed with method 1 (shrink), which cannot be read"},
        {{.method = 9, .packed = "x"}, "packed with method 9 (deflate64), which cannot be read"},
        {{.method = 12, .packed = "x"}, "packed with method 12 (bzip2), which cannot be read"},
        {{.method = 14, .packed = "x"}, "packed with method 14 (LZMA), which cannot be read"},
        {{.method = 93, .packed = "x"}, "packed with method 93 (Zstandard), which cannot be read"},
        {{.method = 7, .packed = "x"}, "packed with method 7, which cannot be read"},
        {{.method = 65535, .packed = "x"}, "packed with method 65535, which cannot be read"},
    };
    for (auto [entry, words] : rows) {
        entry.name = "a.gpx";
        const std::string archive = BuildZip({entry});
        const std::string message = "vexagpx: The entry is " + words + ". (a.zip, a.gpx)\n";
        EXPECT_EQ(Zip("test", archive).err, message);
        EXPECT_EQ(Zip("cat", archive, {"a.gpx"}).err, message);
        const Folder folder;
        folder.Write("a.zip", archive);
        EXPECT_EQ(RunTool({"show", "a.zip"}, folder.Path()).err, message);
    }
}

TEST(ZipTest, ASoundArchiveIsReported) {
    ExpectOutput(Zip("test", BuildZip({{.name = "a"}, {.name = "d/"}, {.name = "b", .content = kLong}})),
                 "3 entries tested, 0 bad.\n");
    ExpectOutput(Zip("test", BuildZip({{.name = "a"}})), "1 entry tested, 0 bad.\n");
}

TEST(ZipTest, AnArchiveWithoutEntriesIsSound) {
    ExpectOutput(Zip("list", BuildZip({})), "");
    ExpectOutput(Zip("test", BuildZip({})), "0 entries tested, 0 bad.\n");
    EXPECT_TRUE(Failed(Zip("cat", BuildZip({}), {"a"}), "a.zip"));
}

TEST(ZipTest, AFileThatIsNoArchiveIsReported) {
    const std::string whole = BuildZip({{.name = "a.gpx", .content = kLong}, {.name = "b.gpx"}});
    const std::size_t directory = whole.find("PK\1\2");
    for (const std::string& bytes :
         {std::string(), std::string("text"), cli::Gpx(""), whole.substr(0, 20), whole.substr(0, directory),
          whole.substr(0, directory + 30), whole.substr(0, whole.size() - 5), whole.substr(0, 4)})
        for (const char* command : {"list", "test", "cat"}) {
            const Result result = Zip(command, bytes, {command == std::string("cat") ? "a.gpx" : "--"});
            EXPECT_TRUE(Failed(result, "a.zip")) << command << bytes.size();
            EXPECT_EQ(result.out, "") << command;
        }
    for (const char* file : {"missing.zip", "."})
        EXPECT_TRUE(Failed(RunTool({"zip", "list", file}), file)) << file;
}

TEST(ZipTest, ADirectoryThatIsDamagedInTheMiddleIsReportedAfterWhatPrecedesIt) {
    const std::string whole = BuildZip({{.name = "1"}, {.name = "2"}, {.name = "3"}});
    std::size_t record = whole.find("PK\1\2");
    for (std::size_t found = 0; found < 3; ++found, record = whole.find("PK\1\2", record + 1)) {
        const std::string archive = BitFlipped(whole, record + 2);
        const Result list = Zip("list", archive);
        EXPECT_TRUE(Failed(list, "a.zip")) << found;
        EXPECT_THAT(list.err, HasSubstr("damaged")) << found;
        EXPECT_EQ(list.out, std::string("1\n2\n").substr(0, 2 * found)) << found;
        EXPECT_TRUE(Failed(Zip("test", archive), "damaged")) << found;
        EXPECT_TRUE(Failed(Zip("cat", archive, {"3"}), "damaged")) << found;
    }
    EXPECT_TRUE(Failed(Zip("list", BuildZip({{.name = "1"}}, {.entryCount = 2})), "damaged"));
}

TEST(ZipTest, StubsCommentsAndZip64RecordsDoNoHarm) {
    ExpectOutput(Zip("list", BuildZip({{.name = "1"}}, {.stub = "MZ stub", .offsetsCountStub = true})),
                 "1\n");
    ExpectOutput(Zip("list", BuildZip({{.name = "1"}}, {.stub = "MZ stub", .offsetsCountStub = false})),
                 "1\n");
    ExpectOutput(Zip("list", BuildZip({{.name = "1"}}, {.comment = "of the archive", .zip64 = true})), "1\n");
}

TEST(ZipTest, StandardInputAndANamedPipe) {
    const std::string archive = BuildZip({{.name = "a.gpx", .content = kLong}});
    const Folder temporary;
    const std::vector<std::pair<std::vector<std::string>, std::string>> rows = {
        {{"list"}, "a.gpx\n"}, {{"cat", "a.gpx"}, kLong}, {{"test"}, "1 entry tested, 0 bad.\n"}};
    for (const auto& [command, out] : rows) {
        const Folder folder;
        ASSERT_EQ(::mkfifo(folder.File("pipe").c_str(), 0600), 0);
        for (const std::string& file : {std::string("-"), folder.File("pipe")}) {
            std::vector<std::string> arguments = {"zip", command[0], file};
            arguments.insert(arguments.end(), command.begin() + 1, command.end());
            std::thread writer([&] {
                if (file != "-")
                    folder.Write("pipe", archive);
            });
            ExpectOutput(Tool(arguments).Stdin(archive).Set("TMPDIR", temporary.Path()).Run(), out);
            writer.join();
            EXPECT_THAT(temporary.Names(), IsEmpty());
        }
    }
    EXPECT_TRUE(Failed(Tool({"zip", "list", "-"}).Stdin("PK").Run(), "(-)"));
}

TEST(ZipTest, AFullDeviceIsReported) {
    const Folder folder;
    folder.Write("a.zip", BuildZip({{.name = "a", .content = kLong}}));
    for (std::vector<std::string> command : std::vector<std::vector<std::string>>{
             {"list", "a.zip"}, {"cat", "a.zip", "a"}, {"test", "a.zip"}, {"extract", "a.zip", "out"}}) {
        command.insert(command.begin(), "zip");
        const Result result = Tool(command).In(folder.Path()).StdoutTo("/dev/full").Run();
        EXPECT_TRUE(Failed(result, "Unable to write to standard output: No space left on device"));
        EXPECT_EQ(Lines(result.err).size(), 1U) << result.err;
    }
}

TEST(ZipTest, NamesOfArchivesAreTakenAsTheyAre) {
    const Folder folder;
    const std::string archive = BuildZip({{.name = "-e", .content = "x"}, {.name = "[e]", .content = "y"}});
    for (const char* name : {"a b.zip", "Größe 日本.zip", "-a.zip", "--help", "[a]", "a:b", "list", "50%",
                             "Gr\xF6\xDF"
                             "e.zip"}) {
        folder.Write(name, archive);
        ExpectOutput(RunTool({"zip", "list", "--", name}, folder.Path()), "-e\n[e]\n");
        ExpectOutput(RunTool({"zip", "cat", "--", name, "-e"}, folder.Path()), "x");
        ExpectOutput(RunTool({"zip", "cat", "--", name, "[e]"}, folder.Path()), "y");
    }
    ExpectOutput(RunTool({"zip", "cat", "[a]", "[e]"}, folder.Path()), "y");
    ExpectOutput(RunTool({"zip", "cat", "a b.zip", "--", "-e"}, folder.Path()), "x");
}

struct CorpusRow {
    std::size_t names; ///< lines of `zip list`
    const char* test;  ///< output of `zip test`
    int dumped;        ///< lines of `dump`
    int dumpStatus;
};

TEST(ZipTest, TheArchivesOfTheCorpus) {
    const std::vector<std::string> files = cli::Corpus("zip");
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    const CorpusRow noArchive{0, "", 0, 1};
    const std::map<std::string, CorpusRow> rows = {
        {"archive-comment.zip", {2, "2 entries tested, 0 bad.\n", 0, 1}},
        {"bad-deflate.zip", {2, "2 entries tested, 1 bad.\n", 0, 1}},
        {"cp437-names.zip", {2, "2 entries tested, 0 bad.\n", 2, 0}},
        {"crc-mismatch.zip", {4, "4 entries tested, 2 bad.\n", 0, 1}},
        {"data-descriptors.zip", {4, "4 entries tested, 0 bad.\n", 0, 1}},
        {"deflated.zip", {3, "3 entries tested, 0 bad.\n", 0, 1}},
        {"empty.zip", {0, "0 entries tested, 0 bad.\n", 0, 1}},
        {"encrypted-flag.zip", {2, "2 entries tested, 1 bad.\n", 0, 1}},
        {"end-record-cut.zip", noArchive},
        // Two of the four names of GPX files cannot be read whole.
        {"long-names.zip", {5, "5 entries tested, 0 bad.\n", 2, 0}},
        {"many-entries.zip", {200, "200 entries tested, 0 bad.\n", 200, 0}},
        {"nested-folders.zip", {7, "7 entries tested, 0 bad.\n", 3, 0}},
        {"not-a-zip.zip", noArchive},
        {"pocket-query.zip", {2, "2 entries tested, 0 bad.\n", 2, 0}},
        {"signature-in-comment.zip", noArchive},
        {"stored.zip", {3, "3 entries tested, 0 bad.\n", 0, 1}},
        {"stub-in-front.zip", {3, "3 entries tested, 0 bad.\n", 0, 1}},
        {"stub-not-counted.zip", {3, "3 entries tested, 0 bad.\n", 0, 1}},
        {"truncated.zip", noArchive},
        {"unsupported-method.zip", {3, "3 entries tested, 2 bad.\n", 0, 1}},
        {"utf8-names.zip", {3, "3 entries tested, 0 bad.\n", 3, 0}},
        {"zero-bytes.zip", noArchive},
        {"zip64.zip", {2, "2 entries tested, 0 bad.\n", 0, 1}},
    };
    for (const std::string& file : files) {
        const std::string name = std::filesystem::path(file).filename().string();
        const Result list = RunTool({"zip", "list", file});
        const Result test = RunTool({"zip", "test", file});
        const Result dump = RunTool({"dump", file});
        ASSERT_TRUE(rows.contains(name)) << "no row for " << name;
        const CorpusRow& row = rows.at(name);
        const std::string summary = row.test;
        EXPECT_EQ(list.status, summary.empty() ? 1 : 0) << name;
        EXPECT_EQ(Lines(list.out).size(), row.names) << name;
        EXPECT_EQ(test.out, summary) << name;
        EXPECT_EQ(test.status, summary.ends_with(" 0 bad.\n") ? 0 : 1) << name << test.err;
        EXPECT_EQ(dump.status, row.dumpStatus) << name << dump.err;
        EXPECT_EQ(static_cast<int>(Lines(dump.out).size()), row.dumped) << name;
        for (const Result* result : {&list, &test, &dump})
            if (result->status != 0) {
                EXPECT_TRUE(Failed(*result, name));
            }
    }
}

} // namespace
