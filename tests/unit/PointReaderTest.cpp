// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/PointReader.h>

#include <vexaTransferLib/GpxParser.h>

#include "support/ContractChecks.h"
#include "support/FakeNode.h"
#include "support/GpxDom.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"
#include "support/ModelDoors.h"

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <xercesc/dom/DOMException.hpp>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const GpxVersion k10(1, 0);
const GpxVersion k11(1, 1);

constexpr char kPointSource[] = "LibCore/vexaTransferLib/GpxPoint.cpp";
constexpr char kNoLatitude[] = "Unable to read a GPX point's latitude.";
constexpr char kNoLongitude[] = "Unable to read a GPX point's longitude.";

// Reads <wpt lat='1' lon='2'>children</wpt> of a document of the version; a wpt serves for all types.
GpxPoint Read(const GpxVersion& version, GpxPointType type, const std::string& children) {
    const std::string wpt = "<wpt lat='1' lon='2'>" + children + "</wpt>";
    const DomTree tree(version.IsGpx10() ? Gpx10(wpt) : Gpx11(wpt));
    GpxPoint point(type, 0.0, 0.0);
    GpxParser().ParsePointNode(version, type, tree.Find("wpt"), point);
    return point;
}

GpxPoint Read11(const std::string& children) {
    return Read(k11, kGpxWaypoint, children);
}
GpxPoint Read10(const std::string& children) {
    return Read(k10, kGpxWaypoint, children);
}

TEST(PointReaderTest, ReadsEveryStandardChildInBothVersions) {
    const std::string children =
        "<ele>12.5</ele><time>1970-01-01T00:00:01Z</time><magvar>359.5</magvar><geoidheight>-3.25</"
        "geoidheight>"
        "<name>N</name><desc>D</desc><src>S</src><sym>Y</sym><type>T</type><fix>3d</fix>"
        "<sat>5</sat><hdop>1</hdop><vdop>2</vdop><pdop>3</pdop><ageofdgpsdata>4</ageofdgpsdata><dgpsid>5</"
        "dgpsid>";
    for (const GpxVersion& version : {k10, k11}) {
        for (const GpxPointType type : {kGpxWaypoint, kGpxRoutePoint, kGpxTrackPoint}) {
            const GpxPoint point = Read(version, type, children);
            EXPECT_EQ(point.GetPointType(), type);
            EXPECT_EQ(PositionOf(point), "1 2");
            EXPECT_EQ(NumberOf(point, &GpxPoint::GetElevation), 12.5);
            EXPECT_EQ(NumberOf(point, &GpxPoint::GetTime), 1000.0);
            EXPECT_EQ(NumberOf(point, &GpxPoint::GetMagneticVariation), 359.5);
            EXPECT_EQ(NumberOf(point, &GpxPoint::GetGeoidHeight), -3.25);
            EXPECT_EQ(TextOf(point, &GpxPoint::GetName), "N");
            EXPECT_EQ(TextOf(point, &GpxPoint::GetComment), kAbsent);
            EXPECT_EQ(TextOf(point, &GpxPoint::GetDescription), "D");
            EXPECT_EQ(TextOf(point, &GpxPoint::GetSource), "S");
            EXPECT_EQ(TextOf(point, &GpxPoint::GetSymbol), "Y");
            EXPECT_EQ(TextOf(point, &GpxPoint::GetType), "T");
            EXPECT_EQ(FixOf(point), kGpxFix3D);
            EXPECT_FALSE(point.ContainsExtensions());
        }
    }
}

TEST(PointReaderTest, WithoutChildrenEverythingIsAbsent) {
    const GpxPoint point = Read11("");
    for (const auto get : {&GpxPoint::GetElevation, &GpxPoint::GetTime, &GpxPoint::GetMagneticVariation,
                           &GpxPoint::GetGeoidHeight})
        EXPECT_EQ(NumberOf(point, get), std::nullopt);
    for (const auto get : {&GpxPoint::GetName, &GpxPoint::GetComment, &GpxPoint::GetDescription,
                           &GpxPoint::GetSource, &GpxPoint::GetSymbol, &GpxPoint::GetType})
        EXPECT_EQ(TextOf(point, get), kAbsent);
    EXPECT_EQ(LinkOf(point), kAbsent);
    EXPECT_EQ(FixOf(point), 0u);
}

