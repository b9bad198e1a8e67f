// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>

#include "support/ContractChecks.h"
#include "support/GpxFiles.h"
#include "support/GpxReadBack.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"
#include "support/ModelCompare.h"
#include "support/SampleDocument.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const GpxVersion k10(1, 0);
const GpxVersion k11(1, 1);

GpxDocument WrittenAndRead(const GpxDocument& document, const GpxVersion& version = k11) {
    const TemporaryFolder folder;
    const icu::UnicodeString path = icu::UnicodeString::fromUTF8((folder / "out.gpx").string());
    document.WriteToFile(version, u"App", u"https://app.example/", path);
    GpxParser parser;
    GpxDocument read;
    parser.Parse(path, read);
    return read;
}

GpxDocument With(const GpxPoint& waypoint) {
    GpxDocument document;
    document.AddWaypoint(waypoint);
    return document;
}

GpxPoint WaypointWrittenAndRead(const GpxPoint& waypoint) {
    const GpxDocument read = WrittenAndRead(With(waypoint));
    EXPECT_EQ(read.GetWaypointCount(), 1u);
    return *read.GetWaypointIter();
}

const GpxPoint kOrigin(kGpxWaypoint, 0.0, 0.0);

GpxPoint FullReadableWaypoint() {
    GpxPoint point(kGpxWaypoint, 45.5, -122.25);
    point.SetElevation(1234.5);
    point.SetTime(1232014830999.0);
    point.SetMagneticVariation(359.999);
    point.SetGeoidHeight(-17.25);
    point.SetName(u"Name & <more>");
    point.SetComment(u"comment");
    point.SetDescription(u"description");
    point.SetSource(u"source");
    GpxUrl url(u"http://a/?x=1&y=2");
    url.SetUrlText(u"link text");
    url.SetUrlType(u"text/html");
    point.SetURL(url);
    point.SetSymbol(u"symbol");
    point.SetType(u"type");
    point.SetFix(kGpxFixDGPS);
    point.SetFormAttribute(u"Beta", u"second's", 1500.0);
    point.SetFormAttribute(u"alpha", u"<first> & more", 0.0);
    GpxModelAccess::SetSymbolNumber(point, 1234);
    GpxModelAccess::SetGUID(point, u"guid");
    point.SetGroundspeakCache(FullGeocache());
    return point;
}

// The values of its first waypoint change in a file in more ways than those of the sample.
GpxDocument FullReadableDocument() {
    const GpxDocument sample = FullDocument();
    GpxDocument document;
    GpxModelAccess::SetName(document, GpxModelAccess::GetName(sample));
    GpxModelAccess::SetTime(document, GpxModelAccess::GetTime(sample));
    GpxModelAccess::SetGISMetaData(document, GpxModelAccess::GetGISMetaData(sample));
    GpxModelAccess::SetAnnotateMetaData(document, GpxModelAccess::GetAnnotateMetaData(sample));
    GpxModelAccess::SetStats(document, GpxModelAccess::GetStats(sample));
    document.AddWaypoint(FullReadableWaypoint());
    document.AddWaypoint(GpxPoint(kGpxWaypoint, 90.0, 0.0));
    document.AddRoute(*sample.GetRouteIter());
    document.AddTrack(*sample.GetTrackIter());
    return document;
}

TEST(ReadWriteTest, EveryFieldComesBackAccordingToTheRules) {
    const GpxDocument document = FullReadableDocument();
    EXPECT_TRUE(IsSameModel(ReadBack().Of(document, u"out"), WrittenAndRead(document)));
}

TEST(ReadWriteTest, WhatCameBackOnceComesBackTheSame) {
    const GpxDocument once = WrittenAndRead(FullReadableDocument());
    EXPECT_TRUE(IsSameModel(once, WrittenAndRead(once)));
}

