// SPDX-License-Identifier: MIT

// Routes and tracks, read completely.

#include "support/CompleteRead.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"

#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include <gtest/gtest.h>

#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr char kPoint[] = "<rtept lat='1' lon='2'/>";
constexpr char kLate[] = "tolerated: It comes after the points.\n";

CompleteRead ReadRoute(const std::string& children) {
    return ReadCompletely(Gpx11("<rte>" + children + "</rte>"));
}

CompleteRead ReadTrack(const std::string& children) {
    return ReadCompletely(Gpx11("<trk>" + children + "</trk>"));
}

std::string TypeExtension(const std::string& type) {
    return "<extensions><tarvik:routeType>" + type + "</tarvik:routeType></extensions>";
}

std::string PointOfType(const std::string& type) {
    return "<rtept lat='1' lon='2'><extensions><tarvik:routePointType>" + type +
           "</tarvik:routePointType></extensions></rtept>";
}

TEST(CompletePathsTest, TheFieldsOfARouteAreReadBeforeAndAfterItsPoints) {
    const CompleteRead read =
        ReadRoute(std::string("<name>n</name>") + kPoint + "<src>s</src>\n<type>t</type>" + kPoint);
    const GpxRoute& route = *read.document.GetRouteIter();
    EXPECT_EQ(TextOf(route, &GpxRoute::GetName), "n");
    EXPECT_EQ(TextOf(route, &GpxRoute::GetSource), "s");
    EXPECT_EQ(TextOf(route, &GpxRoute::GetType), "t");
    EXPECT_EQ(route.GetPointCount(), 2U);
    EXPECT_EQ(read.notices, std::string("gpx/rte/src 1 ") + kLate + "gpx/rte/type 2 " + kLate);
}

TEST(CompletePathsTest, EmptyFieldsAreNone) {
    const CompleteRead read = ReadRoute("<name/><src></src><type><!-- c --></type>");
    EXPECT_EQ(TextOf(*read.document.GetRouteIter(), &GpxRoute::GetName), kAbsent);
    EXPECT_EQ(TextOf(*read.document.GetRouteIter(), &GpxRoute::GetType), kAbsent);
    const CompleteRead track = ReadTrack("<name/><desc/><src></src><type/><link href=''/>");
    EXPECT_EQ(TextOf(*track.document.GetTrackIter(), &GpxTrack::GetDescription), kAbsent);
    EXPECT_EQ(LinkOf(*track.document.GetTrackIter()), kAbsent);
    EXPECT_EQ(read.reports + track.reports, "");
}

TEST(CompletePathsTest, ARoutePointWithoutAPositionIsUnread) {
    const CompleteRead read = ReadRoute(std::string(kPoint) + "\n<rtept lat='' lon='1'/>" + kPoint);
    const GpxRoute& route = *read.document.GetRouteIter();
    EXPECT_EQ(route.GetPointCount(), 2U);
    ASSERT_EQ(route.GetUnreadElements().size(), 1U);
    EXPECT_EQ(route.GetUnreadElements()[0].GetXml(), "<rtept lat='' lon='1'/>");
    EXPECT_TRUE(read.document.GetUnreadElements().empty());
    EXPECT_EQ(read.notices, "gpx/rte/rtept 2 unreadable: It has no position that a point can have.\n");
}

TEST(CompletePathsTest, ARouteHasTheTypeThatItsPointsAllow) {
    const CompleteRead points =
        ReadRoute(TypeExtension(" points ") + PointOfType("start") + PointOfType("via"));
    EXPECT_EQ(RouteTypeOf(*points.document.GetRouteIter()), kTarvikRoutePoints);
    EXPECT_EQ(points.document.GetRouteIter()->GetPointCount(), 2U);
    const CompleteRead turn = ReadRoute(TypeExtension("directions") + PointOfType("turn"));
    EXPECT_EQ(RouteTypeOf(*turn.document.GetRouteIter()), kTarvikRouteDirections);
    EXPECT_EQ(turn.notices, "");
}

TEST(CompletePathsTest, ARouteWhosePointsItsTypeDoesNotAllowIsAPlainOneAndKeepsThem) {
    for (const std::string& children :
         {TypeExtension("points") + PointOfType("turn"), TypeExtension("directions") + kPoint}) {
        const CompleteRead read = ReadRoute(children);
        EXPECT_EQ(RouteTypeOf(*read.document.GetRouteIter()), kTarvikRouteStandard);
        EXPECT_EQ(read.document.GetRouteIter()->GetPointCount(), 1U);
        EXPECT_EQ(read.notices, "gpx/rte 1 tolerated: Its route type does not allow its points.\n");
        EXPECT_EQ(read.reports, "");
    }
}

