// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/SlowPipe.h"
#include "support/ZipBuilder.h"

#include <vexagpx/input/FileKind.h>

#include <thread>

#include <unistd.h>

namespace {

using cli::Failed;
using cli::Folder;
using cli::Gpx;
using cli::kWaypoint;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using testing::HasSubstr;
using vexagpx::FindKind;

/// Every command that reads a document, with a place for the file.
const std::vector<std::vector<std::string>> kCommands = {
    {"show", ""}, {"dump", ""}, {"info", ""}, {"check", ""}, {"check", "--keep", ""}, {"convert", "", "-"}};

std::vector<std::string> On(const std::string& file, std::vector<std::string> command) {
    for (std::string& argument : command)
        if (argument.empty())
            argument = file;
    return command;
}

std::string Bytes(std::string_view literal, std::size_t size = 600) {
    std::string bytes(literal);
    bytes.resize(std::max(size, bytes.size()), '\1');
    return bytes;
}

std::string TarHead() {
    std::string bytes = Bytes("walk.gpx");
    return bytes.replace(257, 5, "ustar");
}

using std::string_literals::operator""s;

const std::vector<std::pair<std::string, std::string>> kKinds = {
    {Bytes("PK\3\4"), "a ZIP archive"},
    {Bytes("\x1F\x8B\x08"), "a gzip file"},
    {Bytes("BZh91AY&SY"), "a bzip2 file"},
    {Bytes("\xFD"
           "7zXZ\0"s),
     "an xz file"},
    {Bytes("\x28\xB5\x2F\xFD"), "a zstd file"},
    {Bytes("7z\xBC\xAF\x27\x1C"), "a 7z archive"},
    {Bytes("Rar!\x1A\x07\x01"), "a RAR archive"},
    {TarHead(), "a tar archive"},
    {Bytes("\x0E\x10\x43\x08\x78\x06\x00\x00.FIT"s), "a FIT file"},
    {Bytes("\xFF\xD8\xFF\xE1"), "a JPEG picture"},
    {Bytes("\x89PNG\r\n\x1A\n"), "a PNG picture"},
    {Bytes("\0\0\0\x18"
           "ftypheic"s),
     "a HEIC picture"},
    {Bytes("\0\0\0\x18"
           "ftypmp42"s),
     "an MP4 video"},
    {Bytes("RIFF....AVI LIST"), "an AVI video"},
    {Bytes("%PDF-1.7"), "a PDF document"},
    {Bytes("SQLite format 3\0"s), "an SQLite database"},
    {"<kml/>", "a KML file"},
    {"\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- <gpx> -->\n<k:kml xmlns:k='x'>", "a KML file"},
    {"\xFF\xFE<\0k\0m\0l\0>\0"s, "a KML file"},
    {"\xFE\xFF\0<\0k\0m\0l\0>"s, "a KML file"},
    {"<TrainingCenterDatabase xmlns='x'>", "a TCX file"},
    {"<!DOCTYPE HTML>\n<p>", "a web page"},
    {"\n <HTML lang='en'>", "a web page"},
    {"<osm version='0.6'>", "OpenStreetMap data"},
    {R"({"type": "FeatureCollection", "features": []})", "a GeoJSON file"},
    {"[1, 2]", "a JSON file"},
    {"$GPGGA,102030,5130.0,N,00007.0,W,1,08,1.0,10,M,0,M,,\r\n", "an NMEA file"},
    {"AXXX001\nHFDTE150109\n", "an IGC file"},
    {"lat,lon,name\n1,2,a\n", "a CSV file"},
    {"lat;lon\r\n1;2\r\n", "a CSV file"},
};

const std::vector<std::string> kUnknown = {
    "",
    "x",
    Gpx(kWaypoint),
    "\xEF\xBB\xBF<gpx version='1.1'>",
    "\xFF\xFE<\0g\0p\0x\0>\0"s,
    "<?xml version='1.0'?><!DOCTYPE gpx [<!ENTITY html 'x'>]><gpx/>",
    "<!-- <kml> --><gpx/>",
    "<other/>",
    "<!-- never ends <kml>",
    "some words, and more\n<gpx a='1, 2'>\n",
    "no separators\nhere\n",
    std::string(5000, ' ') + "<kml/>",
};

TEST(FileKindTest, KindsAreKnownByTheirFirstBytes) {
    for (const auto& [head, name] : kKinds) {
        const auto kind = FindKind(head);
        ASSERT_TRUE(kind) << name;
        EXPECT_EQ(kind->name, name) << head.substr(0, 20);
        EXPECT_NE(kind->advice, "") << name;
    }
}

TEST(FileKindTest, GpxAndWhatIsNotKnownHaveNoKind) {
    for (const std::string& head : kUnknown)
        EXPECT_FALSE(FindKind(std::string_view(head).substr(0, vexagpx::kHeadSize))) << head;
}

TEST(FileKindTest, EveryShorterHeadIsKnownOrNot) {
    for (const auto& [head, name] : kKinds)
        for (std::size_t size = 0; size < head.size(); ++size)
            if (const auto kind = FindKind(std::string_view(head).substr(0, size))) {
                EXPECT_NE(kind->name, "") << name;
            }
}

TEST(FileKindTest, OnlyGpxIsGpx) {
    EXPECT_TRUE(vexagpx::IsGpx(Gpx("")));
    EXPECT_TRUE(vexagpx::IsGpx("<g:gpx xmlns:g='x'>"));
    EXPECT_FALSE(vexagpx::IsGpx("<gpxx/>"));
    EXPECT_FALSE(vexagpx::IsGpx(""));
}

TEST(FileKindTest, EveryCommandNamesTheKindAndSaysWhatToDo) {
    const Folder folder;
    folder.Write("walk.fit", Bytes("\x0E\x10\x43\x08\x78\x06\x00\x00.FIT"s));
    folder.Write("walk.gpx", "<?xml version='1.0'?>\n <kml/>");
    for (const std::vector<std::string>& command : kCommands) {
        const Result fit = RunTool(On("walk.fit", command), folder.Path());
        EXPECT_TRUE(Failed(fit, "walk.fit is a FIT file, not GPX; GPSBabel can turn it into GPX."))
            << command[0];
        const Result kml = RunTool(On("walk.gpx", command), folder.Path());
        EXPECT_TRUE(
            Failed(kml, "walk.gpx is a KML file, not GPX; GPSBabel can turn it into GPX. (line 2, column 2)"))
            << command[0];
    }
}

TEST(FileKindTest, EveryCommandRefusesWhatIsNotGpx) {
    const Folder folder;
    folder.Write("other.gpx", "<other/>");
    folder.Write("words.gpx", "hello\n");
    for (const std::vector<std::string>& command : kCommands)
        for (const char* file : {"other.gpx", "words.gpx"}) {
            const Result result = RunTool(On(file, command), folder.Path());
            EXPECT_EQ(result.status, 1) << command[0] << file;
            EXPECT_THAT(result.err + result.out, HasSubstr(file)) << command[0];
        }
}

TEST(FileKindTest, AnEmptyFileAndAMissingOneSaySo) {
    const Folder folder;
    folder.Write("empty.gpx", "");
    for (const std::vector<std::string>& command : kCommands) {
        EXPECT_TRUE(
            Failed(RunTool(On("empty.gpx", command), folder.Path()), "empty.gpx is empty; look where"));
        EXPECT_TRUE(Failed(Tool(On("-", command)).Stdin("").Run(), "standard input is empty; look where"));
        EXPECT_TRUE(Failed(RunTool(On("gone.gpx", command), folder.Path()),
                           "Unable to read the file: gone.gpx (No such file or directory)"));
    }
}

TEST(FileKindTest, AnEntryOfAnArchiveIsNamed) {
    const Folder folder;
    folder.Write("q.zip", testing_support::BuildZip({{.name = "a.gpx", .content = Bytes("\xFF\xD8\xFF\xE1")},
                                                     {.name = "b.gpx", .content = Gpx(kWaypoint)},
                                                     {.name = "c.gpx", .content = Bytes("PK\3\4")},
                                                     {.name = "d.gpx"}}));
    for (const std::string command : {"show", "dump", "info", "check"}) {
        const Result result = RunTool({command, "q.zip"}, folder.Path());
        EXPECT_TRUE(Failed(result, "q.zip/a.gpx is a JPEG picture, not GPX; ")) << command;
        EXPECT_TRUE(Failed(result, "q.zip/c.gpx is a ZIP archive, not GPX; unpack it first.")) << command;
        EXPECT_TRUE(Failed(result, "q.zip/d.gpx is empty; ")) << command;
        EXPECT_THAT(result.out, HasSubstr(command == "dump" ? "waypoints" : "b.gpx")) << command;
    }
}

TEST(FileKindTest, AKmzFileIsNamed) {
    const Folder folder;
    folder.Write("walk.kmz", testing_support::BuildZip({{.name = "doc.KML", .content = "<kml/>"}}));
    EXPECT_TRUE(Failed(RunTool({"show", "walk.kmz"}, folder.Path()),
                       "walk.kmz is a KMZ file, not GPX; GPSBabel can turn the KML in it into GPX."));
}

TEST(FileKindTest, ZipCommandsNameWhatIsNoArchive) {
    const Folder folder;
    folder.Write("walk.gpx", Gpx(kWaypoint));
    folder.Write("walk.fit", Bytes("\x0E\x10\x43\x08\x78\x06\x00\x00.FIT"s));
    folder.Write("words.zip", "hello\n");
    EXPECT_EQ(RunTool({"zip", "list", "walk.gpx"}, folder.Path()).err,
              "vexagpx: walk.gpx is a GPX file, not a ZIP archive; show, dump, info and check read it.\n");
    EXPECT_EQ(RunTool({"zip", "test", "walk.fit"}, folder.Path()).err,
              "vexagpx: walk.fit is a FIT file, not a ZIP archive.\n");
    EXPECT_EQ(RunTool({"zip", "list", "words.zip"}, folder.Path()).err,
              "vexagpx: Could not open ZIP for reading. (words.zip) Get it again from where it comes.\n");
}

TEST(FileKindTest, AnArchiveMayFollowOtherBytesWhenItIsNamedSo) {
    const Folder folder;
    for (const bool zip64 : {false, true}) {
        const std::string archive = testing_support::BuildZip({{.name = "a.gpx", .content = Gpx(kWaypoint)}},
                                                              {.stub = "a program", .zip64 = zip64});
        folder.Write("q.ZIP", archive);
        EXPECT_THAT(RunTool({"show", "q.ZIP"}, folder.Path()).out, HasSubstr("q.ZIP: a.gpx\n")) << zip64;
    }
    folder.Write("walk.zip", Gpx(kWaypoint));
    EXPECT_EQ(RunTool({"show", "walk.zip"}, folder.Path()).status, 0) << "GPX under a wrong name";
    folder.Write("fit.zip", Bytes("\x0E\x10\x43\x08\x78\x06\x00\x00.FIT"s));
    EXPECT_TRUE(
        Failed(RunTool({"show", "fit.zip"}, folder.Path()), "fit.zip is a FIT file, not a ZIP archive."));
    folder.Write("none.zip", "");
    EXPECT_TRUE(Failed(RunTool({"show", "none.zip"}, folder.Path()), "none.zip is empty"));
}

// A video of any length must not be copied before it is refused.
TEST(FileKindTest, AStreamIsRefusedBeforeItEnds) {
    const Folder folder;
    cli::SlowPipe pipe(folder.File("pipe"));
    Result result{};
    std::thread run([&] { result = RunTool({"show", "pipe"}, folder.Path()); });
    pipe.Write(Bytes("\0\0\0\x18"
                     "ftypmp42"s,
                     vexagpx::kHeadSize));
    run.join();
    EXPECT_TRUE(Failed(result, "pipe is an MP4 video, not GPX; "));
}

TEST(FileKindTest, AHugeFileIsRefusedAtOnce) {
    const Folder folder;
    const std::string path = folder.Write("huge.gpx", Bytes("\0\0\0\x18"
                                                            "ftypmp42"s));
    ASSERT_EQ(::truncate(path.c_str(), off_t{1} << 36), 0);
    EXPECT_TRUE(Failed(RunTool({"show", "huge.gpx"}, folder.Path()), "huge.gpx is an MP4 video"));
}

} // namespace
