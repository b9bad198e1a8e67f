// SPDX-License-Identifier: MIT
#include <vexagpx/page/PathThinning.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

using vexagpx::kNoValue;
using vexagpx::PageDocument;
using vexagpx::PagePoint;
using vexagpx::PageSegment;
using vexagpx::ThinningTolerance;
using vexagpx::ThinPaths;
using vexagpx::ThinSegment;

/// A walk with turns, hills, rests and steps back, a point each second.
PageSegment Walk(std::size_t points, unsigned seed) {
    std::mt19937 random(seed);
    std::normal_distribution<double> noise(0.0, 1.0);
    PageSegment segment;
    double direction = 0.0;
    PagePoint point;
    point.height = 300.0;
    for (std::size_t i = 0; i < points; ++i) {
        direction += 0.2 * noise(random);
        const double step = i % 500 < 60 ? 0.0 : 1.0 + 0.1 * noise(random);
        point.x += step * std::cos(direction);
        point.y += step * std::sin(direction);
        point.distance += step;
        point.height += 0.3 * noise(random);
        point.time = 1000.0 * static_cast<double>(i);
        segment.push_back(point);
    }
    return segment;
}

double DistanceFromLine(const PagePoint& point, const PagePoint& start, const PagePoint& end) {
    const double dx = end.x - start.x;
    const double dy = end.y - start.y;
    const double square = dx * dx + dy * dy;
    const double along = ((point.x - start.x) * dx + (point.y - start.y) * dy) / square;
    const double part = square == 0.0 ? 0.0 : std::clamp(along, 0.0, 1.0);
    return std::hypot(point.x - start.x - part * dx, point.y - start.y - part * dy);
}

/// The value of the line between two points at an argument between theirs.
double Between(double argument, double start, double end, double startValue, double endValue) {
    return end > start ? startValue + (endValue - startValue) * (argument - start) / (end - start)
                       : startValue;
}

TEST(PathThinningTest, WhatIsLeftOutIsNearToWhatIsKept) {
    const ThinningTolerance tolerance{2.0, 1.5, 3.0, true};
    for (const unsigned seed : {1U, 2U, 3U}) {
        const PageSegment whole = Walk(5000, seed);
        PageSegment thin = whole;
        ThinSegment(thin, tolerance);
        EXPECT_LT(thin.size(), whole.size() / 3);
        ASSERT_EQ(thin.back().time, whole.back().time);
        std::size_t at = 0;
        for (const PagePoint& point : whole) {
            while (thin[at + 1].time < point.time)
                ++at;
            const PagePoint& start = thin[at];
            const PagePoint& end = thin[at + 1];
            EXPECT_LE(DistanceFromLine(point, start, end), tolerance.map * 1.001) << point.time;
            EXPECT_LE(std::abs(Between(point.time, start.time, end.time, start.distance, end.distance) -
                               point.distance),
                      tolerance.distance * 1.001)
                << point.time;
            const double height =
                Between(point.distance, start.distance, end.distance, start.height, end.height);
            if (end.distance > start.distance) {
                EXPECT_LE(std::abs(height - point.height), tolerance.height * 1.001) << point.time;
            }
        }
    }
}

TEST(PathThinningTest, AStraightLineKeepsItsEnds) {
    PageSegment line;
    for (int i = 0; i < 1000; ++i)
        line.push_back({1.0 * i, 2.0 * i, 3.0 * i, 100.0, 1000.0 * i});
    ThinSegment(line, {0.1, 0.1, 0.1, true});
    ASSERT_EQ(line.size(), 2U);
    EXPECT_EQ(line.front().x, 0.0);
    EXPECT_EQ(line.back().x, 999.0);
}

TEST(PathThinningTest, NoPieceIsAsLongAsHalfAMapOfTheWorld) {
    PageSegment line;
    for (int i = 0; i <= 36; ++i)
        line.push_back({1e6 * i, 0.0, 1e6 * i, kNoValue, kNoValue});
    ThinSegment(line, {1e4, 1.0, 1e4, true});
    EXPECT_LT(line.size(), 10U);
    for (std::size_t i = 1; i < line.size(); ++i)
        EXPECT_LE(line[i].x - line[i - 1].x, 8e6);
}

TEST(PathThinningTest, ATurningPointStays) {
    PageSegment line;
    for (int i = 0; i <= 100; ++i)
        line.push_back({50.0 - std::abs(50.0 - i), 0.0, 1.0 * i, kNoValue, kNoValue});
    ThinSegment(line, {1.0, 1.0, 1.0, true});
    const auto farthest =
        std::max_element(line.begin(), line.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
    EXPECT_NEAR(farthest->x, 50.0, 1.0);
}

TEST(PathThinningTest, TheEndsOfAStretchWithoutHeightsStay) {
    PageSegment line;
    for (int i = 0; i < 100; ++i)
        line.push_back({1.0 * i, 0.0, 1.0 * i, i >= 40 && i < 60 ? kNoValue : 10.0, kNoValue});
    ThinSegment(line, {1.0, 1.0, 1.0, true});
    std::vector<double> kept;
    for (const PagePoint& point : line)
        kept.push_back(point.x);
    EXPECT_EQ(kept, (std::vector<double>{0.0, 39.0, 40.0, 59.0, 60.0, 99.0}));
}

TEST(PathThinningTest, ShortSegmentsStayAsTheyAre) {
    for (std::size_t points = 0; points < 3; ++points) {
        PageSegment segment(points);
        ThinSegment(segment, {1.0, 1.0, 1.0, true});
        EXPECT_EQ(segment.size(), points);
    }
}

TEST(PathThinningTest, ADocumentHasAtMostTheLimit) {
    PageDocument document;
    document.paths.resize(1);
    document.paths[0].segments = {Walk(20000, 4), Walk(20000, 5)};
    ThinPaths(document, 500);
    const auto& segments = document.paths[0].segments;
    EXPECT_LE(segments[0].size() + segments[1].size(), 500U);
    EXPECT_GE(segments[0].size() + segments[1].size(), 50U);
}

TEST(PathThinningTest, TimesThatGoBackAtEachPointDoNotExceedTheLimit) {
    PageDocument document;
    document.paths.resize(1);
    document.paths[0].segments = {Walk(20000, 6)};
    for (std::size_t i = 0; i < 20000; ++i) {
        PagePoint& point = document.paths[0].segments[0][i];
        point.time = i % 2 == 0 ? -point.time : kNoValue;
        point.height = i % 3 == 0 ? kNoValue : point.height;
    }
    ThinPaths(document, 500);
    EXPECT_LE(document.paths[0].segments[0].size(), 500U);
}

TEST(PathThinningTest, SeveralDocumentsShareTheLimit) {
    std::vector<PageDocument> documents(2);
    for (PageDocument& document : documents) {
        document.paths.resize(1);
        document.paths[0].segments = {Walk(20000, 7)};
    }
    vexagpx::ThinDocuments(documents, 1000);
    EXPECT_LE(documents[0].paths[0].segments[0].size(), 500U);
    EXPECT_LE(documents[1].paths[0].segments[0].size(), 500U);
}

} // namespace
