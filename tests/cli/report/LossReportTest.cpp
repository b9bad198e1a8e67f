// SPDX-License-Identifier: MIT
#include <vexagpx/report/LossReport.h>

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using namespace vexagpx;
using namespace vexaTransferLib;

GpxSkippedElement Element(const std::string& element, const std::string& message, std::uint64_t line,
                          bool lost = false) {
    GpxSkippedElement what;
    what.element = element;
    what.line = line;
    what.column = 1;
    what.reason = kGpxUnreadable;
    what.message = message;
    what.isLoss = lost;
    return what;
}

struct Listed {
    std::string element;
    std::string message;
    std::uint64_t count;
    bool operator==(const Listed&) const = default;
};

std::vector<Listed> ListedBy(const LossReport& report) {
    std::vector<Listed> listed;
    report.SkippedElements().ForEach([&](const auto& entry) {
        listed.push_back({entry.value.element, entry.value.message, entry.count});
    });
    return listed;
}

TEST(LossReportTest, BeyondAThousandKindsTheRestIsCounted) {
    LossReport report(false);
    for (std::uint64_t i = 0; i < 3000; ++i)
        report.Skipped(Element("n" + std::to_string(i), "m", i + 1, i >= 2000));
    report.Skipped(Element("n999", "another", 4000));
    report.Skipped(Element("n999", "m", 4001));
    const std::vector<Listed> listed = ListedBy(report);
    ASSERT_EQ(listed.size(), 1003U);
    EXPECT_EQ(listed[0], (Listed{"n0", "m", 1}));
    EXPECT_EQ(listed[999], (Listed{"n999", "m", 2}));
    EXPECT_EQ(listed[1000], (Listed{"...", "More elements, which --all lists.", 1000}));
    EXPECT_EQ(listed[1001], (Listed{"...", "More elements, which --all lists.", 1000}));
    EXPECT_EQ(listed[1002], (Listed{"n999", "another", 1}));
    EXPECT_EQ(report.SkippedElements().Count(), 3002U);
    EXPECT_EQ(report.LostCount(), 1000U);
}

TEST(LossReportTest, WithAllEveryLocationIsListedAndBeyondAHundredThousandNotEveryText) {
    constexpr std::size_t kMost = LossReport::kMostListed;
    LossReport report(true);
    for (std::uint64_t i = 0; i < 2 * kMost; ++i)
        report.Skipped(Element("n", std::to_string(i), i + 1, true));
    report.Skipped(Element("other", "m", 2 * kMost + 1));
    report.Skipped(Element("n", "7", 2 * kMost + 2));
    const std::vector<Listed> listed = ListedBy(report);
    ASSERT_EQ(listed.size(), 2 * kMost + 2);
    EXPECT_EQ(listed[kMost - 1], (Listed{"n", std::to_string(kMost - 1), 1}));
    EXPECT_EQ(listed[kMost], (Listed{"n", "More of this kind than are listed.", 1}));
    EXPECT_EQ(listed[2 * kMost], (Listed{"...", "More elements than are listed.", 1}));
    EXPECT_EQ(report.LostCount(), 2 * kMost);
    EXPECT_LT(report.SkippedElements().DifferentCount(), kMost + 10);
}

TEST(LossReportTest, ALongTextIsCutBetweenCharacters) {
    LossReport report(false);
    const std::string start(999, 'a');
    report.Skipped(Element(start + "b", "m", 1));
    report.Skipped(Element(start + "\xC3\xA4z", start + "bc", 2));
    EXPECT_THAT(ListedBy(report),
                ElementsAre(Listed{start + "b", "m", 1}, Listed{start + "...", start + "b...", 1}));
}

TEST(LossReportTest, MessagesOfTheParserAreLimitedToo) {
    for (const bool each : {false, true}) {
        LossReport report(each);
        const std::size_t most = each ? LossReport::kMostListed : LossReport::kMostKinds;
        for (std::size_t i = 0; i < most + 5; ++i)
            report.ParserMessage({kGpxMessageError, i + 1, 1, std::to_string(i), "f"});
        report.ParserMessage({kGpxMessageError, most + 6, 1, "0", "f"});
        std::string last;
        std::uint64_t more = 0;
        report.Messages().ForEach([&](const auto& entry) {
            if (!entry.value.text.starts_with("More"))
                return;
            more += entry.count;
            last = entry.value.text;
            EXPECT_EQ(entry.value.file, "");
        });
        EXPECT_EQ(more, 5U);
        EXPECT_EQ(last, each ? "More messages than are listed." : "More messages, which --all lists.");
        EXPECT_EQ(report.Messages().DifferentCount(), most + 1);
        EXPECT_EQ(report.Messages().Count(), most + 6);
    }
}

TEST(LossReportTest, EveryReasonAndSeverityHasItsWord) {
    const std::vector<std::pair<GpxSkipReason, const char*>> reasons = {
        {kGpxForeignNamespace, "foreign-namespace"},
        {kGpxUnknownElement, "unknown-element"},
        {kGpxOtherVersion, "other-version"},
        {kGpxOutOfOrder, "out-of-order"},
        {kGpxUnreadable, "unreadable"},
        {kGpxRefused, "refused"},
        {kGpxIncomplete, "incomplete"},
        {kGpxReplaced, "replaced"},
        {kGpxUnreadAttribute, "unread-attribute"},
        {kGpxRounded, "rounded"},
        {kGpxCleaned, "cleaned"},
        {kGpxInvented, "invented"},
        {kGpxChanged, "changed"},
        {kGpxTolerated, "tolerated"},
    };
    for (const auto& [reason, word] : reasons)
        EXPECT_EQ(Word(reason), word);
    EXPECT_EQ(Word(kGpxMessageWarning), "warning");
    EXPECT_EQ(Word(kGpxMessageError), "error");
    EXPECT_EQ(Word(kGpxMessageFatalError), "fatal-error");
}

} // namespace
