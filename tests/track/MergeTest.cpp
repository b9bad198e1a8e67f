// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Merge.h>

#include "support/Reading.h"

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxSaver.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace vexaTransferLib;
using vexaTrackLib::Merge;
using vexaTrackLib::MergeResult;
using vexaTrackLib::MergeTracks;

const std::string kHead = "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1' "
                          "xmlns:groundspeak='http://www.groundspeak.com/cache/1/0/1'>";

std::string Gpx(const std::string& content) {
    return kHead + content + "</gpx>";
}

struct Merged {
    std::string text;
    MergeResult result;
};

Merged MergedFiles(const std::vector<std::string>& contents, MergeTracks tracks = MergeTracks::kWhole) {
    std::vector<GpxDocument> documents;
    for (const std::string& content : contents)
        documents.push_back(track_tests::ReadCompletely(content));
    std::vector<const GpxDocument*> others;
    for (std::size_t i = 1; i < documents.size(); ++i)
        others.push_back(&documents[i]);
    Merged merged;
    merged.result = Merge(documents[0], others, tracks);
    merged.text = GpxSaver().GetText(documents[0]);
    // The same again changes nothing.
    GpxDocument again = track_tests::ReadCompletely(merged.text);
    EXPECT_TRUE(Merge(again, others, tracks).IsNothing()) << merged.text;
    EXPECT_EQ(GpxSaver().GetText(again), merged.text);
    return merged;
}

std::string MergedContent(const std::string& one, const std::string& other,
                          MergeTracks tracks = MergeTracks::kWhole) {
    const std::string text = MergedFiles({Gpx(one), Gpx(other)}, tracks).text;
    EXPECT_TRUE(text.starts_with(kHead) && text.ends_with("</gpx>")) << text;
    return text.substr(kHead.size(), text.size() - kHead.size() - 6);
}

// Objects of another file are written anew around what they have.
void ExpectSame(const std::string& text, const std::string& expected) {
    EXPECT_TRUE(track_tests::ReadCompletely(text) == track_tests::ReadCompletely(expected)) << text;
}

std::string Waypoint(const std::string& latitude, const std::string& inside) {
    return "<wpt lat='" + latitude + "' lon='1'>" + inside + "</wpt>";
}

std::string Log(const std::string& id, const std::string& date, const std::string& text = "t") {
    return "<groundspeak:log id='" + id + "'><groundspeak:date>" + date +
           "</groundspeak:date><groundspeak:text>" + text + "</groundspeak:text></groundspeak:log>";
}

std::string Cache(const std::string& terrain, const std::string& logs) {
    return Waypoint("1", "<name>GC1</name><groundspeak:cache><groundspeak:terrain>" + terrain +
                             "</groundspeak:terrain><groundspeak:logs>" + logs +
                             "</groundspeak:logs></groundspeak:cache>");
}

std::string Point(const std::string& latitude, int second) {
    return "<trkpt lat='" + latitude + "' lon='1'><time>2024-05-01T00:00:0" + std::to_string(second) +
           "Z</time></trkpt>";
}

std::string Track(const std::string& points) {
    return "<trk><trkseg>" + points + "</trkseg></trk>";
}

TEST(MergeTest, NewObjectsComeBehindTheOthers) {
    const std::string a = Waypoint("1", "<name>a</name>");
    const std::string b = Waypoint("2", "<name>b</name>");
    const std::string route = "<rte><rtept lat='1' lon='1'></rtept></rte>";
    const Merged merged =
        MergedFiles({Gpx(a + Track(Point("1", 1))), Gpx(b + route + Track(Point("2", 2))), Gpx(a + b)});
    EXPECT_EQ(merged.text, Gpx(a + b + route + Track(Point("1", 1)) + Track(Point("2", 2))));
    EXPECT_EQ(merged.result.addedWaypoints, 1U);
    EXPECT_EQ(merged.result.addedRoutes, 1U);
    EXPECT_EQ(merged.result.addedTracks, 1U);
    EXPECT_EQ(merged.result.addedPoints, 1U);
    EXPECT_EQ(merged.result.sameObjects, 2U);
    EXPECT_FALSE(merged.result.IsNothing());
}

TEST(MergeTest, TheSameObjectsAreThereOnce) {
    const std::string all = Waypoint("1", "<name>a</name>") + Waypoint("2", "") +
                            "<rte><rtept lat='1' lon='1'/></rte>" + Track(Point("1", 1) + Point("2", 2));
    EXPECT_EQ(MergedContent(all, all), all);
}