TEST(PointReaderTest, TheLastOfSeveralValuesCounts) {
    const GpxPoint point = Read11("<ele>1</ele><ele>2</ele><ele>x</ele><name>A</name><name>B</name><name/>"
                                  "<fix>2d</fix><fix>pps</fix><fix>3D</fix><sym>A</sym><sym>B</sym>");
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetElevation), 2.0);
    EXPECT_EQ(TextOf(point, &GpxPoint::GetName), "B");
    EXPECT_EQ(TextOf(point, &GpxPoint::GetSymbol), "B");
    EXPECT_EQ(FixOf(point), kGpxFixPPS);
}

TEST(PointReaderTest, UnreadableValuesAreSkipped) {
    const GpxPoint point =
        Read11("<ele>12,5</ele><time>yesterday</time><magvar>5 </magvar><geoidheight>x</geoidheight>"
               "<name><b>N</b></name><src><!-- c -->S</src><fix>3D</fix>");
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetElevation), std::nullopt);
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetTime), std::nullopt);
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetMagneticVariation), std::nullopt);
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetGeoidHeight), std::nullopt);
    EXPECT_EQ(TextOf(point, &GpxPoint::GetName), kAbsent);
    EXPECT_EQ(TextOf(point, &GpxPoint::GetSource), kAbsent);
    EXPECT_EQ(FixOf(point), 0u);
}

TEST(PointReaderTest, NonFiniteElevationsArePresentValues) {
    const std::optional<double> nan = NumberOf(Read11("<ele>nan</ele>"), &GpxPoint::GetElevation);
    ASSERT_TRUE(nan.has_value());
    EXPECT_TRUE(std::isnan(*nan));
    EXPECT_EQ(NumberOf(Read11("<geoidheight>-inf</geoidheight>"), &GpxPoint::GetGeoidHeight),
              -std::numeric_limits<double>::infinity());
}

TEST(PointReaderTest, AMagneticVariationThatTheModelRefusesIsReportedAndSkipped) {
    for (const char* text : {"360", "-0.5", "nan", "inf"}) {
        GpxPoint point(kGpxWaypoint, 0.0, 0.0);
        EXPECT_REPORT(
            point = Read11("<magvar>5</magvar><magvar>" + std::string(text) + "</magvar><name>N</name>"),
            kPointSource)
            << text;
        EXPECT_EQ(NumberOf(point, &GpxPoint::GetMagneticVariation), 5.0);
        EXPECT_EQ(TextOf(point, &GpxPoint::GetName), "N");
    }
}

struct Position {
    const char* attributes;
    const char* message; // empty when the point is read
    const char* source;
    const char* position;
};

constexpr char kBadLatitude[] = "The GPX point's latitude is invalid.";
constexpr char kBadLongitude[] = "The GPX point's longitude is invalid.";

constexpr Position kPositions[] = {
    {"lat='47.5' lon='-122.25'", "", "", "47.5 -122.25"},
    {"lon='2' lat='1'", "", "", "1 2"},
    {"lat=' 1' lon='&#10;2'", "", "", "1 2"},
    {"lat='0x10' lon='+1e1'", "", "", "16 10"},
    {"lat='-90' lon='-180'", "", "", "-90 -180"},
    {"lat='90' lon='180'", "", "", "90 180"},
    {"", kNoLatitude, kParserSource, ""},
    {"lon='2'", kNoLatitude, kParserSource, ""},
    {"lat='' lon='2'", kNoLatitude, kParserSource, ""},
    {"lat='1x' lon='2'", kNoLatitude, kParserSource, ""},
    {"lat='1 ' lon='2'", kNoLatitude, kParserSource, ""},
    {"lat='1,5' lon='2'", kNoLatitude, kParserSource, ""},
    {"lat='N1' lon='2'", kNoLatitude, kParserSource, ""},
    {"lat='x' lon='y'", kNoLatitude, kParserSource, ""},
    {"Lat='1' lon='2'", kNoLatitude, kParserSource, ""},
    {"other:lat='1' lon='2'", kNoLatitude, kParserSource, ""},
    {"lat='1'", kNoLongitude, kParserSource, ""},
    {"lat='1' lon=''", kNoLongitude, kParserSource, ""},
    {"lat='1' lon='2E'", kNoLongitude, kParserSource, ""},
    {"lat='91' lon='y'", kNoLongitude, kParserSource, ""},
    {"lat='91' lon='2'", kBadLatitude, kPointSource, ""},
    {"lat='-90.0000001' lon='2'", kBadLatitude, kPointSource, ""},
    {"lat='nan' lon='2'", kBadLatitude, kPointSource, ""},
    {"lat='inf' lon='2'", kBadLatitude, kPointSource, ""},
    {"lat='1e999' lon='2'", kBadLatitude, kPointSource, ""},
    {"lat='nan' lon='nan'", kBadLatitude, kPointSource, ""},
    {"lat='1' lon='180.5'", kBadLongitude, kPointSource, ""},
    {"lat='1' lon='-180.5'", kBadLongitude, kPointSource, ""},
    {"lat='1' lon='nan'", kBadLongitude, kPointSource, ""},
    {"lat='1' lon='-inf'", kBadLongitude, kPointSource, ""},
};

