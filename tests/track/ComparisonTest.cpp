// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Comparison.h>

#include "support/Reading.h"

#include <vexaTransferLib/GpxDocument.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace vexaTransferLib;
using testing::ElementsAre;
using testing::IsEmpty;
using vexaTrackLib::Compare;
using vexaTrackLib::Difference;

const std::string kHead =
    "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1' xmlns:x='urn:x' "
    "xmlns:groundspeak='http://www.groundspeak.com/cache/1/0/1'>";

std::vector<Difference> Between(const std::string& before, const std::string& after) {
    return Compare(track_tests::ReadCompletely(kHead + before + "</gpx>"),
                   track_tests::ReadCompletely(kHead + after + "</gpx>"));
}

std::string Utf8(const icu::UnicodeString& text) {
    std::string utf8;
    return text.toUTF8String(utf8);
}

// "w1>2 b(a): moved 111 m, time +1000, [ele,sym]".
std::string Text(const Difference& difference) {
    std::string text(1, "dwrt"[static_cast<std::size_t>(difference.object)]);
    text += std::to_string(difference.oldNumber) + ">" + std::to_string(difference.newNumber) + " " +
            Utf8(difference.name);
    if (difference.oldName)
        text += "(" + Utf8(*difference.oldName) + ")";
    if (difference.moved)
        text += " moved " + std::to_string(static_cast<int>(*difference.moved));
    if (difference.retimed)
        text += " time " + std::to_string(static_cast<int>(*difference.retimed));
    for (const std::string& value : difference.values)
        text += " [" + value + "]";
    const auto count = [&text](const char* what, std::size_t number) {
        if (number != 0)
            text += std::string(" ") + what + std::to_string(number);
    };
    count("+", difference.addedPoints);
    count("-", difference.removedPoints);
    count("m", difference.movedPoints);
    count("t", difference.retimedPoints);
    count("c", difference.changedPoints);
    count("log+", difference.addedLogs);
    count("log-", difference.removedLogs);
    if (difference.isAvailable)
        text += *difference.isAvailable ? " available" : " disabled";
    if (difference.isArchived)
        text += *difference.isArchived ? " archived" : " unarchived";
    return text;
}

std::vector<std::string> Texts(const std::string& before, const std::string& after) {
    std::vector<std::string> texts;
    for (const Difference& difference : Between(before, after))
        texts.push_back(Text(difference));
    return texts;
}

std::string Waypoint(const std::string& latitude, const std::string& inside) {
    return "<wpt lat='" + latitude + "' lon='1'>" + inside + "</wpt>";
}

std::string Track(const std::string& points, const std::string& name = "t") {
    return "<trk><name>" + name + "</name><trkseg>" + points + "</trkseg></trk>";
}

std::string Point(const std::string& latitude, int second, const std::string& more = "") {
    return "<trkpt lat='" + latitude + "' lon='1'>" + more + "<time>2024-05-01T00:00:0" +
           std::to_string(second) + "Z</time></trkpt>";
}

TEST(ComparisonTest, DocumentsThatSayTheSameDoNotDiffer) {
    EXPECT_THAT(Texts("", ""), IsEmpty());
    EXPECT_THAT(
        Texts("<metadata><name>n</name></metadata><wpt lat='1.0' lon='1'><ele>2.50</ele><sym> s </sym></wpt>",
              "<metadata>\n<name>n</name></metadata>\n<wpt lon='1' lat='1'><ele>2.5</ele><sym>s</sym><!-- c "
              "--></wpt>"),
        IsEmpty());
}

TEST(ComparisonTest, WaypointsAreNewAndGone) {
    const std::string a = Waypoint("1", "<name>a</name>");
    const std::string b = Waypoint("2", "<name>b</name>");
    EXPECT_THAT(Texts(a, a + b), ElementsAre("w0>2 b"));
    EXPECT_THAT(Texts(a + b, b), ElementsAre("w1>0 a"));
    const std::vector<Difference> differences = Between(a, b);
    ASSERT_EQ(differences.size(), 2U);
    EXPECT_TRUE(differences[0].IsAdded());
    EXPECT_FALSE(differences[0].IsRemoved());
    EXPECT_TRUE(differences[1].IsRemoved());
}

