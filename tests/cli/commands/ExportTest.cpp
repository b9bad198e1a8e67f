// SPDX-License-Identifier: MIT
#include "support/Tool.h"
#include "support/ZipBuilder.h"

#include <nlohmann/json.hpp>

namespace {

using cli::Data;
using cli::Folder;
using cli::Gpx;
using cli::kWaypoint;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string kTrack = "<trk><trkseg><trkpt lat='1' lon='2'/><trkpt lat='1' lon='3'/></trkseg></trk>";

Result Export(const std::vector<std::string>& arguments, const Folder& folder) {
    std::vector<std::string> all = {"export"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return RunTool(all, folder.Path());
}

TEST(ExportTest, ASampleIsWrittenInEveryFormat) {
    struct Row {
        std::vector<std::string> options;
        std::string expected;
    };
    const Row rows[] = {
        {{"--format", "geojson"}, "hand-written.geojson"},
        {{"--format", "kml"}, "hand-written.kml"},
        {{"--format", "csv", "--layer", "waypoints"}, "hand-written.waypoints.csv"},
        {{"--format", "csv", "--layer", "tracks"}, "hand-written.tracks.csv"},
        {{"--format", "csv", "--layer", "points"}, "hand-written.points.csv"},
        {{"--format", "kml", "--layer", "points"}, "hand-written.points.kml"},
    };
    for (const Row& row : rows) {
        std::vector<std::string> arguments = {"export", "hand-written.gpx"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const Result result = RunTool(arguments, Data(""));
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, ReadFile(Data(row.expected))) << row.expected;
    }
}

TEST(ExportTest, WhatTheFormatHasNoPlaceForIsCounted) {
    const Result result = RunTool({"export", "hand-written.gpx", "--format", "kml"}, Data(""));
    EXPECT_EQ(
        result.err,
        "vexagpx: Note: not everything in hand-written.gpx has a place in KML; these were left out:\n"
        "vexagpx:   6 values of the metadata\n"
        "vexagpx:   9 values in extensions\n"
        "vexagpx:   2 logs of geocaches\n"
        "vexagpx:   2 times of points in lines (--layer points writes them)\n"
        "vexagpx:   the names, sensor values and other details of 2 points in lines (--layer points writes "
        "them)\n");
}

TEST(ExportTest, AFileOfWhichNothingIsLeftOutHasNoNote) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kWaypoint));
    for (const char* format : {"geojson", "csv", "kml"}) {
        const Result result = Export({"a.gpx", "--format", format}, folder);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        EXPECT_NE(result.out, "");
    }
}

TEST(ExportTest, TheNameOfTheResultSaysTheFormat) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kWaypoint));
    struct Row {
        std::string name;
        std::string start;
    };
    for (const Row& row :
         {Row{"a.geojson", "{\"type\""}, {"b.JSON", "{\"type\""}, {"c.csv", "lat,lon"}, {"d.kml", "<?xml"}}) {
        EXPECT_EQ(Export({"a.gpx", "-o", row.name}, folder).status, 0) << row.name;
        EXPECT_THAT(ReadFile(folder.File(row.name)), testing::StartsWith(row.start)) << row.name;
    }
    EXPECT_EQ(Export({"a.gpx", "--output", "e.kml", "--format", "csv"}, folder).status, 0);
    EXPECT_THAT(ReadFile(folder.File("e.kml")), testing::StartsWith("lat,lon"));
}

TEST(ExportTest, ANameWithoutAFormatIsRefused) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kWaypoint));
    for (const char* name : {"a.txt", "geojson", "a.geojson.", "-", "csv/a"}) {
        const Result result = Export({"a.gpx", "-o", name}, folder);
        EXPECT_TRUE(cli::Failed(result, "The name of the result says no format: " + std::string(name) +
                                            ". --format sets one."));
    }
    EXPECT_THAT(folder.Names(), ElementsAre("a.gpx"));
}

TEST(ExportTest, ATableOfSeveralKindsWantsALayer) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kWaypoint + kTrack));
    const Result result = Export({"a.gpx", "-o", "a.csv"}, folder);
    EXPECT_TRUE(cli::Failed(result,
                            "A table has one kind of rows, and a.gpx has 1 waypoint, 1 track and 2 "
                            "points. Choose one: --layer waypoints, --layer tracks, --layer points."));
    EXPECT_THAT(folder.Names(), ElementsAre("a.gpx"));
}

