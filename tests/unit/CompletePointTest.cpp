// SPDX-License-Identifier: MIT

// Points and their values, read completely.

#include "support/CompleteRead.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"

#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

static_assert(sizeof(GpxPoint) <= 64, "files contain millions of points");

CompleteRead ReadWaypoint(const std::string& children) {
    return ReadCompletely(Gpx11("<wpt lat='1' lon='2'>" + children + "</wpt>"));
}

std::string PositionWith(const std::string& attributes) {
    const CompleteRead read = ReadCompletely(Gpx11("<wpt " + attributes + "/>"));
    EXPECT_EQ(read.reports, "");
    return read.document.GetWaypointCount() == 0 ? "unread" : PositionOf(*read.document.GetWaypointIter());
}

TEST(CompletePointTest, HasThePositionOfItsAttributes) {
    EXPECT_EQ(PositionWith("lat='1.5' lon='-2.25'"), "1.5 -2.25");
    EXPECT_EQ(PositionWith("lon='2' lat='1'"), "1 2");
    EXPECT_EQ(PositionWith("lat='-90' lon='-180'"), "-90 -180");
    EXPECT_EQ(PositionWith("lat='90' lon='180'"), "90 180");
    EXPECT_EQ(PositionWith("lat='+1e1' lon='.5'"), "10 0.5");
    EXPECT_EQ(PositionWith("lat='1&#46;5' lon='&#x32;'"), "1.5 2");
    EXPECT_EQ(PositionWith("lat='1' lon='2' other:lat='3' other:lon='4'"), "1 2");
    EXPECT_EQ(PositionWith("a='>' lat='1' b='/' lon='2' c=\"'/\""), "1 2");
}

TEST(CompletePointTest, BlanksAroundThePositionAreReported) {
    for (const char* const attributes :
         {"lat=' 1' lon='2'", "lat='1' lon='2\n'", "lat='&#32;1' lon='2&#10;'", "lat='\t1\t' lon=' 2 '"}) {
        const CompleteRead read = ReadCompletely(Gpx11(std::string("<wpt ") + attributes + "/>"));
        ASSERT_EQ(read.document.GetWaypointCount(), 1U) << attributes;
        EXPECT_EQ(PositionOf(*read.document.GetWaypointIter()), "1 2");
        EXPECT_EQ(read.notices.substr(read.notices.find("tol")),
                  "tolerated: There are blanks around its position.\n");
    }
}

TEST(CompletePointTest, WithoutAPositionThatAPointCanHaveItIsUnread) {
    for (const char* const attributes :
         {"", "lat='1'", "lon='1'", "lat='' lon='2'", "lat='1' lon=' '", "lat='90.1' lon='2'",
          "lat='-90.1' lon='2'", "lat='1' lon='180.1'", "lat='1' lon='-180.1'", "lat='NaN' lon='2'",
          "lat='INF' lon='2'", "lat='1e400' lon='2'", "lat='1,5' lon='2'", "lat='1x' lon='2'",
          "lat='0x1' lon='2'", "lat='1 1' lon='2'", "lat='1&#0032;1' lon='2'", "LAT='1' LON='2'",
          "other:lat='1' other:lon='2'"})
        EXPECT_EQ(PositionWith(attributes), "unread") << attributes;
}

TEST(CompletePointTest, TextsAreReadAsTheyStand) {
    const GpxPoint point = WaypointWith("<name> n\n</name><cmt>c</cmt><desc>d &amp; e</desc><src>s</src>"
                                        "<sym>y</sym><type>t\r\nu</type>");
    EXPECT_EQ(TextOf(point, &GpxPoint::GetName), " n\n");
    EXPECT_EQ(TextOf(point, &GpxPoint::GetDescription), "d & e");
    EXPECT_EQ(Utf8(GpxModelAccess::GetRareData(point)->comment), "c");
    EXPECT_EQ(TextOf(point, &GpxPoint::GetSource), "s");
    EXPECT_EQ(TextOf(point, &GpxPoint::GetSymbol), "y");
    EXPECT_EQ(TextOf(point, &GpxPoint::GetType), "t\nu");
}

TEST(CompletePointTest, CommentAndDescriptionAreTwoFieldsInAnyOrder) {
    for (const char* const children : {"<cmt>c</cmt><desc>d</desc>", "<desc>d</desc><cmt>c</cmt>"}) {
        const GpxPoint point = WaypointWith(children);
        EXPECT_EQ(TextOf(point, &GpxPoint::GetDescription), "d");
        EXPECT_EQ(Utf8(GpxModelAccess::GetRareData(point)->comment), "c");
    }
    EXPECT_EQ(TextOf(WaypointWith("<cmt>c</cmt>"), &GpxPoint::GetDescription), kAbsent);
}