TEST(MergeTest, WaypointsWithOneNameFarApartAreTwo) {
    const std::string a = Waypoint("1", "<name>Hut</name>");
    const std::string b = Waypoint("2", "<name>Hut</name>");
    EXPECT_EQ(MergedContent(a, b), a + b);
    EXPECT_EQ(MergedContent(a, Waypoint("1.00005", "<name>Hut</name>")), a);
}

TEST(MergeTest, TheNewerVersionOfAWaypointStays) {
    const auto at = [](const std::string& day, const std::string& description) {
        return Waypoint("1", "<time>2024-05-0" + day + "T00:00:00Z</time><name>a</name><desc>" + description +
                                 "</desc>");
    };
    EXPECT_EQ(MergedContent(at("1", "old"), at("2", "new")), at("2", "new"));
    EXPECT_EQ(MergedContent(at("2", "new"), at("1", "old")), at("2", "new"));
    const Merged merged = MergedFiles({Gpx(at("1", "one")), Gpx(at("1", "other"))});
    EXPECT_EQ(merged.text, Gpx(at("1", "one")));
    ASSERT_EQ(merged.result.losers.size(), 1U);
    icu::UnicodeString description;
    EXPECT_TRUE(merged.result.losers[0].GetDescription(description));
    EXPECT_EQ(description, u"other");
}

TEST(MergeTest, LogsOfGeocachesAreUnited) {
    const Merged merged = MergedFiles(
        {Gpx(Cache("1", Log("2", "2024-05-02"))),
         Gpx(Cache("1", Log("3", "2024-05-03") + Log("2", "2024-05-02") + Log("1", "2024-05-01")))});
    ExpectSame(merged.text,
               Gpx(Cache("1", Log("3", "2024-05-03") + Log("2", "2024-05-02") + Log("1", "2024-05-01"))));
    EXPECT_EQ(merged.result.addedLogs, 2U);
    EXPECT_TRUE(merged.result.losers.empty());
}

TEST(MergeTest, TheGeocacheOfTheNewerDocumentStaysWithTheLogsOfBoth) {
    const auto query = [](const std::string& day, const std::string& cache) {
        return Gpx("<metadata><time>2024-05-0" + day + "T00:00:00Z</time></metadata>" + cache);
    };
    const std::string one = Cache("1", Log("1", "2024-05-01"));
    const std::string other = Cache("2", Log("2", "2024-05-02"));
    const std::string both = Cache("2", Log("2", "2024-05-02") + Log("1", "2024-05-01"));
    ExpectSame(MergedFiles({query("1", one), query("2", other)}).text, query("1", both));
    ExpectSame(MergedFiles({query("2", other), query("1", one)}).text, query("2", both));
    ExpectSame(MergedFiles({query("1", one), query("3", other), query("2", Cache("5", ""))}).text,
               query("1", both));
}

TEST(MergeTest, TheOrderOfTheDocumentsMakesNoDifference) {
    const auto query = [](const std::string& day, const std::string& cache) {
        return Gpx("<metadata><time>2024-05-0" + day + "T00:00:00Z</time></metadata>" + cache);
    };
    const std::string first = query("1", Cache("1", Log("1", "2024-05-01", "one")));
    const std::string second = query("2", Cache("2", Log("1", "2024-05-01", "two")));
    const std::string third = query("3", Cache("3", Log("1", "2024-05-01", "three")));
    for (const std::vector<std::string>& order :
         {std::vector<std::string>{first, second, third}, {first, third, second}}) {
        const Merged merged = MergedFiles(order);
        ExpectSame(merged.text, query("1", Cache("3", Log("1", "2024-05-01", "three"))));
        EXPECT_FALSE(merged.result.losers.empty());
    }
}

TEST(MergeTest, OfTwoVersionsOfALogThatOfTheNewerDocumentStays) {
    const auto query = [](const std::string& day, const std::string& text) {
        return Gpx("<metadata><time>2024-05-0" + day + "T00:00:00Z</time></metadata>" +
                   Cache("1", Log("1", "2024-05-01", text)));
    };
    const Merged newer = MergedFiles({query("1", "old"), query("2", "new")});
    ExpectSame(newer.text, query("1", "new"));
    EXPECT_EQ(newer.result.replacedLogs, 1U);
    EXPECT_EQ(newer.result.losers.size(), 1U);
    const Merged older = MergedFiles({query("2", "new"), query("1", "old")});
    EXPECT_EQ(older.text, query("2", "new"));
    EXPECT_EQ(older.result.replacedLogs, 0U);
    EXPECT_EQ(older.result.losers.size(), 1U);
}

