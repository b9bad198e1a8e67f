// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Distance.h>
#include <vexaTrackLib/MapProjection.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using vexaTrackLib::Distance;
using vexaTrackLib::MapProjection;
using Place = MapProjection::Place;

double Length(Place from, Place to) {
    return std::hypot(to.x - from.x, to.y - from.y);
}

TEST(MapProjectionTest, MetresNearTheMiddleAreThoseOfTheEarthAtEveryLatitude) {
    for (const double latitude : {-90.0, -89.95, -60.0, -0.001, 0.0, 33.0, 48.137, 71.0, 89.0, 89.95, 90.0}) {
        const MapProjection map = MapProjection::OfRegion(latitude, 11.5);
        const double beside = latitude < 0.0 ? latitude + 0.02 : latitude - 0.02;
        for (const double longitude : {11.5, 11.52, 100.0, -168.0}) {
            if (std::abs(latitude) < 89.5 && longitude != 11.5 && longitude != 11.52)
                continue;
            const double onEarth = Distance(latitude, 11.5, beside, longitude);
            const double onMap = Length(map.Project(latitude, 11.5), map.Project(beside, longitude));
            EXPECT_NEAR(onMap / onEarth, 1.0, 1e-5) << latitude << ' ' << longitude;
        }
    }
}

TEST(MapProjectionTest, NorthIsUpAndEastIsRight) {
    const MapProjection map = MapProjection::OfRegion(48.0, 179.99);
    EXPECT_NEAR(map.Project(48.0, 179.99).x, 0.0, 1e-6);
    EXPECT_NEAR(map.Project(48.0, 179.99).y, 0.0, 1e-6);
    EXPECT_GT(map.Project(48.01, 179.99).y, 1000.0);
    EXPECT_GT(map.Project(48.0, -179.99).x, 1000.0);
    EXPECT_LT(map.Project(48.0, -179.99).x, 2000.0);
}

TEST(MapProjectionTest, KeepsRightAnglesOfARegion) {
    const MapProjection map = MapProjection::OfRegion(50.0, 10.0);
    for (const double latitude : {30.0, 50.0, 70.0})
        for (const double longitude : {-20.0, 10.0, 40.0}) {
            const Place here = map.Project(latitude, longitude);
            const Place north = map.Project(latitude + 0.001, longitude);
            const Place east = map.Project(latitude, longitude + 0.001);
            const double product =
                (north.x - here.x) * (east.x - here.x) + (north.y - here.y) * (east.y - here.y);
            EXPECT_NEAR(product / Length(here, north) / Length(here, east), 0.0, 1e-4);
            const double scale =
                Length(here, north) / Distance(latitude, longitude, latitude + 0.001, longitude);
            EXPECT_NEAR(map.Scale(here) / scale, 1.0, 0.005);
        }
}

TEST(MapProjectionTest, ReverseFindsThePlaceAgain) {
    for (const MapProjection& map : {MapProjection::OfRegion(48.0, 11.0), MapProjection::OfRegion(-90.0, 0.0),
                                     MapProjection::OfRegion(3.0, 179.0), MapProjection::OfWorld(150.0)})
        for (double latitude = -85.0; latitude <= 85.0; latitude += 17.0)
            for (double longitude = -175.0; longitude < 180.0; longitude += 35.0) {
                double latitudeAgain = 0.0;
                double longitudeAgain = 0.0;
                map.Reverse(map.Project(latitude, longitude), latitudeAgain, longitudeAgain);
                EXPECT_NEAR(latitudeAgain, latitude, 1e-8);
                EXPECT_NEAR(longitudeAgain, longitude, 1e-8);
            }
}

TEST(MapProjectionTest, TheWorldIsWiderThanHighAndKeepsAreas) {
    const MapProjection map = MapProjection::OfWorld(0.0);
    const double width = map.Project(0.0, 180.0).x;
    const double height = map.Project(90.0, 0.0).y;
    EXPECT_NEAR(width / height, 2.05, 0.01);
    const auto area = [&](double latitude, double longitude) {
        const Place here = map.Project(latitude, longitude);
        const Place north = map.Project(latitude + 0.01, longitude);
        const Place east = map.Project(latitude, longitude + 0.01);
        return std::abs((north.x - here.x) * (east.y - here.y) - (north.y - here.y) * (east.x - here.x)) /
               std::cos(latitude * 3.14159265358979 / 180.0);
    };
    for (const double latitude : {-60.0, 30.0, 75.0})
        EXPECT_NEAR(area(latitude, 140.0) / area(0.0, 0.0), 1.0, 1e-3);
}

TEST(MapProjectionTest, WhatIsOppositeTheMiddleIsFarAwayAndFinite) {
    const Place place = MapProjection::OfRegion(0.0, 0.0).Project(0.0, 180.0);
    EXPECT_TRUE(std::isfinite(place.x));
    EXPECT_TRUE(std::isfinite(place.y));
}

} // namespace
