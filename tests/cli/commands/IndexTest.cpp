// SPDX-License-Identifier: MIT
#include "support/Tool.h"
#include "support/ZipBuilder.h"

#include <nlohmann/json.hpp>

#include <filesystem>

namespace {

using cli::Folder;
using cli::Gpx;
using cli::kWaypoint;
using cli::Lines;
using cli::Result;
using cli::RunTool;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using testing_support::BuildZip;

const std::string kTrack =
    "<trk><trkseg><trkpt lat='1' lon='179'><time>2009-01-15T23:00:00Z</time></trkpt>"
    "<trkpt lat='2' lon='-179'><time>2009-01-16T01:00:00.5Z</time></trkpt></trkseg></trk>";
const std::string kCache = "<wpt lat='5' lon='6'><name>GC1</name><g:cache><g:name>c</g:name></g:cache></wpt>";
const std::string kRoute = "<rte><rtept lat='3' lon='4'/></rte>";

Result Index(std::vector<std::string> arguments, const Folder& folder) {
    arguments.insert(arguments.begin(), "index");
    return RunTool(arguments, folder.Path());
}

std::vector<json> JsonLines(const std::string& text) {
    std::vector<json> lines;
    for (const std::string& line : Lines(text))
        lines.push_back(json::parse(line));
    return lines;
}

/// Files of every kind in folders below each other.
void FillFolder(const Folder& folder) {
    std::filesystem::create_directories(folder.File("d/e"));
    folder.Write("d/a.gpx", Gpx(kTrack));
    folder.Write("d/b.gpx", Gpx(kWaypoint + kCache + kRoute));
    folder.Write("d/e/c.zip", BuildZip({{"x.gpx", Gpx(kCache)}, {"y.gpx", Gpx("")}}));
}

TEST(IndexTest, ListsTheFilesAndEntriesBelowAFolder) {
    const Folder folder;
    FillFolder(folder);
    const Result result = Index({"d"}, folder);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(
        Lines(result.out),
        ElementsAre(
            "  #  File              Points  Waypoints  Caches  Routes  Tracks",
            "  1  d/a.gpx                2                                  1",
            StartsWith("     tracks; 2009-01-15 to 2009-01-16; latitude 1.000 to 2.000, longitude 179"),
            "  2  d/b.gpx                1          2       1       1",
            StartsWith("     geocaches, waypoints, routes; latitude 1.000 to 5.000, longitude 2.000"),
            "  3  d/e/c.zip: x.gpx                  1       1",
            "     geocaches; latitude 5.000 to 5.000, longitude 6.000 to 6.000", "  4  d/e/c.zip: y.gpx",
            "     nothing"));
}

TEST(IndexTest, JsonHasEverything) {
    const Folder folder;
    FillFolder(folder);
    const Result result = Index({"--json", "d"}, folder);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(
        Lines(result.out),
        ElementsAre(
            R"({"file":"d/a.gpx","kinds":["tracks"],"waypoints":0,"geocaches":0,"routes":0,"routePoints":0,)"
            R"("tracks":1,"segments":1,"trackPoints":2,"firstTime":"2009-01-15T23:00:00Z",)"
            R"("lastTime":"2009-01-16T01:00:00.5Z","bounds":{"minLatitude":1,"minLongitude":179,)"
            R"("maxLatitude":2,"maxLongitude":-179}})",
            R"({"file":"d/b.gpx","kinds":["geocaches","waypoints","routes"],"waypoints":2,"geocaches":1,)"
            R"("routes":1,"routePoints":1,"tracks":0,"segments":0,"trackPoints":0,"bounds":{"minLatitude":1,)"
            R"("minLongitude":2,"maxLatitude":5,"maxLongitude":6}})",
            R"({"file":"d/e/c.zip","entry":"x.gpx","kinds":["geocaches"],"waypoints":1,"geocaches":1,)"
            R"("routes":0,"routePoints":0,"tracks":0,"segments":0,"trackPoints":0,"bounds":{"minLatitude":5,)"
            R"("minLongitude":6,"maxLatitude":5,"maxLongitude":6}})",
            R"({"file":"d/e/c.zip","entry":"y.gpx","kinds":[],"waypoints":0,"geocaches":0,"routes":0,)"
            R"("routePoints":0,"tracks":0,"segments":0,"trackPoints":0})"));
}

TEST(IndexTest, WhatCannotBeReadIsListedWithTheReasonAndDoesNotEndTheRun) {
    const Folder folder;
    folder.Write("a.gpx", "<gpx");
    folder.Write("b.zip", BuildZip({{"x.gpx", "<wpt>"}, {"y.gpx", Gpx(kWaypoint)}}));
    folder.Write("c.gpx", Gpx(kWaypoint));
    const Result result = Index({"--json", ".", "missing.gpx"}, folder);
    EXPECT_EQ(result.status, 1);
    const std::vector<json> lines = JsonLines(result.out);
    ASSERT_EQ(lines.size(), 5U) << result.out;
    EXPECT_THAT(std::string(lines[0].at("error")), HasSubstr("a.gpx"));
    EXPECT_EQ(lines[1].at("entry"), "x.gpx");
    EXPECT_THAT(std::string(lines[1].at("error")), HasSubstr("b.zip/x.gpx"));
    EXPECT_EQ(lines[2].at("waypoints"), 1);
    EXPECT_EQ(lines[3].at("waypoints"), 1);
    EXPECT_EQ(lines[4].at("file"), "missing.gpx");
    EXPECT_THAT(std::string(lines[4].at("error")), HasSubstr("missing.gpx"));
    EXPECT_EQ(Lines(result.err).size(), 3U) << result.err;
    const Result table = Index({"."}, folder);
    EXPECT_EQ(table.status, 1);
    EXPECT_THAT(table.out, HasSubstr("unreadable: "));
}

TEST(IndexTest, DuplicatesAreGroups) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kTrack));
    folder.Write("b.gpx", Gpx(kWaypoint));
    folder.Write("c.gpx", Gpx("<metadata><name>n</name></metadata>\n\n" + kTrack));
    folder.Write("d.zip",
                 BuildZip({{"x.gpx", Gpx(kWaypoint + " ")}, {"y.gpx", Gpx("")}, {"z.gpx", Gpx("")}}));
    folder.Write("e.gpx", Gpx(kRoute));
    EXPECT_EQ(Index({"--duplicates", "."}, folder).out, "2 documents with equal content\n"
                                                        "  ./a.gpx\n"
                                                        "  ./c.gpx\n"
                                                        "\n"
                                                        "2 documents with equal content\n"
                                                        "  ./b.gpx\n"
                                                        "  ./d.zip: x.gpx\n");
    EXPECT_EQ(Index({"--duplicates", "a.gpx", "e.gpx"}, folder).out, "No documents have equal content.\n");
}

