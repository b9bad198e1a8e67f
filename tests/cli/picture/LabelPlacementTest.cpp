// SPDX-License-Identifier: MIT
#include "picture/Support.h"

#include <vexagpx/picture/LabelPlacement.h>

#include <gtest/gtest.h>

namespace {

using cli::MeasureEqually;
using vexagpx::Box;
using vexagpx::BoxOf;
using vexagpx::Label;
using vexagpx::NameAt;
using vexagpx::Occupancy;
using vexagpx::PlacedNames;
using vexagpx::PlaceNames;

constexpr Box kBox = {0.0, 0.0, 400.0, 300.0};

bool Overlap(const Box& a, const Box& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

TEST(LabelPlacementTest, NamesDoNotCollideAndAreInTheBoxAndTheRestIsCounted) {
    std::vector<NameAt> names;
    for (int i = 0; i < 300; ++i)
        names.push_back({{(i * 37) % 400 + 0.5, (i * 91) % 300 + 0.5}, "name " + std::to_string(i)});
    Occupancy occupancy(kBox);
    const PlacedNames placed = PlaceNames(names, 10.0, 100.0, MeasureEqually, occupancy);
    EXPECT_GT(placed.labels.size(), 20U);
    EXPECT_GT(placed.leftOut, 0U);
    EXPECT_EQ(placed.labels.size() + placed.leftOut, 300U);
    for (std::size_t i = 0; i < placed.labels.size(); ++i) {
        const Box box = BoxOf(placed.labels[i], MeasureEqually);
        EXPECT_TRUE(kBox.Contains({box.left, box.top}) && kBox.Contains({box.right, box.bottom}));
        for (std::size_t k = 0; k < i; ++k)
            EXPECT_FALSE(Overlap(box, BoxOf(placed.labels[k], MeasureEqually)));
    }
}

TEST(LabelPlacementTest, ANameIsRightOfItsSpotAndLeftWhereThereIsNoRoom) {
    Occupancy occupancy(kBox);
    const PlacedNames placed = PlaceNames({{{200.0, 50.0}, "middle"}, {{390.0, 150.0}, "edge"}}, 10.0, 100.0,
                                          MeasureEqually, occupancy);
    ASSERT_EQ(placed.labels.size(), 2U);
    EXPECT_GT(BoxOf(placed.labels[0], MeasureEqually).left, 200.0);
    EXPECT_LT(BoxOf(placed.labels[1], MeasureEqually).right, 390.0);
}

TEST(LabelPlacementTest, ALongNameTakesNoMoreThanTheWidest) {
    Occupancy occupancy(kBox);
    const PlacedNames placed =
        PlaceNames({{{10.0, 50.0}, std::string(3000, 'x')}}, 10.0, 100.0, MeasureEqually, occupancy);
    ASSERT_EQ(placed.labels.size(), 1U);
    EXPECT_EQ(BoxOf(placed.labels[0], MeasureEqually).Width(), 100.0);
}

} // namespace
