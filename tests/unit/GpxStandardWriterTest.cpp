// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxStandardWriter.h>

#include "support/ModelDoors.h"
#include "support/SampleDocument.h"
#include "support/StandardWriting.h"
#include "support/TestFiles.h"
#include "support/comparison/GpxComparison.h"
#include "support/comparison/SchemaValidation.h"

#include <vexaTransferLib/GpxError.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include <common/dbc.h>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib {
namespace {

namespace fs = std::filesystem;
using namespace testing_support;

using Found = std::vector<MissingContent>;

std::string Write(const GpxDocument& document, const GpxVersion& version = kGpx11) {
    return StandardText(document, version).text;
}
std::string Reports(const GpxDocument& document, const GpxVersion& version = kGpx11) {
    return StandardText(document, version).Reports();
}

std::string Rewritten(const std::string& text, const GpxVersion& version = kGpx11) {
    return JoinedContent(Write(ReadCompletely(text), version));
}

GpxDocument With(const GpxPoint& waypoint) {
    GpxDocument document;
    document.AddWaypoint(waypoint);
    return document;
}

GpxPoint PointAt(double latitude, double longitude) {
    return GpxPoint(kGpxWaypoint, latitude, longitude);
}

std::optional<std::string> SchemaErrors(const std::string& xml) {
    const fs::path schemas = fs::path(VEXA_SHARED) / "schemas";
    const TemporaryFolder folder;
    return ValidateAgainst(xml, WriteCombinedSchema(folder / "",
                                                    {schemas / "gpx10.xsd", schemas / "gpx11.xsd",
                                                     schemas / "cache10.xsd", schemas / "cache101.xsd"},
                                                    xml));
}

#define SKIP_WITHOUT_SCHEMAS()                                                                               \
    if (!fs::is_directory(fs::path(VEXA_SHARED) / "schemas"))                                                \
    GTEST_SKIP() << "the published schemas are not beside the source tree"

std::string ErrorOf(const GpxDocument& document, GpxStandardOptions options = {}) {
    bool isReceived = false;
    try {
        GpxStandardWriter(options).Write(document, [&](std::string_view) { isReceived = true; });
    } catch (const dbc::precondition_error& error) {
        EXPECT_FALSE(isReceived);
        return error.what();
    }
    return {};
}

// Documents of a host.

TEST(GpxStandardWriterTest, AnEmptyDocumentIsARoot) {
    EXPECT_EQ(Write(GpxDocument()),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<gpx xmlns=\"http://www.topografix.com/GPX/1/1\" version=\"1.1\" creator=\"vexaTransferLib\" "
              "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
              "xsi:schemaLocation=\"http://www.topografix.com/GPX/1/1 "
              "http://www.topografix.com/GPX/1/1/gpx.xsd\">\n"
              "</gpx>\n");
    EXPECT_EQ(Write(GpxDocument(), kGpx10),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<gpx xmlns=\"http://www.topografix.com/GPX/1/0\" version=\"1.0\" creator=\"vexaTransferLib\" "
              "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
              "xsi:schemaLocation=\"http://www.topografix.com/GPX/1/0 "
              "http://www.topografix.com/GPX/1/0/gpx.xsd\">\n"
              "</gpx>\n");
}

TEST(GpxStandardWriterTest, EverythingThatTheModelHasIsWrittenAndReadBack) {
    const GpxDocument document = FullDocument();
    for (const GpxVersion& version : {kGpx10, kGpx11}) {
        const std::string text = Write(document, version);
        const GpxDocument read = ReadCompletely(text);
        GpxPoint point = *document.GetWaypointIter();
        if (version == kGpx10) {
            GpxUrl link(u"http://a/?x=1&y=2"); // without its type
            link.SetUrlText(u"link text");
            point.SetURL(link);
        }
        EXPECT_EQ(Written(*read.GetWaypointIter()), Written(point));
        EXPECT_EQ(Write(read, version), text);
    }
    const GpxDocument read = ReadCompletely(Write(document));
    EXPECT_EQ(Written(*read.GetRouteIter()), Written(*document.GetRouteIter()));
    EXPECT_EQ(Written(*read.GetTrackIter()), Written(*document.GetTrackIter()));
    EXPECT_EQ(GpxModelAccess::GetName(read), GpxModelAccess::GetName(document));
}

TEST(GpxStandardWriterTest, WhatTheModelHasIsValid) {
    SKIP_WITHOUT_SCHEMAS();
    for (const GpxVersion& version : {kGpx10, kGpx11})
        EXPECT_EQ(SchemaErrors(Write(FullDocument(), version)), std::nullopt)
            << Write(FullDocument(), version);
}

TEST(GpxStandardWriterTest, TheTwoVersionsOfAModelHaveTheSameContent) {
    const std::string in11 = Write(FullDocument());
    const std::string in10 = Write(FullDocument(), kGpx10);
    EXPECT_EQ(FindMissing(in11, in10, GpxTarget::k10), Found());
    // What a layer has is below `metadata` in one of them only.
    for (const MissingContent& content : FindMissing(in10, in11, GpxTarget::k11))
        EXPECT_TRUE(content.path.starts_with("gpx/extensions/{https://tarvik.example/")) << content;
    const GpxDocument read = ReadCompletely(in10);
    ASSERT_TRUE(GpxModelAccess::GetGISMetaData(read));
    EXPECT_EQ(GpxModelAccess::GetGISMetaData(read)->layerName, u"layer name");
    EXPECT_EQ(GpxModelAccess::GetAnnotateMetaData(read)->trackGUID, u"track-guid");
    EXPECT_EQ(Reports(FullDocument(), kGpx10),
              "waypoint 1: type: GPX 1.0 has no place for the type of a link.\n"
              "route 1: type: GPX 1.0 has no place for the type of a route or a track.\n"
              "track 1: type: GPX 1.0 has no place for the type of a route or a track.\n");
    EXPECT_EQ(Reports(FullDocument()), "");
}

TEST(GpxStandardWriterTest, TextsAreEscapedAndReadBackTheSame) {
    const icu::UnicodeString text(u"<a>&\"'\r\n\t]]>\U0001F30D\u0085 ");
    GpxPoint point = PointAt(1, 2);
    point.SetName(text);
    point.SetURL(GpxUrl(text));
    point.SetFormAttribute(text, text, 0.0);
    for (const GpxVersion& version : {kGpx10, kGpx11}) {
        const std::string written = Write(With(point), version);
        const GpxDocument read = ReadCompletely(written);
        const GpxPoint& same = *read.GetWaypointIter();
        icu::UnicodeString name;
        EXPECT_TRUE(same.GetName(name));
        EXPECT_EQ(name, text);
        GpxUrl url(u"x");
        EXPECT_TRUE(same.GetURL(url));
        EXPECT_EQ(GpxModelAccess::GetUrl(url), text);
        ASSERT_TRUE(same.GetFormAttribute(text)) << written;
        EXPECT_EQ(same.GetFormAttribute(text)->value, text);
    }
}

TEST(GpxStandardWriterTest, NumbersAreTheShortestThatReadBackTheSame) {
    for (const double number : {0.1, 1e-9, 1e300, -0.0, 1.0 / 3.0, 5e-324}) {
        GpxPoint point = PointAt(-0.0, 179.9999998807907);
        point.SetElevation(number);
        const std::string text = Write(With(point));
        EXPECT_NE(text.find("lon=\"179.9999998807907\""), std::string::npos) << text;
        const GpxDocument read = ReadCompletely(text);
        double elevation = 0.0;
        ASSERT_TRUE(read.GetWaypointIter()->GetElevation(elevation));
        EXPECT_EQ(elevation, number);
        EXPECT_EQ(std::signbit(elevation), std::signbit(number));
    }
    GpxPoint point = PointAt(1, 2);
    point.SetElevation(0.1);
    EXPECT_EQ(JoinedContent(Write(With(point))), Waypoint("<ele>0.1</ele>"));
}

TEST(GpxStandardWriterTest, ANumberThatIsNotFiniteIsLeftOutAndReported) {
    for (const double number :
         {std::nan(""), std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()}) {
        GpxPoint point = PointAt(1, 2);
        point.SetElevation(number);
        point.SetGeoidHeight(number);
        point.SetTime(number);
        for (const GpxVersion& version : {kGpx10, kGpx11}) {
            EXPECT_EQ(JoinedContent(Write(With(point), version)), Waypoint(""));
            EXPECT_EQ(Reports(With(point), version),
                      "waypoint 1: ele: GPX has no place for a number that is not finite.\n"
                      "waypoint 1: time: GPX has no place for such a time.\n"
                      "waypoint 1: geoidheight: GPX has no place for a number that is not finite.\n");
        }
    }
}

TEST(GpxStandardWriterTest, TimesOfTheYears1To9999AreWritten) {
    const struct {
        double time;
        const char* text;
    } kTimes[] = {{0.0, "1970-01-01T00:00:00Z"},
                  {-1.0, "1969-12-31T23:59:59.999Z"},
                  {1232014830250.0, "2009-01-15T10:20:30.250Z"},
                  {-62135596800000.0, "0001-01-01T00:00:00Z"},
                  {253402300799999.0, "9999-12-31T23:59:59.999Z"}};
    for (const auto& [time, text] : kTimes) {
        GpxPoint point = PointAt(1, 2);
        point.SetTime(time);
        EXPECT_EQ(JoinedContent(Write(With(point))), Waypoint("<time>" + std::string(text) + "</time>"));
        GpxDocument document;
        GpxModelAccess::SetAnyTime(document, time);
        EXPECT_EQ(JoinedContent(Write(document, kGpx10)), "<time>" + std::string(text) + "</time>");
    }
    for (const double time : {-62135596800001.0, 253402300800000.0}) {
        GpxPoint point = PointAt(1, 2);
        point.SetTime(time);
        EXPECT_EQ(JoinedContent(Write(With(point))), Waypoint(""));
        EXPECT_EQ(Reports(With(point)), "waypoint 1: time: GPX has no place for such a time.\n");
    }
}

TEST(GpxStandardWriterTest, AnEmptyKeyIsLeftOutAndReported) {
    GpxPoint point = PointAt(1, 2);
    point.SetFormAttribute(u"", u"lost", 0.0);
    point.SetFormAttribute(u"key", u"kept", 0.0);
    const std::string text = Write(With(point));
    EXPECT_EQ(text.find("lost"), std::string::npos);
    EXPECT_NE(text.find("kept"), std::string::npos);
    EXPECT_EQ(Reports(With(point)), "waypoint 1: formstring: A form has no place for an empty key.\n");
}

TEST(GpxStandardWriterTest, TheCreatorIsEscaped) {
    GpxStandardOptions options;
    options.creator = u"a \"b\" <c> & d";
    const std::string text = GpxStandardWriter(options).GetText(GpxDocument());
    EXPECT_NE(text.find(" creator=\"a &quot;b&quot; &lt;c&gt; &amp; d\""), std::string::npos) << text;
}

TEST(GpxStandardWriterTest, UnreadablePositionsAndNumbersAreNeverInTheWay) {
    EXPECT_EQ(Rewritten(Gpx11(Waypoint("<ele/>"))), Waypoint("<ele/>"));
    EXPECT_EQ(Rewritten(Gpx11(Waypoint("<ele>x</ele><time/>"))), Waypoint("<ele>x</ele><time/>"));
    EXPECT_EQ(Rewritten(Gpx11("<wpt lat=\"91\" lon=\"2\"><name>n</name></wpt>")),
              "<wpt lat=\"91\" lon=\"2\"><name>n</name></wpt>");
}

// What is refused.

TEST(GpxStandardWriterTest, AnUnknownVersionIsRefused) {
    GpxStandardOptions options;
    options.version = ModelDoors::MakeVersion(2, 0);
    EXPECT_EQ(ErrorOf(GpxDocument(), options), "Cannot write to unknown GPX schema version.");
}

struct BadText {
    const char* message;
    std::function<void(GpxDocument&)> make;
};

const icu::UnicodeString kBad = icu::UnicodeString(u"a").append(char16_t{1});

void AddBadPoint(GpxDocument& document, const std::function<void(GpxPoint&)>& spoil) {
    document.AddWaypoint(PointAt(1, 2));
    GpxPoint point = PointAt(1, 2);
    spoil(point);
    document.AddWaypoint(point);
}

BadText BadPoint(const char* message, void (*spoil)(GpxPoint&)) {
    return {message, [spoil](GpxDocument& document) { AddBadPoint(document, spoil); }};
}

BadText BadCache(const char* message, void (*spoil)(GpxGroundspeakCache&)) {
    return {message, [spoil](GpxDocument& document) {
                AddBadPoint(document, [&](GpxPoint& point) {
                    GpxGroundspeakCache cache;
                    spoil(cache);
                    point.SetGroundspeakCache(cache);
                });
            }};
}

BadText BadTrack(const char* message, void (*spoil)(GpxTrack&)) {
    return {message, [spoil](GpxDocument& document) {
                GpxTrack track;
                spoil(track);
                document.AddTrack(track);
            }};
}

BadText BadRoute(const char* message, void (*spoil)(GpxRoute&)) {
    return {message, [spoil](GpxDocument& document) {
                GpxRoute route(kTarvikRouteStandard);
                spoil(route);
                document.AddRoute(route);
            }};
}

GpxGroundspeakCacheLog LogWith(icu::UnicodeString GpxGroundspeakCacheLog::*field) {
    GpxGroundspeakCacheLog log;
    log.*field = kBad;
    return log;
}

const BadText kBadTexts[] = {
    {"name of the document", [](GpxDocument& d) { GpxModelAccess::SetName(d, kBad); }},
    {"layer name of the document",
     [](GpxDocument& d) {
         GpxModelAccess::SetGISMetaData(d, boost::make_shared<GISMetaData>());
         GpxModelAccess::GetGISMetaData(d)->layerName = kBad;
     }},
    {"waypoint identifier of the document",
     [](GpxDocument& d) {
         GpxModelAccess::SetAnnotateMetaData(d, boost::make_shared<AnnotateMetaData>());
         GpxModelAccess::GetAnnotateMetaData(d)->waypointGUID = kBad;
     }},
    BadPoint("name of waypoint 2", [](GpxPoint& p) { p.SetName(kBad); }),
    BadPoint("comment of waypoint 2", [](GpxPoint& p) { p.SetComment(kBad); }),
    BadPoint("description of waypoint 2", [](GpxPoint& p) { p.SetDescription(kBad); }),
    BadPoint("source of waypoint 2", [](GpxPoint& p) { p.SetSource(kBad); }),
    BadPoint("symbol of waypoint 2", [](GpxPoint& p) { p.SetSymbol(kBad); }),
    BadPoint("type of waypoint 2", [](GpxPoint& p) { p.SetType(kBad); }),
    BadPoint("identifier of waypoint 2", [](GpxPoint& p) { GpxModelAccess::SetGUID(p, kBad); }),
    BadPoint("link of waypoint 2", [](GpxPoint& p) { p.SetURL(GpxUrl(kBad)); }),
    BadPoint("text of the link of waypoint 2",
             [](GpxPoint& p) {
                 GpxUrl url(u"a");
                 url.SetUrlText(kBad);
                 p.SetURL(url);
             }),
    BadPoint("type of the link of waypoint 2",
             [](GpxPoint& p) {
                 GpxUrl url(u"a");
                 url.SetUrlType(kBad);
                 p.SetURL(url);
             }),
    BadPoint("key of a form field of waypoint 2", [](GpxPoint& p) { p.SetFormAttribute(kBad, u"", 0.0); }),
    BadPoint("form field of waypoint 2", [](GpxPoint& p) { p.SetFormAttribute(u"a", kBad, 0.0); }),
    BadCache("name of the geocache of waypoint 2", [](GpxGroundspeakCache& c) { c.name = kBad; }),
    BadCache("owner of the geocache of waypoint 2", [](GpxGroundspeakCache& c) { c.owner = kBad; }),
    BadCache("type of the geocache of waypoint 2", [](GpxGroundspeakCache& c) { c.type = kBad; }),
    BadCache("container of the geocache of waypoint 2", [](GpxGroundspeakCache& c) { c.container = kBad; }),
    BadCache("difficulty of the geocache of waypoint 2", [](GpxGroundspeakCache& c) { c.difficulty = kBad; }),
    BadCache("terrain of the geocache of waypoint 2", [](GpxGroundspeakCache& c) { c.terrain = kBad; }),
    BadCache("short description of the geocache of waypoint 2",
             [](GpxGroundspeakCache& c) { c.short_description = kBad; }),
    BadCache("long description of the geocache of waypoint 2",
             [](GpxGroundspeakCache& c) { c.long_description = kBad; }),
    BadCache("hint of the geocache of waypoint 2", [](GpxGroundspeakCache& c) { c.encoded_hints = kBad; }),
    BadCache("date of a log of waypoint 2",
             [](GpxGroundspeakCache& c) { c.logs = {LogWith(&GpxGroundspeakCacheLog::date)}; }),
    BadCache("type of a log of waypoint 2",
             [](GpxGroundspeakCache& c) { c.logs = {LogWith(&GpxGroundspeakCacheLog::type)}; }),
    BadCache("finder of a log of waypoint 2",
             [](GpxGroundspeakCache& c) { c.logs = {LogWith(&GpxGroundspeakCacheLog::finder)}; }),
    BadCache("text of a log of waypoint 2",
             [](GpxGroundspeakCache& c) { c.logs = {LogWith(&GpxGroundspeakCacheLog::text)}; }),
    BadCache("name of a travel bug of waypoint 2", [](GpxGroundspeakCache& c) { c.travelbugs = {kBad}; }),
    BadRoute("name of route 1", [](GpxRoute& r) { r.SetName(kBad); }),
    BadRoute("source of route 1", [](GpxRoute& r) { r.SetSource(kBad); }),
    BadRoute("type of route 1", [](GpxRoute& r) { r.SetType(kBad); }),
    BadRoute("name of point 1 of route 1",
             [](GpxRoute& r) {
                 GpxPoint point(kGpxRoutePoint, 1, 2);
                 point.SetName(kBad);
                 r.AddPoint(point);
             }),
    BadTrack("name of track 1", [](GpxTrack& t) { t.SetName(kBad); }),
    BadTrack("description of track 1", [](GpxTrack& t) { t.SetDescription(kBad); }),
    BadTrack("source of track 1", [](GpxTrack& t) { t.SetSource(kBad); }),
    BadTrack("type of track 1", [](GpxTrack& t) { t.SetType(kBad); }),
    BadTrack("link of track 1", [](GpxTrack& t) { t.SetURL(GpxUrl(kBad)); }),
    BadTrack("comment of point 2 of segment 2 of track 1",
             [](GpxTrack& t) {
                 t.AddSegment();
                 t.AddSegment();
                 GpxPoint point(kGpxTrackPoint, 1, 2);
                 t.AddPoint(point);
                 point.SetComment(kBad);
                 t.AddPoint(point);
             }),
};

TEST(GpxStandardWriterTest, ACharacterThatXmlCannotHoldIsRefusedBeforeAnythingIsWritten) {
    for (const BadText& bad : kBadTexts) {
        GpxDocument document;
        bad.make(document);
        EXPECT_EQ(ErrorOf(document),
                  "The " + std::string(bad.message) + " has a character that XML cannot hold: U+0001.");
    }
    GpxStandardOptions options;
    options.creator = kBad;
    EXPECT_EQ(ErrorOf(GpxDocument(), options),
              "The creator of the document has a character that XML cannot hold: U+0001.");
}

TEST(GpxStandardWriterTest, ACharacterThatXmlCannotHoldIsReplacedOnDemand) {
    GpxStandardOptions options;
    options.replacesCharacters = true;
    for (const BadText& bad : kBadTexts) {
        GpxDocument document;
        bad.make(document);
        const std::string text = GpxStandardWriter(options).GetText(document);
        EXPECT_NE(text.find("a\xEF\xBF\xBD"), std::string::npos) << bad.message << text;
    }
}

TEST(GpxStandardWriterTest, ALoneSurrogateIsNamed) {
    GpxPoint point = PointAt(1, 2);
    point.SetName(icu::UnicodeString(char16_t{0xD800}));
    EXPECT_EQ(ErrorOf(With(point)), "The name of waypoint 1 has a character that XML cannot hold: U+D800.");
}

// How it is passed on.

TEST(GpxStandardWriterTest, ThePiecesAreTheText) {
    GpxDocument document;
    GpxPoint point = PointAt(1, 2);
    point.SetDescription(icu::UnicodeString(70'000, U'x', 70'000));
    for (int i = 0; i < 10; ++i)
        document.AddWaypoint(point);
    std::vector<std::string> pieces;
    const GpxStandardWriter writer;
    writer.Write(document, [&](std::string_view piece) { pieces.emplace_back(piece); });
    std::string joined;
    for (const std::string& piece : pieces)
        joined += piece;
    EXPECT_GT(pieces.size(), 5U);
    EXPECT_TRUE(joined == writer.GetText(document));
}

TEST(GpxStandardWriterTest, ExceptionsOfTheFunctionsPassThrough) {
    const GpxStandardWriter writer;
    EXPECT_THROW(writer.Write(GpxDocument(), [](std::string_view) { throw std::domain_error("full"); }),
                 std::domain_error);
    GpxPoint point = PointAt(1, 2);
    point.SetElevation(std::nan(""));
    GpxStandardOptions options;
    options.unwritten = [](const GpxUnwritten&) { throw std::domain_error("lost"); };
    EXPECT_THROW(GpxStandardWriter(options).GetText(With(point)), std::domain_error);
}

TEST(GpxStandardWriterTest, AFileHasTheText) {
    const TemporaryFolder folder;
    const fs::path target = folder / "caf\xC3\xA9.gpx";
    const GpxStandardWriter writer;
    writer.WriteFile(FullDocument(), target.string());
    EXPECT_EQ(ReadBytes(target), writer.GetText(FullDocument()));
    writer.WriteToFile(GpxDocument(), icu::UnicodeString::fromUTF8(target.string()));
    EXPECT_EQ(ReadBytes(target), writer.GetText(GpxDocument()));
}

TEST(GpxStandardWriterTest, ADocumentThatIsRefusedOrStoppedLeavesTheFile) {
    const TemporaryFolder folder;
    const fs::path target = folder / "a.gpx";
    WriteBytes(target, "old");
    GpxDocument document;
    GpxModelAccess::SetName(document, kBad);
    EXPECT_THROW(GpxStandardWriter().WriteFile(document, target.string()), dbc::precondition_error);

    GpxDocument large;
    GpxPoint point = PointAt(1, 2);
    point.SetDescription(icu::UnicodeString(200'000, U'x', 200'000));
    large.AddWaypoint(point);
    point.SetElevation(std::nan(""));
    large.AddWaypoint(point);
    GpxStandardOptions options;
    options.unwritten = [](const GpxUnwritten&) { throw std::domain_error("stop"); };
    EXPECT_THROW(GpxStandardWriter(options).WriteFile(large, target.string()), std::domain_error);
    EXPECT_EQ(ReadBytes(target), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / ""), fs::directory_iterator()), 1);
}

} // namespace
} // namespace vexaTransferLib
