// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <nlohmann/json.hpp>

#include <array>
#include <filesystem>
#include <map>
#include <regex>
#include <thread>

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

using cli::Failed;
using cli::Folder;
using cli::Gpx;
using cli::Lines;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing_support::BuildZip;
using testing_support::ZipEntry;

/// A document with one waypoint of that name, and a layer too.
std::string Named(const std::string& name) {
    return Gpx("<metadata><extensions><t:layername>layer-" + name +
               "</t:layername></extensions></metadata><wpt lat='1' lon='2'><name>" + name + "</name></wpt>");
}

ZipEntry GpxEntry(const std::string& name, const std::string& document) {
    return {.name = name, .content = Named(document)};
}

/// Values of a member of every line of JSON.
std::vector<std::string> Members(const std::string& lines, const std::string& pointer) {
    std::vector<std::string> values;
    for (const std::string& line : Lines(lines))
        values.push_back(json::parse(line).at(json::json_pointer(pointer)).get<std::string>());
    return values;
}

const std::string kWaypointName = "/waypoints/0/name";
const std::string kLayerName = "/gisMetaData/layerName";

/// A folder for temporary files that counts what is created in it.
class WatchedFolder {
public:
    WatchedFolder() : fd_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        EXPECT_GE(::inotify_add_watch(fd_, folder.Path().c_str(), IN_CREATE | IN_MOVED_TO), 0);
    }
    ~WatchedFolder() { ::close(fd_); }
    WatchedFolder(const WatchedFolder&) = delete;
    WatchedFolder& operator=(const WatchedFolder&) = delete;

    /// How many files and folders were created in it since the last call.
    std::size_t Made() {
        alignas(inotify_event) std::array<char, 65536> buffer;
        std::size_t count = 0;
        ssize_t size;
        while ((size = ::read(fd_, buffer.data(), buffer.size())) > 0)
            for (ssize_t at = 0; at < size; ++count)
                at += static_cast<ssize_t>(sizeof(inotify_event) +
                                           reinterpret_cast<const inotify_event*>(buffer.data() + at)->len);
        return count;
    }

    Folder folder;

private:
    int fd_;
};

const std::vector<ZipEntry> kMixed = {
    GpxEntry("b.gpx", "B"),  {.name = "readme.txt", .content = "text"}, GpxEntry("a/Deep.GPX", "Deep"),
    {.name = "folder.gpx/"}, {.name = "gpx", .content = "x"},           GpxEntry("Größe\n.gPx", "Odd"),
};

TEST(ArchiveInputTest, TheContentMakesAnArchiveAndNotTheName) {
    const Folder folder;
    folder.Write("a.gpx", BuildZip({GpxEntry("inside.gpx", "Z")}));
    folder.Write("b.zip", Named("G"));
    EXPECT_THAT(Members(RunTool({"dump", "a.gpx"}, folder.Path()).out, "/entry"), ElementsAre("inside.gpx"));
    const json text = json::parse(RunTool({"dump", "b.zip"}, folder.Path()).out);
    EXPECT_FALSE(text.contains("entry"));
    EXPECT_EQ(text["waypoints"][0]["name"], "G");
    for (const std::vector<std::string>& command :
         std::vector<std::vector<std::string>>{{"show"}, {"info", "--json"}}) {
        std::vector<std::string> arguments = command;
        arguments.insert(arguments.end(), {"a.gpx", "b.zip"});
        const Result result = RunTool(arguments, folder.Path());
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_THAT(result.out, HasSubstr("inside.gpx")) << command[0];
        EXPECT_THAT(result.out, HasSubstr("b.zip")) << command[0];
    }
}