TEST(ReadWriteTest, LongTextsBeyondAsciiComeBack) {
    const icu::UnicodeString longest = icu::UnicodeString(50000, 0x20AC, 50000) + u"&" +
                                       icu::UnicodeString(100000, 0x1F30D, 50000) + u"<" +
                                       icu::UnicodeString(50000, 0xE9, 50000);
    for (const std::int32_t length : {63, 64, 65, 1365, 4096, 200002}) {
        const icu::UnicodeString text(longest, 0, length);
        GpxPoint point = kOrigin;
        point.SetName(text);
        point.SetFormAttribute(u"key", text, 0.0);
        GpxUrl url(text);
        url.SetUrlText(text);
        point.SetURL(url);
        GpxDocument document = With(point);
        GpxModelAccess::SetName(document, text);
        EXPECT_TRUE(IsSameModel(ReadBack().Of(document, u"out"), WrittenAndRead(document))) << length;
    }
}

TEST(ReadWriteTest, AnEmptyDocumentComesBackWithTheFilesName) {
    const GpxDocument read = WrittenAndRead(GpxDocument());
    EXPECT_EQ(NameOf(read), "out");
    GpxDocument named;
    GpxModelAccess::SetName(named, u"out");
    EXPECT_TRUE(IsSameModel(named, read));
}

// The namespace of GPX 1.1 in a file that says it is GPX 1.0.
TEST(ReadWriteTest, FromAFileWrittenAs10NothingIsRead) {
    const GpxDocument read = WrittenAndRead(FullReadableDocument(), k10);
    GpxDocument named;
    GpxModelAccess::SetName(named, u"out");
    EXPECT_TRUE(IsSameModel(named, read));
}

TEST(ReadWriteTest, ACommentComesBackAsTheDescription) {
    GpxPoint point = kOrigin;
    point.SetComment(u"C");
    GpxPoint read = WaypointWrittenAndRead(point);
    EXPECT_EQ(TextOf(read, &GpxPoint::GetComment), kAbsent);
    EXPECT_EQ(TextOf(read, &GpxPoint::GetDescription), "C");
    point.SetDescription(u"D");
    read = WaypointWrittenAndRead(point);
    EXPECT_EQ(TextOf(read, &GpxPoint::GetComment), kAbsent);
    EXPECT_EQ(TextOf(read, &GpxPoint::GetDescription), "C");
}

TEST(ReadWriteTest, StatisticsAreWrittenButNotReadBack) {
    GpxDocument document;
    GpxModelAccess::SetStats(document, boost::shared_ptr<GPXStats>(new GPXStats{5, 4, 3, 2.5, 1}));
    const GpxDocument read = WrittenAndRead(document);
    EXPECT_EQ(GpxModelAccess::GetStats(read), nullptr);
    ASSERT_NE(GpxModelAccess::GetGISMetaData(read), nullptr) << "their block brings the two other records";
    EXPECT_EQ(GpxModelAccess::GetGISMetaData(read)->defaultSymbol, 1);
    EXPECT_NE(GpxModelAccess::GetAnnotateMetaData(read), nullptr);
}

