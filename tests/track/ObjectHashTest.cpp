// SPDX-License-Identifier: MIT
#include <vexaTrackLib/content/ObjectHash.h>

#include "support/Reading.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

namespace {

using namespace vexaTrackLib;
using vexaTransferLib::GpxDocument;
using vexaTransferLib::GpxPoint;
using Hash = std::pair<std::uint64_t, std::uint64_t>;

GpxDocument Document(const std::string& content) {
    return track_tests::ReadCompletely(
        "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1' "
        "xmlns:g='http://www.groundspeak.com/cache/1/0/1'>" +
        content + "</gpx>");
}

Hash HashOf(const content::Hasher& hasher) {
    return {hasher.High(), hasher.Low()};
}

Hash OfPoint(const std::string& content, void (*add)(const GpxPoint&, content::Hasher&) = content::AddPoint) {
    const GpxDocument document = Document("<wpt lat='1' lon='2'>" + content + "</wpt>");
    content::Hasher hasher;
    add(document.GetWaypoints()[0], hasher);
    return HashOf(hasher);
}

Hash WithoutLogs(const std::string& content) {
    return OfPoint(content, content::AddPointWithoutLogs);
}

Hash OfRoute(const std::string& content) {
    const GpxDocument document = Document("<rte>" + content + "</rte>");
    content::Hasher hasher;
    content::AddRoute(document.GetRoutes()[0], hasher);
    return HashOf(hasher);
}

Hash OfTrack(const std::string& content) {
    const GpxDocument document = Document("<trk>" + content + "</trk>");
    content::Hasher hasher;
    content::AddTrack(document.GetTracks()[0], hasher);
    return HashOf(hasher);
}

std::string Cache(const std::string& attributes, const std::string& content) {
    return "<extensions><g:cache " + attributes + ">" + content + "</g:cache></extensions>";
}

TEST(ObjectHashTest, APointIsItsPlaceHeightTimeAndFields) {
    const Hash plain = OfPoint("");
    for (const char* content : {"<ele>0</ele>", "<time>1970-01-01T00:00:00Z</time>", "<name>n</name>",
                                "<extensions><a xmlns='urn:a'>1</a></extensions>", "<link href='h'/>"})
        EXPECT_NE(OfPoint(content), plain) << content;
    EXPECT_EQ(OfPoint("<ele>1.50</ele><name> a  b </name>"), OfPoint("<ele>1.5</ele><name>a b</name>"));
    EXPECT_EQ(OfPoint("<cmt>c</cmt><name>n</name>"), OfPoint("<name>n</name><cmt>c</cmt>"));
}

TEST(ObjectHashTest, WithoutLogsAGeocacheIsAllTheRest) {
    const std::string log = "<g:logs><g:log id='1'><g:text>t</g:text></g:log></g:logs>";
    const Hash plain = WithoutLogs(Cache("available='True'", "<g:terrain>1</g:terrain>"));
    EXPECT_EQ(WithoutLogs(Cache("available='True'", "<g:terrain>1</g:terrain>" + log)), plain);
    EXPECT_NE(WithoutLogs(Cache("available='True'", "<g:terrain>2</g:terrain>" + log)), plain);
    EXPECT_NE(WithoutLogs(Cache("available='False'", "<g:terrain>1</g:terrain>")), plain);
    EXPECT_NE(WithoutLogs(Cache("archived='True'", "<g:terrain>1</g:terrain>")), plain);
    EXPECT_NE(WithoutLogs(""), plain);
    EXPECT_NE(OfPoint(Cache("", log)), OfPoint(Cache("", "")));
    EXPECT_EQ(WithoutLogs("<name>n</name><ele>1</ele>"), WithoutLogs("<ele>1.0</ele><name>n</name>"));
}

TEST(ObjectHashTest, APathIsWhatItHasBesideItsPoints) {
    EXPECT_NE(OfRoute("<name>a</name>"), OfRoute("<name>b</name>"));
    EXPECT_EQ(OfRoute("<rtept lat='1' lon='2'/>"), OfRoute("<rtept lat='3' lon='4'/>"));
    EXPECT_NE(OfRoute("<rtept lat='1' lon='2'/>"), OfRoute(""));
    EXPECT_NE(OfTrack("<name>a</name>"), OfTrack("<name>b</name>"));
    EXPECT_EQ(OfTrack("<trkseg><trkpt lat='1' lon='2'/></trkseg>"), OfTrack(""));
}

TEST(ObjectHashTest, FieldsAreThoseOfAnyObject) {
    const GpxDocument document = Document("<trk><name>a</name><trkseg/></trk><trk><name>a</name></trk>");
    content::Hasher one;
    content::Hasher other;
    content::AddFields(document.GetTracks()[0].GetElement(), "trkseg", one);
    content::AddFields(document.GetTracks()[1].GetElement(), "trkseg", other);
    EXPECT_EQ(HashOf(one), HashOf(other));
    content::Hasher nothing;
    content::AddFields({}, "trkseg", nothing);
    EXPECT_NE(HashOf(nothing), HashOf(one));
}

} // namespace
