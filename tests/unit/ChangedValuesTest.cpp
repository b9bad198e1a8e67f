// SPDX-License-Identifier: MIT

// The reports to an observer about values that are kept, but not as the file has them.

#include <vexaTransferLib/reader/ChangedValues.h>

#include "support/ObservedReading.h"

#include <gtest/gtest.h>

#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

std::string OfWaypoint(const std::string& children) {
    return ReportsOfChildren("<wpt lat='1' lon='2'>" + children + "</wpt>");
}

std::string OfPosition(const std::string& latitude, const std::string& longitude) {
    return ReportsOfChildren("<wpt lat='" + latitude + "' lon='" + longitude + "'/>");
}

std::string OfCache(const std::string& children) {
    return OfWaypoint("<extensions><cache xmlns='http://www.groundspeak.com/cache/1/0/1'>" + children +
                      "</cache></extensions>");
}

std::string OfLogId(const std::string& id) {
    return OfCache("<name>n</name><logs><log id='" + id +
                   "'><date>d</date><finder>f</finder><text>t</text></log></logs>");
}

std::string Vendor(const std::string& children) {
    return "<extensions xmlns:t='https://tarvik.example/xmlschemas/gpx-extensions/1/0'>" + children +
           "</extensions>";
}

const std::string kNine = " rounded loss: Only 9 decimals are written.\n";
const std::string kSix = " rounded loss: Only 6 decimals are written.\n";
const std::string kFraction = " rounded loss: Fractions of a second are not written.\n";

TEST(ChangedValuesTest, ThePositionIsWrittenWithNineDecimals) {
    EXPECT_EQ(OfPosition("46.123456789", "-179.987654321"), "");
    EXPECT_EQ(OfPosition("46.1234567891", "8"), "gpx/wpt@lat" + kNine);
    EXPECT_EQ(OfPosition("46", "-8.12345678912345678901234567890"), "gpx/wpt@lon" + kNine);
    EXPECT_EQ(OfPosition("46.1234567890000000000000000000", " +8.5000000000000"), "");
    EXPECT_EQ(OfPosition("4.6123e1", "8e-9"), "");
    EXPECT_EQ(OfPosition("4.6123e-9", "8e-10"), "gpx/wpt@lat" + kNine + "gpx/wpt@lon" + kNine);
    EXPECT_EQ(OfPosition("-90", "-180.000000000"), "");
}

TEST(ChangedValuesTest, ALongitudeOf180IsAnother) {
    EXPECT_EQ(OfPosition("1", "180"), "gpx/wpt@lon rounded loss: \"180\" is written as 179.999999881.\n");
    EXPECT_EQ(OfPosition("1", "179.999999881"), "");
}

TEST(ChangedValuesTest, EveryPointAndEveryNumberIsLookedAt) {
    const std::string attributes = "lat='1.0123456789' lon='2'";
    EXPECT_EQ(ReportsOfChildren("<rte><rtept " + attributes + "/></rte><trk><trkseg><trkpt " + attributes +
                                "/></trkseg></trk>"),
              "gpx/rte/rtept@lat" + kNine + "gpx/trk/trkseg/trkpt@lat" + kNine);
    EXPECT_EQ(
        OfWaypoint("<ele>1.234567</ele><magvar>1.234567891</magvar><geoidheight>1.234567</geoidheight>"), "");
    EXPECT_EQ(
        OfWaypoint("<ele>1.2345678</ele><magvar>1.2345678912</magvar><geoidheight>1.2345678</geoidheight>"),
        "gpx/wpt/ele" + kSix + "gpx/wpt/magvar" + kNine + "gpx/wpt/geoidheight" + kSix);
    EXPECT_EQ(OfWaypoint("<ele>1.2345670000</ele>"), "");
    EXPECT_EQ(OfWaypoint("<ele>nan</ele>"), "");
    EXPECT_EQ(OfWaypoint("<ele>123456789.123456</ele>"), "");
    EXPECT_EQ(
        OfWaypoint("<ele>12345678901234567890</ele>"),
        "gpx/wpt/ele rounded loss: \"12345678901234567890\" is written as 12345678901234567168.000000.\n");
    EXPECT_EQ(OfWaypoint("<magvar>400.1234567891</magvar>"),
              "gpx/wpt/magvar refused loss: The GPX point's magnetic variation must be greater than or equal "
              "to zero "
              "and less than 360.\n");
}