TEST(ArchiveInputTest, GpxEntriesInAnyCaseAreTakenInTheOrderOfTheArchive) {
    const Folder folder;
    folder.Write("a.zip", BuildZip(kMixed));
    const Result dump = RunTool({"dump", "a.zip"}, folder.Path());
    EXPECT_EQ(dump.status, 0) << dump.err;
    EXPECT_THAT(Members(dump.out, "/entry"), ElementsAre("b.gpx", "a/Deep.GPX", "Größe\\x0A.gPx"));
    EXPECT_THAT(Members(dump.out, kWaypointName), ElementsAre("B", "Deep", "Odd"));
    const Result info = RunTool({"info", "--json", "a.zip"}, folder.Path());
    EXPECT_EQ(info.status, 0) << info.err;
    EXPECT_THAT(Members(info.out, "/entry"), ElementsAre("b.gpx", "a/Deep.GPX", "Größe\\x0A.gPx"));
    EXPECT_THAT(Members(info.out, kLayerName), ElementsAre("layer-B", "layer-Deep", "layer-Odd"));
    EXPECT_THAT(Members(info.out, "/file"), ElementsAre("a.zip", "a.zip", "a.zip"));
    constexpr char kVersionLine[] = "  Version      1.1";
    EXPECT_THAT(Lines(RunTool({"info", "a.zip"}, folder.Path()).out),
                ElementsAre(HasSubstr("layer-B"), kVersionLine, HasSubstr("layer-Deep"), kVersionLine,
                            HasSubstr("layer-Odd"), kVersionLine));
}

TEST(ArchiveInputTest, EntryIsTheFirstMember) {
    const Folder folder;
    folder.Write("a.zip", BuildZip({GpxEntry("d/w.gpx", "W")}));
    EXPECT_EQ(RunTool({"dump", "--as-host", "a.zip"}, folder.Path()).out,
              R"({"entry":"d/w.gpx","file":"a.zip","gisMetaData":{"layerName":"layer-W","defaultSymbol":1},)"
              R"("annotateMetaData":{},"waypoints":[{"latitude":1,"longitude":2,"name":"W"}],"routes":[],)"
              R"("tracks":[]})"
              "\n");
    EXPECT_THAT(RunTool({"info", "--json", "a.zip"}, folder.Path()).out,
                testing::StartsWith(R"({"entry":"d/w.gpx","file":"a.zip",)"));
}

TEST(ArchiveInputTest, ShowNamesArchiveAndEntry) {
    const Folder folder;
    folder.Write("a.zip", BuildZip({GpxEntry("d/one.gpx", "One"), GpxEntry("two.gpx", "Two")}));
    folder.Write("one.gpx", Named("One"));
    const Result show = RunTool({"show", "a.zip"}, folder.Path());
    EXPECT_EQ(show.status, 0) << show.err;
    const std::string plain = RunTool({"show", "one.gpx"}, folder.Path()).out;
    const std::string second = "\n\na.zip: two.gpx\n";
    EXPECT_THAT(show.out, testing::StartsWith("a.zip: d/one.gpx\n" + plain.substr(plain.find('\n') + 1)));
    EXPECT_THAT(show.out, HasSubstr(second));
}

TEST(ArchiveInputTest, ABadEntryIsReportedAndTheOthersAreDone) {
    std::string altered = Named("altered");
    altered[altered.find("lat=")] ^= 1;
    const std::vector<ZipEntry> rows = {
        {.content = "<gpx"},
        {.content = Gpx("<wpt lat='1' lon='2'><name>x</wpt>")},
        {.content = Named("x"), .method = 0, .packed = altered},
        {.content = Named("x"), .crc = 1},
        {.content = Named("x"), .flags = testing_support::kZipEncryptedFlag},
        {.content = Named("x"), .method = 12},
        {.content = Named("x"), .size = 1000},
        {.content = "/etc/passwd", .externalAttributes = testing_support::kZipSymbolicLink},
    };
    for (ZipEntry entry : rows) {
        entry.name = "sub/bad.gpx";
        const Folder folder;
        folder.Write("a.zip", BuildZip({GpxEntry("1.gpx", "1"), entry, GpxEntry("2.gpx", "2")}));
        const Result dump = RunTool({"dump", "a.zip"}, folder.Path());
        EXPECT_TRUE(Failed(dump, "bad.gpx")) << entry.content;
        EXPECT_THAT(dump.err, HasSubstr("a.zip"));
        EXPECT_THAT(dump.err, testing::Not(HasSubstr("--max-"))) << entry.content;
        EXPECT_EQ(Lines(dump.err).size(), 1U) << dump.err;
        EXPECT_THAT(Members(dump.out, kWaypointName), ElementsAre("1", "2")) << entry.content;
        const Result show = RunTool({"show", "a.zip"}, folder.Path());
        EXPECT_TRUE(Failed(show, "bad.gpx")) << entry.content;
        EXPECT_THAT(show.out, HasSubstr("\n\na.zip: 2.gpx\n")) << entry.content;
        EXPECT_TRUE(Failed(RunTool({"convert", "a.zip", "out"}, folder.Path()), "bad.gpx")) << entry.content;
        EXPECT_THAT(folder.Tree(), ElementsAre("a.zip", "out/", "out/1.gpx", "out/2.gpx")) << entry.content;
    }
}