TEST(CompletePathsTest, OfTwoRouteTypesTheFirstIsRead) {
    const CompleteRead read = ReadRoute(TypeExtension("directions") + "\n" + TypeExtension("points"));
    EXPECT_EQ(RouteTypeOf(*read.document.GetRouteIter()), kTarvikRouteDirections);
    EXPECT_EQ(read.notices, "gpx/rte/extensions/routeType 2 replaced: The first element of this name is the "
                            "one that is read.\n");
}

TEST(CompletePathsTest, AnUnknownRouteTypeIsReported) {
    EXPECT_EQ(ReadRoute(TypeExtension("x") + kPoint).notices,
              "gpx/rte/extensions/routeType 1 unreadable: \"x\" is not a value that the library knows.\n");
}

TEST(CompletePathsTest, TheFieldsOfATrackAreRead) {
    const CompleteRead read =
        ReadTrack("<name>n</name><cmt>c</cmt><desc>d</desc><src>s</src><link "
                  "href='a'><text>t</text></link><type>y</type>"
                  "<extensions><tarvik:color> 7\n</tarvik:color></extensions><trkseg/>\n<number>1</number>");
    const GpxTrack& track = *read.document.GetTrackIter();
    EXPECT_EQ(TextOf(track, &GpxTrack::GetName), "n");
    EXPECT_EQ(TextOf(track, &GpxTrack::GetDescription), "d");
    EXPECT_EQ(TextOf(track, &GpxTrack::GetSource), "s");
    EXPECT_EQ(TextOf(track, &GpxTrack::GetType), "y");
    EXPECT_EQ(LinkOf(track), "a|t|-");
    EXPECT_EQ(GpxModelAccess::GetColor(track), 7);
    EXPECT_EQ(Utf8(track.GetElement().FindChild(kGpx11Uri, "cmt").GetText()), "c");
}

TEST(CompletePathsTest, AColorThatTheModelDoesNotHaveIsReported) {
    for (const char* const color : {"-1", "32768", "2147483648", "red"}) {
        const CompleteRead read =
            ReadTrack(std::string("<extensions><tarvik:color>") + color + "</tarvik:color></extensions>");
        EXPECT_EQ(GpxModelAccess::GetColor(*read.document.GetTrackIter()), -1);
        EXPECT_EQ(read.notices.substr(0, 39), "gpx/trk/extensions/color 1 unreadable: ") << color;
    }
}

TEST(CompletePathsTest, EachSegmentKnowsItsElement) {
    const CompleteRead read = ReadTrack("<trkseg><trkpt lat='1' lon='2'/></trkseg><trkseg/>"
                                        "<trkseg><trkpt lat='1' lon='2'/><trkpt lat='1' lon='2'/></trkseg>");
    const GpxTrack& track = *read.document.GetTrackIter();
    ASSERT_EQ(track.GetSegmentCount(), 3U);
    EXPECT_EQ(track.GetSegmentElement(track.GetSegmentIter() + 1).GetXml(), "<trkseg/>");
    EXPECT_EQ(track.GetSegmentElement(track.GetSegmentIter() + 2).GetFirstChild(),
              (track.GetSegmentIter() + 2)->front().GetElement());
}

TEST(CompletePathsTest, ATrackPointWithoutAPositionIsUnreadInItsTrack) {
    const CompleteRead read = ReadTrack("<trkseg><trkpt lat='1' lon='2'/>\n<trkpt/></trkseg>"
                                        "<trkseg>\n<trkpt lat='1' lon='181'/></trkseg>");
    const GpxTrack& track = *read.document.GetTrackIter();
    ASSERT_EQ(track.GetUnreadElements().size(), 2U);
    EXPECT_EQ(track.GetUnreadElements()[1].GetXml(), "<trkpt lat='1' lon='181'/>");
    EXPECT_EQ(track.GetPointCount(track.GetSegmentIter()), 1U);
    EXPECT_EQ(track.GetPointCount(track.GetSegmentIter() + 1), 0U);
    EXPECT_EQ(read.notices, "gpx/trk/trkseg/trkpt 2 unreadable: It has no position that a point can have.\n"
                            "gpx/trk/trkseg/trkpt 3 unreadable: It has no position that a point can have.\n");
}

TEST(CompletePathsTest, PointsOfAnotherKindAreLeftInTheSource) {
    const CompleteRead read = ReadTrack("<trkpt lat='1' lon='2'/><trkseg><wpt lat='1' lon='2'/></trkseg>");
    const GpxTrack& track = *read.document.GetTrackIter();
    EXPECT_EQ(track.GetPointCount(track.GetSegmentIter()), 0U);
    EXPECT_TRUE(track.GetElement().FindChild(kGpx11Uri, "trkpt"));
}

} // namespace
} // namespace vexaTransferLib
