// SPDX-License-Identifier: MIT
#include <vexagpx/page/PlaceBox.h>

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

namespace {

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

TEST(PlaceBoxTest, TheMiddleIsBetweenThePlaces) {
    const auto [latitude, longitude] = MiddleOf({{50.0, 8.0}, {50.2, 8.4}});
    EXPECT_NEAR(latitude, 50.1, 0.01);
    EXPECT_NEAR(longitude, 8.2, 0.01);
}

TEST(PlaceBoxTest, TheMiddleOfPlacesAcrossTheDateLineIsThere) {
    const auto [latitude, longitude] = MiddleOf({{-17.0, 179.5}, {-17.0, -179.5}});
    EXPECT_NEAR(latitude, -17.0, 0.01);
    EXPECT_NEAR(std::abs(longitude), 180.0, 0.01);
}

TEST(PlaceBoxTest, TheMiddleOfPlacesAroundAPoleIsThePole) {
    EXPECT_NEAR(MiddleOf({{89.0, 0.0}, {89.0, 90.0}, {89.0, 180.0}, {89.0, -90.0}}).first, 90.0, 1e-6);
    EXPECT_NEAR(MiddleOf({{-89.0, 0.0}, {-89.0, 90.0}, {-89.0, 180.0}, {-89.0, -90.0}}).first, -90.0, 1e-6);
}

} // namespace
