// SPDX-License-Identifier: MIT
#include <vexaTrackLib/merging/LogUnion.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using vexaTrackLib::merging::LogUnion;
using Log = LogUnion::Log;
using Outcome = LogUnion::Outcome;

Log Version(std::int32_t id, const std::string& date, const std::string& text) {
    Log log;
    log.id = id;
    log.date = icu::UnicodeString::fromUTF8(date);
    log.text = icu::UnicodeString::fromUTF8(text);
    return log;
}

std::vector<std::string> Texts(LogUnion& logs) {
    std::vector<std::string> texts;
    for (const Log& log : logs.TakeLogs())
        log.text.toUTF8String(texts.emplace_back());
    return texts;
}

TEST(LogUnionTest, EachLogIsThereOnceAndTheNewestFirst) {
    LogUnion logs({Version(2, "2024-05-02", "b")}, 1.0);
    EXPECT_EQ(logs.Add(Version(1, "2024-05-01", "a"), 1.0), Outcome::kAdded);
    EXPECT_EQ(logs.Add(Version(3, "2024-05-03", "c"), 1.0), Outcome::kAdded);
    EXPECT_EQ(logs.Add(Version(2, "2024-05-02", "b"), 1.0), Outcome::kSame);
    EXPECT_THAT(Texts(logs), ElementsAre("c", "b", "a"));
}

TEST(LogUnionTest, TheVersionOfTheNewerDocumentStays) {
    LogUnion logs({Version(1, "d", "a")}, 2.0);
    EXPECT_EQ(logs.Add(Version(1, "d", "older"), 1.0), Outcome::kLeftOut);
    EXPECT_EQ(logs.Add(Version(1, "d", "as old"), 2.0), Outcome::kLeftOut);
    EXPECT_EQ(logs.Add(Version(1, "d", "no time"), std::nullopt), Outcome::kLeftOut);
    EXPECT_EQ(logs.Add(Version(1, "d", "newer"), 3.0), Outcome::kReplaced);
    EXPECT_EQ(logs.Add(Version(1, "d", "older"), 2.5), Outcome::kLeftOut);
    EXPECT_THAT(Texts(logs), ElementsAre("newer"));

    LogUnion timeless({Version(1, "d", "a")}, std::nullopt);
    EXPECT_EQ(timeless.Add(Version(1, "d", "b"), 3.0), Outcome::kLeftOut);
}

TEST(LogUnionTest, AVersionIsAsNewAsTheNewestDocumentThatHasIt) {
    LogUnion logs({Version(1, "d", "a")}, 1.0);
    logs.Observe(Version(1, "d", "a"), 3.0);
    logs.Observe(Version(1, "d", "b"), 9.0);
    logs.Observe(Version(2, "d", "c"), 9.0);
    EXPECT_EQ(logs.Add(Version(1, "d", "b"), 2.0), Outcome::kLeftOut);
    EXPECT_EQ(logs.Add(Version(1, "d", "b"), 4.0), Outcome::kReplaced);
}

TEST(LogUnionTest, LogsWithoutAnIdentifierAreKnownByTheirContent) {
    LogUnion logs({Version(0, "d", "a")}, 1.0);
    EXPECT_EQ(logs.Add(Version(0, "d", "a"), 2.0), Outcome::kSame);
    EXPECT_EQ(logs.Add(Version(0, "d", "b"), 2.0), Outcome::kAdded);
    EXPECT_THAT(Texts(logs), ElementsAre("a", "b"));
}

TEST(LogUnionTest, AllLogsOfTheFirstListAreKept) {
    LogUnion logs({Version(1, "d", "a"), Version(1, "d", "b"), Version(1, "d", "a")}, 1.0);
    EXPECT_THAT(Texts(logs), ElementsAre("a", "b", "a"));
}

TEST(LogUnionTest, TellsWhetherAListLacksSomething) {
    const std::vector<Log> list = {Version(1, "d", "a"), Version(2, "d", "b")};
    LogUnion logs(list, 1.0);
    EXPECT_FALSE(logs.IsMoreThan(list));
    EXPECT_TRUE(logs.IsMoreThan({list[0]}));
    EXPECT_TRUE(logs.IsMoreThan({list[0], Version(2, "d", "other")}));
    logs.Add(Version(3, "d", "c"), 1.0);
    EXPECT_TRUE(logs.IsMoreThan(list));
}

} // namespace
