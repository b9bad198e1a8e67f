// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Split.h>

#include "support/Reading.h"

#include <common/dbc.h>
#include <vexaTransferLib/GpxSaver.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace vexaTransferLib;
using testing::ElementsAre;
using vexaTrackLib::Split;
using vexaTrackLib::SplitPart;
using vexaTrackLib::SplitRule;

constexpr double kHour = 3600000.0;

GpxPoint PointAt(double hour, double latitude = 0.0) {
    GpxPoint point(kGpxTrackPoint, latitude, 0.0);
    if (hour >= 0.0)
        point.SetTime(hour * kHour);
    return point;
}

// "1 2 - | 5" is a track of two segments, whose points have the times in hours; - has none.
GpxTrack TrackOf(const std::vector<std::vector<double>>& segments) {
    GpxTrack track;
    track.SetName(u"t");
    for (const auto& hours : segments) {
        GpxTrack::Segment points;
        for (const double hour : hours)
            points.push_back(PointAt(hour));
        track.InsertSegment(track.GetSegmentCount(), points);
    }
    return track;
}

std::string Shape(const GpxDocument& document) {
    std::string shape;
    for (const GpxTrack& track : document.GetTracks()) {
        shape += "(";
        for (const GpxTrack::Segment& segment : track.GetSegments()) {
            for (const GpxPoint& point : segment) {
                double time = 0.0;
                shape += point.GetTime(time) ? std::to_string(static_cast<int>(time / kHour)) + " " : "- ";
            }
            shape += "| ";
        }
        shape += ")";
    }
    return shape;
}

std::vector<std::string> Shapes(const std::vector<SplitPart>& parts) {
    std::vector<std::string> shapes;
    for (const SplitPart& part : parts)
        shapes.push_back(Shape(part.document));
    return shapes;
}

SplitRule Pause(double hours) {
    SplitRule rule;
    rule.pause = hours * kHour;
    return rule;
}

SplitRule Days() {
    SplitRule rule;
    rule.byDay = true;
    return rule;
}

TEST(SplitTest, APauseStartsANewPart) {
    GpxDocument document;
    document.AddTrack(TrackOf({{1, 2, 5, -1, 6}, {7, 11}}));
    document.AddTrack(TrackOf({{12}, {20, 21}}));
    const std::vector<SplitPart> parts = Split(document, Pause(3));
    EXPECT_THAT(Shapes(parts), ElementsAre("(1 2 | )", "(5 - 6 | 7 | )", "(11 | )(12 | )", "(20 21 | )"));
    EXPECT_EQ(parts[1].points, 4U);
    EXPECT_EQ(parts[1].start, 5 * kHour);
    icu::UnicodeString name;
    EXPECT_TRUE(parts[3].document.GetTracks()[0].GetName(name));
    EXPECT_EQ(name, u"t");
}

TEST(SplitTest, ThePointsOfADayAreOnePart) {
    GpxDocument document;
    document.AddTrack(TrackOf({{-1, 1, 23, 24, -1}, {25, 49}}));
    document.AddTrack(TrackOf({{2, 30}}));
    const std::vector<SplitPart> parts = Split(document, Days());
    EXPECT_THAT(Shapes(parts), ElementsAre("(- | )", "(1 23 | )(2 | )", "(24 - | 25 | )(30 | )", "(49 | )"));
    EXPECT_EQ(parts[2].day, 1.0);
}

TEST(SplitTest, DaysAreThoseOfTheClocks) {
    GpxDocument document;
    document.AddTrack(TrackOf({{1, 21, 22, 23}}));
    SplitRule rule = Days();
    rule.clocks = [](double) { return 2 * kHour; };
    const std::vector<SplitPart> parts = Split(document, rule);
    EXPECT_THAT(Shapes(parts), ElementsAre("(1 21 | )", "(22 23 | )"));
    EXPECT_EQ(parts[1].day, 1.0);
}