TEST(ChangedValuesTest, FractionsOfASecondAreNotWritten) {
    for (const char* time : {"2009-01-15T10:20:30Z", "2009-01-15T10:20:30.000Z", "2009-01-15T10:20:30+02:00",
                             "2009-01-15T10:20:30", "20090115T102030Z", "2009-01-15T10.5Z",
                             "2009-01-15T10:20.25Z", "2009-01-15T24:00:00Z", "2009-01-15T10:20:30Z\n"})
        EXPECT_EQ(OfWaypoint("<time>" + std::string(time) + "</time>"), "") << time;
    for (const char* time :
         {"2009-01-15T10:20:30.5Z", "2009-01-15T10:20:30.0001Z", "2009-01-15T10:20:30.9996+01:00",
          "2009-01-15T10.0001Z", "2009-01-15T10:20.001Z", "20090115T102030.010"})
        EXPECT_EQ(OfWaypoint("<time>" + std::string(time) + "</time>"), "gpx/wpt/time" + kFraction) << time;
    EXPECT_EQ(ReportsOfChildren("<metadata><time>2009-01-15T10:20:30.5Z</time></metadata>"),
              "gpx/metadata/time" + kFraction);
    EXPECT_EQ(OfWaypoint(Vendor("<t:formdata><t:formstring key='k' modtime='2009-01-15T10:20:30.5Z'/>"
                                "</t:formdata>")),
              "gpx/wpt/extensions/formdata/formstring@modtime" + kFraction);
}

TEST(ChangedValuesTest, ADayThatItsMonthDoesNotHaveIsInTheNext) {
    EXPECT_EQ(OfWaypoint("<time>2008-02-29T00:00:00Z</time>"), "");
    for (const char* zone : {"Z", "+00:00"})
        EXPECT_EQ(OfWaypoint("<time>2009-02-29T00:00:00" + std::string(zone) + "</time>"),
                  "gpx/wpt/time changed loss: \"2009-02-29T00:00:00" + std::string(zone) +
                      "\" is kept as 2009-03-01T00:00:00Z.\n");
}

TEST(ChangedValuesTest, TextAfterATimeIsNotRead) {
    for (const char* time :
         {"2009-01-15T10:20:30Zulu", "2009-01-15T10:20:30+02:00 h", "2009-01-15T10:20:30+02:3"})
        EXPECT_EQ(OfWaypoint("<time>" + std::string(time) + "</time>"),
                  "gpx/wpt/time changed loss: Text after the time is not read.\n");
}

TEST(ChangedValuesTest, ATimeThatMeansNoneIsALoss) {
    EXPECT_EQ(OfWaypoint("<time>1970-01-01T00:00:00Z</time>"), "");
    for (const char* time : {"1970-01-01T00:00:00Z", "1970-01-01T00:00:00+01:00"})
        EXPECT_EQ(
            ReportsOfChildren("<metadata><time>" + std::string(time) + "</time></metadata>"),
            "gpx/metadata/time changed loss: A document with this time counts as one without a time.\n");
    EXPECT_EQ(
        OfWaypoint(Vendor("<t:formdata><t:formstring key='k' modtime='1970-01-01T00:00:00Z'/></t:formdata>")),
        "gpx/wpt/extensions/formdata/formstring@modtime changed loss: A form field with this modtime counts "
        "as one "
        "without.\n");
}

