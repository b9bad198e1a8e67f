// SPDX-License-Identifier: MIT
#include "support/Session.h"
#include "support/Tool.h"

#include <vexagpx/terminal/DisplayText.h>

#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

using cli::Data;
using cli::Folder;
using cli::Gpx;
using cli::Lines;
using cli::Result;
using cli::RunTool;
using cli::Session;
using testing::HasSubstr;
using testing::Not;

/// Runs the command on a file of the tests' own and expects the committed output.
void ExpectOutput(std::vector<std::string> arguments, const std::string& expected) {
    arguments.insert(arguments.begin(), "stats");
    const Result result = RunTool(arguments, Data(""));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, cli::ReadFile(Data(expected)));
}

nlohmann::json StatsOf(const std::string& document, std::vector<std::string> options = {}) {
    const Folder folder;
    folder.Write("t.gpx", document);
    options.insert(options.begin(), {"stats", "--json", "t.gpx"});
    const Result result = RunTool(options, folder.Path());
    EXPECT_EQ(result.status, 0) << document;
    EXPECT_EQ(result.err, "") << document;
    return nlohmann::json::parse(result.out);
}

std::string Track(const std::string& points) {
    return Gpx("<trk><trkseg>" + points + "</trkseg></trk>");
}

TEST(StatsTest, ShowsEachTrackAndRouteAndTheirSums) {
    ExpectOutput({"day.gpx"}, "day.stats.txt");
}

TEST(StatsTest, ShowsFeetMilesAndMilesAnHour) {
    ExpectOutput({"day.gpx", "--units", "imperial"}, "day.stats-imperial.txt");
}

TEST(StatsTest, ClimbAndPauseAreOptions) {
    ExpectOutput({"day.gpx", "--climb", "3m", "--pause", "11min"}, "day.stats-options.txt");
}

TEST(StatsTest, PrintsALineOfJsonForEachDocumentAndTheTotal) {
    ExpectOutput({"day.gpx", "hand-written.gpx", "--json", "--total"}, "day.stats.jsonl");
}

TEST(StatsTest, TotalAddsUpAllFiles) {
    ExpectOutput({"day.gpx", "day.gpx", "--total"}, "day.stats-total.txt");
}

// 0.001 degrees of the equator are 111.3195 m; the second segment starts 46 minutes after the first one ended.
TEST(StatsTest, JsonHasTheFiguresInMetresAndSeconds) {
    const nlohmann::json stats = nlohmann::json::parse(RunTool({"stats", "--json", "day.gpx"}, Data("")).out);
    const nlohmann::json& morning = stats["tracks"][0];
    EXPECT_EQ(morning["name"], "Morning");
    EXPECT_EQ(morning["segments"], 2);
    EXPECT_EQ(morning["points"], 10);
    EXPECT_EQ(morning["pointsWithoutTime"], 1);
    EXPECT_EQ(morning["pointsWithoutHeight"], 1);
    EXPECT_EQ(morning["backwardTimes"], 1);
    EXPECT_EQ(morning["distance"], 901.688); // 0.0081 degrees
    EXPECT_EQ(morning["distanceWithHeight"], 903.114);
    EXPECT_EQ(morning["ascent"], 12);
    EXPECT_EQ(morning["descent"], 22);
    EXPECT_EQ(morning["rawAscent"], 15);
    EXPECT_EQ(morning["rawDescent"], 25);
    EXPECT_EQ(morning["lowest"], 90);
    EXPECT_EQ(morning["highest"], 112);
    EXPECT_EQ(morning["start"], "2024-05-01T06:00:00Z");
    EXPECT_EQ(morning["end"], "2024-05-01T07:01:00Z");
    EXPECT_EQ(morning["elapsed"], 3660);
    EXPECT_EQ(morning["moving"], 300);
    EXPECT_EQ(morning["paused"], 3360);
    EXPECT_EQ(morning["pauseCount"], 2);
    EXPECT_EQ(morning["pauses"][0]["start"], "2024-05-01T06:03:00Z");
    EXPECT_EQ(morning["pauses"][0]["duration"], 600);
    EXPECT_EQ(morning["pauses"][0]["longitude"], 0.003);
    EXPECT_EQ(morning["pauses"][1]["duration"], 2760);
    EXPECT_EQ(morning["meanSpeed"], 2.226); // 0.006 degrees in 5 minutes
    EXPECT_FALSE(morning.contains("fastestSpeed"));
    EXPECT_EQ(stats["tracks"][1]["bounds"]["west"], 179.995);
    EXPECT_EQ(stats["tracks"][1]["bounds"]["east"], -179.995);
    EXPECT_EQ(stats["allTracks"]["count"], 2);
    EXPECT_EQ(stats["allTracks"]["elapsed"], 3960);
    EXPECT_EQ(stats["allTracks"]["distance"], 2014.883); // 0.0181 degrees
    EXPECT_EQ(stats["allRoutes"]["distance"], 2226.39);
}

