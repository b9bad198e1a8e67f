// SPDX-License-Identifier: MIT
#include <vexagpx/report/IndexEntry.h>

#include "export/Reading.h"

namespace {

using cli::PointText;
using vexagpx::IndexEntry;
using vexagpx::KindsOf;

std::string Timed(const std::string& name, const std::string& time) {
    return PointText(name, "1", "2", "<time>1970-01-01T00:00:" + time + "Z</time>");
}

TEST(IndexEntryTest, PointsOfAllKindsCount) {
    const IndexEntry entry = vexagpx::IndexEntryOf(
        cli::DocumentOf(Timed("wpt", "20") + PointText("wpt", "-3", "2") + "<rte>" + Timed("rtept", "10") +
                        PointText("rtept", "1", "-4") + "</rte><trk><trkseg>" + Timed("trkpt", "30") +
                        PointText("trkpt", "5", "6") + "</trkseg></trk>"));
    EXPECT_EQ(entry.counts.waypoints, 2U);
    EXPECT_EQ(entry.counts.routePoints, 2U);
    EXPECT_EQ(entry.counts.trackPoints, 2U);
    EXPECT_EQ(entry.times.First(), 10000.0);
    EXPECT_EQ(entry.times.Last(), 30000.0);
    EXPECT_EQ(entry.bounds.South(), -3.0);
    EXPECT_EQ(entry.bounds.North(), 5.0);
    EXPECT_EQ(entry.bounds.West(), -4.0);
    EXPECT_EQ(entry.bounds.East(), 6.0);
    EXPECT_THAT(KindsOf(entry.counts), testing::ElementsAre("waypoints", "routes", "tracks"));
}

TEST(IndexEntryTest, GeocachesAreNoOtherWaypoints) {
    const std::string cache = PointText("wpt", "1", "2", "<g:cache><g:name>a</g:name></g:cache>");
    EXPECT_THAT(KindsOf(vexagpx::IndexEntryOf(cli::DocumentOf(cache)).counts),
                testing::ElementsAre("geocaches"));
    EXPECT_THAT(KindsOf(vexagpx::IndexEntryOf(cli::DocumentOf(cache + cli::kWaypoint)).counts),
                testing::ElementsAre("geocaches", "waypoints"));
    EXPECT_THAT(KindsOf(vexagpx::IndexEntryOf(cli::DocumentOf("")).counts), testing::IsEmpty());
}

TEST(IndexEntryTest, AnEntryOfAnArchiveFollowsItsFile) {
    IndexEntry entry;
    entry.file = "a.zip";
    EXPECT_EQ(entry.Name(), "a.zip");
    entry.entry = "b.gpx";
    EXPECT_EQ(entry.Name(), "a.zip: b.gpx");
}

} // namespace
