// SPDX-License-Identifier: MIT
#include <vexaTrackLib/ContentHash.h>

#include "support/Reading.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

using vexaTrackLib::ContentHash;
using vexaTransferLib::GpxDocument;
using vexaTransferLib::GpxPoint;

std::string In11(const std::string& elements) {
    return "<gpx version='1.1' creator='a' xmlns='http://www.topografix.com/GPX/1/1' "
           "xmlns:g='http://www.groundspeak.com/cache/1/0/1'>" +
           elements + "</gpx>";
}

std::string In10(const std::string& elements) {
    return "<gpx version='1.0' creator='another' xmlns='http://www.topografix.com/GPX/1/0' "
           "xmlns:c='http://www.groundspeak.com/cache/1/0'>\n\n" +
           elements + "\n</gpx>\n";
}

ContentHash Hash(const std::string& text) {
    return ContentHash(track_tests::ReadCompletely(text));
}

TEST(ContentHashTest, WhatDoesNotCountMakesNoDifference) {
    struct Row {
        std::string first;
        std::string second;
    };
    const Row rows[] = {
        // Version, creator and metadata.
        {In11("<metadata><name>a</name></metadata><wpt lat='1' lon='2'/>"),
         In10("<time>2009-01-15T10:20:30Z</time><wpt lat='1' lon='2'/>")},
        // How numbers and times are written.
        {In11("<wpt lat='1' lon='-0'><ele>5</ele><time>2009-01-15T10:20:30Z</time></wpt>"),
         In11("<wpt lat='1.000' lon='0.0'><ele> 5.0 </ele><time>2009-01-15T11:20:30.000+01:00</time></wpt>")},
        // White space, quotation marks, references, comments.
        {In11("<wpt lat='1' lon='2'><name>a b</name></wpt>"),
         In11("<wpt  lon=\"2\"\n lat=\"1\" >\n <name>\n a\t\tb </name > </wpt>")},
        {In11("<wpt lat='1' lon='2'><name>a &lt; \xC3\xA9 &amp;</name></wpt>"),
         In11("<wpt lat='1' lon='2'><name><![CDATA[a < ]]><!-- c -->&#xE9; &#38;</name><!-- c --></wpt>")},
        // The order of elements, and elements that say nothing.
        {In11("<wpt lat='1' lon='2'><name>a</name><sym>b</sym></wpt>"),
         In11("<wpt lat='1' lon='2'><sym>b</sym><desc/><name>a</name><extensions/></wpt>")},
        // What the versions have in different places.
        {In11("<wpt lat='1' lon='2'><link href='a'><text>b</text></link><extensions><g:cache id='1'><g:name>c"
              "</g:name></g:cache></extensions></wpt>"),
         In10("<wpt lat='1' lon='2'><url>a</url><urlname>b</urlname><c:cache "
              "id='1'><c:name>c</c:name></c:cache></wpt>")},
        {In11("<trk><trkseg><trkpt lat='1' lon='2'><extensions><x:speed "
              "xmlns:x='urn:x'>3</x:speed></extensions>"
              "</trkpt></trkseg></trk>"),
         In10("<trk><trkseg/><trkseg><trkpt lat='1' lon='2'><speed>3</speed></trkpt></trkseg></trk>")},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Hash(row.first).Text(), Hash(row.second).Text()) << row.first << "\n" << row.second;
}