TEST(MergeTest, ANewerGeocacheWithoutLogsKeepsTheOldOnes) {
    const auto query = [](const std::string& day, const std::string& cache) {
        return Gpx("<metadata><time>2024-05-0" + day + "T00:00:00Z</time></metadata>" + cache);
    };
    const std::string log = Log("1", "2024-05-01");
    ExpectSame(MergedFiles({query("1", Cache("1", log)), query("2", Cache("2", ""))}).text,
               query("1", Cache("2", log)));
}

TEST(MergeTest, LogsWithoutAnIdentifierAreKnownByTheirContent) {
    const std::string without =
        "<groundspeak:log><groundspeak:date>2024-05-01</groundspeak:date><groundspeak:text>a"
        "</groundspeak:text></groundspeak:log>";
    std::string other = without;
    other.replace(other.find(">a<"), 3, ">b<");
    const Merged merged = MergedFiles({Gpx(Cache("1", without)), Gpx(Cache("1", without + other))});
    EXPECT_EQ(merged.result.addedLogs, 1U);
    ExpectSame(merged.text, Gpx(Cache("1", without + other)));
}

TEST(MergeTest, TracksWithoutTimesStayWhole) {
    const std::string one = Track("<trkpt lat='1' lon='1'></trkpt><trkpt lat='2' lon='1'></trkpt>");
    const std::string other = Track("<trkpt lat='2' lon='1'></trkpt><trkpt lat='3' lon='1'></trkpt>");
    EXPECT_EQ(MergedContent(one, other), one + other);
    EXPECT_EQ(MergedContent(one, one), one);
}

TEST(MergeTest, PointsWithoutTimeInATrackWithTimesAreThereOnce) {
    const std::string bare = "<trkpt lat='5' lon='1'></trkpt>";
    const std::string one = Track(Point("1", 1) + bare);
    EXPECT_EQ(MergedContent(one, Track(Point("1", 1) + bare + Point("2", 2))), one + Track(Point("2", 2)));
}

TEST(MergeTest, PointsThatAreThereAlreadyAreNotAddedAgain) {
    const std::string first = Track(Point("1", 1) + Point("2", 2));
    EXPECT_EQ(MergedContent(first, Track(Point("0", 0) + Point("1", 1) + Point("3", 3) + Point("2", 2))),
              first + Track(Point("0", 0) + "</trkseg><trkseg>" + Point("3", 3)));
}

TEST(MergeTest, TracksCanBeBroughtIntoTheOrderOfTheirTimes) {
    const std::string early = Track(Point("1", 1));
    const std::string late = Track(Point("2", 5));
    const std::string none = Track("<trkpt lat='1' lon='1'/>");
    EXPECT_EQ(MergedContent(none + late, early, MergeTracks::kByTime), early + late + none);
    EXPECT_EQ(MergedContent(none + late, early), none + late + early);
}

TEST(MergeTest, ManyObjectsWithOneNameAreMergedInOneGo) {
    constexpr int kCount = 30000;
    std::string far;
    std::string caches;
    std::string logs;
    for (int i = 0; i < kCount; ++i) {
        far += Waypoint(std::to_string(i * 0.002), "<name>n</name>");
        caches += Cache("1", Log(std::to_string(kCount + 1 + i), "2024-05-01"));
        logs += Log(std::to_string(i + 1), "2024-05-01");
    }
    EXPECT_EQ(MergedFiles({Gpx(far), Gpx(far)}).result.sameObjects, std::size_t{kCount});
    EXPECT_EQ(MergedFiles({Gpx(Cache("1", logs)), Gpx(caches)}).result.addedLogs, std::size_t{kCount});
}

TEST(MergeTest, ManyObjectsAreMergedInOneGo) {
    std::string one;
    std::string other;
    for (int i = 0; i < 20000; ++i) {
        one += Waypoint("1", "<name>" + std::to_string(i) + "</name>");
        other += Waypoint("1", "<name>" + std::to_string(i + 10000) + "</name>");
    }
    EXPECT_EQ(MergedFiles({Gpx(one), Gpx(other)}).result.addedWaypoints, 10000U);
}

} // namespace
