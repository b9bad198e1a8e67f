// SPDX-License-Identifier: MIT
#include <vexagpx/picture/Palette.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>

namespace {

using namespace vexagpx;

double Apart(const Colour& one, const Colour& other) {
    return std::abs(one.red - other.red) + std::abs(one.green - other.green) +
           std::abs(one.blue - other.blue);
}

// As the eye weighs the three, without the gamma of screens.
double Brightness(const Colour& colour) {
    return 0.21 * colour.red + 0.72 * colour.green + 0.07 * colour.blue;
}

TEST(PaletteTest, ARampGoesFromBlueToRedWithoutJumps) {
    EXPECT_GT(RampColour(0).blue, RampColour(0).red);
    EXPECT_GT(RampColour(kRampSteps - 1).red, RampColour(kRampSteps - 1).blue);
    for (int step = 1; step < kRampSteps; ++step) {
        EXPECT_GT(Apart(RampColour(step - 1), RampColour(step)), 0.01) << step;
        EXPECT_LT(Apart(RampColour(step - 1), RampColour(step)), 0.3) << step;
    }
}

TEST(PaletteTest, EveryColourOfARampIsDarkEnoughForPaper) {
    for (int step = 0; step < kRampSteps; ++step)
        EXPECT_LT(Brightness(RampColour(step)), 0.7) << step;
}

TEST(PaletteTest, StepsBeyondTheRampAreItsEnds) {
    EXPECT_EQ(Apart(RampColour(-1), RampColour(0)), 0.0);
    EXPECT_EQ(Apart(RampColour(kRampSteps), RampColour(kRampSteps - 1)), 0.0);
}

TEST(PaletteTest, EightPathsHaveColoursThatDiffer) {
    for (std::size_t i = 0; i < 8; ++i) {
        for (std::size_t k = 0; k < i; ++k)
            EXPECT_GT(Apart(PathColour(i), PathColour(k)), 0.2) << i << ' ' << k;
        EXPECT_EQ(Apart(PathColour(i), PathColour(i + 8)), 0.0);
    }
}

TEST(PaletteTest, ALighterColourIsNearerToWhite) {
    const Colour colour = {0.2, 0.4, 0.6};
    EXPECT_NEAR(Apart(Lighter(colour, 1.0), colour), 0.0, 1e-12);
    EXPECT_EQ(Apart(Lighter(colour, 0.0), kPaper), 0.0);
    EXPECT_NEAR(Lighter(colour, 0.5).red, 0.6, 1e-12);
}

} // namespace
