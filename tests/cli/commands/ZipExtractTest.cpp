// SPDX-License-Identifier: MIT
#include "support/ResourceLimit.h"
#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

using cli::Failed;
using cli::Folder;
using cli::Lines;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing_support::BuildZip;
using testing_support::ZipEntry;

const ZipEntry kGood = {.name = "last.gpx", .content = "good"};

/// A folder with an archive "a.zip" in it, which can be extracted to "out".
class Extraction {
public:
    explicit Extraction(const std::vector<ZipEntry>& entries) { folder.Write("a.zip", BuildZip(entries)); }

    Result Run(const std::vector<std::string>& options = {}) const {
        std::vector<std::string> arguments = {"zip", "extract", "a.zip", "out"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return RunTool(arguments, folder.Path());
    }

    void ExpectTree(std::vector<std::string> below) const {
        below.insert(below.end(), {"../a.zip", "./"});
        std::vector<std::string> expected;
        for (const std::string& path : below)
            expected.push_back(fs::path("out/" + path).lexically_normal().string());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(folder.Tree(), expected);
    }

    std::string Content(const std::string& path) const { return ReadFile(folder.File("out/" + path)); }

    Folder folder;
};

TEST(ZipExtractTest, EveryEntryGetsItsPlaceAndContent) {
    const std::string large(300000, 'x');
    const Extraction extraction({{.name = "a.gpx", .content = "A"},
                                 {.name = "caches/"},
                                 {.name = "caches/north/one.gpx", .content = large, .method = 0},
                                 {.name = "empty/"},
                                 {.name = "none"},
                                 {.name = "back\\slash.txt", .content = "B"},
                                 {.name = "./dot//twice", .content = "D"},
                                 {.name = "Größe 日本.gpx", .content = "G"},
                                 {.name = "cp\x94.gpx", .content = "C"}});
    const Result result = extraction.Run();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "7 files extracted.\n");
    extraction.ExpectTree({"a.gpx", "caches/", "caches/north/", "caches/north/one.gpx", "empty/", "none",
                           "back/", "back/slash.txt", "dot/", "dot/twice", "Größe 日本.gpx", "cpö.gpx"});
    EXPECT_EQ(extraction.Content("caches/north/one.gpx"), large);
    EXPECT_EQ(extraction.Content("none"), "");
    EXPECT_EQ(extraction.Content("cpö.gpx"), "C");
}

TEST(ZipExtractTest, ControlCharactersAreEscapedInFileNames) {
    const Extraction extraction({{.name = "a\nb/\x1B[31m", .content = "A"}, {.name = "x\xE2\x80\xAEy"}});
    EXPECT_EQ(extraction.Run().status, 0);
    extraction.ExpectTree({"a\\x0Ab/", "a\\x0Ab/\\x1B[31m", "x\\xE2\\x80\\xAEy"});
}

TEST(ZipExtractTest, NamesThatLeadElsewhereAreRefusedByNameAndTheOthersExtracted) {
    const Folder elsewhere;
    const std::vector<std::string> names = {"../up.gpx",
                                            "a/../../up.gpx",
                                            "a/../inside.gpx",
                                            "..\\up.gpx",
                                            "a\\..\\..\\up.gpx",
                                            "..",
                                            "../",
                                            "../dir/",
                                            "/up.gpx",
                                            "\\up.gpx",
                                            "//host/up.gpx",
                                            elsewhere.File("absolute.gpx"),
                                            "C:up.gpx",
                                            "C:\\up.gpx",
                                            "c:/up.gpx",
                                            ""};
    for (const std::string& name : names) {
        for (const std::vector<std::string>& options :
             std::vector<std::vector<std::string>>{{}, {"--overwrite"}}) {
            const Extraction extraction({{.name = name, .content = "bad"}, kGood});
            const Result result = extraction.Run(options);
            EXPECT_TRUE(Failed(result, "Refused to write the entry: " + name)) << name;
            EXPECT_EQ(Lines(result.err).size(), 1U) << result.err;
            EXPECT_EQ(result.out, "1 file extracted.\n") << name;
            extraction.ExpectTree({"last.gpx"});
            EXPECT_THAT(elsewhere.Names(), IsEmpty());
        }
    }
}