TEST(ChangedValuesTest, ACleanedTextIsReportedOnce) {
    EXPECT_EQ(OfCache("<name>Old mill</name><long_description>two words.</long_description>"), "");
    EXPECT_EQ(
        OfCache("<name>Old  mill</name><long_description>&lt;p&gt;a&lt;/p&gt;</long_description>"),
        "gpx/wpt/extensions/cache/name cleaned loss: The text cleaner has changed its text.\n"
        "gpx/wpt/extensions/cache/long_description cleaned loss: The text cleaner has changed its text.\n");
    EXPECT_EQ(
        OfCache("<name>n</name><travelbugs><travelbug><name>&amp;amp;</name></travelbug></travelbugs>"),
        "gpx/wpt/extensions/cache/travelbugs/travelbug/name cleaned loss: The text cleaner has changed its "
        "text.\n");
}

TEST(ChangedValuesTest, CleanedLineEndsAreNoLoss) {
    EXPECT_EQ(
        OfCache("<name>n</name><short_description>a\nb</short_description>"),
        "gpx/wpt/extensions/cache/short_description cleaned: The text cleaner has changed its line ends.\n");
}

TEST(ChangedValuesTest, ATextOfWhichNothingIsLeftHasItsOwnMessage) {
    EXPECT_EQ(OfCache("<name>&lt;b&gt;&lt;/b&gt;</name>"),
              "gpx/wpt/extensions/cache/name cleaned loss: The text cleaner has left nothing of its text.\n");
}

TEST(ChangedValuesTest, AnIdOfALogIsANumberOf32Bits) {
    for (const char* id : {"7", "-7", "0123", " 12 ", "+12", "2147483647", "-2147483648", ""})
        EXPECT_EQ(OfLogId(id), "") << id;
    const std::string log = "gpx/wpt/extensions/cache/logs/log@id ";
    EXPECT_EQ(OfLogId("1,234"), log + "changed loss: Its id \"1,234\" is kept as 1.\n");
    EXPECT_EQ(OfLogId("12ab"), log + "changed loss: Its id \"12ab\" is kept as 12.\n");
    EXPECT_EQ(OfLogId("4294967296"), log + "changed loss: Its id \"4294967296\" is kept as 2147483647.\n");
    EXPECT_EQ(OfLogId("-99999999999999999999"),
              log + "changed loss: Its id \"-99999999999999999999\" is kept as -2147483648.\n");
    EXPECT_EQ(OfLogId("GL123"), log + "unreadable loss: Its id is not a number.\n");
    EXPECT_EQ(OfLogId("--1"), log + "changed loss: Its id \"--1\" is kept as 0.\n");
}

TEST(ChangedValuesTest, OfAColourTheLowSixteenBitsAreKept) {
    const auto ofColour = [](const std::string& colour) {
        return ReportsOfChildren("<trk>" + Vendor("<t:color>" + colour + "</t:color>") + "</trk>");
    };
    for (const char* colour : {"0", "32767", "-1"})
        EXPECT_EQ(ofColour(colour), "") << colour;
    EXPECT_EQ(ofColour("65535"), "gpx/trk/extensions/color changed loss: Colour 65535 is kept as -1.\n");
    EXPECT_EQ(ofColour("65,541"), "gpx/trk/extensions/color changed loss: Colour 65541 is kept as 5.\n");
}

TEST(ChangedValuesTest, BracesOfAnIdentifierAreNoLoss) {
    EXPECT_EQ(OfWaypoint(Vendor("<t:objectid>{a}</t:objectid>")),
              "gpx/wpt/extensions/objectid changed: Its braces are not kept.\n");
}

TEST(ChangedValuesTest, ACommentIsKeptAsTheDescription) {
    const std::string kept = " changed: The comment is kept as the description.\n";
    EXPECT_EQ(ReportsOfChildren("<wpt lat='1' lon='2'><cmt>c</cmt></wpt><trk><cmt>c</cmt></trk>"),
              "gpx/wpt/cmt" + kept + "gpx/trk/cmt" + kept);
    EXPECT_EQ(OfWaypoint("<cmt/>"), "");
}

} // namespace
} // namespace vexaTransferLib