TEST(CompletePointTest, NumbersAndTimesMayHaveBlanksAround) {
    const CompleteRead read =
        ReadWaypoint("<ele>\n 12.5 </ele><time>\t2009-01-15T10:20:30Z\n</time><magvar> 3</magvar>"
                     "<geoidheight>-4 </geoidheight><fix> dgps </fix>");
    const GpxPoint& point = *read.document.GetWaypointIter();
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetElevation), std::optional(12.5));
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetTime), std::optional(1232014830000.0));
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetMagneticVariation), std::optional(3.0));
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetGeoidHeight), std::optional(-4.0));
    EXPECT_EQ(FixOf(point), kGpxFixDGPS);
    EXPECT_EQ(read.notices, "gpx/wpt/ele 1 tolerated: There are blanks around its value.\n"
                            "gpx/wpt/time 2 tolerated: There are blanks around its value.\n"
                            "gpx/wpt/magvar 3 tolerated: There are blanks around its value.\n"
                            "gpx/wpt/geoidheight 3 tolerated: There are blanks around its value.\n"
                            "gpx/wpt/fix 3 tolerated: There are blanks around its value.\n");
}

TEST(CompletePointTest, ValuesThatAreNoneAreReportedAndLeftOut) {
    const CompleteRead read =
        ReadWaypoint("<ele>high</ele><time>12</time><magvar>360</magvar><magvar>-1</magvar>"
                     "<geoidheight>1,5</geoidheight><fix>4d</fix>");
    const GpxPoint& point = *read.document.GetWaypointIter();
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetElevation), std::nullopt);
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetTime), std::nullopt);
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetMagneticVariation), std::nullopt);
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetGeoidHeight), std::nullopt);
    EXPECT_EQ(FixOf(point), 0U);
    EXPECT_EQ(read.notices, "gpx/wpt/ele 1 unreadable: \"high\" is not a number.\n"
                            "gpx/wpt/time 1 unreadable: \"12\" is not a time.\n"
                            "gpx/wpt/magvar 1 unreadable: It is not at least 0 and less than 360.\n"
                            "gpx/wpt/magvar 1 unreadable: It is not at least 0 and less than 360.\n"
                            "gpx/wpt/geoidheight 1 unreadable: \"1,5\" is not a number.\n"
                            "gpx/wpt/fix 1 unreadable: \"4d\" is not a value that the library knows.\n");
    EXPECT_EQ(read.reports, "");
}

TEST(CompletePointTest, EmptyValuesAreNoneWithoutANotice) {
    const CompleteRead read =
        ReadWaypoint("<ele/><time></time><magvar> </magvar><fix/><geoidheight>\n</geoidheight>"
                     "<name/><desc></desc>");
    EXPECT_EQ(read.notices + read.reports, "");
    EXPECT_EQ(NumberOf(*read.document.GetWaypointIter(), &GpxPoint::GetElevation), std::nullopt);
}

TEST(CompletePointTest, OfTwoElementsOfANameTheFirstThatCanBeReadIsRead) {
    const CompleteRead read = ReadWaypoint("<ele/><ele>x</ele><ele>1</ele>\n<ele>2</ele><name/><name>a</name>"
                                           "<name>b</name><fix>x</fix><fix>2d</fix><fix>3d</fix>");
    const GpxPoint& point = *read.document.GetWaypointIter();
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetElevation), std::optional(1.0));
    EXPECT_EQ(TextOf(point, &GpxPoint::GetName), "a");
    EXPECT_EQ(FixOf(point), kGpxFix2D);
    const std::string second = "replaced: The first element of this name is the one that is read.\n";
    EXPECT_EQ(read.notices, "gpx/wpt/ele 1 unreadable: \"x\" is not a number.\n"
                            "gpx/wpt/ele 2 " +
                                second + "gpx/wpt/name 2 " + second +
                                "gpx/wpt/fix 2 unreadable: \"x\" is not a value that the library knows.\n" +
                                "gpx/wpt/fix 2 " + second);
}

TEST(CompletePointTest, ATimeBefore1970IsReadAndReported) {
    const CompleteRead read = ReadWaypoint("<time>1969-12-31T23:59:59.250Z</time>");
    EXPECT_EQ(NumberOf(*read.document.GetWaypointIter(), &GpxPoint::GetTime), std::optional(-750.0));
    EXPECT_EQ(read.notices, "gpx/wpt/time 1 tolerated: It is a time before 1970.\n");
}

TEST(CompletePointTest, TextsInPiecesAreReadWholeWithOneNotice) {
    const std::string notice = " 1 tolerated: Its text is in several pieces, or does not come first in it.\n";
    for (const char* const name : {"<!-- c -->abc", "a<![CDATA[b]]>c", " <![CDATA[abc]]>", "abc<?p?>",
                                   "a<x>b</x>c", "<x><y/>abc</x>", "a<!---->b<!---->c"}) {
        const CompleteRead read = ReadWaypoint("<name>" + std::string(name) + "</name>");
        const std::string text = TextOf(*read.document.GetWaypointIter(), &GpxPoint::GetName);
        EXPECT_EQ(text.substr(text.find_first_not_of(' ')), "abc") << name;
        EXPECT_EQ(read.notices, "gpx/wpt/name" + notice) << name;
    }
    const CompleteRead number = ReadWaypoint("<ele>1<!-- c -->2<![CDATA[.5]]></ele>");
    EXPECT_EQ(NumberOf(*number.document.GetWaypointIter(), &GpxPoint::GetElevation), std::optional(12.5));
    EXPECT_EQ(number.notices, "gpx/wpt/ele" + notice);
}