TEST(StatsTest, WhatIsNotThereHasNoMember) {
    const nlohmann::json path = StatsOf(Track("<trkpt lat='1' lon='2'/>"))["tracks"][0];
    for (const char* name :
         {"name", "ascent", "lowest", "start", "elapsed", "meanSpeed", "fastestSpeed", "pauses"})
        EXPECT_FALSE(path.contains(name)) << name;
    EXPECT_EQ(path["distance"], 0);
}

TEST(StatsTest, ValuesThatMeanNothingGiveNoNonsense) {
    const nlohmann::json path = StatsOf(Track("<trkpt lat='1' lon='2'><ele>NaN</ele></trkpt>"
                                              "<trkpt lat='1' lon='2'><ele>INF</ele></trkpt>"
                                              "<trkpt lat='1' lon='2'><ele>1e300</ele></trkpt>"
                                              "<trkpt lat='1' lon='2'><ele>7</ele></trkpt>"))["tracks"][0];
    EXPECT_EQ(path["pointsWithoutHeight"], 3);
    EXPECT_EQ(path["highest"], 7);
    EXPECT_EQ(path["rawAscent"], 0);
}

TEST(StatsTest, AReceiversJumpMakesNoSpeed) {
    std::string points;
    for (int second = 10; second < 60; ++second)
        points += "<trkpt lat='0' lon='" +
                  std::string(second == 30 ? "0.01" : "0.000" + std::to_string(second)) +
                  "'><time>2024-05-01T06:00:" + std::to_string(second) + "Z</time></trkpt>";
    const nlohmann::json path = StatsOf(Track(points))["tracks"][0];
    EXPECT_EQ(path["meanSpeed"], 1.113);
    EXPECT_EQ(path["fastestSpeed"], 1.113);
}

TEST(StatsTest, AFileWithoutPathsSaysSo) {
    const Folder folder;
    folder.Write("t.gpx", Gpx(cli::kWaypoint));
    EXPECT_EQ(RunTool({"stats", "t.gpx"}, folder.Path()).out, "t.gpx\n  It holds no track and no route.\n");
    EXPECT_EQ(
        RunTool({"stats", "t.gpx", "--total"}, folder.Path()).out,
        "t.gpx\n  It holds no track and no route.\n\nTotal of 1 file\n  They hold no track and no route.\n");
}

TEST(StatsTest, ListsTwentyPausesAndCountsAll) {
    std::string points;
    for (int hour = 0; hour < 24; ++hour) {
        const std::string start = (hour < 10 ? "0" : "") + std::to_string(hour);
        const std::string place =
            "<trkpt lat='0' lon='" + std::to_string(hour) + "'><time>2024-05-01T" + start;
        points += place + ":00:00Z</time></trkpt>" + place + ":30:00Z</time></trkpt>";
    }
    const Folder folder;
    folder.Write("t.gpx", Track(points));
    const std::string text = RunTool({"stats", "t.gpx"}, folder.Path()).out;
    EXPECT_THAT(text, HasSubstr("    Pauses    24, together 12 h"));
    EXPECT_THAT(text, HasSubstr("2024-05-01T19:00:00Z, 30 min, at 0.000000 19.000000\n"
                                "              \u2026 and 4 more\n"));
    EXPECT_THAT(text, Not(HasSubstr("2024-05-01T20:00:00Z, ")));
    EXPECT_EQ(StatsOf(Track(points))["tracks"][0]["pauses"].size(), 24U);
}

TEST(StatsTest, SaysWhatIsWrongWithAnOption) {
    EXPECT_THAT(RunTool({"stats", "--climb", "5", "a.gpx"}).err,
                HasSubstr("--climb: must be a length, such as 500m, 2km or 15ft"));
    EXPECT_THAT(RunTool({"stats", "--pause", "2m", "a.gpx"}).err,
                HasSubstr("--pause: must be a duration such as 90s or 2min (s, min, h)"));
    EXPECT_THAT(RunTool({"stats", "--pause", "0.9s", "a.gpx"}).err,
                HasSubstr("--pause: must be a second or more"));
}

TEST(StatsTest, AFileThatCannotBeReadDoesNotStopTheOthers) {
    const Result result = RunTool({"stats", "--total", "--json", "no-such.gpx", "day.gpx"}, Data(""));
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("no-such.gpx"));
    const std::vector<std::string> lines = Lines(result.out);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(nlohmann::json::parse(lines[1])["files"], 1);
}

class StatsInTerminalTest : public cli::TerminalTest {};

TEST_F(StatsInTerminalTest, FitsTheTerminal) {
    for (const unsigned short columns : std::vector<unsigned short>{40, 80, 200}) {
        Session run({"stats", "day.gpx", "--total"});
        run.In(Data("")).Columns(columns).OutToTerminal().Start();
        run.Finish();
        std::string screen = run.Screen();
        screen.erase(std::remove(screen.begin(), screen.end(), '\r'), screen.end());
        for (const std::string& line : Lines(screen))
            EXPECT_LE(vexagpx::DisplayWidth(icu::UnicodeString::fromUTF8(line)), columns) << line;
        EXPECT_EQ(screen, cli::ReadFile(Data("day.stats-" + std::to_string(columns) + ".txt")));
    }
}

} // namespace