TEST(ArchiveInputTest, InfoReadsTheHeadOfAnEntryOnly) {
    const std::string head = Named("x").substr(0, Named("x").find("</gpx>"));
    const std::string content = head + std::string(200000, '<');
    std::string altered = content;
    altered.back() = '>';
    const ZipEntry brokenHead = {.name = "broken.gpx", .content = content, .packed = "\x07" + content};
    const Folder folder;
    folder.Write("a.zip", BuildZip({{.name = "crc.gpx", .content = content, .method = 0, .packed = altered},
                                    brokenHead,
                                    {.name = "good.gpx", .content = content, .method = 0}}));
    const Result result = RunTool({"info", "--json", "a.zip"}, folder.Path());
    EXPECT_TRUE(Failed(result, "broken.gpx"));
    EXPECT_THAT(result.err, testing::Not(HasSubstr("--max-")));
    EXPECT_EQ(Lines(result.err).size(), 1U) << result.err;
    EXPECT_THAT(Members(result.out, "/entry"), ElementsAre("crc.gpx", "good.gpx"));
}

TEST(ArchiveInputTest, AnArchiveWithoutGpxIsReported) {
    const Folder folder;
    folder.Write("other.zip", BuildZip({{.name = "a.txt", .content = Named("x")}, {.name = "b.gpx/"}}));
    folder.Write("empty.zip", BuildZip({}));
    folder.Write("good.gpx", Named("good"));
    for (const char* archive : {"other.zip", "empty.zip"}) {
        for (const char* command : {"show", "dump", "info"}) {
            const Result result = RunTool({command, archive, "good.gpx"}, folder.Path());
            EXPECT_TRUE(Failed(result, archive)) << command;
            EXPECT_THAT(result.out, HasSubstr("good")) << command;
        }
        for (const char* out : {"out", "-"})
            EXPECT_TRUE(Failed(RunTool({"convert", archive, out}, folder.Path()), archive));
    }
    EXPECT_THAT(folder.Names(), ElementsAre("empty.zip", "good.gpx", "other.zip"));
}

TEST(ArchiveInputTest, AnArchiveThatCannotBeOpenedIsReportedAndTheOtherFilesDone) {
    const Folder folder;
    const std::string whole = BuildZip({GpxEntry("a.gpx", "A")});
    folder.Write("cut.gpx", whole.substr(0, whole.size() - 5));
    folder.Write("good.gpx", Named("good"));
    for (const char* command : {"show", "dump", "info"}) {
        const Result result = RunTool({command, "cut.gpx", "good.gpx"}, folder.Path());
        EXPECT_TRUE(Failed(result, "cut.gpx")) << command;
        EXPECT_THAT(result.out, HasSubstr("good")) << command;
    }
    EXPECT_TRUE(Failed(RunTool({"convert", "cut.gpx", "out.gpx"}, folder.Path()), "cut.gpx"));
    EXPECT_THAT(folder.Names(), ElementsAre("cut.gpx", "good.gpx"));
}

TEST(ArchiveInputTest, ADamagedDirectoryIsReportedAfterWhatPrecedesIt) {
    const Folder folder;
    std::string archive = BuildZip({GpxEntry("1.gpx", "1"), GpxEntry("2.gpx", "2"), GpxEntry("3.gpx", "3")});
    archive[archive.rfind("PK\1\2") + 2] = 'x';
    folder.Write("a.zip", archive);
    const Result dump = RunTool({"dump", "a.zip"}, folder.Path());
    EXPECT_TRUE(Failed(dump, "damaged"));
    EXPECT_THAT(Members(dump.out, kWaypointName), ElementsAre("1", "2"));
    EXPECT_EQ(Lines(RunTool({"info", "--json", "a.zip"}, folder.Path()).out).size(), 2U);
    EXPECT_TRUE(Failed(RunTool({"convert", "a.zip", "out"}, folder.Path()), "damaged"));
}

