// SPDX-License-Identifier: MIT
#include <vexagpx/report/UnwrittenReport.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace {

using testing::ElementsAre;
using vexagpx::UnwrittenLines;
using vexagpx::UnwrittenReport;

TEST(UnwrittenReportTest, EqualThingsAreOneLineWithTheirNumber) {
    UnwrittenReport report;
    report.Add({"waypoint 2", "link", "M."});
    report.Add({"document", "copyright", "N."});
    report.Add({"waypoint 5", "link", "M."});
    report.Add({"waypoint 6", "link", "Other."});
    EXPECT_EQ(report.Count(), 4U);
    EXPECT_THAT(UnwrittenLines(report),
                ElementsAre("link (2 times, first in waypoint 2): M.", "copyright (in document): N.",
                            "link (in waypoint 6): Other."));
}

TEST(UnwrittenReportTest, AMillionKindsAreAFewLines) {
    UnwrittenReport report;
    for (std::size_t i = 0; i < 1000000; ++i)
        report.Add({"track 1", "x" + std::to_string(i), "M."});
    report.Add({"track 2", "x0", "M."});
    EXPECT_EQ(report.Count(), 1000001U);
    EXPECT_EQ(report.Kinds().size(), UnwrittenReport::kMostKinds);
    const auto lines = UnwrittenLines(report);
    ASSERT_EQ(lines.size(), UnwrittenReport::kMostKinds + 1);
    EXPECT_EQ(lines.front(), "x0 (2 times, first in track 1): M.");
    EXPECT_EQ(lines.back(), "and 999990 things of other kinds");
}

TEST(UnwrittenReportTest, ReportsOfSeveralDocumentsAreAddedUp) {
    UnwrittenReport document;
    for (std::size_t i = 0; i < UnwrittenReport::kMostKinds + 1; ++i)
        document.Add({"route 1", "x" + std::to_string(i), "M."});
    UnwrittenReport all;
    all.Add(document, "one.gpx");
    all.Add(document, "two.gpx");
    EXPECT_EQ(all.Count(), 2 * UnwrittenReport::kMostKinds + 2);
    EXPECT_EQ(UnwrittenLines(all).front(), "x0 (2 times, first in route 1 of one.gpx): M.");
    EXPECT_EQ(UnwrittenLines(all).back(), "and 2 things of other kinds");
}

TEST(UnwrittenReportTest, ALongOrDangerousNameIsShownSafely) {
    UnwrittenReport report;
    report.Add({"route 1", std::string(1000, 'a') + "b", "M."});
    report.Add({"route 1", "c\xC2\x9B", "M."});
    EXPECT_THAT(UnwrittenLines(report),
                ElementsAre(std::string(UnwrittenReport::kLongestName - 1, 'a') + "… (in route 1): M.",
                            "c (in route 1): M."));
}

} // namespace
