// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <nlohmann/json.hpp>

namespace {

using cli::Data;
using cli::Folder;
using cli::Gpx;
using cli::Lines;
using cli::Result;
using cli::RunTool;
using nlohmann::json;

json ShowOf(const std::string& document, std::vector<std::string> options = {}) {
    const Folder folder;
    folder.Write("t.gpx", document);
    options.insert(options.begin(), {"show", "--json", "t.gpx"});
    const Result result = RunTool(options, folder.Path());
    EXPECT_EQ(result.status, 0) << document;
    EXPECT_EQ(result.err, "") << document;
    return json::parse(result.out);
}

std::string Waypoint(const std::string& content) {
    return "<wpt lat='1' lon='2'>" + content + "</wpt>";
}

TEST(ShowJsonTest, PrintsALineForEachDocument) {
    const Result result = RunTool({"show", "--json", "hand-written.gpx", "day.gpx", "query.gpx"}, Data(""));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, cli::ReadFile(Data("show.jsonl")));
}

TEST(ShowJsonTest, ListsEverythingWithoutBeingAskedTo) {
    std::string waypoints;
    for (int i = 0; i < 100; ++i)
        waypoints += Waypoint("<name>W</name>");
    const json all = ShowOf(Gpx(waypoints));
    EXPECT_EQ(all["waypoints"].size(), 100U);
    EXPECT_EQ(all, ShowOf(Gpx(waypoints), {"--all"}));
}

TEST(ShowJsonTest, AnEmptyDocumentHasCountsAndEmptyLists) {
    const json empty = ShowOf(Gpx(""));
    EXPECT_EQ(empty["file"], "t.gpx");
    for (const char* const list : {"waypoints", "geocaches", "routes", "tracks"})
        EXPECT_EQ(empty[list], json::array()) << list;
    EXPECT_EQ(empty["contents"]["waypoints"], 0);
    for (const char* const absent : {"name", "time", "author", "links", "bounds", "entry"})
        EXPECT_FALSE(empty.contains(absent)) << absent;
}

TEST(ShowJsonTest, TheHeadIsWhole) {
    const json shown = ShowOf(
        Gpx("<metadata><name>N</name><desc>D</desc><author><name>A</name><link href='https://example.org/a'/>"
            "</author><link href='https://example.org/1'><text>One</text></link><link "
            "href='https://example.org/2'/>"
            "<time>2009-01-15T12:20:30.25+02:00</time><keywords>k, l</keywords></metadata>"));
    EXPECT_EQ(shown["name"], "N");
    EXPECT_EQ(shown["description"], "D");
    EXPECT_EQ(shown["author"], json::parse(R"({"name":"A","link":{"url":"https://example.org/a"}})"));
    EXPECT_EQ(shown["links"], json::parse(R"([{"url":"https://example.org/1","text":"One"},)"
                                          R"({"url":"https://example.org/2"}])"));
    EXPECT_EQ(shown["time"], "2009-01-15T10:20:30.25Z");
    EXPECT_EQ(shown["keywords"], "k, l");
}

TEST(ShowJsonTest, SensorsHaveTheirRangeAndMean) {
    const auto point = [](const std::string& rate) {
        return "<trkpt lat='1' lon='2'><extensions><d:TrackPointExtension "
               "xmlns:d='http://www.garmin.com/xmlschemas/TrackPointExtension/v1'><d:hr>" +
               rate + "</d:hr></d:TrackPointExtension></extensions></trkpt>";
    };
    const std::string points = point("90") + point("100") + point("101");
    const json track = ShowOf(Gpx("<trk><trkseg>" + points + "</trkseg></trk>"))["tracks"][0];
    EXPECT_EQ(track["heartRate"], json::parse(R"({"lowest":90,"highest":101,"mean":97})"));
    EXPECT_FALSE(track.contains("power"));
}

TEST(ShowJsonTest, NumberTypeAndCommentOfAPathAreThere) {
    const json shown = ShowOf(Gpx("<trk><name>T</name><cmt>c</cmt><number>3</number><type>run</type></trk>"));
    EXPECT_EQ(shown["tracks"][0], json::parse(R"({"name":"T","number":3,"type":"run","comment":"c",)"
                                              R"("segments":0,"points":0,"distance":0})"));
}

TEST(ShowJsonTest, ARatingThatIsNoNumberIsText) {
    const auto cache = [](const std::string& difficulty) {
        return Gpx(
            Waypoint("<g:cache><g:name>n</g:name><g:difficulty>" + difficulty + "</g:difficulty></g:cache>"));
    };
    EXPECT_EQ(ShowOf(cache("1.5"))["geocaches"][0]["difficulty"], 1.5);
    for (const std::string text : {"hard", "1.5x", "inf", "nan"})
        EXPECT_EQ(ShowOf(cache(text))["geocaches"][0]["difficulty"], text);
    EXPECT_FALSE(ShowOf(cache(""))["geocaches"][0].contains("difficulty"));
}

TEST(ShowJsonTest, FiguresAreThoseOfStats) {
    const json shown = json::parse(RunTool({"show", "--json", "day.gpx"}, Data("")).out);
    const json stats = json::parse(RunTool({"stats", "--json", "day.gpx"}, Data("")).out);
    for (std::size_t i = 0; i < 2; ++i)
        for (const char* const figure : {"segments", "points", "distance", "start", "end", "elapsed"})
            EXPECT_EQ(shown["tracks"][i][figure], stats["tracks"][i][figure]) << figure;
}

TEST(ShowJsonTest, EntriesOfAnArchiveAreNamed) {
    const Folder folder;
    folder.Write("a.zip",
                 testing_support::BuildZip({{.name = "x/\xFF.gpx", .content = Gpx(cli::kWaypoint)}}));
    const Result result = RunTool({"show", "--json", "a.zip"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    const json shown = json::parse(result.out);
    EXPECT_EQ(shown["file"], "a.zip");
    EXPECT_EQ(shown["entry"], "x/\u00A0.gpx");
}

TEST(ShowJsonTest, AFileThatCannotBeReadHasNoLineAndDoesNotStopTheOthers) {
    const Result result =
        RunTool({"show", "--json", "no-such.gpx", "not-well-formed.gpx", "empty.gpx"}, Data(""));
    EXPECT_EQ(result.status, 1);
    ASSERT_EQ(Lines(result.out).size(), 1U);
    EXPECT_EQ(json::parse(result.out)["file"], "empty.gpx");
    EXPECT_EQ(Lines(result.err).size(), 2U);
}

TEST(ShowJsonTest, HostileTextsStayWithinTheLine) {
    const json shown = ShowOf(Gpx(Waypoint("<name>\"\\&#10;&#x202E;\xC2\x9B</name>")));
    EXPECT_EQ(shown["waypoints"][0]["name"], "\"\\\n\u202E\u009B");
}

} // namespace