TEST(ReadWriteTest, AThousandsSeparatorEndsALogIdButNoVendorNumber) {
    struct Row {
        std::int32_t written;
        std::int32_t logId;
        std::int32_t symbolNumber;
    };
    constexpr Row kRows[] = {
        {1, 1, 1}, {999, 999, 999}, {1000, 1, 1000},    {123456, 123, 123456}, {INT32_MAX, 2, INT32_MAX},
        {0, 0, 0}, {-5, -5, 0},     {-123456, -123, 0}, {INT32_MIN, -2, 0},
    };
    for (const Row& row : kRows) {
        GpxPoint point = kOrigin;
        GpxModelAccess::SetSymbolNumber(point, row.written);
        GpxGroundspeakCache cache;
        cache.name = u"N";
        cache.logs.resize(1);
        cache.logs[0].id = row.written;
        cache.logs[0].date = cache.logs[0].finder = cache.logs[0].text = u"x";
        point.SetGroundspeakCache(cache);
        GpxDocument document = With(point);
        GpxModelAccess::SetGISMetaData(document, boost::shared_ptr<GISMetaData>(new GISMetaData));
        GpxModelAccess::GetGISMetaData(document)->defaultSymbol = row.written;
        const GpxDocument read = WrittenAndRead(document);
        const GpxPoint& readPoint = *read.GetWaypointIter();
        ASSERT_TRUE(GeocacheOf(readPoint).has_value());
        ASSERT_EQ(GeocacheOf(readPoint)->logs.size(), 1u);
        EXPECT_EQ(GeocacheOf(readPoint)->logs[0].id, row.logId) << row.written;
        EXPECT_EQ(GpxModelAccess::GetSymbolNumber(readPoint), row.symbolNumber) << row.written;
        EXPECT_EQ(GpxModelAccess::GetGISMetaData(read)->defaultSymbol, row.written);
        EXPECT_TRUE(IsSameModel(ReadBack().Of(document, u"out"), read));
    }
}

TEST(ReadWriteTest, AColorOtherThanNoColorComesBack) {
    constexpr std::int16_t kColors[] = {0, 999, 1000, INT16_MAX, -1, -2, INT16_MIN};
    for (const std::int16_t color : kColors) {
        GpxTrack track;
        GpxModelAccess::SetColor(track, color);
        GpxDocument document;
        document.AddTrack(track);
        EXPECT_EQ(GpxModelAccess::GetColor(*WrittenAndRead(document).GetTrackIter()), color < 0 ? -1 : color);
    }
}

TEST(ReadWriteTest, VendorDataOfRouteAndTrackPointsIsLost) {
    GpxPoint routePoint(kGpxRoutePoint, 0.0, 0.0);
    GpxPoint trackPoint(kGpxTrackPoint, 0.0, 0.0);
    for (GpxPoint* point : {&routePoint, &trackPoint}) {
        GpxModelAccess::SetSymbolNumber(*point, 5);
        GpxModelAccess::SetGUID(*point, u"G");
        point->SetFormAttribute(u"k", u"v", 0.0);
    }
    routePoint.SetTarvikRoutePointType(kTarvikRoutePointVia);
    GpxDocument document;
    GpxRoute route(kTarvikRoutePoints);
    route.AddPoint(routePoint);
    document.AddRoute(route);
    GpxTrack track;
    track.AddSegment();
    track.AddPoint(trackPoint);
    document.AddTrack(track);

    const GpxDocument read = WrittenAndRead(document);
    ASSERT_EQ(CountsOf(read), "0 waypoints, 1 routes, 1 tracks");
    const GpxRoute& readRoute = *read.GetRouteIter();
    const GpxTrack& readTrack = *read.GetTrackIter();
    EXPECT_EQ(RouteTypeOf(readRoute), kTarvikRoutePoints);
    ASSERT_EQ(readRoute.GetPointCount(), 1u);
    EXPECT_EQ(RoutePointTypeOf(*readRoute.GetPointIter()), kTarvikRoutePointVia);
    ASSERT_EQ(readTrack.GetPointCount(readTrack.GetSegmentIter()), 1u);
    for (const GpxPoint* point :
         {&*readRoute.GetPointIter(), &*readTrack.GetPointIter(readTrack.GetSegmentIter())}) {
        EXPECT_EQ(GpxModelAccess::GetSymbolNumber(*point), 0);
        EXPECT_EQ(GuidOf(*point), "");
        EXPECT_TRUE(GpxModelAccess::GetFormAttributes(*point).empty());
    }
    EXPECT_TRUE(IsSameModel(ReadBack().Of(document, u"out"), read));
}