TEST(IndexTest, DuplicatesInJsonFollowTheDocuments) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kTrack));
    folder.Write("b.gpx", Gpx(kTrack));
    folder.Write("c.gpx", Gpx(kWaypoint));
    folder.Write("d.gpx", Gpx(""));
    const std::vector<json> lines = JsonLines(Index({"--duplicates", "--json", "."}, folder).out);
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[0].at("content"), lines[1].at("content"));
    EXPECT_NE(lines[0].at("content"), lines[2].at("content"));
    EXPECT_FALSE(lines[3].contains("content"));
    EXPECT_EQ(lines[4].at("content"), lines[0].at("content"));
    EXPECT_EQ(lines[4].at("duplicates"), json::parse(R"([{"file":"./a.gpx"},{"file":"./b.gpx"}])"));
}

TEST(IndexTest, WhatIsWrittenAgainIsADuplicate) {
    const std::vector<std::string> files = cli::Corpus("gpx");
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    const Folder folder;
    std::size_t compared = 0;
    for (const std::string& file : files) {
        const Result written = RunTool({"convert", file, folder.File("again.gpx")});
        ASSERT_EQ(written.status, 0) << file;
        if (written.err != "")
            continue;
        const Result result = Index({"--duplicates", "--json", file, "again.gpx"}, folder);
        const std::vector<json> lines = JsonLines(result.out);
        ASSERT_GE(lines.size(), 2U) << file;
        EXPECT_EQ(lines[0].value("content", ""), lines[1].value("content", "")) << file;
        ++compared;
    }
    EXPECT_GT(compared, files.size() / 2);
}

} // namespace
