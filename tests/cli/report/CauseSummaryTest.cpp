// SPDX-License-Identifier: MIT
#include <vexagpx/report/CauseSummary.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <string>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;
using vexagpx::CauseSummary;
using vexagpx::LossReport;
using vexagpx::Output;
using namespace vexaTransferLib;

GpxSkippedElement Skipped(const std::string& element, GpxSkipReason reason, bool isLoss, std::uint64_t line) {
    GpxSkippedElement what;
    what.element = element;
    what.reason = reason;
    what.message = "m";
    what.isLoss = isLoss;
    what.line = line;
    return what;
}

std::string TextOf(const CauseSummary& summary) {
    std::string text;
    {
        Output out([&text](std::string_view piece) { text += piece; });
        summary.WriteText(out);
        out.Flush();
    }
    return text;
}

json JsonOf(const CauseSummary& summary) {
    std::string text;
    {
        Output out([&text](std::string_view piece) { text += piece; });
        summary.WriteJson(out);
        out.Flush();
    }
    return json::parse(text);
}

TEST(CauseSummaryTest, EqualCausesOfManyFilesAreOneGroup) {
    CauseSummary summary;
    for (int i = 0; i < 5; ++i) {
        LossReport report(false);
        report.Skipped(Skipped("gpx/wpt/speed", kGpxUnknownElement, true, 7));
        report.Skipped(Skipped("gpx/wpt/speed", kGpxUnknownElement, true, 9));
        report.Skipped(Skipped("gpx/wpt/course", kGpxUnknownElement, true, 8));
        summary.AddDocument(std::to_string(i) + ".gpx", {report});
    }
    summary.AddDocument("fine.gpx", {LossReport(false)});
    EXPECT_EQ(TextOf(summary),
              "6 documents: 1 without a loss, 5 with losses.\n"
              "\n"
              "Lost\n"
              "  5 files, 15 times: Elements that the library does not keep. Programs with this "
              "library do not keep it; vexagpx convert does.\n"
              "    gpx/wpt/speed (10), gpx/wpt/course (5)\n"
              "    0.gpx:7, 1.gpx:7, 2.gpx:7, ...\n");
}

TEST(CauseSummaryTest, TheMostFrequentCauseComesFirst) {
    CauseSummary summary;
    summary.AddFailure("a.gpx", "a.gpx (line 1: input ended before all started tags were ended)",
                       {LossReport(false)});
    summary.AddFailure("b.gpx", "b.gpx is empty", {LossReport(false)});
    summary.AddFailure("c.gpx", "c.gpx is empty", {LossReport(false)});
    const json causes = JsonOf(summary)["causes"];
    ASSERT_EQ(causes.size(), 2U);
    EXPECT_EQ(causes[0]["cause"], "empty");
    EXPECT_EQ(causes[0]["files"], 2);
    EXPECT_EQ(causes[1]["cause"], "cut-off");
    EXPECT_EQ(causes[1]["examples"][0]["file"], "a.gpx");
    EXPECT_THAT(std::string(causes[1]["examples"][0]["message"]), HasSubstr("input ended"));
}

TEST(CauseSummaryTest, TheNameOfAFileIsNoCause) {
    CauseSummary summary;
    summary.AddFailure("zero-bytes-latitude.gpx", "zero-bytes-latitude.gpx is empty; look for it.",
                       {LossReport(false)});
    EXPECT_EQ(JsonOf(summary)["causes"][0]["cause"], "empty");
}

TEST(CauseSummaryTest, WhatIsNoLossIsInJsonAlone) {
    CauseSummary summary;
    LossReport report(false);
    report.Skipped(Skipped("gpx", kGpxInvented, false, 1));
    summary.AddDocument("a.gpx", {report});
    EXPECT_EQ(TextOf(summary), "1 document: 1 without a loss.\n");
    EXPECT_EQ(JsonOf(summary)["causes"][0]["kind"], "note");
    EXPECT_EQ(JsonOf(summary)["causes"][0]["elements"]["gpx"], 1);
}

TEST(CauseSummaryTest, EveryReasonHasAdvice) {
    for (std::uint32_t reason = kGpxForeignNamespace; reason <= kGpxTolerated; ++reason) {
        const vexagpx::Cause& cause = vexagpx::SkipCause(static_cast<GpxSkipReason>(reason));
        EXPECT_EQ(cause.word, vexagpx::Word(static_cast<GpxSkipReason>(reason)));
        EXPECT_FALSE(cause.title.empty());
        EXPECT_FALSE(cause.advice.empty());
    }
    EXPECT_EQ(vexagpx::SkipCause(static_cast<GpxSkipReason>(99)).word, "other");
    EXPECT_EQ(vexagpx::FailureCause("").word, "other");
}

TEST(CauseSummaryTest, ManyDifferentNamesTakeBoundedMemory) {
    CauseSummary summary;
    for (int i = 0; i < 100; ++i) {
        LossReport report(false);
        for (int j = 0; j < 100; ++j)
            report.Skipped(Skipped("gpx/e" + std::to_string(100 * i + j), kGpxUnknownElement, true, 1));
        summary.AddDocument("a.gpx", {report});
    }
    const json cause = JsonOf(summary)["causes"][0];
    EXPECT_EQ(cause["count"], 10'000);
    EXPECT_EQ(cause["elements"].size(), 1'000U);
}

} // namespace