TEST(ZipExtractTest, EntriesThatAreLinksAreRefused) {
    for (const char* name : {"link", "link.gpx", "link/"}) {
        const Extraction extraction({{.name = name,
                                      .content = "/etc/passwd",
                                      .externalAttributes = testing_support::kZipSymbolicLink},
                                     {.name = "mode", .externalAttributes = 0100644u << 16},
                                     kGood});
        EXPECT_TRUE(Failed(extraction.Run(), std::string("the entry: ") + name)) << name;
        extraction.ExpectTree({"last.gpx", "mode"});
    }
}

TEST(ZipExtractTest, LinksThatLieInTheFolderAreNotFollowed) {
    struct Row {
        const char* link; ///< below "out"
        const char* target;
        const char* entry;
    };
    const Row rows[] = {
        {"sub", "../elsewhere", "sub/new.gpx"},
        {"sub", "../elsewhere", "sub/"},
        {"sub", "../elsewhere", "sub/kept.gpx"},
        {"sub", "../elsewhere", "sub/deep/new.gpx"},
        {"deep/sub", "../..", "deep/sub/new.gpx"},
        {"a.gpx", "../elsewhere/kept.gpx", "a.gpx"},
        {"a.gpx", "../elsewhere/fresh.gpx", "a.gpx"},
        {"a.gpx", "missing", "a.gpx"},
        {"self", ".", "self/new.gpx"},
    };
    for (const Row& row : rows)
        for (const std::vector<std::string>& options :
             std::vector<std::vector<std::string>>{{}, {"--overwrite"}}) {
            const Extraction extraction({{.name = row.entry, .content = "bad"}, kGood});
            const Folder& folder = extraction.folder;
            fs::create_directories(folder.File("elsewhere"));
            folder.Write("elsewhere/kept.gpx", "as it was");
            fs::create_directories(fs::path(folder.File("out/") + row.link).parent_path());
            fs::create_symlink(row.target, folder.File("out/") + row.link);
            std::vector<std::string> expected = folder.Tree();
            expected.push_back("out/last.gpx");
            std::sort(expected.begin(), expected.end());
            const Result result = extraction.Run(options);
            EXPECT_TRUE(Failed(result, row.entry)) << row.entry;
            EXPECT_THAT(result.out, HasSubstr("1 file")) << row.entry;
            EXPECT_EQ(folder.Tree(), expected) << row.entry;
            EXPECT_EQ(ReadFile(folder.File("elsewhere/kept.gpx")), "as it was");
            EXPECT_TRUE(fs::is_symlink(folder.File("out/") + row.link)) << row.entry;
        }
}

/// A process that swaps a folder for a link to another place and back, as fast as it can, until this object is
/// destroyed.
class Swapper {
public:
    Swapper(const std::string& folder, const std::string& link) : child_(::fork()) {
        if (child_ == 0)
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        while (child_ == 0)
            ::renameat2(AT_FDCWD, folder.c_str(), AT_FDCWD, link.c_str(), RENAME_EXCHANGE);
    }
    ~Swapper() {
        ::kill(child_, SIGKILL);
        ::waitpid(child_, nullptr, 0);
    }
    Swapper(const Swapper&) = delete;
    Swapper& operator=(const Swapper&) = delete;

private:
    pid_t child_;
};

TEST(ZipExtractTest, NothingIsWrittenElsewhereWhileFoldersAreSwappedForLinks) {
    constexpr int kRuns = 15;
    std::vector<ZipEntry> entries;
    for (int i = 0; i < 200; ++i)
        entries.push_back({.name = "sub/" + std::to_string(i), .content = "x"});
    const Extraction extraction(entries);
    const Folder& folder = extraction.folder;
    fs::create_directories(folder.File("out/sub"));
    fs::create_directory(folder.File("elsewhere"));
    fs::create_directory_symlink("../elsewhere", folder.File("out/link"));
    {
        const Swapper swapper(folder.File("out/sub"), folder.File("out/link"));
        for (int run = 0; run < kRuns; ++run) {
            const int status = extraction.Run({"--overwrite"}).status;
            EXPECT_TRUE(status == 0 || status == 1) << status;
        }
    }
    EXPECT_TRUE(fs::is_empty(folder.File("elsewhere")));
}