TEST(SplitTest, PartsByLengthShareThePointBetweenThem) {
    GpxDocument document;
    GpxTrack track;
    GpxTrack::Segment points;
    for (int i = 0; i < 6; ++i)
        points.push_back(PointAt(i, i * 0.01)); // 1.1 km apart
    track.InsertSegment(0, points);
    track.InsertSegment(1, {PointAt(6, 10.0), PointAt(7, 10.01), PointAt(8, 10.02)});
    document.AddTrack(track);
    SplitRule rule;
    rule.length = 2000.0;
    const std::vector<SplitPart> parts = Split(document, rule);
    EXPECT_THAT(Shapes(parts), ElementsAre("(0 1 2 | )", "(2 3 4 | )", "(4 5 | 6 7 | )", "(7 8 | )"));
    EXPECT_EQ(parts[0].points, 3U);
    EXPECT_EQ(parts[2].points, 4U);
}

TEST(SplitTest, WaypointsAndRoutesAreInOnePartEach) {
    GpxDocument document;
    const auto waypoint = [&](double hour) {
        GpxPoint point(kGpxWaypoint, 0.0, 0.0);
        if (hour >= 0.0)
            point.SetTime(hour * kHour);
        document.AddWaypoint(point);
    };
    waypoint(-1);
    waypoint(0);
    waypoint(7);
    waypoint(99);
    document.AddRoute(GpxRoute(kTarvikRouteStandard));
    document.AddTrack(TrackOf({{1, 2}, {6, 8}}));
    const std::vector<SplitPart> parts = Split(document, Pause(3));
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].document.GetWaypointCount(), 2U);
    EXPECT_EQ(parts[0].document.GetRouteCount(), 1U);
    EXPECT_EQ(parts[1].document.GetWaypointCount(), 2U);
    EXPECT_EQ(parts[1].document.GetRouteCount(), 0U);
}

TEST(SplitTest, ADocumentWithoutTrackPointsIsOnePart) {
    GpxDocument document;
    EXPECT_THAT(Shapes(Split(document, Pause(1))), ElementsAre(""));
    document.AddTrack(TrackOf({{}}));
    EXPECT_THAT(Shapes(Split(document, Pause(1))), ElementsAre("(| )"));
}

TEST(SplitTest, EmptyTracksAndSegmentsStay) {
    GpxDocument document;
    document.AddTrack(TrackOf({{}, {1}}));
    document.AddTrack(TrackOf({{}}));
    document.AddTrack(TrackOf({{9}, {}}));
    EXPECT_THAT(Shapes(Split(document, Pause(3))), ElementsAre("(| 1 | )(| )", "(9 | | )"));
}

TEST(SplitTest, EachPartHasTheMetadataWithItsBounds) {
    const std::string head =
        "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1'><metadata>"
        "<name>n</name>";
    const GpxDocument document = track_tests::ReadCompletely(
        head + "<bounds minlat='1' minlon='1' maxlat='2' maxlon='2'/></metadata><trk><type>w</type><trkseg>"
               "<trkpt lat='1' lon='1'><time>2024-05-01T08:00:00Z</time></trkpt>"
               "<trkpt lat='2' lon='2'><time>2024-05-02T08:00:00Z</time></trkpt></trkseg></trk></gpx>");
    const std::vector<SplitPart> parts = Split(document, Days());
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(GpxSaver().GetText(parts[1].document),
              head + "<bounds minlat=\"2\" minlon=\"2\" maxlat=\"2\" "
                     "maxlon=\"2\"/></metadata><trk><type>w</type><trkseg>"
                     "<trkpt lat='2' lon='2'><time>2024-05-02T08:00:00Z</time></trkpt></trkseg></trk></gpx>");
}

TEST(SplitTest, ManyPartsAreSplitInOneGo) {
    std::vector<double> hours;
    for (int i = 0; i < 30000; ++i)
        hours.push_back(i);
    GpxDocument document;
    document.AddTrack(TrackOf({hours}));
    EXPECT_EQ(Split(std::move(document), Pause(1)).size(), 30000U);
}

TEST(SplitTest, ARuleIsNeeded) {
    EXPECT_THROW(Split(GpxDocument(), SplitRule()), dbc::precondition_error);
    EXPECT_THROW(Split(GpxDocument(), Pause(0)), dbc::precondition_error);
    SplitRule rule;
    rule.length = -1.0;
    EXPECT_THROW(Split(GpxDocument(), rule), dbc::precondition_error);
}

} // namespace