TEST(ReadWriteTest, TextsComeBackWithTheLineEndsOfXml) {
    GpxPoint point = kOrigin;
    point.SetName(u"<&>\"' a\r\nb\rc\nd\te  \U0001F30D\u0085\u2028");
    GpxUrl url(u"a\r\nb\rc\nd\te  <&>\"'");
    url.SetUrlText(u"a\r\rb");
    point.SetURL(url);
    const GpxPoint read = WaypointWrittenAndRead(point);
    EXPECT_EQ(TextOf(read, &GpxPoint::GetName), "<&>\"' a\nb\nc\nd\te  \U0001F30D\u0085\u2028");
    EXPECT_EQ(LinkOf(read), "a b c d e  <&>\"'|a\n\nb|-");
    EXPECT_TRUE(IsSameModel(ReadBack().Of(With(point), u"out"), WrittenAndRead(With(point))));
}

TEST(ReadWriteTest, BlanksAloneAreAText) {
    GpxPoint point = kOrigin;
    point.SetName(u" \n ");
    EXPECT_EQ(TextOf(WaypointWrittenAndRead(point), &GpxPoint::GetName), " \n ");
}

TEST(ReadWriteTest, NumbersComeBackWithTheirDecimals) {
    struct Row {
        double written;
        double readWith9;
        double readWith6;
    };
    const double inf = std::numeric_limits<double>::infinity();
    const Row rows[] = {
        {12.3456789014, 12.345678901, 12.345679},
        {0.0000004, 0.0000004, 0.0},
        {0.0000000004, 0.0, 0.0},
        {-0.0000000001, -0.0, -0.0},
        {0.5, 0.5, 0.5},
        {DBL_MAX, DBL_MAX, DBL_MAX},
        {inf, inf, inf},
        {-0.0, -0.0, -0.0},
    };
    for (const Row& row : rows) {
        GpxPoint point = kOrigin;
        point.SetElevation(row.written);
        point.SetGeoidHeight(row.written);
        if (row.written < 360.0 && row.written >= 0.0)
            point.SetMagneticVariation(row.written);
        const GpxPoint read = WaypointWrittenAndRead(point);
        EXPECT_EQ(NumberOf(read, &GpxPoint::GetElevation), row.readWith6);
        EXPECT_EQ(NumberOf(read, &GpxPoint::GetGeoidHeight), row.readWith6);
        if (NumberOf(point, &GpxPoint::GetMagneticVariation)) {
            EXPECT_EQ(NumberOf(read, &GpxPoint::GetMagneticVariation), row.readWith9);
        }
        EXPECT_TRUE(IsSameModel(ReadBack().Of(With(point), u"out"), WrittenAndRead(With(point))))
            << row.written;
    }
}

TEST(ReadWriteTest, AMagneticVariationThatRoundsTo360IsLost) {
    GpxPoint point = kOrigin;
    point.SetMagneticVariation(359.9999999999);
    point.SetName(u"N");
    GpxDocument read;
    EXPECT_REPORT(read = WrittenAndRead(With(point)), "LibCore/vexaTransferLib/GpxPoint.cpp");
    EXPECT_EQ(NumberOf(*read.GetWaypointIter(), &GpxPoint::GetMagneticVariation), std::nullopt);
    EXPECT_TRUE(IsSameModel(ReadBack().Of(With(point), u"out"), read));
}

TEST(ReadWriteTest, PositionsComeBackWith9Decimals) {
    for (const auto& [latitude, longitude] :
         {std::pair(90.0, 180.0), std::pair(-90.0, -180.0), std::pair(12.34567890149, -0.0),
          std::pair(89.9999999999, 179.9999999999), std::pair(-1e-12, -179.9999999999)}) {
        const GpxDocument document = With(GpxPoint(kGpxWaypoint, latitude, longitude));
        EXPECT_TRUE(IsSameModel(ReadBack().Of(document, u"out"), WrittenAndRead(document))) << latitude;
    }
    double latitude = 0.0;
    double longitude = 0.0;
    WaypointWrittenAndRead(GpxPoint(kGpxWaypoint, 12.34567890149, 180.0)).GetPoint(latitude, longitude);
    EXPECT_EQ(latitude, 12.345678901);
    EXPECT_EQ(longitude, 179.999999881);
}