TEST(ComparisonTest, AnotherOrderOfWaypointsIsNoDifference) {
    const std::string a = Waypoint("1", "<name>a</name>");
    const std::string b = Waypoint("2", "<name>b</name>");
    EXPECT_THAT(Texts(a + b + a, b + a + a), IsEmpty());
    EXPECT_THAT(Texts(a + b + a, b + a), ElementsAre("w3>0 a"));
}

TEST(ComparisonTest, AWaypointIsFoundByItsNameOrItsPlace) {
    EXPECT_THAT(Texts(Waypoint("1", "<name>a</name>"), Waypoint("1.001", "<name>a</name>")),
                ElementsAre("w1>1 a moved 110"));
    EXPECT_THAT(Texts(Waypoint("1", "<name>a</name>"), Waypoint("1", "<name>b</name>")),
                ElementsAre("w1>1 b(a)"));
    EXPECT_THAT(Texts(Waypoint("1", "<name>a</name>"), Waypoint("1", "")), ElementsAre("w1>1 (a)"));
}

TEST(ComparisonTest, ValuesOfAWaypointAreNamed) {
    EXPECT_THAT(
        Texts(
            Waypoint("1",
                     "<ele>1</ele><time>2024-05-01T00:00:00Z</time><name>a</name><desc>d</desc><sym>s</sym>"),
            Waypoint("1",
                     "<ele>2</ele><time>2024-05-01T00:00:01Z</time><name>a</name><cmt>c</cmt><sym>s</sym>"
                     "<extensions><x:hr>1</x:hr></extensions>")),
        ElementsAre("w1>1 a time 1000 [cmt] [desc] [ele] [hr]"));
    EXPECT_THAT(Texts(Waypoint("1", "<time>2024-05-01T00:00:00Z</time><link href='a'/>"),
                      Waypoint("1", "<link href='b'/>")),
                ElementsAre("w1>1  [link] [time]"));
}

TEST(ComparisonTest, GeocachesHaveNewLogsAndAreArchived) {
    const auto cache = [](const std::string& attributes, const std::string& terrain,
                          const std::string& logs) {
        return Waypoint("1", "<name>GC1</name><groundspeak:cache id='1' " + attributes +
                                 "><groundspeak:terrain>" + terrain +
                                 "</groundspeak:terrain><groundspeak:logs>" + logs +
                                 "</groundspeak:logs></groundspeak:cache>");
    };
    const auto log = [](int id) {
        return "<groundspeak:log id='" + std::to_string(id) +
               "'><groundspeak:text>t</groundspeak:text></groundspeak:log>";
    };
    EXPECT_THAT(Texts(cache("available='True' archived='False'", "1", log(1)),
                      cache("available='False' archived='True'", "1.5", log(2) + log(3))),
                ElementsAre("w1>1 GC1 [terrain] log+2 log-1 disabled archived"));
    EXPECT_THAT(Texts(cache("", "1", log(1)), Waypoint("1", "<name>GC1</name>")),
                ElementsAre("w1>1 GC1 [cache]"));
    EXPECT_THAT(Texts(cache("available='False'", "1", ""), cache("available='True'", "1", "")),
                ElementsAre("w1>1 GC1 available"));
}

TEST(ComparisonTest, PointsOfATrackAreNewGoneMovedAndRetimed) {
    const std::string before = Track(Point("1", 1) + Point("2", 2) + Point("3", 3));
    EXPECT_THAT(Texts(before, Track(Point("1", 1) + Point("3", 3))), ElementsAre("t1>1 t -1"));
    EXPECT_THAT(Texts(Track(Point("1", 1) + Point("3", 3)), before), ElementsAre("t1>1 t +1"));
    EXPECT_THAT(Texts(before, Track(Point("1", 1) + Point("2.001", 2) + Point("3", 3))),
                ElementsAre("t1>1 t moved 110 m1"));
    EXPECT_THAT(Texts(before, Track(Point("1", 2) + Point("2", 5) + Point("3", 6))),
                ElementsAre(testing::HasSubstr("t")));
    EXPECT_THAT(Texts(before, Track(Point("1", 5) + Point("2", 6) + Point("3", 7))),
                ElementsAre("t1>1 t time 4000 t3"));
    EXPECT_THAT(Texts(before, Track(Point("1", 1, "<ele>5</ele>") + Point("2", 2) + Point("3", 3))),
                ElementsAre("t1>1 t c1"));
}