TEST(ExportTest, ATableOfOneKindNeedsNoLayer) {
    const Folder folder;
    folder.Write("w.gpx", Gpx(kWaypoint));
    folder.Write("t.gpx", Gpx(kTrack));
    folder.Write("e.gpx", Gpx(""));
    EXPECT_EQ(Export({"w.gpx", "--format", "csv"}, folder).out, "lat,lon,ele,time,name\r\n1,2,,,w\r\n");
    EXPECT_EQ(Export({"t.gpx", "--format", "csv"}, folder).out,
              "track,segment,lat,lon,ele,time\r\n1,1,1,2,,\r\n1,1,1,3,,\r\n");
    EXPECT_EQ(Export({"e.gpx", "--format", "csv"}, folder).out, "lat,lon,ele,time\r\n");
}

TEST(ExportTest, ALayerThatTheFileDoesNotHaveIsAnError) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kWaypoint));
    EXPECT_TRUE(cli::Failed(Export({"a.gpx", "-o", "a.kml", "--layer", "routes"}, folder),
                            "a.gpx has no routes; it has 1 waypoint."));
    folder.Write("b.gpx", Gpx(""));
    EXPECT_TRUE(cli::Failed(Export({"b.gpx", "-o", "a.kml", "--layer", "routes"}, folder),
                            "b.gpx has no routes; it has nothing."));
}

TEST(ExportTest, OneLayerIsWrittenAlone) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kWaypoint + kTrack));
    const Result result = Export({"a.gpx", "--format", "geojson", "--layer", "tracks"}, folder);
    const nlohmann::json features = nlohmann::json::parse(result.out).at("features");
    ASSERT_EQ(features.size(), 1U);
    EXPECT_EQ(features.at(0).at("geometry").at("type"), "LineString");
}

TEST(ExportTest, TheDocumentsOfAnArchiveAreOneResultAndSayWhereTheyAreFrom) {
    const Folder folder;
    folder.Write("a.zip",
                 testing_support::BuildZip({{"one.gpx", Gpx(kWaypoint)}, {"two.gpx", Gpx(kWaypoint)}}));
    const Result result = Export({"a.zip", "--format", "csv"}, folder);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "file,lat,lon,ele,time,name\r\none.gpx,1,2,,,w\r\ntwo.gpx,1,2,,,w\r\n");
    folder.Write("b.zip", testing_support::BuildZip({{"one.gpx", Gpx(kWaypoint)}}));
    EXPECT_EQ(Export({"b.zip", "--format", "csv"}, folder).out, "lat,lon,ele,time,name\r\n1,2,,,w\r\n");
}

TEST(ExportTest, ADocumentThatCannotBeReadLeavesTheResultUnchanged) {
    const Folder folder;
    folder.Write("a.zip", testing_support::BuildZip({{"one.gpx", Gpx(kWaypoint)}, {"two.gpx", "<gpx"}}));
    folder.Write("a.csv", "before");
    const Result result = Export({"a.zip", "-o", "a.csv"}, folder);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("a.zip/two.gpx"));
    EXPECT_THAT(result.err,
                HasSubstr("vexagpx: Nothing was written, because the rest would be incomplete. (a.zip)\n"));
    EXPECT_EQ(ReadFile(folder.File("a.csv")), "before");
    EXPECT_THAT(folder.Names(), ElementsAre("a.csv", "a.zip"));
}

TEST(ExportTest, PointsWithoutAPositionAreCounted) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kWaypoint + "<wpt lat='91' lon='0'/>"));
    const Result result = Export({"a.gpx", "-o", "a.csv"}, folder);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "vexagpx: Note: 1 thing in a.gpx could not be read and was left out; \"vexagpx check "
              "--keep\" lists it.\n");
}

TEST(ExportTest, TheInputIsNotReplaced) {
    const Folder folder;
    folder.Write("a.kml", Gpx(kWaypoint));
    EXPECT_TRUE(cli::Failed(Export({"a.kml", "-o", "./a.kml"}, folder),
                            "The result would replace the input. (a.kml)"));
    EXPECT_EQ(ReadFile(folder.File("a.kml")), Gpx(kWaypoint));
}

TEST(ExportTest, StandardInputIsRead) {
    const Result result = cli::Tool({"export", "-", "--format", "csv"}).Stdin(Gpx(kWaypoint)).Run();
    EXPECT_EQ(result.out, "lat,lon,ele,time,name\r\n1,2,,,w\r\n");
}

TEST(ExportTest, EveryCorpusFileIsExportedAndParsed) {
    const std::vector<std::string> files = cli::Corpus("gpx");
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    for (const std::string& file : files) {
        const Result result = RunTool({"export", file, "--format", "geojson"});
        EXPECT_EQ(result.status, 0) << file;
        EXPECT_TRUE(nlohmann::json::accept(result.out)) << file;
    }
}

} // namespace