TEST(ReadWriteTest, TimesComeBackInWholeSecondsOfTheYears1970To9999) {
    struct Row {
        double written;
        std::optional<double> read;
    };
    constexpr Row kRows[] = {
        {1232014830999.0, 1232014830000.0},
        {0.0, 0.0},
        {999.9, 0.0},
        {1000.0, 1000.0},
        {253402300799999.0, 253402300799000.0},
        {253402300800000.0, std::nullopt},
        {-1.0, std::nullopt},
        {-0.5, std::nullopt},
        {1e300, std::nullopt},
        {std::numeric_limits<double>::quiet_NaN(), std::nullopt},
    };
    for (const Row& row : kRows) {
        GpxPoint point = kOrigin;
        point.SetTime(row.written);
        point.SetFormAttribute(u"k", u"v", row.written);
        GpxDocument document = With(point);
        GpxModelAccess::SetTime(document, row.written);
        const GpxDocument read = WrittenAndRead(document);
        const GpxPoint& readPoint = *read.GetWaypointIter();
        EXPECT_EQ(NumberOf(readPoint, &GpxPoint::GetTime), row.read) << row.written;
        ASSERT_NE(readPoint.GetFormAttribute(u"k"), nullptr);
        EXPECT_EQ(readPoint.GetFormAttribute(u"k")->modTime, row.read.value_or(0.0)) << row.written;
        EXPECT_EQ(GpxModelAccess::GetTime(read), row.read.value_or(0.0)) << row.written;
        EXPECT_TRUE(IsSameModel(ReadBack().Of(document, u"out"), read)) << row.written;
    }
}

TEST(ReadWriteTest, ATimeWithoutMetadataComesBack) {
    GpxDocument document;
    GpxModelAccess::SetTime(document, 5000.0);
    ASSERT_FALSE(document.HasMetaData());
    EXPECT_EQ(GpxModelAccess::GetTime(WrittenAndRead(document)), 5000.0);
}

TEST(ReadWriteTest, AGuidLosesAPairOfBracesWithEveryReading) {
    GpxPoint point = kOrigin;
    GpxModelAccess::SetGUID(point, u"{{{a}}}");
    EXPECT_EQ(GuidOf(point), "{{a}}");
    EXPECT_EQ(GuidOf(WaypointWrittenAndRead(point)), "{a}");
    EXPECT_TRUE(IsSameModel(ReadBack().Of(With(point), u"out"), WrittenAndRead(With(point))));
}

TEST(ReadWriteTest, FormKeysComeBackAsTheMapSpellsThem) {
    GpxPoint point = kOrigin;
    point.SetFormAttribute(u"Color", u"red", 1500.0);
    point.SetFormAttribute(u"COLOR", u"blue", 0.0);
    point.SetFormAttribute(u"a\r\nb\tc", u"x\r\ny", 0.0);
    point.SetFormAttribute(u"a b c", u"later in the order", 0.0);
    point.SetFormAttribute(u"", u"without a key", 0.0);
    point.SetFormAttribute(u"empty", u"", 2500.0);
    const GpxPoint read = WaypointWrittenAndRead(point);
    EXPECT_EQ(GpxModelAccess::GetFormAttributes(read).size(), 3u);
    ASSERT_NE(read.GetFormAttribute(u"color"), nullptr);
    EXPECT_EQ(read.GetFormAttribute(u"color")->key, u"Color");
    EXPECT_EQ(read.GetFormAttribute(u"color")->value, u"blue");
    ASSERT_NE(read.GetFormAttribute(u"empty"), nullptr);
    EXPECT_EQ(read.GetFormAttribute(u"empty")->modTime, 2000.0);
    ASSERT_NE(read.GetFormAttribute(u"a b c"), nullptr);
    EXPECT_EQ(read.GetFormAttribute(u"a b c")->value, u"later in the order");
    EXPECT_TRUE(IsSameModel(ReadBack().Of(With(point), u"out"), WrittenAndRead(With(point))));
}