TEST(PointReaderTest, APositionIsReadOrRefusedAndThePointUnchanged) {
    GpxParser parser;
    for (const Position& row : kPositions) {
        SCOPED_TRACE(row.attributes);
        const DomTree tree(Gpx11("<wpt " + std::string(row.attributes) + "><name>N</name></wpt>"));
        GpxPoint point(kGpxTrackPoint, 50.0, 60.0);
        const auto parse = [&] { parser.ParsePointNode(k11, kGpxWaypoint, tree.Find("wpt"), point); };
        if (*row.message == '\0')
            parse();
        else if (row.source == kPointSource)
            EXPECT_FAILURE(parse(), dbc::precondition_error, row.message, kPointSource);
        else
            EXPECT_FAILURE(parse(), dbc::postcondition_error, row.message, kParserSource);
        const bool read = *row.message == '\0';
        EXPECT_EQ(PositionOf(point), read ? row.position : "50 60");
        EXPECT_EQ(point.GetPointType(), read ? kGpxWaypoint : kGpxTrackPoint);
        EXPECT_EQ(TextOf(point, &GpxPoint::GetName), read ? "N" : kAbsent);
    }
}

TEST(PointReaderTest, LongitudeOf180IsStoredJustBelow) {
    const DomTree tree(Gpx11("<wpt lat='0' lon='180'/>"));
    GpxPoint point(kGpxWaypoint, 0.0, 0.0);
    GpxParser().ParsePointNode(k11, kGpxWaypoint, tree.Find("wpt"), point);
    double latitude = 0.0;
    double longitude = 0.0;
    point.GetPoint(latitude, longitude);
    EXPECT_EQ(longitude, 180.0 - std::ldexp(1.0, -23));
}

TEST(PointReaderTest, ThePointTypeIsCheckedFirst) {
    const DomTree tree(Gpx11("<wpt/>"));
    GpxParser parser;
    for (const std::uint32_t type : {0u, 4u, 0xFFFFFFFFu, 257u}) {
        GpxPoint point(kGpxWaypoint, 0.0, 0.0);
        EXPECT_FAILURE(parser.ParsePointNode(k11, static_cast<GpxPointType>(type), tree.Find("wpt"), point),
                       dbc::precondition_error,
                       "Unable to read a GPX point due to an invalid GPX point type.", kParserSource)
            << type;
    }
}

TEST(PointReaderTest, TheElementsOwnNameAndNamespaceDoNotMatter) {
    const DomTree tree(
        "<x lat='1' lon='2' xmlns:g='http://www.topografix.com/GPX/1/1'><g:name>N</g:name></x>");
    GpxPoint point(kGpxWaypoint, 0.0, 0.0);
    GpxParser().ParsePointNode(k11, kGpxTrackPoint, tree.Root(), point);
    EXPECT_EQ(TextOf(point, &GpxPoint::GetName), "N");
}

