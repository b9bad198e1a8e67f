// SPDX-License-Identifier: MIT
#include <vexagpx/picture/PathData.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using testing::ElementsAre;
using vexagpx::PathData;
using namespace vexaTransferLib;

GpxPoint TrackPoint(double latitude, double longitude) {
    return GpxPoint(kGpxTrackPoint, latitude, longitude);
}

TEST(PathDataTest, DistancesLeaveOutTheGapsBetweenSegments) {
    GpxTrack track;
    track.AddSegment();
    track.AddPoint(TrackPoint(0.0, 0.0));
    track.AddPoint(TrackPoint(0.0, 0.001));
    track.AddSegment();
    track.AddPoint(TrackPoint(1.0, 0.0));
    track.AddPoint(TrackPoint(1.0, 0.001));
    GpxDocument document;
    document.AddTrack(track);
    PathData data;
    data.Add(document, "folder/a.gpx");
    ASSERT_EQ(data.paths.size(), 1U);
    ASSERT_EQ(data.paths[0].segments.size(), 2U);
    EXPECT_NEAR(data.paths[0].segments[0][1].distance, 111.32, 0.01);
    EXPECT_EQ(data.paths[0].segments[1][0].distance, data.paths[0].segments[0][1].distance);
    EXPECT_NEAR(data.paths[0].Length(), 222.62, 0.01);
    EXPECT_EQ(data.title, "a.gpx");
    EXPECT_EQ(data.paths[0].name, "track 1");
}

TEST(PathDataTest, HeightsAndTimesThatAreNoneAreMissing) {
    GpxPoint point = TrackPoint(0.0, 0.0);
    point.SetElevation(std::numeric_limits<double>::quiet_NaN());
    point.SetTime(1e300);
    GpxTrack track;
    track.AddSegment();
    track.AddPoint(point);
    GpxDocument document;
    document.AddTrack(track);
    PathData data;
    data.Add(document, "a.gpx");
    EXPECT_TRUE(std::isnan(data.paths[0].segments[0][0].height));
    EXPECT_TRUE(std::isnan(data.paths[0].segments[0][0].time));
}

TEST(PathDataTest, EmptySegmentsAndPathsAreLeftOut) {
    GpxTrack track;
    track.AddSegment();
    track.AddSegment();
    GpxDocument document;
    document.AddTrack(track);
    document.AddRoute(GpxRoute(kTarvikRouteStandard));
    PathData data;
    data.Add(document, "a.gpx");
    EXPECT_TRUE(data.IsEmpty());
    track.AddPoint(TrackPoint(1.0, 2.0));
    track.AddSegment();
    document.AddTrack(track);
    data.Add(document, "b.gpx");
    ASSERT_EQ(data.paths.size(), 1U);
    EXPECT_EQ(data.paths[0].segments.size(), 1U);
    EXPECT_EQ(data.title, "a.gpx, b.gpx");
}

TEST(PathDataTest, NamesAreOnOneLineWithoutControlCharacters) {
    GpxPoint waypoint(kGpxWaypoint, 1.0, 2.0);
    waypoint.SetName(u"a\n\u202eb\u0007");
    GpxDocument document;
    document.AddWaypoint(waypoint);
    PathData data;
    data.Add(document, "a.gpx");
    ASSERT_EQ(data.places.size(), 1U);
    EXPECT_EQ(data.places[0].name, "a b");
    EXPECT_FALSE(data.places[0].isCache);
}

} // namespace