TEST(CompletePointTest, OneTextGivesNoNotice) {
    for (const char* const name : {"abc", "<![CDATA[abc]]>", "&#97;b&#x63;"}) {
        const CompleteRead read = ReadWaypoint("<name>" + std::string(name) + "</name>");
        EXPECT_EQ(TextOf(*read.document.GetWaypointIter(), &GpxPoint::GetName), "abc") << name;
        EXPECT_EQ(read.notices, "") << name;
    }
}

TEST(CompletePointTest, QuotesOnlyTheStartOfALongValueAndWholeCharacters) {
    std::string value = "x";
    for (int i = 0; i < 100; ++i)
        value += "\xE2\x82\xAC";
    const std::string notices = ReadWaypoint("<ele>" + value + "</ele>").notices;
    EXPECT_EQ(notices, "gpx/wpt/ele 1 unreadable: \"" + value.substr(0, 1 + 57) + "...\" is not a number.\n");
}

TEST(CompletePointTest, AnyTimeTextGivesNoContractReport) {
    for (const std::string& time :
         {std::string(), std::string(" "), std::string("2009"),
          std::string("2009-01-15T10:20:30.") + std::string(40, '1') + "Z",
          std::string("20090115T102030.") + std::string(40, '1') + "Z",
          "2009-01-15T10." + std::string(40, '1'), "2009-01-15T10:20." + std::string(40, '1') + "+01:00",
          "2009-01-15T10:20:30.1" + std::string(40, ' ') + "x", std::string(100, '1'), std::string("&#9;")}) {
        const CompleteRead read = ReadWaypoint("<time>" + time + "</time>");
        EXPECT_EQ(read.reports, "") << time;
        EXPECT_EQ(read.error, "") << time;
    }
}

TEST(CompletePointTest, TimesAreReadAsTheSchemaAndAsTheLibraryWriteThem) {
    const auto timeOf = [](const std::string& text) {
        return NumberOf(WaypointWith("<time>" + text + "</time>"), &GpxPoint::GetTime);
    };
    EXPECT_EQ(timeOf("1970-01-01T00:00:00Z"), std::optional(0.0));
    EXPECT_EQ(timeOf("1970-01-01T00:00:00"), std::optional(0.0));
    EXPECT_EQ(timeOf("1970-01-01T01:00:00+01:00"), std::optional(0.0));
    EXPECT_EQ(timeOf("1970-01-01T00:00:00.125Z"), std::optional(125.0));
    EXPECT_EQ(timeOf("19700101T000001Z"), std::optional(1000.0));
    EXPECT_EQ(timeOf("1970-01-01T24:00:00Z"), std::optional(86400000.0));
}

TEST(CompletePointTest, ValuesAtTheEndOfTheFileAreReadWhole) {
    for (std::size_t digits = 1; digits < 40; ++digits) {
        const std::string number(digits, '7');
        const GpxDocument document =
            DocumentOf("<gpx><wpt lat='1' lon='2'><ele>" + number + "</ele></wpt></gpx>");
        EXPECT_EQ(NumberOf(*document.GetWaypointIter(), &GpxPoint::GetElevation),
                  std::optional(std::stod(number)));
    }
}

TEST(CompletePointTest, PointsOfEachKindKnowTheirElements) {
    const GpxDocument document = DocumentOf(Gpx11("<wpt lat='1' lon='2'/><rte><rtept lat='3' lon='4'/></rte>"
                                                  "<trk><trkseg><trkpt lat='5' lon='6'/></trkseg></trk>"));
    EXPECT_EQ(document.GetWaypointIter()->GetElement().GetXml(), "<wpt lat='1' lon='2'/>");
    EXPECT_EQ(document.GetRouteIter()->GetPointIter()->GetElement().GetXml(), "<rtept lat='3' lon='4'/>");
    EXPECT_EQ(document.GetTrackIter()->GetSegmentIter()->front().GetElement().GetXml(),
              "<trkpt lat='5' lon='6'/>");
}

TEST(CompletePointTest, ElementsOfOtherNamespacesAreNoValues) {
    const GpxPoint point = WaypointWith("<other:name>x</other:name><name xmlns='urn:x'>y</name><ele "
                                        "xmlns='urn:x'>1</ele><name>n</name>");
    EXPECT_EQ(TextOf(point, &GpxPoint::GetName), "n");
    EXPECT_EQ(NumberOf(point, &GpxPoint::GetElevation), std::nullopt);
}

} // namespace
} // namespace vexaTransferLib
