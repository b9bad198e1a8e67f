// SPDX-License-Identifier: MIT
#include <vexaTrackLib/statistics/OutlierFilter.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using vexaTrackLib::statistics::OutlierFilter;
using vexaTrackLib::statistics::Step;

struct Piece {
    double metres;
    double seconds = 1;
};

/// A character for each step: 'x' for an outlier, '.' for another.
std::string Judged(const std::vector<Piece>& pieces) {
    OutlierFilter filter;
    std::string verdicts;
    const auto judge = [&verdicts](const Step&, bool isOutlier) { verdicts += isOutlier ? 'x' : '.'; };
    for (const Piece& piece : pieces)
        filter.Add({{}, piece.metres, piece.seconds}, judge);
    filter.Break(judge);
    return verdicts;
}

TEST(OutlierFilterTest, FindsWhatOnlyTheReceiverMade) {
    struct Row {
        std::vector<Piece> pieces;
        const char* judged;
        const char* reason;
    };
    const std::vector<Row> rows = {
        {{}, "", "nothing"},
        {{{1}, {1}, {1}, {1}, {1}, {1}, {1}, {1}}, "........", "a walk"},
        {{{1}, {1}, {1}, {200}, {201}, {1}, {1}, {1}}, "...xx...", "a jump and the way back"},
        {{{1}, {1}, {1}, {200}, {1}, {1}, {1}, {1}}, "...x....", "a jump without a way back"},
        {{{1}, {1}, {1}, {200}, {3}, {202}, {1}, {1}}, "...x.x..", "two points far off"},
        {{{200}, {1}, {1}, {1}, {1}, {1}}, "x.....", "the first step"},
        {{{1}, {1}, {1}, {1}, {1}, {200}}, ".....x", "the last step"},
        {{{0}, {0}, {0}, {0}, {3}, {6}, {9}, {12}, {15}, {18}, {18}}, "...........", "a car starts"},
        {{{18}, {17}, {14}, {10}, {6}, {2}, {0}, {0}, {0}, {0}, {0}}, "...........", "a car stops"},
        {{{0}, {3}, {0}, {3}, {0}, {3}, {0}, {3}}, "........", "places that change every other second"},
        {{{250}, {250}, {251}, {250}, {249}, {250}}, "......", "a plane"},
        {{{5, 60}, {9, 60}, {720, 60}, {12, 60}, {8, 60}, {9, 60}}, "......", "one minute in a bus"},
        {{{5, 60}, {9, 60}, {9000, 60}, {9000, 60}, {8, 60}, {9, 60}}, "..xx..", "a place from a far mast"},
        {{{1100}, {1100}, {1100}, {1100}, {1100}}, "xxxxx", "faster than anything"},
        {{{1}, {500}, {500}}, "...", "too few neighbours for a judgement"},
        {{{0, 0}, {1, 0}, {1}, {1}, {1}, {1}}, ".x....", "steps that take no time"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Judged(row.pieces), row.judged) << row.reason;
}

TEST(OutlierFilterTest, ComparesWithTheSegmentAlone) {
    OutlierFilter filter;
    std::string verdicts;
    const auto judge = [&verdicts](const Step&, bool isOutlier) { verdicts += isOutlier ? 'x' : '.'; };
    for (int i = 0; i < 40; ++i)
        filter.Add({{}, 1, 1}, judge);
    filter.Break(judge);
    for (int i = 0; i < 4; ++i)
        filter.Add({{}, 90, 1}, judge);
    filter.Break(judge);
    EXPECT_EQ(verdicts, std::string(44, '.'));
}

TEST(OutlierFilterTest, GivesTheStepsInTheirOrder) {
    OutlierFilter filter;
    std::vector<double> metres;
    const auto judge = [&metres](const Step& step, bool) { metres.push_back(step.metres); };
    std::vector<double> expected;
    for (int i = 0; i < 50; ++i) {
        filter.Add({{}, i / 50.0, 1}, judge);
        expected.push_back(i / 50.0);
        EXPECT_LE(metres.size(), expected.size());
        EXPECT_LE(expected.size() - metres.size(), 5U);
    }
    filter.Break(judge);
    EXPECT_EQ(metres, expected);
}

} // namespace