TEST(ArchiveInputTest, NamesThatCannotBeReadWholeAreSkippedWithANote) {
    const Folder folder;
    folder.Write("a.zip",
                 BuildZip({GpxEntry(std::string(1100, 'n') + ".gpx", "long"), GpxEntry("2.gpx", "2")}));
    const Result dump = RunTool({"dump", "a.zip"}, folder.Path());
    EXPECT_EQ(dump.status, 0);
    EXPECT_EQ(dump.err,
              "vexagpx: Note: an entry is skipped because its name cannot be read whole. (a.zip)\n");
    EXPECT_THAT(Members(dump.out, kWaypointName), ElementsAre("2"));
}

TEST(ArchiveInputTest, ConvertDoesNotReplaceItsArchive) {
    const Folder folder;
    const std::string archive = BuildZip({GpxEntry("1.gpx", "1"), {.name = "notes.txt", .content = "kept"}});
    folder.Write("a.zip", archive);
    EXPECT_TRUE(Failed(RunTool({"convert", "a.zip", "./a.zip"}, folder.Path()), "would replace the archive"));
    EXPECT_EQ(ReadFile(folder.File("a.zip")), archive);
}

TEST(ArchiveInputTest, EntriesThatAreReportedAsSkippedAreNotRead) {
    const Folder folder;
    folder.Write("a.zip",
                 BuildZip({GpxEntry(std::string(1019, 'n') + ".gpx.txt", "cut after .gpx"),
                           GpxEntry(std::string("x.gpx\0.txt", 10), "no .gpx"), GpxEntry("2.gpx", "2")}));
    EXPECT_THAT(Members(RunTool({"dump", "a.zip"}, folder.Path()).out, kWaypointName), ElementsAre("2"));
}

TEST(ArchiveInputTest, NoEntryBecomesATemporaryFile) {
    WatchedFolder temporary;
    const Folder folder;
    const std::string archive = BuildZip(kMixed);
    folder.Write("a.zip", archive);
    ASSERT_EQ(::mkfifo(folder.File("pipe").c_str(), 0600), 0);
    const auto run = [&](std::vector<std::string> arguments) {
        return Tool(std::move(arguments))
            .In(folder.Path())
            .Stdin(archive)
            .Set("TMPDIR", temporary.folder.Path())
            .Run();
    };
    const std::map<std::string, std::size_t> files = {{"a.zip", 0}, {"-", 1}};
    for (const auto& [file, copies] : files) {
        for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{
                 {"show", file}, {"dump", file}, {"info", file}, {"convert", file, "to " + file}}) {
            const Result result = run(command);
            EXPECT_EQ(result.status, 0) << command[0] << result.err;
            EXPECT_EQ(temporary.Made(), copies) << command[0];
        }
    }
    EXPECT_TRUE(fs::exists(folder.File("to -/a/Deep.GPX")));
    // An input that can be read only once is copied as a whole.
    const auto of = [expected = run({"dump", "a.zip"}).out](const std::string& file) {
        return std::regex_replace(expected, std::regex("\"file\":\"a.zip\""), "\"file\":\"" + file + '"');
    };
    EXPECT_EQ(run({"dump", "-"}).out, of("-"));
    std::thread writer([&] { folder.Write("pipe", archive); });
    EXPECT_EQ(run({"dump", "pipe"}).out, of("pipe"));
    writer.join();
    EXPECT_EQ(temporary.Made(), 2U);
    EXPECT_THAT(temporary.folder.Names(), IsEmpty());
}

std::string WaypointOf(const std::string& path) {
    return json::parse(RunTool({"dump", path}).out).at(json::json_pointer(kWaypointName)).get<std::string>();
}

