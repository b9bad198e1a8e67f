// SPDX-License-Identifier: MIT
#include <vexagpx/picture/MapChoice.h>

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

namespace {

vexagpx::MapChoice ChoiceFor(const std::vector<std::pair<double, double>>& places) {
    vexagpx::PathData data;
    for (const auto& [latitude, longitude] : places)
        data.places.push_back({"", false, latitude, longitude});
    return vexagpx::ChooseMap(data);
}

std::pair<double, double> MiddleOf(const std::vector<std::pair<double, double>>& places) {
    const vexagpx::MapChoice choice = ChoiceFor(places);
    EXPECT_FALSE(choice.projection.IsOfWorld());
    return {choice.latitude, choice.longitude};
}

TEST(MapChoiceTest, TheMiddleIsBetweenThePlaces) {
    const auto [latitude, longitude] = MiddleOf({{50.0, 8.0}, {50.2, 8.4}});
    EXPECT_NEAR(latitude, 50.1, 0.01);
    EXPECT_NEAR(longitude, 8.2, 0.01);
}

TEST(MapChoiceTest, TheMiddleOfPlacesAcrossTheDateLineIsThere) {
    const auto [latitude, longitude] = MiddleOf({{-17.0, 179.5}, {-17.0, -179.5}});
    EXPECT_NEAR(latitude, -17.0, 0.01);
    EXPECT_NEAR(std::abs(longitude), 180.0, 0.01);
}

TEST(MapChoiceTest, TheMiddleOfPlacesAroundAPoleIsThePole) {
    EXPECT_NEAR(MiddleOf({{89.0, 0.0}, {89.0, 90.0}, {89.0, 180.0}, {89.0, -90.0}}).first, 90.0, 1e-6);
    EXPECT_NEAR(MiddleOf({{-89.0, 0.0}, {-89.0, 90.0}, {-89.0, 180.0}, {-89.0, -90.0}}).first, -90.0, 1e-6);
}

TEST(MapChoiceTest, PlacesAllAroundTheEarthAreOnAMapOfTheWorld) {
    EXPECT_TRUE(ChoiceFor({{0.0, -170.0}, {0.0, -60.0}, {0.0, 60.0}, {0.0, 170.0}}).projection.IsOfWorld());
}

} // namespace
