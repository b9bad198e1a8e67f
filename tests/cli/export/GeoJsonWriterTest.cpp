// SPDX-License-Identifier: MIT
#include <vexagpx/export/GeoJsonWriter.h>

#include "export/Reading.h"

#include <nlohmann/json.hpp>

namespace {

using cli::PointText;
using nlohmann::json;
using vexagpx::Field;
using vexagpx::GeoJsonWriter;
using vexagpx::Output;
using vexagpx::PathGeometry;
using vexagpx::Position;
using vexagpx::Properties;
using vexaTransferLib::GpxDocument;

template <class Write>
std::string TextOf(Write write) {
    std::string bytes;
    Output out([&bytes](std::string_view piece) { bytes += piece; });
    GeoJsonWriter writer(out);
    writer.Start({});
    write(writer);
    writer.End();
    out.Flush();
    return bytes;
}

json TrackFeature(const std::string& segments) {
    const GpxDocument document = cli::DocumentOf("<trk>" + segments + "</trk>");
    const std::string text = TextOf([&document](GeoJsonWriter& writer) {
        writer.WritePath(PathGeometry(*document.GetTrackIter()), Properties());
    });
    return json::parse(text).at("features").at(0);
}

std::string Segment(const std::vector<std::string>& points) {
    std::string text = "<trkseg>";
    for (const std::string& point : points)
        text += point;
    return text + "</trkseg>";
}

TEST(GeoJsonWriterTest, FeaturesAreOnLinesOfTheirOwn) {
    EXPECT_EQ(TextOf([](GeoJsonWriter&) {}), "{\"type\":\"FeatureCollection\",\"features\":[\n]}\n");
    EXPECT_EQ(
        TextOf([](GeoJsonWriter& writer) {
            writer.WritePoint({2, 1, {}, {}}, Properties());
            writer.WritePoint({-180, 90, 100000.0, 1000.0}, Properties());
        }),
        "{\"type\":\"FeatureCollection\",\"features\":[\n"
        "{\"type\":\"Feature\",\"geometry\":{\"type\":\"Point\",\"coordinates\":[2,1]},\"properties\":{}},\n"
        "{\"type\":\"Feature\",\"geometry\":{\"type\":\"Point\",\"coordinates\":[-180,90,100000]},"
        "\"properties\":{\"time\":\"1970-01-01T00:00:01Z\"}}\n"
        "]}\n");
}

TEST(GeoJsonWriterTest, TheLongestNumbersAreWritten) {
    const Position position{-123.45678901234567, -12.345678901234567, -1.7976931348623157e308, {}};
    const json feature =
        json::parse(TextOf([&position](GeoJsonWriter& writer) { writer.WritePoint(position, Properties()); }))
            .at("features")
            .at(0);
    EXPECT_EQ(feature.at("geometry").at("coordinates"),
              json({position.longitude, position.latitude, *position.height}));
}

TEST(GeoJsonWriterTest, TheGeometryOfATrackIsTheSimplestThatIsValid) {
    const std::string one = PointText("trkpt", "1", "2");
    const std::string other = PointText("trkpt", "3", "4");
    struct Row {
        std::string segments;
        std::string geometry;
    };
    const Row rows[] = {
        {"", "null"},
        {Segment({}), "null"},
        {Segment({one}), R"({"type":"Point","coordinates":[2,1]})"},
        {Segment({one}) + Segment({other}), R"({"type":"MultiPoint","coordinates":[[2,1],[4,3]]})"},
        {Segment({one, other}), R"({"type":"LineString","coordinates":[[2,1],[4,3]]})"},
        {Segment({one, other}) + Segment({}), R"({"type":"LineString","coordinates":[[2,1],[4,3]]})"},
        {Segment({one, other}) + Segment({one}),
         R"({"type":"MultiLineString","coordinates":[[[2,1],[4,3]],[[2,1],[2,1]]]})"},
        {Segment({PointText("trkpt", "0", "179"), PointText("trkpt", "0", "-179")}),
         R"({"type":"MultiLineString","coordinates":[[[179,0],[180,0]],[[-180,0],[-179,0]]]})"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(TrackFeature(row.segments).at("geometry"), json::parse(row.geometry));
}

TEST(GeoJsonWriterTest, HeightsAreWrittenWhereThereAreSome) {
    EXPECT_EQ(
        TrackFeature(Segment({PointText("trkpt", "1", "2", "<ele>0</ele>"), PointText("trkpt", "3", "4")}))
            .at("geometry")
            .at("coordinates"),
        json::parse("[[2,1,0],[4,3]]"));
}

TEST(GeoJsonWriterTest, TimesHaveTheArraysOfTheCoordinates) {
    const std::string one = PointText("trkpt", "1", "2", "<time>1970-01-01T00:00:01Z</time>");
    const std::string other = PointText("trkpt", "3", "4");
    struct Row {
        std::string segments;
        std::string times;
    };
    const Row rows[] = {
        {Segment({one}), R"("1970-01-01T00:00:01Z")"},
        {Segment({one, other}), R"(["1970-01-01T00:00:01Z",null])"},
        {Segment({one, other}) + Segment({other}), R"([["1970-01-01T00:00:01Z",null],[null,null]])"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(TrackFeature(row.segments).at("properties").at("coordTimes"), json::parse(row.times));
    EXPECT_EQ(TrackFeature(Segment({other})).at("properties"), json::object());
}

TEST(GeoJsonWriterTest, PropertiesKeepTheirTypes) {
    Properties properties;
    properties.Add(Field::kName, icu::UnicodeString(u"a\"\\\u0001é"));
    properties.Add(Field::kSatellites, std::uint64_t{7});
    properties.Add(Field::kSpeed, 0.0001);
    properties.Add(Field::kCacheArchived, false);
    properties.Add(Field::kLinks, vexagpx::Links{{u"h", u"t", u"m"}, {u"i", u"", u""}});
    const json feature = json::parse(TextOf([&properties](GeoJsonWriter& writer) {
                             writer.WritePoint({2, 1, {}, {}}, properties);
                         }))
                             .at("features")
                             .at(0);
    EXPECT_EQ(feature.at("properties"),
              json::parse(R"({"name":"a\"\\\u0001\u00e9","sat":7,"speed":0.0001,"cacheArchived":false,)"
                          R"("links":[{"href":"h","text":"t","type":"m"},{"href":"i"}]})"));
}

} // namespace
