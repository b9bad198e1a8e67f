// SPDX-License-Identifier: MIT
#include <vexagpx/report/SchemaReport.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <set>
#include <string>

namespace {

using vexagpx::SchemaError;
using vexagpx::SchemaErrorKind;
using vexagpx::SchemaReport;

constexpr SchemaErrorKind kKinds[] = {SchemaErrorKind::kOtherRoot,        SchemaErrorKind::kNoSchema,
                                      SchemaErrorKind::kUnknownElement,   SchemaErrorKind::kMisplacedElement,
                                      SchemaErrorKind::kUnknownAttribute, SchemaErrorKind::kMissingAttribute,
                                      SchemaErrorKind::kStrayText,        SchemaErrorKind::kBadValue};

void Add(SchemaReport& report, const std::string& element, const std::string& message) {
    report.Add(SchemaError{element, SchemaErrorKind::kBadValue, message}, {});
}

TEST(SchemaReportTest, EveryKindHasItsOwnCauseWithAdvice) {
    std::set<std::string> words;
    for (const SchemaErrorKind kind : kKinds) {
        words.insert(std::string(vexagpx::SchemaCause(kind).word));
        EXPECT_FALSE(std::string(vexagpx::SchemaCause(kind).advice).empty());
    }
    EXPECT_EQ(words.size(), std::size(kKinds));
}

TEST(SchemaReportTest, AnEmptyReportIsValid) {
    SchemaReport report(false);
    EXPECT_TRUE(report.IsValid());
    Add(report, "gpx", "a");
    EXPECT_FALSE(report.IsValid());
}

TEST(SchemaReportTest, EverythingIsCountedAndTheFirstMessagesOfAKindAreListed) {
    SchemaReport report(false);
    for (std::size_t i = 0; i < SchemaReport::kMostMessages + 5; ++i)
        Add(report, "gpx/wpt", std::to_string(i));
    Add(report, "gpx/trk", "other");
    EXPECT_EQ(report.Errors().Count(), SchemaReport::kMostMessages + 6);
    EXPECT_EQ(report.Errors().DifferentCount(), SchemaReport::kMostMessages + 2);
}

TEST(SchemaReportTest, ElementsBeyondTheLimitAreListedAsOne) {
    SchemaReport report(false);
    for (std::size_t i = 0; i < SchemaReport::kMostKinds + 5; ++i)
        Add(report, "gpx/e" + std::to_string(i), "a");
    EXPECT_EQ(report.Errors().Count(), SchemaReport::kMostKinds + 5);
    EXPECT_EQ(report.Errors().DifferentCount(), SchemaReport::kMostKinds + 1);
}

} // namespace
