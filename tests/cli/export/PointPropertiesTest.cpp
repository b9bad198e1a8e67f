// SPDX-License-Identifier: MIT
#include <vexagpx/export/PointProperties.h>

#include "export/Features.h"
#include "export/Reading.h"

#include <limits>

namespace {

using cli::PointText;
using cli::TextOf;
using vexagpx::LeftOut;
using vexagpx::Properties;
using vexaTransferLib::GpxDocument;

struct Taken {
    std::string text;
    LeftOut missing;
};

Taken Take(const std::string& content) {
    const GpxDocument document = cli::DocumentOf(PointText("wpt", "1", "2", content));
    Properties properties;
    Taken taken;
    TakePoint(*document.GetWaypointIter(), properties, taken.missing);
    properties.Sort();
    taken.text = TextOf(properties);
    return taken;
}

TEST(PointPropertiesTest, PositionHeightAndTimeAreNone) {
    EXPECT_EQ(Take("").text, "");
    EXPECT_EQ(Take("<ele>1</ele><time>2009-01-15T10:20:30Z</time>").text, "");
}

TEST(PointPropertiesTest, EveryElementOfGpxIsOne) {
    EXPECT_EQ(
        Take("<magvar>1.5</magvar><geoidheight>-2</geoidheight><name>n</name><cmt>c</cmt><desc>d</desc>"
             "<src>s</src><link href='a'><text>t</text></link><link href='b'/><sym>y</sym><type>e</type>"
             "<fix>3d</fix><sat>7</sat><hdop>0.5</hdop><vdop>1</vdop><pdop>2</pdop>"
             "<ageofdgpsdata>3</ageofdgpsdata><dgpsid>4</dgpsid>")
            .text,
        "name=n cmt=c desc=d src=s links=a t|b sym=y type=e magvar=1.5 geoidheight=-2 fix=3d sat=7 "
        "hdop=0.5 vdop=1 pdop=2 ageofdgpsdata=3 dgpsid=4");
}

TEST(PointPropertiesTest, ValuesThatTheModelRefusesAreTakenAsTheyAre) {
    EXPECT_EQ(Take("<magvar>360</magvar><fix>rtk</fix><sat>many</sat><hdop>NaN</hdop>").text,
              "magvar=360 fix=rtk sat=many hdop=NaN");
}

TEST(PointPropertiesTest, SensorsAreTakenFromExtensions) {
    const Taken taken = Take("<extensions><x:all xmlns:x='urn:x'><x:hr>120</x:hr><x:cad>80</x:cad><x:atemp>"
                             "-3.5</x:atemp><x:speed>2</x:speed></x:all></extensions>");
    EXPECT_EQ(taken.text, "speed=2 heartRate=120 cadence=80 temperature=-3.5");
    EXPECT_EQ(taken.missing.extensions, 0U);
}

TEST(PointPropertiesTest, OtherExtensionsAreCounted) {
    const Taken taken = Take("<extensions><x:hr xmlns:x='urn:x'>120</x:hr><x:a xmlns:x='urn:x' b='1'><x:c>2"
                             "</x:c><x:d/></x:a></extensions>");
    EXPECT_EQ(taken.text, "heartRate=120");
    EXPECT_EQ(taken.missing.extensions, 2U);
}

TEST(PointPropertiesTest, UnknownElementsOfGpxAreCounted) {
    const Taken taken = Take("<name>a</name><wing a='1'>2</wing><speed>3</speed>");
    EXPECT_EQ(taken.text, "name=a speed=3");
    EXPECT_EQ(taken.missing.extensions, 2U);
}

TEST(PointPropertiesTest, OnlyPositionHeightAndTimeAreNoMore) {
    const GpxDocument document =
        cli::DocumentOf(PointText("wpt", "1", "2", "<ele>1</ele><time>2009-01-15T10:20:30Z</time>") +
                        PointText("wpt", "1", "2", "<ele>1</ele><sat>3</sat>"));
    EXPECT_FALSE(vexagpx::HasMoreThanPosition(*document.GetWaypointIter()));
    EXPECT_TRUE(vexagpx::HasMoreThanPosition(*(document.GetWaypointIter() + 1)));
}

TEST(PointPropertiesTest, HeightsAndTimesOutOfRangeAreCounted) {
    vexaTransferLib::GpxPoint point(vexaTransferLib::kGpxWaypoint, 1, 2);
    LeftOut missing;
    point.SetElevation(1);
    point.SetTime(1);
    vexagpx::CountUnwritable(point, missing);
    EXPECT_EQ(missing.numbers, 0U);
    point.SetElevation(std::numeric_limits<double>::infinity());
    point.SetTime(1e300);
    vexagpx::CountUnwritable(point, missing);
    EXPECT_EQ(missing.numbers, 2U);
}

} // namespace
