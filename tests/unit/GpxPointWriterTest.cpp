// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include "support/ContractChecks.h"
#include "support/IcuMemory.h"
#include "support/ModelDoors.h"
#include "support/SampleDocument.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <functional>
#include <limits>
#include <string>

using namespace vexaTransferLib;
using testing_support::FullWaypoint;
using testing_support::ModelDoors;
using testing_support::ReadTestData;
using testing_support::RefusedIcuMemory;
using testing_support::Utf8;

namespace {

constexpr char kSource[] = "LibCore/vexaTransferLib/GpxPoint.cpp";
constexpr double kMorning = 1232014830000.0; // 2009-01-15T10:20:30Z
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string Written(const GpxPoint& point, unsigned long minor) {
    icu::UnicodeString out;
    point.AppendToString(GpxVersion(1, minor), out);
    return Utf8(out);
}

GpxPoint Waypoint() {
    return GpxPoint(kGpxWaypoint, 45.5, -122.25);
}
GpxPoint RoutePoint() {
    return GpxPoint(kGpxRoutePoint, 45.5, -122.25);
}

// The lines between the tags of a point that is otherwise bare.
std::string InPoint(const std::string& lines, const std::string& name = "wpt") {
    return "<" + name + " lat=\"45.500000000\" lon=\"-122.250000000\">\r\n" + lines + "</" + name + ">\r\n";
}

std::string InExtensions(const std::string& lines, const std::string& name = "wpt") {
    return InPoint("<extensions>\r\n" + lines + "</extensions>\r\n", name);
}

using Change = std::function<void(GpxPoint&)>;

std::string WrittenAfter(const Change& change, unsigned long minor) {
    GpxPoint point = Waypoint();
    change(point);
    return Written(point, minor);
}

// The bytes of a document's first waypoint; empty when it has none.
std::string FirstWaypointOf(const char* file) {
    const std::string document = ReadTestData(file);
    const std::string end = "</wpt>\r\n";
    const std::size_t first = document.find("<wpt");
    const std::size_t last = document.find(end);
    return last != std::string::npos ? document.substr(first, last + end.size() - first) : "";
}

} // namespace

TEST(GpxPointWriterTest, ABarePointIsTwoLines) {
    const struct {
        GpxPointType type;
        const char* name;
    } rows[] = {{kGpxWaypoint, "wpt"}, {kGpxRoutePoint, "rtept"}, {kGpxTrackPoint, "trkpt"}};
    for (const auto& row : rows) {
        const GpxPoint point(row.type, 45.5, -122.25);
        EXPECT_EQ(Written(point, 0), InPoint("", row.name));
        EXPECT_EQ(Written(point, 1), InPoint("", row.name));
    }
}

TEST(GpxPointWriterTest, PositionsAtAndBeyondTheLimits) {
    EXPECT_EQ(Written(GpxPoint(kGpxWaypoint, -90.0, -180.0), 1),
              "<wpt lat=\"-90.000000000\" lon=\"-180.000000000\">\r\n</wpt>\r\n");
    EXPECT_EQ(Written(GpxPoint(kGpxWaypoint, 90.0, 180.0), 1),
              "<wpt lat=\"90.000000000\" lon=\"179.999999881\">\r\n</wpt>\r\n");
    GpxPoint point = Waypoint();
    ModelDoors::SetPosition(point, 91.0, 180.0);
    EXPECT_EQ(Written(point, 1), "<wpt lat=\"91.000000000\" lon=\"180.000000000\">\r\n</wpt>\r\n");
}