TEST(ArchiveInputTest, ConvertWritesIntoAFolderWithTheFoldersOfTheNames) {
    const Folder folder;
    folder.Write("a.zip", BuildZip(kMixed));
    const Result result = RunTool({"convert", "--gpx", "1.1", "a.zip", "new/out"}, folder.Path());
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_THAT(folder.Tree(), ElementsAre("a.zip", "new/", "new/out/", "new/out/Größe\\x0A.gPx",
                                           "new/out/a/", "new/out/a/Deep.GPX", "new/out/b.gpx"));
    EXPECT_EQ(WaypointOf(folder.File("new/out/b.gpx")), "B");
    EXPECT_EQ(WaypointOf(folder.File("new/out/a/Deep.GPX")), "Deep");
    EXPECT_THAT(ReadFile(folder.File("new/out/b.gpx")), HasSubstr("creator=\"vexagpx"));
}

TEST(ArchiveInputTest, ConvertWritesTheOnlyGpxEntryToAFile) {
    const Folder folder;
    folder.Write("a.zip", BuildZip({{.name = "readme.txt"}, GpxEntry("../d/only.gpx", "Only")}));
    EXPECT_EQ(RunTool({"convert", "a.zip", "out.gpx"}, folder.Path()).status, 0);
    EXPECT_THAT(folder.Tree(), ElementsAre("a.zip", "out.gpx"));
    EXPECT_EQ(WaypointOf(folder.File("out.gpx")), "Only");
    EXPECT_EQ(RunTool({"convert", "a.zip", "-"}, folder.Path()).out, ReadFile(folder.File("out.gpx")));
    folder.Write("bad.zip", BuildZip({{.name = "bad.gpx", .content = "<gpx"}}));
    EXPECT_TRUE(Failed(RunTool({"convert", "bad.zip", "out.gpx"}, folder.Path()), "bad.gpx"));
    EXPECT_EQ(WaypointOf(folder.File("out.gpx")), "Only");
}

TEST(ArchiveInputTest, ConvertRefusesHostileNames) {
    for (const std::string name : {"../up.gpx", "a/../../up.gpx", "..\\up.gpx", "/up.gpx", "C:up.gpx",
                                   "\\up.gpx", "link/up.gpx", "link.gpx"}) {
        const Folder folder;
        folder.Write("a.zip",
                     BuildZip({GpxEntry("1.gpx", "1"), GpxEntry(name, "bad"), GpxEntry("2.gpx", "2")}));
        fs::create_directories(folder.File("out"));
        fs::create_directories(folder.File("elsewhere"));
        fs::create_symlink("../elsewhere", folder.File("out/link"));
        fs::create_symlink("../elsewhere/new.gpx", folder.File("out/link.gpx"));
        const Result result = RunTool({"convert", "a.zip", "out"}, folder.Path());
        EXPECT_TRUE(Failed(result, name)) << name;
        EXPECT_EQ(Lines(result.err).size(), 1U) << result.err;
        EXPECT_THAT(folder.Tree(), ElementsAre("a.zip", "elsewhere/", "out/", "out/1.gpx", "out/2.gpx",
                                               "out/link", "out/link.gpx"))
            << name;
    }
}

TEST(ArchiveInputTest, ConvertRefusesTheSecondEntryOfOnePlace) {
    for (const char* second : {"d/a.gpx", "./d/a.gpx", "d\\a.gpx"}) {
        const Folder folder;
        folder.Write("a.zip", BuildZip({GpxEntry("d/a.gpx", "first"), GpxEntry(second, "second")}));
        EXPECT_TRUE(Failed(RunTool({"convert", "a.zip", "out"}, folder.Path()), second));
        EXPECT_THAT(folder.Tree(), ElementsAre("a.zip", "out/", "out/d/", "out/d/a.gpx"));
        EXPECT_EQ(WaypointOf(folder.File("out/d/a.gpx")), "first");
    }
}

TEST(ArchiveInputTest, SeveralGpxEntriesNeedAFolder) {
    const Folder folder;
    folder.Write("a.zip", BuildZip({GpxEntry("1.gpx", "1"), GpxEntry("2.gpx", "2")}));
    folder.Write("file", "as it was");
    EXPECT_TRUE(Failed(RunTool({"convert", "a.zip", "file"}, folder.Path()), "file"));
    const Result result = RunTool({"convert", "a.zip", "-"}, folder.Path());
    EXPECT_TRUE(Failed(result, "a.zip"));
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(folder.Names(), ElementsAre("a.zip", "file"));
    EXPECT_EQ(ReadFile(folder.File("file")), "as it was");
}

} // namespace
