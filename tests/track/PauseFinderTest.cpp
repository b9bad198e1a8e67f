// SPDX-License-Identifier: MIT
#include <vexaTrackLib/statistics/PauseFinder.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

using vexaTrackLib::StatisticsOptions;
using vexaTrackLib::statistics::PauseFinder;
using vexaTrackLib::statistics::Stay;
using vexaTrackLib::statistics::Step;

/// The shortest pause of these tests is 100 s, so the circle has a radius of 20 m.
StatisticsOptions Options() {
    StatisticsOptions options;
    options.pause = 100;
    return options;
}

/// Walks along a straight line.
class Walk {
public:
    explicit Walk(const StatisticsOptions& options = Options()) : finder(options) { finder.Start(At(0)); }

    Walk& To(double metre, double seconds, bool isOutlier = false) {
        const double metres = std::abs(metre - metre_);
        second_ += seconds;
        finder.Add({At(metre), metres, seconds}, isOutlier);
        return *this;
    }
    Walk& NewSegment(double metre, double seconds) {
        finder.Break();
        second_ += seconds;
        finder.Start(At(metre));
        return *this;
    }
    Walk& End() {
        finder.Break();
        return *this;
    }

    PauseFinder finder;

private:
    Stay At(double metre) {
        metre_ = metre;
        return {second_ * 1000, 0, metre, metre, 0, 0};
    }

    double second_ = 0;
    double metre_ = 0;
};

TEST(PauseFinderTest, FindsNoneInAWalk) {
    Walk walk;
    for (int i = 1; i <= 500; ++i)
        walk.To(i, 1);
    EXPECT_EQ(walk.End().finder.Count(), 0U);
    EXPECT_EQ(walk.finder.Seconds(), 0);
}

TEST(PauseFinderTest, FindsAStayWithinTheCircle) {
    Walk walk;
    walk.To(100, 100).To(200, 100);
    for (int i = 0; i < 15; ++i)
        walk.To(i % 2 == 0 ? 210 : 200, 10);
    walk.To(300, 100).To(400, 100).End();
    ASSERT_EQ(walk.finder.Count(), 1U);
    ASSERT_EQ(walk.finder.Pauses().size(), 1U);
    EXPECT_EQ(walk.finder.Pauses()[0].start, 200'000);
    EXPECT_EQ(walk.finder.Pauses()[0].seconds, 150);
    EXPECT_EQ(walk.finder.Pauses()[0].longitude, 200);
    EXPECT_EQ(walk.finder.Seconds(), 150);
    EXPECT_EQ(walk.finder.SecondsInSegments(), 150);
    EXPECT_EQ(walk.finder.StepMetres(), 150);
    EXPECT_EQ(walk.finder.StepSeconds(), 150);
}

TEST(PauseFinderTest, AStayThatIsTooShortIsNone) {
    EXPECT_EQ(Walk().To(100, 100).To(110, 99).To(300, 100).End().finder.Count(), 0U);
    EXPECT_EQ(Walk().To(100, 100).To(110, 100).To(300, 100).End().finder.Count(), 1U);
}

TEST(PauseFinderTest, TheCircleHasAFifthOfAMetreForEachSecondAndAtMostTwentyFive) {
    EXPECT_EQ(Walk().To(20, 100).End().finder.Count(), 1U);
    // A step of 20.1 m in 100 s leads out of the circle and is not slow.
    EXPECT_EQ(Walk().To(20.1, 100).End().finder.Count(), 0U);
    StatisticsOptions options;
    options.pause = 1000;
    EXPECT_EQ(Walk(options).To(15, 500).To(25, 500).End().finder.Count(), 1U);
    EXPECT_EQ(Walk(options).To(15, 500).To(25.1, 500).End().finder.Count(), 0U);
}

TEST(PauseFinderTest, ALongSlowStepIsAPause) {
    // The recording was off while its owner had lunch.
    Walk walk;
    walk.To(100, 50).To(160, 1800).To(300, 100).End();
    ASSERT_EQ(walk.finder.Count(), 1U);
    EXPECT_EQ(walk.finder.Pauses()[0].start, 50'000);
    EXPECT_EQ(walk.finder.Pauses()[0].seconds, 1800);
    EXPECT_EQ(walk.finder.StepMetres(), 60);
    // It was off in a train.
    EXPECT_EQ(Walk().To(100, 50).To(20'000, 1800).To(20'100, 100).End().finder.Count(), 0U);
}

TEST(PauseFinderTest, PausesWithoutAStepBetweenAreOne) {
    Walk walk;
    walk.To(100, 50).To(110, 200).To(125, 200).To(400, 200).End();
    ASSERT_EQ(walk.finder.Count(), 1U);
    EXPECT_EQ(walk.finder.Pauses()[0].start, 50'000);
    EXPECT_EQ(walk.finder.Pauses()[0].seconds, 400);
    EXPECT_EQ(walk.finder.SecondsInSegments(), 400);
}

TEST(PauseFinderTest, AnOutlierDoesNotEndAPause) {
    Walk walk;
    walk.To(100, 50).To(105, 60).To(900, 1, true).To(102, 1, true).To(104, 60).To(300, 100).End();
    ASSERT_EQ(walk.finder.Count(), 1U);
    EXPECT_EQ(walk.finder.Pauses()[0].seconds, 122);
    EXPECT_EQ(walk.finder.SecondsInSegments(), 122);
    EXPECT_EQ(walk.finder.StepMetres(), 7);
    EXPECT_EQ(walk.finder.StepSeconds(), 120);
}

TEST(PauseFinderTest, TheTimeBetweenSegmentsIsOneIfItLedNotFar) {
    Walk walk;
    walk.To(100, 50).NewSegment(130, 300).To(230, 50).End();
    ASSERT_EQ(walk.finder.Count(), 1U);
    EXPECT_EQ(walk.finder.Pauses()[0].start, 50'000);
    EXPECT_EQ(walk.finder.Pauses()[0].seconds, 300);
    EXPECT_EQ(walk.finder.Seconds(), 300);
    EXPECT_EQ(walk.finder.SecondsInSegments(), 0);
    EXPECT_EQ(Walk().To(100, 50).NewSegment(5000, 300).End().finder.Count(), 0U);
    EXPECT_EQ(Walk().To(100, 50).NewSegment(100, 99).End().finder.Count(), 0U);
}

TEST(PauseFinderTest, APauseAtTheEndCounts) {
    EXPECT_EQ(Walk().To(100, 50).To(101, 60).To(102, 60).End().finder.Count(), 1U);
}

TEST(PauseFinderTest, ListsNoMoreThanTheOptionsSayAndCountsAll) {
    StatisticsOptions options = Options();
    options.listedPauses = 2;
    Walk walk(options);
    for (int i = 1; i <= 5; ++i)
        walk.To(i * 1000, 50).To(i * 1000 + 10, 200);
    walk.To(9000, 50).End();
    EXPECT_EQ(walk.finder.Count(), 5U);
    EXPECT_EQ(walk.finder.Seconds(), 1000);
    ASSERT_EQ(walk.finder.Pauses().size(), 2U);
    EXPECT_EQ(walk.finder.Pauses()[1].longitude, 2000);
    EXPECT_EQ(walk.finder.Pauses()[1].seconds, 200);
}

} // namespace
