// SPDX-License-Identifier: MIT
#include <vexagpx/page/PageProjection.h>

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

namespace {

using vexagpx::PageProjection;
using vexagpx::PlaceBox;

std::pair<double, double> MiddleOf(const std::vector<std::pair<double, double>>& places) {
    PlaceBox box;
    for (const auto& [latitude, longitude] : places)
        box.Add(latitude, longitude);
    double latitude = 0.0;
    double longitude = 0.0;
    box.Middle(latitude, longitude);
    return {latitude, longitude};
}

std::pair<double, double> Projected(const PageProjection& projection, double latitude, double longitude) {
    double x = 0.0;
    double y = 0.0;
    projection.Project(latitude, longitude, x, y);
    return {x, y};
}

TEST(PageProjectionTest, TheMiddleIsBetweenThePlaces) {
    const auto [latitude, longitude] = MiddleOf({{50.0, 8.0}, {50.2, 8.4}});
    EXPECT_NEAR(latitude, 50.1, 0.01);
    EXPECT_NEAR(longitude, 8.2, 0.01);
}

TEST(PageProjectionTest, TheMiddleOfPlacesAcrossTheDateLineIsThere) {
    const auto [latitude, longitude] = MiddleOf({{-17.0, 179.5}, {-17.0, -179.5}});
    EXPECT_NEAR(latitude, -17.0, 0.01);
    EXPECT_NEAR(std::abs(longitude), 180.0, 0.01);
}

TEST(PageProjectionTest, TheMiddleOfPlacesAroundAPoleIsThePole) {
    EXPECT_NEAR(MiddleOf({{89.0, 0.0}, {89.0, 90.0}, {89.0, 180.0}, {89.0, -90.0}}).first, 90.0, 1e-6);
    EXPECT_NEAR(MiddleOf({{-89.0, 0.0}, {-89.0, 90.0}, {-89.0, 180.0}, {-89.0, -90.0}}).first, -90.0, 1e-6);
}

TEST(PageProjectionTest, APlaceIsAsFarFromTheMiddleAsOnTheEarthWhereverThatIs) {
    for (const double middle : {0.0, 47.0, -80.0, 89.9}) {
        const PageProjection projection(middle, 179.9);
        const double metresOfLatitude = 111194.9;
        const auto [north, up] = Projected(projection, middle + 0.01, 179.9);
        EXPECT_NEAR(north, 0.0, 0.01) << middle;
        EXPECT_NEAR(up, -0.01 * metresOfLatitude, 0.1) << middle;
        const auto [right, level] = Projected(projection, middle, -180.0);
        EXPECT_NEAR(right, 0.1 * metresOfLatitude * std::cos(middle * M_PI / 180.0), 1.0) << middle;
        EXPECT_NEAR(level, 0.0, 10.0) << middle;
    }
}

TEST(PageProjectionTest, TheOppositePlaceIsFinite) {
    const auto [x, y] = Projected(PageProjection(30.0, 10.0), -30.0, -170.0);
    EXPECT_TRUE(std::isfinite(x) && std::isfinite(y));
}

} // namespace