TEST(GpxPointWriterTest, NumbersHaveTheirDecimals) {
    constexpr double kLowest = std::numeric_limits<double>::lowest();
    const struct {
        Change change;
        std::string expected;
        const char* reason;
    } rows[] = {
        {[](GpxPoint& p) { p.SetElevation(1234.5); }, "<ele>1234.500000</ele>\r\n",
         "6 decimals, no separators"},
        {[](GpxPoint& p) { p.SetElevation(-0.0000004); }, "<ele>-0.000000</ele>\r\n", "rounded"},
        {[](GpxPoint& p) { p.SetElevation(kNan); }, "<ele>nan</ele>\r\n", "present"},
        {[](GpxPoint& p) { p.SetElevation(-kInfinity); }, "<ele>-inf</ele>\r\n", "present"},
        {[](GpxPoint& p) { p.SetGeoidHeight(-17.25); }, "<geoidheight>-17.250000</geoidheight>\r\n",
         "6 decimals"},
        {[](GpxPoint& p) { p.SetMagneticVariation(0.0); }, "<magvar>0.000000000</magvar>\r\n", "9 decimals"},
        {[](GpxPoint& p) { p.SetMagneticVariation(359.9999999999); }, "<magvar>360.000000000</magvar>\r\n",
         "rounded"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        EXPECT_EQ(WrittenAfter(row.change, 0), InPoint(row.expected));
        EXPECT_EQ(WrittenAfter(row.change, 1), InPoint(row.expected));
    }
    const std::string longest = WrittenAfter([](GpxPoint& p) { p.SetElevation(kLowest); }, 1);
    EXPECT_NE(longest.find("<ele>-17976931348623157081452742373170435679807"), std::string::npos);
    EXPECT_EQ(longest.size(), InPoint("<ele></ele>\r\n").size() + 317);
}

TEST(GpxPointWriterTest, TimesAreCutToSecondsAndHaveBareYears) {
    const struct {
        double time;
        const char* expected;
    } rows[] = {
        {0.0, "<time>1970-01-01T00:00:00Z</time>\r\n"},
        {1500.0, "<time>1970-01-01T00:00:01Z</time>\r\n"},
        {-0.5, "<time>1969-12-31T23:59:59Z</time>\r\n"},
        {kMorning + 999.0, "<time>2009-01-15T10:20:30Z</time>\r\n"},
        {-30610224000000.0, "<time>999-12-27T00:00:00Z</time>\r\n"},
        {kNan, ""},
    };
    for (const auto& row : rows) {
        const Change setTime = [&row](GpxPoint& point) { point.SetTime(row.time); };
        EXPECT_EQ(WrittenAfter(setTime, 0), InPoint(row.expected));
        EXPECT_EQ(WrittenAfter(setTime, 1), InPoint(row.expected));
    }
    EXPECT_NE(WrittenAfter([](GpxPoint& p) { p.SetTime(kInfinity); }, 1).find("<time>5828963-12-20T"),
              std::string::npos);
}

TEST(GpxPointWriterTest, TextsAreEscapedElements) {
    const struct {
        void (GpxPoint::*set)(const icu::UnicodeString&);
        const char* name;
    } rows[] = {
        {&GpxPoint::SetName, "name"},  {&GpxPoint::SetComment, "cmt"}, {&GpxPoint::SetDescription, "desc"},
        {&GpxPoint::SetSource, "src"}, {&GpxPoint::SetSymbol, "sym"},  {&GpxPoint::SetType, "type"},
    };
    for (const auto& row : rows) {
        const Change setText = [&row](GpxPoint& point) { (point.*row.set)(u"<&>\u00E9\n\x01"); };
        const std::string expected =
            std::string("<") + row.name + ">&lt;&amp;&gt;\xC3\xA9\n\x01</" + row.name + ">\r\n";
        EXPECT_EQ(WrittenAfter(setText, 0), InPoint(expected));
        EXPECT_EQ(WrittenAfter(setText, 1), InPoint(expected));
    }
}

TEST(GpxPointWriterTest, FixesHaveTheirTexts) {
    const char* const texts[] = {"none", "2d", "3d", "dgps", "pps"};
    for (std::uint32_t fix = 1; fix <= 5; ++fix) {
        const Change setFix = [fix](GpxPoint& point) { point.SetFix(static_cast<GpxFix>(fix)); };
        const std::string expected = std::string("<fix>") + texts[fix - 1] + "</fix>\r\n";
        EXPECT_EQ(WrittenAfter(setFix, 0), InPoint(expected));
        EXPECT_EQ(WrittenAfter(setFix, 1), InPoint(expected));
    }
}

TEST(GpxPointWriterTest, LinkIsWrittenAsItsVersionHasIt) {
    const Change setUrl = [](GpxPoint& point) { point.SetURL(GpxUrl(u"a&b")); };
    EXPECT_EQ(WrittenAfter(setUrl, 0), InPoint("<url>a&amp;b</url>\r\n"));
    EXPECT_EQ(WrittenAfter(setUrl, 1), InPoint("<link href=\"a&amp;b\">\r\n</link>\r\n"));
}

TEST(GpxPointWriterTest, EverythingAtOnce) {
    EXPECT_EQ(Written(FullWaypoint(), 0), FirstWaypointOf("writer/everything-1.0.gpx"));
    EXPECT_EQ(Written(FullWaypoint(), 1), FirstWaypointOf("writer/everything-1.1.gpx"));
}

TEST(GpxPointWriterTest, GuidIsAnExtensionOf11AndNotEscaped) {
    const Change setGuid = [](GpxPoint& point) { GpxModelAccess::SetGUID(point, u"{a&b}"); };
    EXPECT_EQ(WrittenAfter(setGuid, 0), InPoint(""));
    EXPECT_EQ(WrittenAfter(setGuid, 1), InExtensions("\t<tarvik:objectid>a&b</tarvik:objectid>\r\n"));
    EXPECT_EQ(WrittenAfter([](GpxPoint& p) { GpxModelAccess::SetGUID(p, u"{}"); }, 1), InPoint(""));
}

TEST(GpxPointWriterTest, SymbolNumberIsGroupedAndAboveZero) {
    const struct {
        std::int32_t number;
        std::string expected;
    } rows[] = {
        {-5, InPoint("")},
        {0, InPoint("")},
        {1, InExtensions("\t<tarvik:tovasymbol>1</tarvik:tovasymbol>\r\n")},
        {1234, InExtensions("\t<tarvik:tovasymbol>1,234</tarvik:tovasymbol>\r\n")},
        {2147483647, InExtensions("\t<tarvik:tovasymbol>2,147,483,647</tarvik:tovasymbol>\r\n")},
    };
    for (const auto& row : rows) {
        const Change setNumber = [&row](GpxPoint& point) {
            GpxModelAccess::SetSymbolNumber(point, row.number);
        };
        EXPECT_EQ(WrittenAfter(setNumber, 1), row.expected);
        EXPECT_EQ(WrittenAfter(setNumber, 0), InPoint(""));
    }
}

TEST(GpxPointWriterTest, RoutePointTypesHaveTheirTextsAndNoTab) {
    const char* const texts[] = {"start", "stop", "via", "finish", "turn"};
    for (std::uint32_t type = 1; type <= 5; ++type) {
        GpxPoint point = RoutePoint();
        point.SetTarvikRoutePointType(static_cast<TarvikRoutePointType>(type));
        EXPECT_EQ(Written(point, 0), InPoint("", "rtept"));
        EXPECT_EQ(Written(point, 1), InExtensions(std::string("<tarvik:routePointType>") + texts[type - 1] +
                                                      "</tarvik:routePointType>\r\n",
                                                  "rtept"));
    }
}

TEST(GpxPointWriterTest, RoutePointTypeComesFirst) {
    GpxPoint point = RoutePoint();
    GpxModelAccess::SetGUID(point, u"g");
    GpxModelAccess::SetSymbolNumber(point, 7);
    point.SetFormAttribute(u"k", u"v", 0.0);
    point.SetTarvikRoutePointType(kTarvikRoutePointTurn);
    EXPECT_EQ(Written(point, 1),
              InExtensions("<tarvik:routePointType>turn</tarvik:routePointType>\r\n"
                           "\t<tarvik:formdata>\r\n\t\t<tarvik:formstring key=\"k\">v</tarvik:formstring>\r\n"
                           "\t</tarvik:formdata>\r\n"
                           "\t<tarvik:tovasymbol>7</tarvik:tovasymbol>\r\n"
                           "\t<tarvik:objectid>g</tarvik:objectid>\r\n",
                           "rtept"));
}

TEST(GpxPointWriterTest, FormAttributesAreOrderedByKeyWhateverTheCase) {
    GpxPoint point = Waypoint();
    point.SetFormAttribute(u"b", u"2", 0.0);
    point.SetFormAttribute(u"C", u"3", 0.0);
    point.SetFormAttribute(u"A", u"1", 0.0);
    point.SetFormAttribute(u"a", u"one", 0.0);
    EXPECT_EQ(Written(point, 1), InExtensions("\t<tarvik:formdata>\r\n"
                                              "\t\t<tarvik:formstring key=\"A\">one</tarvik:formstring>\r\n"
                                              "\t\t<tarvik:formstring key=\"b\">2</tarvik:formstring>\r\n"
                                              "\t\t<tarvik:formstring key=\"C\">3</tarvik:formstring>\r\n"
                                              "\t</tarvik:formdata>\r\n"));
    EXPECT_EQ(Written(point, 0), InPoint(""));
}

TEST(GpxPointWriterTest, FormAttributeWritesKeyRawValueEscapedAndTimeUnlessNone) {
    const struct {
        const char16_t* key;
        const char16_t* value;
        double modTime;
        const char* expected;
        const char* reason;
    } rows[] = {
        {u"a&b", u"<&>", 0.0, " key=\"a&b\">&lt;&amp;&gt;", "key as it stands, value escaped"},
        {u"", u"", 0.0, " key=\"\">", "both empty"},
        {u"k", u"v", -0.0, " key=\"k\">v", "no time"},
        {u"k", u"v", kNan, " key=\"k\">v", "no time that could be written"},
        {u"k", u"v", kMorning + 999.5, " key=\"k\" modtime=\"2009-01-15T10:20:30Z\">v", "cut to seconds"},
        {u"k", u"v", 5e-324, " key=\"k\" modtime=\"1970-01-01T00:00:00Z\">v", "any time but 0"},
        {u"k", u"v", -1.0, " key=\"k\" modtime=\"1969-12-31T23:59:59Z\">v", "before the epoch"},
        {u"k", u"v", -30610224000000.0, " key=\"k\" modtime=\"0999-12-27T00:00:00Z\">v", "four digits"},
    };
    for (const auto& row : rows) {
        const Change setAttribute = [&row](GpxPoint& point) {
            point.SetFormAttribute(row.key, row.value, row.modTime);
        };
        EXPECT_EQ(WrittenAfter(setAttribute, 1),
                  InExtensions(std::string("\t<tarvik:formdata>\r\n\t\t<tarvik:formstring") + row.expected +
                               "</tarvik:formstring>\r\n\t</tarvik:formdata>\r\n"))
            << row.reason;
    }
}

TEST(GpxPointWriterTest, AnEmptyGeocacheIsNineEmptyElementsWithBareLineFeeds) {
    const Change setCache = [](GpxPoint& point) { point.SetGroundspeakCache(GpxGroundspeakCache()); };
    EXPECT_EQ(WrittenAfter(setCache, 0), InPoint(""));
    EXPECT_EQ(
        WrittenAfter(setCache, 1),
        InExtensions("\t<groundspeak:cache xmlns:groundspeak=\"http://www.groundspeak.com/cache/1/0\">\n"
                     "\t\t<groundspeak:name></groundspeak:name>\n"
                     "\t\t<groundspeak:owner></groundspeak:owner>\n"
                     "\t\t<groundspeak:type></groundspeak:type>\n"
                     "\t\t<groundspeak:container></groundspeak:container>\n"
                     "\t\t<groundspeak:difficulty></groundspeak:difficulty>\n"
                     "\t\t<groundspeak:terrain></groundspeak:terrain>\n"
                     "\t\t<groundspeak:short_description></groundspeak:short_description>\n"
                     "\t\t<groundspeak:long_description></groundspeak:long_description>\n"
                     "\t\t<groundspeak:encoded_hints></groundspeak:encoded_hints>\n"
                     "\t</groundspeak:cache>\n"));
}

TEST(GpxPointWriterTest, LogIdIsGroupedAndLeftOutWhenZero) {
    const struct {
        std::int32_t id;
        const char* expected;
    } rows[] = {
        {0, "<groundspeak:log>\n"},
        {123456, "<groundspeak:log id=\"123,456\">\n"},
        {-7, "<groundspeak:log id=\"-7\">\n"},
    };
    for (const auto& row : rows) {
        GpxGroundspeakCache cache;
        cache.logs.resize(1);
        cache.logs[0].id = row.id;
        GpxPoint point = Waypoint();
        point.SetGroundspeakCache(cache);
        EXPECT_NE(Written(point, 1).find(
                      std::string("\t\t<groundspeak:logs>\n\t\t\t") + row.expected +
                      "\t\t\t\t<groundspeak:date></groundspeak:date>\n"
                      "\t\t\t\t<groundspeak:type></groundspeak:type>\n"
                      "\t\t\t\t<groundspeak:finder></groundspeak:finder>\n"
                      "\t\t\t\t<groundspeak:text></groundspeak:text>\n"
                      "\t\t\t</groundspeak:log>\n\t\t</groundspeak:logs>\n\t</groundspeak:cache>\n"),
                  std::string::npos)
            << row.id;
    }
}

TEST(GpxPointWriterTest, TravelBugsAloneAreWrittenWithoutLogs) {
    GpxGroundspeakCache cache;
    cache.travelbugs = {u"a&b", u""};
    GpxPoint point = Waypoint();
    point.SetGroundspeakCache(cache);
    const std::string written = Written(point, 1);
    EXPECT_EQ(written.find("logs"), std::string::npos);
    EXPECT_NE(
        written.find(
            "<groundspeak:encoded_hints></groundspeak:encoded_hints>\n"
            "\t\t<groundspeak:travelbugs>\n"
            "\t\t\t<groundspeak:travelbug><groundspeak:name>a&amp;b</groundspeak:name></"
            "groundspeak:travelbug>\n"
            "\t\t\t<groundspeak:travelbug><groundspeak:name></groundspeak:name></groundspeak:travelbug>\n"
            "\t\t</groundspeak:travelbugs>\n"
            "\t</groundspeak:cache>\n"),
        std::string::npos);
}

TEST(GpxPointWriterTest, Appends) {
    icu::UnicodeString out(u"before ");
    Waypoint().AppendToString(GpxVersion(1, 1), out);
    EXPECT_EQ(Utf8(out), "before " + InPoint(""));
}

TEST(GpxPointWriterTest, RefusesUnknownVersionsAndAppendsNothing) {
    for (const GpxVersion& version :
         {ModelDoors::MakeVersion(1, 2), ModelDoors::MakeVersion(2, 0), ModelDoors::MakeVersion(0, 1)}) {
        GpxPoint point = Waypoint();
        ModelDoors::SetPointType(point, 4);
        icu::UnicodeString out(u"before");
        EXPECT_FAILURE(point.AppendToString(version, out), dbc::precondition_error,
                       "GPX points can only be written to version 1.0 or 1.1 files.", kSource);
        EXPECT_EQ(Utf8(out), "before");
    }
}

TEST(GpxPointWriterTest, RefusesAnUnknownPointTypeAndAppendsNothing) {
    for (const std::uint8_t type : {std::uint8_t{0}, std::uint8_t{4}, std::uint8_t{255}}) {
        GpxPoint point = Waypoint();
        ModelDoors::SetPointType(point, type);
        icu::UnicodeString out(u"before");
        EXPECT_FAILURE(point.AppendToString(GpxVersion(1, 1), out), dbc::invariant_error,
                       "Unable to write an unknown GPX point type.", kSource);
        EXPECT_EQ(Utf8(out), "before");
    }
}

TEST(GpxPointWriterTest, RefusesAnUnknownFixAfterTheLinesBefore) {
    for (const unsigned long minor : {0UL, 1UL}) {
        GpxPoint point = Waypoint();
        point.SetElevation(1.0);
        point.SetType(u"type");
        GpxModelAccess::SetGUID(point, u"g");
        ModelDoors::SetFix(point, 6);
        icu::UnicodeString out;
        EXPECT_FAILURE(point.AppendToString(GpxVersion(1, minor), out), dbc::invariant_error,
                       "Unable to write an unknown GPS fix type.", kSource);
        EXPECT_EQ(Utf8(out), "<wpt lat=\"45.500000000\" lon=\"-122.250000000\">\r\n"
                             "<ele>1.000000</ele>\r\n<type>type</type>\r\n");
    }
}

TEST(GpxPointWriterTest, RefusesAnUnknownRoutePointTypeAfterTheOpenExtensions) {
    GpxPoint point = RoutePoint();
    point.SetFix(kGpxFixNone);
    ModelDoors::SetRoutePointType(point, 6);
    icu::UnicodeString out;
    EXPECT_FAILURE(point.AppendToString(GpxVersion(1, 1), out), dbc::invariant_error,
                   "Unable to write an unknown route point type.", kSource);
    EXPECT_EQ(Utf8(out),
              "<rtept lat=\"45.500000000\" lon=\"-122.250000000\">\r\n<fix>none</fix>\r\n<extensions>\r\n");
    EXPECT_EQ(Written(point, 0), InPoint("<fix>none</fix>\r\n", "rtept"));
}

TEST(GpxPointWriterTest, ARawRoutePointTypeOnAnotherPointIsNotWritten) {
    EXPECT_EQ(WrittenAfter([](GpxPoint& p) { ModelDoors::SetRoutePointType(p, 6); }, 1), InPoint(""));
    const Change both = [](GpxPoint& point) {
        ModelDoors::SetRoutePointType(point, 1);
        GpxModelAccess::SetSymbolNumber(point, 2);
    };
    EXPECT_EQ(WrittenAfter(both, 1), InExtensions("\t<tarvik:tovasymbol>2</tarvik:tovasymbol>\r\n"));
}

TEST(GpxPointWriterTest, ARawGeocacheIsWrittenOnAnyPoint) {
    GpxPoint point = RoutePoint();
    ModelDoors::SetGeocache(point, GpxGroundspeakCache());
    EXPECT_NE(Written(point, 1).find("<groundspeak:cache "), std::string::npos);
}

TEST(GpxPointWriterTest, ReportsATextThatMemoryCannotHold) {
    GpxPoint point = Waypoint();
    point.SetName(icu::UnicodeString(20000, u'x', 20000));
    icu::UnicodeString out;
    {
        const RefusedIcuMemory refused = RefusedIcuMemory::Above(4096);
        EXPECT_FAILURE(point.AppendToString(GpxVersion(1, 1), out), dbc::postcondition_error,
                       "The GPX text is too large to be held in memory.", kSource);
    }
    EXPECT_TRUE(out.isBogus());
    EXPECT_EQ(Written(point, 1).size(), InPoint("<name></name>\r\n").size() + 20000);
}

TEST(GpxPointWriterTest, ReportsATextThatWasGivenUpBefore) {
    icu::UnicodeString out;
    out.setToBogus();
    EXPECT_FAILURE(GpxPoint(kGpxWaypoint, 1.0, 2.0).AppendToString(GpxVersion(1, 1), out),
                   dbc::postcondition_error, "The GPX text is too large to be held in memory.", kSource);
}
