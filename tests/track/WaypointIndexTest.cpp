// SPDX-License-Identifier: MIT
#include <vexaTrackLib/merging/WaypointIndex.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace {

using vexaTrackLib::merging::WaypointIndex;
using vexaTransferLib::GpxGroundspeakCache;
using vexaTransferLib::GpxPoint;

// About a metre of latitude.
constexpr double kMetre = 1.0 / 111200.0;

GpxPoint Named(const std::string& name, double latitude, double longitude) {
    GpxPoint point(vexaTransferLib::kGpxWaypoint, latitude, longitude);
    if (!name.empty())
        point.SetName(icu::UnicodeString::fromUTF8(name));
    return point;
}

GpxPoint Geocache(const std::string& name, double latitude, double longitude) {
    GpxPoint point = Named(name, latitude, longitude);
    point.SetGroundspeakCache(GpxGroundspeakCache());
    return point;
}

std::optional<std::size_t> Found(const std::vector<GpxPoint>& waypoints, const GpxPoint& waypoint) {
    WaypointIndex index;
    for (std::size_t i = 0; i < waypoints.size(); ++i)
        index.Add(waypoints[i], i);
    return index.Find(waypoint, waypoints);
}

TEST(WaypointIndexTest, TheSameNameWithinTenMetresIsTheSame) {
    for (const double latitude : {0.0, 46.0, -33.3, 59.99, 80.0})
        for (double metres = 0.0; metres < 20.0; metres += 0.25)
            for (int direction = 0; direction < 8; ++direction) {
                const double angle = direction * 0.785;
                const double north = metres * std::sin(angle);
                const double east = metres * std::cos(angle) / std::cos(latitude * 0.017453292519943295);
                const GpxPoint other = Named("a", latitude + north * kMetre, 7.0 + east * kMetre);
                const bool isFound = Found({Named("a", latitude, 7.0)}, other).has_value();
                const bool isDoubtful = metres > 9.9 && metres < 10.1;
                EXPECT_TRUE(isDoubtful || isFound == (metres < 10.0))
                    << latitude << ' ' << metres << ' ' << direction;
            }
}

TEST(WaypointIndexTest, OtherNamesAreNotTheSame) {
    EXPECT_EQ(Found({Named("a", 46, 7), Named("b", 46, 7)}, Named("b", 46, 7)), 1U);
    EXPECT_EQ(Found({Named("a", 46, 7)}, Named("c", 46, 7)), std::nullopt);
}

TEST(WaypointIndexTest, PlacesAreNearAcrossTheDateLine) {
    EXPECT_EQ(Found({Named("a", 10, 180)}, Named("a", 10, -180)), 0U);
    EXPECT_EQ(Found({Named("a", 10, 179.99999)}, Named("a", 10, -179.99999)), 0U);
}

TEST(WaypointIndexTest, GeocachesAreKnownByTheirCodes) {
    EXPECT_EQ(Found({Named("x", 1, 1), Geocache("GC1", 46, 7)}, Geocache("GC1", 10, 20)), 1U);
    EXPECT_EQ(Found({Geocache("GC1", 46, 7)}, Named("GC1", 10, 20)), 0U);
    EXPECT_EQ(Found({Named("GC1", 46, 7)}, Geocache("GC1", 10, 20)), 0U);
    EXPECT_EQ(Found({Named("GC1", 46, 7)}, Named("GC1", 10, 20)), std::nullopt);
}

TEST(WaypointIndexTest, WithoutNamesThePlaceAndTheTimeCount) {
    GpxPoint timed = Named("", 46, 7);
    timed.SetTime(1000.0);
    EXPECT_EQ(Found({Named("", 46, 7), timed}, timed), 1U);
    EXPECT_EQ(Found({Named("", 46, 7), timed}, Named("", 46, 7)), 0U);
    EXPECT_EQ(Found({timed}, Named("", 46, 7)), std::nullopt);
    EXPECT_EQ(Found({Named("", 46, 7)}, Named("", 46 + kMetre, 7)), std::nullopt);
}

TEST(WaypointIndexTest, TheFirstOfSeveralIsFound) {
    EXPECT_EQ(Found({Named("a", 46, 7), Named("a", 46, 7)}, Named("a", 46, 7)), 0U);
}

} // namespace
