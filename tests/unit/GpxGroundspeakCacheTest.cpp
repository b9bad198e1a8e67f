// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxGroundspeakCache.h>

#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

using vexaTransferLib::GpxGroundspeakCache;
using vexaTransferLib::GpxGroundspeakCacheLog;
using vexaTransferLib::testing_support::Utf8;

namespace {

static_assert(!std::is_polymorphic_v<GpxGroundspeakCache>);
static_assert(!std::is_polymorphic_v<GpxGroundspeakCacheLog>);
static_assert(std::is_same_v<decltype(GpxGroundspeakCacheLog::id), std::int32_t>);

GpxGroundspeakCacheLog MakeLog(std::int32_t id) {
    GpxGroundspeakCacheLog log;
    log.id = id;
    log.date = u"2009-01-15T00:00:00Z";
    log.finder = u"finder";
    log.text = u"text";
    log.type = u"Found it";
    return log;
}

GpxGroundspeakCache MakeFull() {
    GpxGroundspeakCache cache;
    cache.name = u"n";
    cache.owner = u"o";
    cache.type = u"t";
    cache.container = u"c";
    cache.difficulty = u"1.5";
    cache.terrain = u"2";
    cache.short_description = u"s";
    cache.long_description = u"l";
    cache.encoded_hints = u"e";
    cache.logs = {MakeLog(3), MakeLog(1), MakeLog(2)};
    cache.travelbugs = {u"second", u"first"};
    return cache;
}

std::vector<std::string> Texts(const GpxGroundspeakCache& cache) {
    return {Utf8(cache.name),
            Utf8(cache.owner),
            Utf8(cache.type),
            Utf8(cache.container),
            Utf8(cache.difficulty),
            Utf8(cache.terrain),
            Utf8(cache.short_description),
            Utf8(cache.long_description),
            Utf8(cache.encoded_hints)};
}

void ExpectEmpty(const GpxGroundspeakCache& cache) {
    EXPECT_EQ(Texts(cache), std::vector<std::string>(9));
    EXPECT_TRUE(cache.logs.empty());
    EXPECT_TRUE(cache.travelbugs.empty());
}

void ExpectFull(const GpxGroundspeakCache& cache) {
    EXPECT_EQ(Texts(cache), (std::vector<std::string>{"n", "o", "t", "c", "1.5", "2", "s", "l", "e"}));
    ASSERT_EQ(cache.logs.size(), 3U);
    const std::int32_t ids[] = {3, 1, 2};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(cache.logs[i].id, ids[i]);
        EXPECT_EQ(Utf8(cache.logs[i].date), "2009-01-15T00:00:00Z");
        EXPECT_EQ(Utf8(cache.logs[i].finder), "finder");
        EXPECT_EQ(Utf8(cache.logs[i].text), "text");
        EXPECT_EQ(Utf8(cache.logs[i].type), "Found it");
    }
    ASSERT_EQ(cache.travelbugs.size(), 2U);
    EXPECT_EQ(Utf8(cache.travelbugs[0]), "second");
    EXPECT_EQ(Utf8(cache.travelbugs[1]), "first");
}

} // namespace

TEST(GpxGroundspeakCacheTest, StartsEmpty) {
    ExpectEmpty(GpxGroundspeakCache());
}

TEST(GpxGroundspeakCacheTest, LogStartsEmptyWithoutId) {
    const GpxGroundspeakCacheLog log;
    EXPECT_EQ(log.id, 0);
    EXPECT_TRUE(log.date.isEmpty());
    EXPECT_TRUE(log.finder.isEmpty());
    EXPECT_TRUE(log.text.isEmpty());
    EXPECT_TRUE(log.type.isEmpty());
}

TEST(GpxGroundspeakCacheTest, ClearEmptiesEverything) {
    GpxGroundspeakCache cache(MakeFull());
    cache.Clear();
    ExpectEmpty(cache);
    cache.Clear();
    ExpectEmpty(cache);
}

TEST(GpxGroundspeakCacheTest, CopiesKeepOrderAndAreIndependent) {
    GpxGroundspeakCache cache(MakeFull());
    const GpxGroundspeakCache copy(cache);
    GpxGroundspeakCache assigned;
    EXPECT_EQ(&(assigned = cache), &assigned);
    cache.logs[0].text = u"changed";
    cache.travelbugs[0] = u"changed";
    cache.name = u"changed";
    ExpectFull(copy);
    ExpectFull(assigned);
}

TEST(GpxGroundspeakCacheTest, AssignmentToItselfDoesNothing) {
    GpxGroundspeakCache cache(MakeFull());
    const GpxGroundspeakCache& same = cache;
    cache = same;
    ExpectFull(cache);

    GpxGroundspeakCacheLog log(MakeLog(5));
    const GpxGroundspeakCacheLog& sameLog = log;
    log = sameLog;
    EXPECT_EQ(log.id, 5);
    EXPECT_EQ(Utf8(log.text), "text");
}
