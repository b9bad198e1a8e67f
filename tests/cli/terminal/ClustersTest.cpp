// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/Clusters.h>
#include <vexagpx/terminal/DisplayText.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using vexagpx::Cluster;
using vexagpx::ClusterAt;
using vexagpx::DisplayWidth;
using vexagpx::Fitted;
using vexagpx::FittedAtEnd;
using vexagpx::Printable;

constexpr char16_t kFamily[] = u"\U0001F468\u200D\U0001F469\u200D\U0001F467";
constexpr char16_t kFlag[] = u"\U0001F1E8\U0001F1ED";
constexpr char16_t kEngland[] = u"\U0001F3F4\U000E0067\U000E0062\U000E0065\U000E006E\U000E0067\U000E007F";
constexpr char16_t kThumb[] = u"\U0001F44D\U0001F3FD";
constexpr char16_t kHeart[] = u"\u2764\uFE0F";
constexpr char16_t kKey[] = u"1\uFE0F\u20E3";

std::vector<std::pair<std::int32_t, std::size_t>> ClustersOf(const icu::UnicodeString& text) {
    std::vector<std::pair<std::int32_t, std::size_t>> clusters;
    for (std::int32_t at = 0; at < text.length();) {
        const Cluster cluster = ClusterAt(text, at);
        clusters.emplace_back(cluster.end - at, cluster.width);
        at = cluster.end;
    }
    return clusters;
}

using Clusters = std::vector<std::pair<std::int32_t, std::size_t>>;

TEST(ClustersTest, JoinedEmojiAreOneClusterOfTwoColumns) {
    for (const char16_t* const emoji : {kFamily, kFlag, kEngland, kThumb, kHeart, kKey}) {
        const icu::UnicodeString text(emoji);
        EXPECT_EQ(ClustersOf(text), (Clusters{{text.length(), 2}})) << testing::PrintToString(text.length());
        EXPECT_EQ(ClustersOf(u"a" + text + u"b"), (Clusters{{1, 1}, {text.length(), 2}, {1, 1}}));
    }
}

TEST(ClustersTest, FlagsAreTakenInPairs) {
    const icu::UnicodeString flag(kFlag);
    EXPECT_EQ(ClustersOf(flag + flag), (Clusters{{4, 2}, {4, 2}}));
    EXPECT_EQ(ClustersOf(icu::UnicodeString(UChar32{0x1F1E8})), (Clusters{{2, 1}}));
}

TEST(ClustersTest, MarksBelongToTheirLetters) {
    EXPECT_EQ(ClustersOf(u"e\u0301x"), (Clusters{{2, 1}, {1, 1}}));
    EXPECT_EQ(ClustersOf(u"\u5C71\u5C71"), (Clusters{{1, 2}, {1, 2}}));
    EXPECT_EQ(ClustersOf(u"\u1112\u1161\u11AB"), (Clusters{{3, 2}}));
    EXPECT_EQ(ClustersOf(u"\u0301"), (Clusters{{1, 0}}));
}

TEST(ClustersTest, AJoinerBetweenLettersTakesNoColumn) {
    EXPECT_EQ(DisplayWidth(u"\u0646\u0645\u06CC\u200C\u062E\u0648\u0627\u0647\u0645"), 8U);
}

TEST(ClustersTest, PrintableKeepsEmojiWhole) {
    for (const char16_t* const emoji : {kFamily, kFlag, kEngland, kThumb, kHeart, kKey}) {
        const icu::UnicodeString text = u"a " + icu::UnicodeString(emoji) + u" b";
        EXPECT_EQ(Printable(text), text);
    }
    EXPECT_EQ(Printable(u"\u0646\u0645\u06CC\u200C\u062E"), u"\u0646\u0645\u06CC\u200C\u062E");
}

TEST(ClustersTest, PrintableDropsJoinersThatJoinNothing) {
    EXPECT_EQ(Printable(u"\u200Da\u200Db\u200D"), u"ab");
    EXPECT_EQ(Printable(u"a\uFE0Eb\u200B"), u"ab");
    EXPECT_EQ(Printable(u"\u5C71\u200D\u200D\u200D\u5C71"), u"\u5C71\u200D\u5C71");
    EXPECT_EQ(Printable(icu::UnicodeString(UChar32{0xE0067})), u"");
    EXPECT_EQ(Printable(u"\u5C71 \u200D\u5C71"), u"\u5C71 \u5C71");
}

TEST(ClustersTest, WhatIsFittedEndsWithAWholeCluster) {
    const icu::UnicodeString family(kFamily);
    EXPECT_EQ(Fitted(family + family, 4), family + family);
    EXPECT_EQ(Fitted(family + family, 3), family + u"\u2026");
    EXPECT_EQ(Fitted(family + family, 2), u"\u2026");
    EXPECT_EQ(FittedAtEnd(family + family, 3), u"\u2026" + family);
}

TEST(ClustersTest, ALongClusterTakesTimeInProportion) {
    icu::UnicodeString text(u"e");
    for (int i = 0; i < 1'000'000; ++i)
        text.append(u'\u0301');
    EXPECT_EQ(DisplayWidth(text), 1U);
    EXPECT_EQ(Fitted(text, 1), text);
}

} // namespace
