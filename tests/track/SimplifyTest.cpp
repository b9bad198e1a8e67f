// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Simplify.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vexaTrackLib::Simplify;
using vexaTrackLib::SimplifyTo;
using Place = vexaTrackLib::MapProjection::Place;
using Places = std::vector<Place>;

double DistanceToPiece(Place place, Place start, Place end) {
    const double x = end.x - start.x;
    const double y = end.y - start.y;
    const double square = x * x + y * y;
    double t = square > 0.0 ? ((place.x - start.x) * x + (place.y - start.y) * y) / square : 0.0;
    t = std::clamp(t, 0.0, 1.0);
    return std::hypot(place.x - start.x - t * x, place.y - start.y - t * y);
}

double GreatestError(const Places& places, const std::vector<std::size_t>& kept) {
    double greatest = 0.0;
    for (std::size_t k = 1; k < kept.size(); ++k)
        for (std::size_t i = kept[k - 1]; i <= kept[k]; ++i)
            greatest = std::max(greatest, DistanceToPiece(places[i], places[kept[k - 1]], places[kept[k]]));
    return greatest;
}

Places Walk(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    const auto unit = [&random] { return static_cast<double>(random() % 10001) / 5000.0 - 1.0; };
    Places places;
    double direction = 0.0;
    Place place;
    for (std::size_t i = 0; i < count; ++i) {
        direction += unit() * (i % 50 == 0 ? 3.0 : 0.3);
        place.x += 5.0 * std::cos(direction);
        place.y += 5.0 * std::sin(direction);
        places.push_back({place.x + unit(), place.y + unit()});
    }
    return places;
}

TEST(SimplifyTest, KeepsEndsAndCorners) {
    const Places places = {{0, 0}, {1, 0.01}, {2, 0}, {3, 0}, {3, 1}, {3.01, 2}, {3, 3}};
    EXPECT_THAT(Simplify(places, 0.1), ElementsAre(0, 3, 6));
}

TEST(SimplifyTest, ALineThatComesBackHalfwayHasNoMorePlacesThanWanted) {
    EXPECT_THAT(SimplifyTo({{0, 0}, {10, 0}, {1, 0}}, 2), ElementsAre(0, 2));
}

TEST(SimplifyTest, KeepsTheWayOutAndBackAlongALine) {
    const Places places = {{0, 0}, {5, 0}, {10, 0}, {5, 0}, {0, 0}};
    EXPECT_THAT(Simplify(places, 0.1), ElementsAre(0, 2, 4));
}

TEST(SimplifyTest, OfFewPlacesAreAll) {
    EXPECT_THAT(Simplify({}, 1.0), IsEmpty());
    EXPECT_THAT(Simplify({{1, 1}}, 1.0), ElementsAre(0));
    EXPECT_THAT(Simplify({{1, 1}, {1, 1}}, 1.0), ElementsAre(0, 1));
}

TEST(SimplifyTest, WithoutAnErrorKeepsAll) {
    EXPECT_THAT(Simplify({{0, 0}, {1, 0}, {2, 0}}, 0.0), ElementsAre(0, 1, 2));
}

TEST(SimplifyTest, NoPlaceIsFartherAwayThanTheError) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        const Places places = Walk(2000, seed);
        for (const double error : {0.5, 2.0, 10.0, 100.0}) {
            const std::vector<std::size_t> kept = Simplify(places, error);
            EXPECT_LE(GreatestError(places, kept), error) << seed;
            EXPECT_LT(kept.size(), error < 1.0 ? 2000U : 1000U) << seed << ' ' << error;
        }
    }
}

TEST(SimplifyTest, LeavesFewPlacesOfALongSmoothLine) {
    Places places;
    for (int i = 0; i < 100000; ++i)
        places.push_back({1000.0 * std::cos(i * 6.28e-5), 1000.0 * std::sin(i * 6.28e-5)});
    const std::vector<std::size_t> kept = Simplify(places, 1.0);
    EXPECT_LT(kept.size(), 100U);
    EXPECT_LE(GreatestError(places, kept), 1.0);
}

TEST(SimplifyTest, ToANumberLeavesNearlySoMany) {
    const Places places = Walk(5000, 7);
    for (const std::size_t most : {2U, 10U, 100U, 1000U}) {
        const std::vector<std::size_t> kept = SimplifyTo(places, most);
        EXPECT_LE(kept.size(), most);
        EXPECT_GE(kept.size() * 2, most);
        EXPECT_EQ(kept.front(), 0U);
        EXPECT_EQ(kept.back(), 4999U);
    }
    EXPECT_EQ(SimplifyTo(places, 5000).size(), 5000U);
}

TEST(SimplifyTest, ToANumberEndsForPlacesThatAreOne) {
    EXPECT_THAT(SimplifyTo(Places(100, Place{3.0, 4.0}), 2), ElementsAre(0, 99));
}

} // namespace