TEST(PointReaderTest, OnlyChildrenInTheNamespaceOfTheVersionCount) {
    const std::string children =
        "<gpx10:name>ten</gpx10:name><gpx11:sym>eleven</gpx11:sym><other:src>S</other:src>"
        "<ele xmlns=''>5</ele><Name>upper</Name>";
    const GpxPoint ten = Read10(children);
    EXPECT_EQ(TextOf(ten, &GpxPoint::GetName), "ten");
    EXPECT_EQ(TextOf(ten, &GpxPoint::GetSymbol), kAbsent);
    const GpxPoint eleven = Read11(children);
    EXPECT_EQ(TextOf(eleven, &GpxPoint::GetName), kAbsent);
    EXPECT_EQ(TextOf(eleven, &GpxPoint::GetSymbol), "eleven");
    for (const GpxPoint* point : {&ten, &eleven}) {
        EXPECT_EQ(TextOf(*point, &GpxPoint::GetSource), kAbsent);
        EXPECT_EQ(NumberOf(*point, &GpxPoint::GetElevation), std::nullopt);
    }
}

TEST(PointReaderTest, AnUnknownVersionSkipsEveryChild) {
    const DomTree tree(Gpx11("<wpt lat='1' lon='2'><name>N</name></wpt>"));
    GpxPoint point(kGpxWaypoint, 0.0, 0.0);
    GpxParser().ParsePointNode(ModelDoors::MakeVersion(2, 0), kGpxWaypoint, tree.Find("wpt"), point);
    EXPECT_EQ(PositionOf(point), "1 2");
    EXPECT_EQ(TextOf(point, &GpxPoint::GetName), kAbsent);
}

TEST(PointReaderTest, ACommentBecomesTheDescriptionAndWins) {
    struct Row {
        const char* children;
        const char* description;
    };
    constexpr Row kRows[] = {
        {"<desc>A</desc>", "A"},
        {"<cmt>B</cmt>", "B"},
        {"<desc>A</desc><cmt>B</cmt>", "B"},
        {"<cmt>B</cmt><desc>A</desc>", "B"},
        {"<desc>A</desc><desc>C</desc>", "A"},
        {"<desc/><desc>C</desc>", "C"},
        {"<cmt>A</cmt><cmt>B</cmt>", "B"},
        {"<desc>A</desc><cmt/>", "A"},
        {"<cmt/><desc>A</desc>", "A"},
        {"<cmt> </cmt><desc>A</desc>", " "},
    };
    for (const Row& row : kRows) {
        for (const GpxVersion& version : {k10, k11}) {
            const GpxPoint point = Read(version, kGpxTrackPoint, row.children);
            EXPECT_EQ(TextOf(point, &GpxPoint::GetDescription), row.description) << row.children;
            EXPECT_EQ(TextOf(point, &GpxPoint::GetComment), kAbsent) << row.children;
        }
    }
}