TEST(ContentHashTest, EveryDifferenceOfContentMakesOne) {
    const std::string point = "<trkpt lat='1' lon='2'/>";
    const std::vector<std::string> documents = {
        "",
        "<wpt lat='1' lon='2'/>",
        "<wpt lat='2' lon='1'/>",
        "<wpt lat='1.0000000001' lon='2'/>",
        "<wpt lat='1' lon='2'/><wpt lat='1' lon='2'/>",
        "<wpt lat='1' lon='2'><ele>0</ele></wpt>",
        "<wpt lat='1' lon='2'><time>1970-01-01T00:00:00Z</time></wpt>",
        "<wpt lat='1' lon='2'><name>a</name></wpt>",
        "<wpt lat='1' lon='2'><desc>a</desc></wpt>",
        "<wpt lat='1' lon='2'><name>A</name></wpt>",
        "<wpt lat='1' lon='2'><name>a</name><desc>b</desc></wpt>",
        "<wpt lat='1' lon='2'><name>b</name><desc>a</desc></wpt>",
        "<wpt lat='1' lon='2'><name>aaaaaaaa</name></wpt>",
        "<wpt lat='1' lon='2'><name>aaaaaaaaa</name></wpt>",
        "<wpt lat='1' lon='2'><link href='a'/></wpt>",
        "<wpt lat='1' lon='2'><link href='b'/></wpt>",
        "<wpt lat='1' lon='2'><link href='b'/><link href='a'/></wpt>",
        "<wpt lat='1' lon='2'><extensions><a xmlns='urn:x'><b>1</b><c>2</c></a></extensions></wpt>",
        "<wpt lat='1' lon='2'><extensions><a xmlns='urn:x'><b>1</b></a><c "
        "xmlns='urn:x'>2</c></extensions></wpt>",
        "<wpt lat='1' lon='2'><extensions><a xmlns='urn:x' b='1'>2</a></extensions></wpt>",
        "<rte/>",
        "<rte><rtept lat='1' lon='2'/></rte>",
        "<rte><name>a</name><rtept lat='1' lon='2'/></rte>",
        "<rte/><rte><rtept lat='1' lon='2'/></rte>",
        "<trk/>",
        "<trk><trkseg>" + point + "</trkseg></trk>",
        "<trk><trkseg>" + point + point + "</trkseg></trk>",
        "<trk><trkseg>" + point + "</trkseg><trkseg>" + point + "</trkseg></trk>",
        "<trk><trkseg>" + point + "</trkseg></trk><trk><trkseg>" + point + "</trkseg></trk>",
        "<trk><name>a</name><trkseg>" + point + "</trkseg></trk>",
        "<trk><number>1</number><trkseg>" + point + "</trkseg></trk>",
        "<trk><trkseg>" + point + "<extensions><a xmlns='urn:x'>1</a></extensions></trkseg></trk>",
        "<trk><trkseg><trkpt lat='1' lon='2'><sat>3</sat></trkpt></trkseg></trk>",
    };
    std::set<std::string> hashes;
    std::set<std::uint64_t> halves;
    for (const std::string& document : documents) {
        const ContentHash hash = Hash(In11(document));
        EXPECT_TRUE(hashes.insert(hash.Text()).second) << document;
        EXPECT_TRUE(halves.insert(hash.High()).second) << document;
        EXPECT_TRUE(halves.insert(hash.Low()).second) << document;
    }
}

TEST(ContentHashTest, ADocumentWithoutObjectsIsEmpty) {
    EXPECT_TRUE(Hash(In11("<metadata><name>a</name></metadata>")).IsEmpty());
    for (const char* object : {"<wpt lat='1' lon='2'/>", "<rte/>", "<trk/>"})
        EXPECT_FALSE(Hash(In11(object)).IsEmpty());
}

TEST(ContentHashTest, ItIsTheSameEverywhere) {
    const ContentHash hash = Hash(In11("<wpt lat='1' lon='2'><name>a</name></wpt>"));
    EXPECT_EQ(hash.Text(), "c5591d1d1fd64588dc67c9645800d159");
}

TEST(ContentHashTest, TextsOfAModelWithoutAFileCount) {
    GpxDocument model;
    GpxPoint point(vexaTransferLib::kGpxWaypoint, 1, 2);
    point.SetName("a");
    model.AddWaypoint(point);
    EXPECT_EQ(ContentHash(model), Hash(In11("<wpt lat='1' lon='2'><name>a</name></wpt>")));
    EXPECT_NE(ContentHash(model), Hash(In11("<wpt lat='1' lon='2'/>")));
}

TEST(ContentHashTest, AnyDepthOfElementsIsRead) {
    std::string deep;
    for (int i = 0; i < 200; ++i)
        deep.insert(0, "<a xmlns='urn:x'>").append("</a>");
    EXPECT_EQ(Hash(In11("<wpt lat='1' lon='2'><extensions>" + deep + "</extensions></wpt>")),
              Hash(In11("<wpt lat='1' lon='2'/>")));
}

} // namespace
