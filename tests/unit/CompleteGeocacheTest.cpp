// SPDX-License-Identifier: MIT

// Geocaches, read completely.

#include "support/CompleteRead.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"

#include <vexaTransferLib/GpxElement.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

std::string Cache(const std::string& children) {
    return "<groundspeak:cache>" + children + "</groundspeak:cache>";
}

std::string Log(const std::string& id) {
    return "<groundspeak:log id='" + id + "'/>";
}

CompleteRead ReadCache(const std::string& children) {
    return ReadCompletely(
        Gpx11("<wpt lat='1' lon='2'><extensions>" + Cache(children) + "</extensions></wpt>"));
}

GpxGroundspeakCache CacheOf(const CompleteRead& read) {
    return GeocacheOf(*read.document.GetWaypointIter()).value();
}

TEST(CompleteGeocacheTest, TextsAreAsTheyStand) {
    const CompleteRead read = ReadCache(
        "<groundspeak:name>&lt;b&gt;n&lt;/b&gt;</groundspeak:name><groundspeak:owner> o </groundspeak:owner>"
        "<groundspeak:type>t</groundspeak:type><groundspeak:container>c</groundspeak:container>"
        "<groundspeak:difficulty>1.5</groundspeak:difficulty><groundspeak:terrain>2</groundspeak:terrain>"
        "<groundspeak:short_description "
        "html='True'><![CDATA[<p>s&nbsp;</p>]]></groundspeak:short_description>"
        "<groundspeak:long_description>l\n\n</groundspeak:long_description>"
        "<groundspeak:encoded_hints>h</groundspeak:encoded_hints>");
    const GpxGroundspeakCache cache = CacheOf(read);
    EXPECT_EQ(Utf8(cache.name), "<b>n</b>");
    EXPECT_EQ(Utf8(cache.owner), " o ");
    EXPECT_EQ(Utf8(cache.type + cache.container + cache.difficulty + cache.terrain), "tc1.52");
    EXPECT_EQ(Utf8(cache.short_description), "<p>s&nbsp;</p>");
    EXPECT_EQ(Utf8(cache.long_description), "l\n\n");
    EXPECT_EQ(Utf8(cache.encoded_hints), "h");
    EXPECT_EQ(read.notices + read.reports, "");
}

TEST(CompleteGeocacheTest, IsReadBelowTheWaypointAndInItsExtensionsInAnyOfItsNamespaces) {
    for (const char* const prefix : {"groundspeak", "groundspeak101"}) {
        const std::string cache = std::string("<") + prefix + ":cache><" + prefix + ":name>n</" + prefix +
                                  ":name></" + prefix + ":cache>";
        EXPECT_EQ(GeocacheOf(WaypointWith(cache)).value().name, u"n");
        EXPECT_EQ(GeocacheOf(WaypointWith("<extensions>" + cache + "</extensions>")).value().name, u"n");
    }
    EXPECT_FALSE(GeocacheOf(WaypointWith("<other:cache/><extensions><other:cache/></extensions>")));
}

TEST(CompleteGeocacheTest, OfTwoTheFirstIsReadAndTheOtherReported) {
    const std::string first = Cache("<groundspeak:name>a</groundspeak:name>");
    const std::string second = "\n" + Cache("<groundspeak:name>b</groundspeak:name>");
    const std::string notice = " 2 replaced: The first element of this name is the one that is read.\n";
    const CompleteRead below = ReadCompletely(Gpx11("<wpt lat='1' lon='2'>" + first + second + "</wpt>"));
    EXPECT_EQ(CacheOf(below).name, u"a");
    EXPECT_EQ(below.notices, "gpx/wpt/cache" + notice);
    const CompleteRead within =
        ReadCompletely(Gpx11("<wpt lat='1' lon='2'><extensions>" + first + second + "</extensions></wpt>"));
    EXPECT_EQ(CacheOf(within).name, u"a");
    EXPECT_EQ(within.notices, "gpx/wpt/extensions/cache" + notice);
}

TEST(CompleteGeocacheTest, IsOfWaypointsOnly) {
    const GpxDocument document =
        DocumentOf(Gpx11("<rte><rtept lat='1' lon='2'>" + Cache("") + "<extensions>" + Cache("") +
                         "</extensions></rtept></rte><trk><trkseg><trkpt lat='1' lon='2'>" + Cache("") +
                         "</trkpt></trkseg></trk>"));
    EXPECT_EQ(document.GetRouteIter()->GetPointCount(), 1U);
    EXPECT_FALSE(document.GetRouteIter()->GetPointIter()->ContainsExtensions());
    EXPECT_FALSE(document.GetTrackIter()->GetSegmentIter()->front().ContainsExtensions());
}

TEST(CompleteGeocacheTest, LogsAndTravelBugsAreReadInTheirOrder) {
    const GpxGroundspeakCache cache = CacheOf(ReadCache(
        "<groundspeak:logs><groundspeak:log id='7'><groundspeak:date>d</groundspeak:date>"
        "<groundspeak:type>t</groundspeak:type><groundspeak:finder id='1'>f</groundspeak:finder>"
        "<groundspeak:text encoded='False'>x</groundspeak:text></groundspeak:log>" +
        Log("8") +
        "</groundspeak:logs><groundspeak:travelbugs><groundspeak:travelbug id='1'><groundspeak:name>b"
        "</groundspeak:name></groundspeak:travelbug><groundspeak:travelbug/></groundspeak:travelbugs>"
        "<groundspeak:logs>" +
        Log("9") + "</groundspeak:logs>"));
    ASSERT_EQ(cache.logs.size(), 3U);
    EXPECT_EQ(cache.logs[0].id, 7);
    EXPECT_EQ(Utf8(cache.logs[0].date + cache.logs[0].type + cache.logs[0].finder + cache.logs[0].text),
              "dtfx");
    EXPECT_EQ(cache.logs[1].id, 8);
    EXPECT_EQ(cache.logs[2].id, 9);
    EXPECT_EQ(cache.logs[1].element.GetXml(), Log("8"));
    ASSERT_EQ(cache.travelbugs.size(), 1U);
    EXPECT_EQ(cache.travelbugs[0], u"b");
}

TEST(CompleteGeocacheTest, AnIdOfALogIsDigitsWithoutSeparators) {
    const auto idOf = [](const std::string& id) {
        return CacheOf(ReadCache("<groundspeak:logs>" + Log(id) + "</groundspeak:logs>")).logs.at(0).id;
    };
    EXPECT_EQ(idOf("2147483647"), 2147483647);
    EXPECT_EQ(idOf(" 12&#51; "), 123);
    EXPECT_EQ(idOf("-5"), -5);
    EXPECT_EQ(idOf("+5"), 5);
    EXPECT_EQ(ReadCache("<groundspeak:logs>" + Log("5") + "</groundspeak:logs>").notices, "");
    for (const char* const id : {"", "1,234", "2147483648", "x", "1.5", "+-5", "+"}) {
        EXPECT_EQ(idOf(id), 0) << id;
        EXPECT_EQ(ReadCache("<groundspeak:logs>\n" + Log(id) + "</groundspeak:logs>").notices,
                  "gpx/wpt/extensions/cache/logs/log 2 unreadable: Its id is not a number that the model can "
                  "have.\n");
    }
}

TEST(CompleteGeocacheTest, KnowsItsElement) {
    const GpxGroundspeakCache cache = CacheOf(ReadCache("<x/>"));
    EXPECT_EQ(cache.element.GetXml(), Cache("<x/>"));
    EXPECT_EQ(cache.element.GetNamespace(), kGeocache10Uri);
}

} // namespace
} // namespace vexaTransferLib