TEST(ReadWriteTest, GeocacheTextsAreCleanedOnceMore) {
    GpxGroundspeakCache cache;
    cache.name = u"<b>x</b>";
    cache.owner = u"a\n\n\nb  c";
    cache.encoded_hints = u"&amp;lt;";
    cache.travelbugs = {u"", u"<i>", u"bug"};
    cache.logs.resize(3);
    for (GpxGroundspeakCacheLog& log : cache.logs)
        log.date = log.finder = log.text = u" x ";
    cache.logs[1].text = u"<b>";
    cache.logs[2].finder.remove();
    GpxPoint point = kOrigin;
    point.SetGroundspeakCache(cache);
    const std::optional<GpxGroundspeakCache> read = GeocacheOf(WaypointWrittenAndRead(point));
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->name, u"x");
    EXPECT_EQ(read->owner, u"a\r\n\r\nb c");
    EXPECT_EQ(read->encoded_hints, u"&lt;");
    ASSERT_EQ(read->logs.size(), 1u);
    EXPECT_EQ(read->logs[0].date, u"x");
    EXPECT_EQ(read->travelbugs, (std::vector<icu::UnicodeString>{u"", u"bug"}));
    EXPECT_TRUE(IsSameModel(ReadBack().Of(With(point), u"out"), WrittenAndRead(With(point))));
}

TEST(ReadWriteTest, AGeocacheWithoutTextsIsLost) {
    GpxGroundspeakCache cache;
    cache.travelbugs = {u"bug"};
    GpxPoint point = kOrigin;
    point.SetGroundspeakCache(cache);
    EXPECT_EQ(GeocacheOf(WaypointWrittenAndRead(point)), std::nullopt);
    EXPECT_TRUE(IsSameModel(ReadBack().Of(With(point), u"out"), WrittenAndRead(With(point))));
}

TEST(ReadWriteTest, ADocumentNameComesBackWithTheLineEndsOfXml) {
    GpxDocument document;
    GpxModelAccess::SetName(document, u" a\r\nb\r<&> ");
    EXPECT_EQ(NameOf(WrittenAndRead(document)), " a\nb\n<&> ");
}

void ExpectUnreadable(const GpxDocument& document) {
    const TemporaryFolder folder;
    const std::string path = (folder / "out.gpx").string();
    document.WriteToFile(k11, u"App", u"https://app.example/", icu::UnicodeString::fromUTF8(path));
    GpxParser parser;
    GpxDocument read;
    EXPECT_FAILURE(parser.Parse(icu::UnicodeString::fromUTF8(path), read), dbc::postcondition_error,
                   ParseErrorsMessage(path), "");
}

TEST(ReadWriteTest, TextsWrittenUnescapedMakeTheFileUnreadable) {
    for (const char16_t* text : {u"a & b", u"a < b", u"]]>"}) {
        GpxDocument document;
        GpxModelAccess::SetGISMetaData(document, boost::shared_ptr<GISMetaData>(new GISMetaData));
        GpxModelAccess::GetGISMetaData(document)->layerName = text;
        ExpectUnreadable(document);
        EXPECT_THROW(ReadBack().Of(document, u"out"), std::runtime_error);
        GpxPoint point = kOrigin;
        GpxModelAccess::SetGUID(point, text);
        ExpectUnreadable(With(point));
    }
    GpxPoint point = kOrigin;
    point.SetFormAttribute(u"a & b", u"v", 0.0);
    ExpectUnreadable(With(point));
}

TEST(ReadWriteTest, ControlCharactersMakeTheFileUnreadable) {
    GpxPoint point = kOrigin;
    point.SetName(u"a\u0001b");
    ExpectUnreadable(With(point));
}

} // namespace
} // namespace vexaTransferLib