TEST(PointReaderTest, LinksAreReadByVersion) {
    struct Row {
        const char* children;
        const char* in10;
        const char* in11;
    };
    constexpr Row kRows[] = {
        {"<url>u</url>", "u|-|-", kAbsent},
        {"<url>u</url><urlname>n</urlname>", "u|n|-", kAbsent},
        {"<urlname>n</urlname>", kAbsent, kAbsent},
        {"<urlname>n</urlname><url>u</url>", "u|-|-", kAbsent},
        {"<url>u</url><urlname>n</urlname><url>v</url>", "v|-|-", kAbsent},
        {"<url>u</url><urlname>n</urlname><urlname>m</urlname><urlname/>", "u|m|-", kAbsent},
        {"<url/>", kAbsent, kAbsent},
        {"<url> u</url>", " u|-|-", kAbsent},
        {"<link href='h'/>", kAbsent, "h|-|-"},
        {"<link href='h'><text>t</text><type>y</type></link>", kAbsent, "h|t|y"},
        {"<link href='h'><text>t</text></link><link href='i'/>", kAbsent, "i|-|-"},
        {"<link href='h'/><urlname>n</urlname>", kAbsent, "h|-|-"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(LinkOf(Read10(row.children)), row.in10) << row.children;
        EXPECT_EQ(LinkOf(Read11(row.children)), row.in11) << row.children;
    }
}

TEST(PointReaderTest, ALinkWithoutHrefIsReportedAndTheRestKept) {
    GpxPoint point(kGpxWaypoint, 0.0, 0.0);
    EXPECT_REPORT(point = Read11("<name>N</name><link><text>t</text></link><sym>S</sym>"), kParserSource);
    EXPECT_EQ(LinkOf(point), kAbsent);
    EXPECT_EQ(TextOf(point, &GpxPoint::GetName), "N");
    EXPECT_EQ(TextOf(point, &GpxPoint::GetSymbol), "S");
    EXPECT_REPORT(point = Read11("<link href='h'/><link href=''/>"), kParserSource);
    EXPECT_EQ(LinkOf(point), "h|-|-");
}

constexpr char kExtensions[] =
    "<extensions><tarvik:routePointType>via</tarvik:routePointType>"
    "<tarvik:objectid>G</tarvik:objectid><tarvik:tovasymbol>7</tarvik:tovasymbol>"
    "<tarvik:formdata><tarvik:formstring key='k'>v</tarvik:formstring></tarvik:formdata>"
    "<groundspeak:cache><groundspeak:name>C</groundspeak:name></groundspeak:cache>"
    "</extensions>";

TEST(PointReaderTest, ExtensionsOfAWaypointOf11GiveVendorDataAndGeocache) {
    const GpxPoint point = Read(k11, kGpxWaypoint, kExtensions);
    EXPECT_EQ(GuidOf(point), "G");
    EXPECT_EQ(GpxModelAccess::GetSymbolNumber(point), 7);
    ASSERT_NE(point.GetFormAttribute(u"k"), nullptr);
    ASSERT_TRUE(GeocacheOf(point).has_value());
    EXPECT_EQ(GeocacheOf(point)->name, u"C");
}

TEST(PointReaderTest, ExtensionsOfARoutePointOf11GiveItsTypeOnly) {
    const GpxPoint point = Read(k11, kGpxRoutePoint, kExtensions);
    EXPECT_EQ(RoutePointTypeOf(point), kTarvikRoutePointVia);
    EXPECT_EQ(GuidOf(point), "");
    EXPECT_EQ(GpxModelAccess::GetSymbolNumber(point), 0);
    EXPECT_EQ(point.GetFormAttribute(u"k"), nullptr);
}

TEST(PointReaderTest, ExtensionsOfTrackPointsAndOf10AreIgnored) {
    for (const GpxPointType type : {kGpxWaypoint, kGpxRoutePoint, kGpxTrackPoint})
        EXPECT_FALSE(Read(k10, type, kExtensions).ContainsExtensions()) << type;
    EXPECT_FALSE(Read(k11, kGpxTrackPoint, kExtensions).ContainsExtensions());
}

TEST(PointReaderTest, SeveralExtensionsAddUp) {
    const GpxPoint point = Read11("<extensions><objectid>A</objectid><tovasymbol>1</tovasymbol></extensions>"
                                  "<extensions><objectid>B</objectid></extensions>");
    EXPECT_EQ(GuidOf(point), "B");
    EXPECT_EQ(GpxModelAccess::GetSymbolNumber(point), 1);
}

constexpr char kCache[] = "<groundspeak:cache><groundspeak:name>C</groundspeak:name></groundspeak:cache>";

TEST(PointReaderTest, AGeocacheBesideTheStandardChildrenIsReadInBothVersions) {
    for (const GpxVersion& version : {k10, k11}) {
        const std::optional<GpxGroundspeakCache> cache = GeocacheOf(Read(version, kGpxWaypoint, kCache));
        ASSERT_TRUE(cache.has_value());
        EXPECT_EQ(cache->name, u"C");
    }
}

TEST(PointReaderTest, AGeocacheWithoutTextsIsAbsent) {
    EXPECT_EQ(GeocacheOf(Read11("<groundspeak:cache><groundspeak:name/></groundspeak:cache>")), std::nullopt);
    EXPECT_EQ(GeocacheOf(Read11("<other:cache><groundspeak:name>C</groundspeak:name></other:cache>")),
              std::nullopt);
    EXPECT_EQ(
        GeocacheOf(Read11("<groundspeak:Cache><groundspeak:name>C</groundspeak:name></groundspeak:Cache>")),
        std::nullopt);
}

TEST(PointReaderTest, OfSeveralGeocachesTheLastCounts) {
    const std::string extensions = "<extensions><groundspeak:cache><groundspeak:owner>O</groundspeak:owner>"
                                   "</groundspeak:cache></extensions>";
    const std::optional<GpxGroundspeakCache> last = GeocacheOf(Read11(kCache + extensions));
    ASSERT_TRUE(last.has_value());
    EXPECT_EQ(last->name, u"");
    EXPECT_EQ(last->owner, u"O");
    EXPECT_EQ(GeocacheOf(Read11(extensions + kCache))->name, u"C");
    EXPECT_EQ(GeocacheOf(Read11(kCache + std::string("<groundspeak:cache/>")))->name, u"C");
}

TEST(PointReaderTest, AGeocacheUnderATrackOrRoutePointIsReportedAndNothingElse) {
    for (const GpxVersion& version : {k10, k11}) {
        for (const GpxPointType type : {kGpxRoutePoint, kGpxTrackPoint}) {
            GpxPoint point(type, 0.0, 0.0);
            EXPECT_REPORT(point = Read(version, type, std::string(kCache) + "<name>N</name>"), kPointSource);
            EXPECT_EQ(TextOf(point, &GpxPoint::GetName), "N");
            EXPECT_FALSE(point.ContainsExtensions());
        }
    }
}

TEST(PointReaderTest, AnEmptyGeocacheUnderATrackPointIsNotEvenReported) {
    EXPECT_EQ(CaptureStandardError([] { Read(k11, kGpxTrackPoint, "<groundspeak:cache/>"); }), "");
}

// Nodes in forms that a Xerces tree never has.

GpxPoint ReadView(const FakeNode& node) {
    MarkingContext context;
    return reader::ReadPoint(context, k11, kGpxWaypoint, node.View());
}

TEST(PointReaderTest, WithoutAChildListThePointIsRefused) {
    EXPECT_FAILURE(ReadView(*WithoutChildList(*Gpx11Point(u"wpt"))), dbc::postcondition_error,
                   "Unable to read GPX point child elements.", kParserSource);
}

TEST(PointReaderTest, AMissingChildIsReportedAndSkipped) {
    GpxPoint point(kGpxWaypoint, 0.0, 0.0);
    EXPECT_REPORT(
        point = ReadView(*Gpx11Point(u"wpt", {Gpx11Text(u"name", u"N"), nullptr, Gpx11Text(u"sym", u"S")})),
        kParserSource);
    EXPECT_EQ(TextOf(point, &GpxPoint::GetName), "N");
    EXPECT_EQ(TextOf(point, &GpxPoint::GetSymbol), "S");
}

TEST(PointReaderTest, AChildWithoutALocalNameIsSkipped) {
    const FakeNodePtr nameless = Gpx11Text(u"name", u"N");
    nameless->localName.reset();
    EXPECT_EQ(TextOf(ReadView(*Gpx11Point(u"wpt", {nameless})), &GpxPoint::GetName), kAbsent);
}

TEST(PointReaderTest, AChildThatFailsHalfwayLeavesWhatItChanged) {
    const FakeNodePtr failing =
        Gpx11Node(u"extensions", {Gpx11Text(u"objectid", u"G"),
                                  Throwing(*Gpx11Text(u"tovasymbol", u"5"), std::runtime_error("any"))});
    const GpxPoint point = ReadView(*Gpx11Point(u"wpt", {failing, Gpx11Text(u"sym", u"S")}));
    EXPECT_EQ(GuidOf(point), "G");
    EXPECT_EQ(GpxModelAccess::GetSymbolNumber(point), 0);
    EXPECT_EQ(TextOf(point, &GpxPoint::GetSymbol), "S");
}

TEST(PointReaderTest, OnlyStandardExceptionsAreSwallowed) {
    const FakeNodePtr name = Gpx11Text(u"name", u"N");
    EXPECT_THROW(ReadView(*Gpx11Point(u"wpt", {Throwing(*name, 5)})), int);
    EXPECT_THROW(ReadView(*Gpx11Point(u"wpt", {Throwing(*name, xercesc::DOMException())})),
                 xercesc::DOMException);
}

TEST(PointReaderTest, GeocacheTextsPassTheCleanerAndOthersDoNot) {
    const GpxPoint point = ReadView(*Gpx11Point(
        u"wpt", {Gpx11Text(u"name", u"N"), GeocacheNode(u"cache", {GeocacheText(u"name", u"C")})}));
    EXPECT_EQ(TextOf(point, &GpxPoint::GetName), "N");
    ASSERT_TRUE(GeocacheOf(point).has_value());
    EXPECT_EQ(GeocacheOf(point)->name, u"<C>");
}

} // namespace
} // namespace vexaTransferLib