TEST(ZipExtractTest, TheFolderItselfMayBeALinkOrDeep) {
    const Extraction extraction({kGood});
    fs::create_directory(extraction.folder.File("real"));
    fs::create_symlink("real", extraction.folder.File("out"));
    EXPECT_EQ(extraction.Run().status, 0);
    EXPECT_EQ(RunTool({"zip", "extract", "a.zip", "not/yet/there/"}, extraction.folder.Path()).status, 0);
    EXPECT_THAT(extraction.folder.Tree(),
                ElementsAre("a.zip", "not/", "not/yet/", "not/yet/there/", "not/yet/there/last.gpx", "out",
                            "real/", "real/last.gpx"));
}

TEST(ZipExtractTest, ExistingFilesAreKeptWithoutOverwrite) {
    const Extraction extraction(
        {{.name = "a.gpx", .content = "new"}, {.name = "sub/b.gpx", .content = "new"}, kGood});
    fs::create_directories(extraction.folder.File("out/sub"));
    extraction.folder.Write("out/a.gpx", "old");
    extraction.folder.Write("out/sub/b.gpx", "old");
    ::chmod(extraction.folder.File("out/a.gpx").c_str(), 0640);
    const Result kept = extraction.Run();
    EXPECT_TRUE(Failed(kept, "a.gpx"));
    EXPECT_TRUE(Failed(kept, "sub/b.gpx"));
    EXPECT_EQ(kept.out, "1 file extracted.\n");
    for (const char* path : {"a.gpx", "sub/b.gpx"})
        EXPECT_EQ(extraction.Content(path), "old");
    EXPECT_EQ(extraction.Run({"--overwrite"}).out, "3 files extracted.\n");
    for (const char* path : {"a.gpx", "sub/b.gpx"})
        EXPECT_EQ(extraction.Content(path), "new");
    extraction.ExpectTree({"a.gpx", "sub/", "sub/b.gpx", "last.gpx"});
}

TEST(ZipExtractTest, TwoEntriesOfOnePlaceKeepTheFirst) {
    for (const char* second : {"d/a.gpx", "./d/a.gpx", "d\\a.gpx", "d//a.gpx"}) {
        const Extraction extraction(
            {{.name = "d/a.gpx", .content = "first"}, {.name = second, .content = "second"}, kGood});
        for (const std::vector<std::string>& options : {std::vector<std::string>(), {"--overwrite"}}) {
            EXPECT_TRUE(Failed(extraction.Run(options), std::string("Refused to write the entry: ") + second +
                                                            " (an entry before has the same place)"));
            EXPECT_EQ(extraction.Content("d/a.gpx"), "first") << second;
        }
        extraction.ExpectTree({"d/", "d/a.gpx", "last.gpx"});
    }
}

TEST(ZipExtractTest, FilesFoldersAndPipesDoNotReplaceEachOther) {
    for (const std::vector<std::string>& options :
         std::vector<std::vector<std::string>>{{}, {"--overwrite"}}) {
        const Extraction extraction({{.name = "a", .content = "file"},
                                     {.name = "a/b", .content = "below a file"},
                                     {.name = "d/"},
                                     {.name = "d", .content = "in place of a folder"},
                                     {.name = "pipe", .content = "in place of a pipe"},
                                     kGood});
        fs::create_directory(extraction.folder.File("out"));
        ASSERT_EQ(::mkfifo(extraction.folder.File("out/pipe").c_str(), 0600), 0);
        const Result result = extraction.Run(options);
        EXPECT_TRUE(Failed(result, "a/b"));
        EXPECT_TRUE(Failed(result, "pipe"));
        EXPECT_EQ(Lines(result.err).size(), 3U) << result.err;
        EXPECT_EQ(extraction.Content("a"), "file");
        extraction.ExpectTree({"a", "d/", "last.gpx", "pipe"});
    }
}