TEST(ComparisonTest, PointsWithoutTimesAreComparedByOrder) {
    const auto route = [](const std::string& middle) {
        return "<rte><name>r</name><rtept lat='1' lon='1'/><rtept lat='" + middle +
               "' lon='1'/><rtept lat='3' lon='1'/></rte>";
    };
    EXPECT_THAT(Texts(route("2"), route("2.001")), ElementsAre("r1>1 r moved 110 m1"));
}

TEST(ComparisonTest, OrderAndSegmentsOfATrackCount) {
    EXPECT_THAT(Texts(Track(Point("1", 1) + Point("2", 2)), Track(Point("2", 2) + Point("1", 1))),
                ElementsAre("t1>1 t [order]"));
    EXPECT_THAT(Texts(Track(Point("1", 1) + Point("2", 2)),
                      Track(Point("1", 1) + "</trkseg><trkseg>" + Point("2", 2))),
                ElementsAre("t1>1 t [trkseg]"));
    EXPECT_THAT(Texts(Track(Point("1", 1) + "</trkseg><trkseg>" + Point("2", 2)), Track(Point("1", 1))),
                ElementsAre("t1>1 t [trkseg] -1"));
}

TEST(ComparisonTest, ATrackIsFoundByItsNameOrItsFirstPoint) {
    const std::string points = Point("1", 1) + Point("2", 2);
    EXPECT_THAT(Texts(Track(points, "a"), Track(points, "b")), ElementsAre("t1>1 b(a)"));
    EXPECT_THAT(Texts(Track(points, "a"), Track(Point("7", 7), "b")), ElementsAre("t0>1 b", "t1>0 a"));
    EXPECT_THAT(Texts(Track("", "a"), Track("", "b")), ElementsAre("t0>1 b", "t1>0 a"));
}

TEST(ComparisonTest, TheHeadOfTheDocumentIsCompared) {
    EXPECT_THAT(
        Texts("<metadata><name>a</name><desc>d</desc><author><name>x</name></"
              "author><time>2024-05-01T00:00:00Z</time>"
              "<keywords>k</keywords></metadata>",
              "<metadata><name>b</name><author><name>y</name></author><time>2024-05-01T00:00:01Z</time>"
              "<keywords>k</keywords></metadata><extensions><x:e>1</x:e></extensions>"),
        ElementsAre("d0>0 b(a) time 1000 [author] [desc] [e]"));
    EXPECT_THAT(Texts("<metadata><time>2024-05-01T00:00:00Z</time></metadata>", ""),
                ElementsAre("d0>0  [time]"));
}

TEST(ComparisonTest, TheVersionIsNoDifference) {
    const GpxDocument old = track_tests::ReadCompletely(
        "<gpx version='1.0' creator='c' "
        "xmlns='http://www.topografix.com/GPX/1/0'><name>n</name><author>a</author>"
        "<email>a@b</email><keywords>k</keywords><wpt lat='1' "
        "lon='1'><url>u</url><urlname>t</urlname></wpt></gpx>");
    const GpxDocument document = track_tests::ReadCompletely(
        kHead + "<metadata><name>n</name><author><name>a</name><email id='a' "
                "domain='b'/></author><keywords>k</keywords>"
                "</metadata><wpt lat='1' lon='1'><link href='u'><text>t</text></link></wpt></gpx>");
    EXPECT_THAT(Compare(old, document), IsEmpty());
}

TEST(ComparisonTest, DocumentsThatWereMadeAreCompared) {
    GpxDocument one;
    GpxDocument other;
    GpxPoint point(kGpxWaypoint, 1, 1);
    point.SetName(u"a");
    one.AddWaypoint(point);
    point.SetSymbol(u"s");
    point.SetElevation(1.0);
    other.AddWaypoint(point);
    const std::vector<Difference> differences = Compare(one, other);
    ASSERT_EQ(differences.size(), 1U);
    EXPECT_EQ(Text(differences[0]), "w1>1 a [ele] [sym]");
    EXPECT_THAT(Compare(one, one), IsEmpty());
}

TEST(ComparisonTest, ManyObjectsAreComparedInOneGo) {
    std::string before;
    std::string after;
    for (int i = 0; i < 20000; ++i) {
        before += Waypoint("1", "<name>" + std::to_string(i) + "</name>");
        after += Waypoint("2", "<name>" + std::to_string(20000 - i) + "</name>");
    }
    EXPECT_EQ(Between(before, after).size(), 20001U);
}

} // namespace
