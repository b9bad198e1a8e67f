// SPDX-License-Identifier: MIT
#include <vexaTrackLib/GeocacheList.h>

#include "support/CompleteRead.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace vexaTrackLib {
namespace {

using vexaTransferLib::GpxDocument;
using vexaTransferLib::testing_support::ReadCompletely;
using vexaTransferLib::testing_support::Utf8;

GpxDocument Document(const std::string& time, const std::string& waypoints) {
    return ReadCompletely("<?xml version='1.0' encoding='UTF-8'?><gpx version='1.0' creator='t' "
                          "xmlns='http://www.topografix.com/GPX/1/0' "
                          "xmlns:g='http://www.groundspeak.com/cache/1/0/1'>" +
                          (time.empty() ? "" : "<time>" + time + "</time>") + waypoints + "</gpx>")
        .document;
}

std::string Cache(const std::string& code, const std::string& content, const std::string& attributes = "") {
    return "<wpt lat='47' lon='8'><time>2010-01-02T00:00:00Z</time><name>" + code +
           "</name><g:cache id='1' " + attributes + ">" + content + "</g:cache></wpt>";
}

std::string Log(const std::string& id, const std::string& date, const std::string& type,
                const std::string& text = "") {
    return "<g:log id='" + id + "'><g:date>" + date + "</g:date><g:type>" + type + "</g:type><g:text>" +
           text + "</g:text></g:log>";
}

std::string Companion(const std::string& code,
                      const std::string& rest = "<type>Waypoint|Parking Area</type>") {
    return "<wpt lat='47.5' lon='8.5'><name>" + code + "</name>" + rest + "</wpt>";
}

std::vector<Geocache> ListOf(const std::vector<GpxDocument>& documents) {
    GeocacheList list;
    for (const GpxDocument& document : documents)
        list.Add(document);
    return list.Finish();
}

TEST(GeocacheListTest, HasWhatTheFileSays) {
    const std::vector<Geocache> caches = ListOf({Document(
        "2012-01-01T00:00:00Z",
        Cache("GC1",
              "<g:name> Bridge </g:name><g:owner>o</g:owner><g:type>Traditional Cache</g:type>"
              "<g:container>Small</g:container><g:difficulty>1.5</g:difficulty><g:terrain>2</g:terrain>"
              "<g:country>c</g:country><g:state>s</g:state><g:short_description>short</g:short_description>"
              "<g:long_description "
              "html='True'>long</g:long_description><g:encoded_hints>h</g:encoded_hints><g:logs>" +
                  Log("1", "2011-01-01T00:00:00Z", "Found it") +
                  Log("2", "2011-02-01T00:00:00Z", "Write note") +
                  Log("3", "2010-01-01T00:00:00Z", "attended") +
                  "</g:logs><g:travelbugs><g:travelbug id='1' ref='TB1'><g:name>Bug</g:name></g:travelbug>"
                  "<g:travelbug id='2' ref='TB2'/></g:travelbugs>",
              "available='False' archived='True'"))});
    ASSERT_EQ(caches.size(), 1u);
    const Geocache& cache = caches[0];
    EXPECT_EQ(
        Utf8(cache.code + u"," + cache.name + u"," + cache.owner + u"," + cache.type + u"," + cache.size),
        "GC1,Bridge,o,Traditional Cache,Small");
    EXPECT_EQ(Utf8(cache.country + cache.state + cache.hint), "csh");
    EXPECT_EQ(cache.difficulty, 1.5);
    EXPECT_EQ(cache.terrain, 2.0);
    EXPECT_EQ(cache.place.latitude, 47.0);
    EXPECT_EQ(cache.place.longitude, 8.0);
    EXPECT_EQ(cache.isAvailable, false);
    EXPECT_EQ(cache.isArchived, true);
    EXPECT_EQ(cache.placedTime, 1262390400000.0);
    EXPECT_EQ(cache.foundTime, 1293840000000.0);
    EXPECT_EQ(cache.logCount, 3u);
    ASSERT_EQ(cache.travelBugs.size(), 2u);
    EXPECT_EQ(Utf8(cache.travelBugs[0] + cache.travelBugs[1]), "BugTB2");
    ASSERT_EQ(cache.GetDescriptions().size(), 2u);
    EXPECT_EQ(Utf8(cache.GetDescriptions()[0].text), "short");
    EXPECT_FALSE(cache.GetDescriptions()[0].isHtml);
    EXPECT_EQ(Utf8(cache.GetDescriptions()[1].text), "long");
    EXPECT_TRUE(cache.GetDescriptions()[1].isHtml);
    EXPECT_EQ(cache.metres, std::nullopt);
}

TEST(GeocacheListTest, TheNewestFileWinsAndAllLogsCount) {
    const GpxDocument older = Document(
        "2012-01-01T00:00:00Z",
        Cache("GC1", "<g:name>old</g:name><g:logs>" + Log("1", "2011-01-01T00:00:00Z", "Found it", "a") +
                         Log("2", "2011-05-01T00:00:00Z", "Found it", "b") + "</g:logs>"));
    const GpxDocument newer = Document(
        "2013-01-01T00:00:00Z",
        Cache("GC1", "<g:name>new</g:name><g:logs>" + Log("2", "2011-05-01T00:00:00Z", "Found it", "B") +
                         Log("3", "2011-03-01T00:00:00Z", "Found it", "c") + "</g:logs>"));
    for (const bool isNewerFirst : {false, true}) {
        const std::vector<Geocache> caches = isNewerFirst ? ListOf({newer, older}) : ListOf({older, newer});
        ASSERT_EQ(caches.size(), 1u);
        EXPECT_EQ(Utf8(caches[0].name), "new");
        EXPECT_EQ(caches[0].logCount, 3u);
        EXPECT_EQ(caches[0].foundTime, 1304208000000.0);
        std::string texts;
        for (const auto& log : caches[0].GetLogs())
            texts += Utf8(*log.text);
        EXPECT_EQ(texts, "Bca");
    }
}

TEST(GeocacheListTest, ALogIsThatOfTheNewestFileThatHasItWhateverTheirOrder) {
    const auto version = [](const char* year, const std::string& text) {
        const std::string logs =
            text.empty() ? ""
                         : "<g:logs>" + Log(" +7", "2011-01-01T00:00:00Z", "Found it", text) + "</g:logs>";
        return Document(std::string(year) + "-01-01T00:00:00Z", Cache("GC1", logs));
    };
    const std::vector<GpxDocument> documents = {version("2022", "z"), version("2024", "a"),
                                                version("2025", "b"), version("2026", "")};
    std::vector<std::size_t> order = {0, 1, 2, 3};
    do {
        GeocacheList list;
        for (const std::size_t index : order)
            list.Add(documents[index]);
        const std::vector<Geocache> caches = list.Finish();
        ASSERT_EQ(caches[0].GetLogs().size(), 1u);
        EXPECT_EQ(Utf8(*caches[0].GetLogs()[0].text), "b");
        EXPECT_EQ(caches[0].logCount, 1u);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(GeocacheListTest, AWaypointWithTheCodeOfAGeocacheIsNoCompanion) {
    GeocacheList list;
    list.Add(Document("", Cache("GC1ABC", "") + Companion("GC1ABC")));
    EXPECT_TRUE(list.Finish()[0].companions.empty());
    EXPECT_TRUE(list.GetOrphans().empty());
    EXPECT_EQ(list.GetOtherCount(), 1u);
}

TEST(GeocacheListTest, OfEquallyNewFilesTheLastOneWins) {
    const std::vector<Geocache> caches = ListOf({Document("", Cache("GC1", "<g:name>first</g:name>")),
                                                 Document("", Cache("GC1", "<g:name>last</g:name>"))});
    ASSERT_EQ(caches.size(), 1u);
    EXPECT_EQ(Utf8(caches[0].name), "last");
}

TEST(GeocacheListTest, GeocachesWithoutACodeAreAllDifferent) {
    EXPECT_EQ(ListOf({Document("", Cache("", "") + Cache("", ""))}).size(), 2u);
}

TEST(GeocacheListTest, CompanionsBelongToTheirGeocachesWhicheverFileTheyAreIn) {
    GeocacheList list;
    list.Add(Document("", Companion("PK1ABC", "<cmt>free</cmt><desc>By the mill</desc>"
                                              "<type>Waypoint|Parking Area</type>") +
                              Companion("ZZ9")));
    list.Add(Document("", Cache("GC1ABC", "") + Companion("S11ABC") + Companion("home", "")));
    list.Add(Document("", "<wpt lat='0' lon='0'><name>FN1ABC</name><type>Waypoint|Final</type></wpt>" +
                              Companion("X", "")));
    const std::vector<Geocache> caches = list.Finish();
    ASSERT_EQ(caches.size(), 1u);
    ASSERT_EQ(caches[0].companions.size(), 3u);
    const GeocacheCompanion& hidden = caches[0].companions[0];
    EXPECT_EQ(Utf8(hidden.code + u"," + hidden.name + u"," + hidden.type), "FN1ABC,FN1ABC,Final");
    EXPECT_FALSE(hidden.place);
    const GeocacheCompanion& parking = caches[0].companions[1];
    EXPECT_EQ(Utf8(parking.code + u"," + parking.name + u"," + parking.type + u"," + parking.comment),
              "PK1ABC,By the mill,Parking Area,free");
    ASSERT_TRUE(parking.place);
    EXPECT_EQ(parking.place->latitude, 47.5);
    ASSERT_EQ(list.GetOrphans().size(), 1u);
    EXPECT_EQ(Utf8(list.GetOrphans()[0].code), "ZZ9");
    EXPECT_EQ(list.GetOtherCount(), 2u);
}

TEST(GeocacheListTest, TheNewestCompanionWins) {
    const std::string waypoint = "<desc>%</desc><type>Waypoint|Stage</type>";
    const auto named = [&](const std::string& name) {
        std::string text = waypoint;
        return Companion("S1ABC", text.replace(text.find('%'), 1, name));
    };
    GeocacheList list;
    list.Add(Document("2013-01-01T00:00:00Z", named("new")));
    list.Add(Document("2012-01-01T00:00:00Z", named("old")));
    list.Finish();
    ASSERT_EQ(list.GetOrphans().size(), 1u);
    EXPECT_EQ(Utf8(list.GetOrphans()[0].name), "new");
}

TEST(GeocacheListTest, DistancesAndBearingsAreFromTheOrigin) {
    GeocacheList list(GeocachePlace{47.0, 9.0});
    list.Add(Document("", Cache("GC1", "")));
    const std::vector<Geocache> caches = list.Finish();
    EXPECT_NEAR(*caches[0].metres, 76'055.48, 0.01);
    EXPECT_NEAR(*caches[0].bearing, 270.37, 0.01);
}

TEST(GeocacheListTest, ADocumentThatWasNotReadCompletelyGivesNothing) {
    GpxDocument document;
    document.AddWaypoint(vexaTransferLib::GpxPoint(vexaTransferLib::kGpxWaypoint, 1.0, 2.0));
    EXPECT_TRUE(ListOf({document}).empty());
}

// With all logs read again for each document, this would not end.
TEST(GeocacheListTest, AGeocacheInManyDocumentsTakesNoLonger) {
    std::string content = "<g:logs>";
    for (int i = 0; i < 200; ++i)
        content += Log(std::to_string(i), "2011-01-01T00:00:00Z", "Found it");
    const GpxDocument document = Document("", Cache("GC1", content + "</g:logs>"));
    GeocacheList list;
    for (int i = 0; i < 5'000; ++i)
        list.Add(document);
    EXPECT_EQ(list.Finish()[0].logCount, 200u);
}

TEST(GeocacheListTest, SomeTypesOfLogsSayThatItWasFound) {
    EXPECT_TRUE(SaysFound(u"Found it"));
    EXPECT_TRUE(SaysFound(u" found it"));
    EXPECT_TRUE(SaysFound(u"Attended"));
    EXPECT_TRUE(SaysFound(u"Webcam Photo Taken"));
    EXPECT_FALSE(SaysFound(u"Didn't find it"));
    EXPECT_FALSE(SaysFound(u""));
}

} // namespace
} // namespace vexaTrackLib