TEST(ZipExtractTest, ABadEntryLeavesNothing) {
    const std::string content(200000, 'c');
    std::string altered = content;
    altered.back() = 'd';
    const std::vector<ZipEntry> rows = {
        {.content = content, .method = 0, .packed = altered},
        {.content = content, .crc = 1},
        {.content = content, .crc = 7, .size = content.size() + 1},
        {.content = content, .size = content.size() - 1},
        {.content = content, .method = 12, .packed = content},
        {.content = content, .flags = testing_support::kZipEncryptedFlag},
        {.content = content + content, .packed = "\x07" + content},
    };
    for (ZipEntry entry : rows)
        for (const bool old : {false, true}) {
            entry.name = "sub/bad.gpx";
            const Extraction extraction({entry, kGood});
            fs::create_directories(extraction.folder.File("out/sub"));
            std::vector<std::string> expected = {"last.gpx", "sub/"};
            if (old) {
                extraction.folder.Write("out/sub/bad.gpx", "as it was");
                expected.emplace_back("sub/bad.gpx");
            }
            EXPECT_TRUE(Failed(extraction.Run({"--overwrite", "--max-ratio=10000"}), "sub/bad.gpx"));
            extraction.ExpectTree(expected);
            if (old) {
                EXPECT_EQ(extraction.Content("sub/bad.gpx"), "as it was");
            }
        }
}

TEST(ZipExtractTest, NamesThatTheFileSystemRefusesAreReported) {
    const Extraction extraction({{.name = std::string(256, 'n')}, {.name = std::string(255, 'n')}, kGood});
    EXPECT_TRUE(Failed(extraction.Run(), "File name too long"));
    extraction.ExpectTree({std::string(255, 'n'), "last.gpx"});
}

TEST(ZipExtractTest, NamesThatAreTooLongToBeReadAreRefused) {
    std::string name;
    while (name.size() < 1100)
        name += "folder/";
    const Extraction extraction({{.name = name + "x.gpx", .content = "x"}, kGood});
    EXPECT_TRUE(Failed(extraction.Run(), "folder/folder/"));
    extraction.ExpectTree({"last.gpx"});
}

TEST(ZipExtractTest, AFileThatCannotBeWrittenWholeIsReportedAndLeavesNothing) {
    // Above the size of the files that a build with coverage writes about itself.
    constexpr rlim_t kLimit = rlim_t{4} << 20;
    const Extraction extraction(
        {{.name = "large.gpx", .content = std::string(kLimit + 1, 'l'), .method = 0}, kGood});
    const Result result = [&] {
        // Like a full disk.
        const cli::ResourceLimit limit(RLIMIT_FSIZE, kLimit);
        return extraction.Run();
    }();
    EXPECT_TRUE(Failed(result, "large.gpx (File too large)"));
    extraction.ExpectTree({"last.gpx"});
}

TEST(ZipExtractTest, AFolderThatCannotBeMadeIsReported) {
    const Extraction extraction({kGood});
    extraction.folder.Write("file", "as it was");
    for (const char* folder : {"file", "file/below", "", "/proc/no/such"}) {
        const Result result = RunTool({"zip", "extract", "a.zip", folder}, extraction.folder.Path());
        EXPECT_TRUE(Failed(result, folder)) << folder;
        EXPECT_EQ(Lines(result.err).size(), 1U) << folder;
    }
    EXPECT_THAT(extraction.folder.Tree(), ElementsAre("a.zip", "file"));
    EXPECT_EQ(ReadFile(extraction.folder.File("file")), "as it was");
}

TEST(ZipExtractTest, AFileThatIsNoArchiveMakesNoFolder) {
    const Folder folder;
    folder.Write("text.zip", "text");
    for (const char* archive : {"text.zip", "missing.zip"})
        EXPECT_TRUE(Failed(RunTool({"zip", "extract", archive, "out"}, folder.Path()), archive));
    EXPECT_THAT(folder.Names(), ElementsAre("text.zip"));
}

TEST(ZipExtractTest, ADamagedDirectoryIsReportedAfterWhatPrecedesIt) {
    const Folder folder;
    std::string archive = BuildZip({kGood, {.name = "lost"}});
    archive[archive.rfind("PK\1\2") + 2] = 'x';
    folder.Write("a.zip", archive);
    EXPECT_TRUE(Failed(RunTool({"zip", "extract", "a.zip", "out"}, folder.Path()), "damaged"));
    EXPECT_THAT(folder.Tree(), ElementsAre("a.zip", "out/", "out/last.gpx"));
}

TEST(ZipExtractTest, AnArchiveThroughStandardInput) {
    const Folder folder;
    const Result result =
        cli::Tool({"zip", "extract", "-", "--", "-out"}).In(folder.Path()).Stdin(BuildZip({kGood})).Run();
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(folder.Tree(), ElementsAre("-out/", "-out/last.gpx"));
}

} // namespace
