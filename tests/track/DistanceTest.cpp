// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Distance.h>

#include <GeographicLib/Geodesic.hpp>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using vexaTrackLib::Distance;

constexpr double kExact = 1e-5; // metres, as the header says

double Geodesic(double latitude1, double longitude1, double latitude2, double longitude2) {
    double metres = 0.0;
    GeographicLib::Geodesic::WGS84().Inverse(latitude1, longitude1, latitude2, longitude2, metres);
    return metres;
}

/// Compares both with many pairs of places: the first lies between the latitudes, the second at most `metres` away.
void ExpectGeodesics(double south, double north, double west, double east, double metres) {
    std::mt19937_64 random(1);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    for (int pair = 0; pair < 2000; ++pair) {
        const double latitude = between(south, north);
        const double longitude = between(west, east);
        double otherLatitude = 0.0;
        double otherLongitude = 0.0;
        GeographicLib::Geodesic::WGS84().Direct(latitude, longitude, between(0, 360), between(0, metres),
                                                otherLatitude, otherLongitude);
        ASSERT_NEAR(Distance(latitude, longitude, otherLatitude, otherLongitude),
                    Geodesic(latitude, longitude, otherLatitude, otherLongitude), kExact)
            << latitude << ' ' << longitude << ' ' << otherLatitude << ' ' << otherLongitude;
    }
}

TEST(DistanceTest, IsThatOfTheGeodesicForPlacesOfAllDistances) {
    for (const double metres : {0.001, 1.0, 1e3, 49e3, 51e3, 1e6, 2e7}) {
        SCOPED_TRACE(metres);
        ExpectGeodesics(-90, 90, -180, 180, metres);
    }
}

TEST(DistanceTest, IsThatOfTheGeodesicWhereLatitudesAndLongitudesAreSpecial) {
    for (const double metres : {1.0, 1e3, 49e3, 1e5}) {
        SCOPED_TRACE(metres);
        ExpectGeodesics(89.999, 90, -180, 180, metres);
        ExpectGeodesics(-90, -89.7, -180, 180, metres);
        ExpectGeodesics(-0.2, 0.2, -180, 180, metres);
        ExpectGeodesics(-90, 90, 179.9, 180, metres);
        ExpectGeodesics(-90, 90, -0.1, 0.1, metres);
    }
}

TEST(DistanceTest, KnowsTheLengthsOfDegrees) {
    // A degree of the equator is pi/180 of its radius; a degree of a meridian is shorter there than at a pole.
    EXPECT_NEAR(Distance(0, 0, 0, 1), 6378137.0 * std::acos(-1.0) / 180, kExact);
    EXPECT_NEAR(Distance(0, 0, 1, 0), 110574.3886, 1e-4);
    EXPECT_NEAR(Distance(90, 0, 89, 0), 111693.8649, 1e-4);
}

TEST(DistanceTest, OfAPlaceFromItselfIsZero) {
    EXPECT_EQ(Distance(48.1, 11.5, 48.1, 11.5), 0.0);
    EXPECT_NEAR(Distance(48.1, 180, 48.1, -180), 0.0, 1e-8);
    EXPECT_NEAR(Distance(90, 20, 90, -70), 0.0, 1e-8);
    EXPECT_NEAR(Distance(10, 190, 10, -170), 0.0, 1e-8);
}

TEST(DistanceTest, OfAntipodesIsHalfAMeridian) {
    EXPECT_NEAR(Distance(0, 0, 0, 180), 20003931.4586, 1e-4);
    EXPECT_NEAR(Distance(90, 0, -90, 0), 20003931.4586, 1e-4);
}

TEST(DistanceTest, OfWhatIsNoPlaceIsNotANumber) {
    const double infinite = std::numeric_limits<double>::infinity();
    const double bogus = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(std::isnan(Distance(90.001, 0, 90, 0)));
    EXPECT_TRUE(std::isnan(Distance(90, 0, 90.001, 0)));
    EXPECT_TRUE(std::isnan(Distance(bogus, 0, 0, 0)));
    EXPECT_TRUE(std::isnan(Distance(0, 0, 0, bogus)));
    EXPECT_TRUE(std::isnan(Distance(0, infinite, 0, 0)));
    EXPECT_TRUE(std::isnan(Distance(0, 0, -infinite, 0)));
}

} // namespace
