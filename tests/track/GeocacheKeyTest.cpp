// SPDX-License-Identifier: MIT
#include <vexaTrackLib/GeocacheKey.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace vexaTrackLib {
namespace {

Geocache Sized(const char16_t* code, const char16_t* size) {
    Geocache cache;
    cache.code = code;
    cache.size = size;
    return cache;
}

std::string CodesIn(const std::string& order, std::vector<Geocache> caches) {
    std::stable_sort(caches.begin(), caches.end(), GeocacheOrder::Parse(order));
    std::string codes;
    for (const Geocache& cache : caches)
        cache.code.toUTF8String(codes);
    return codes;
}

TEST(GeocacheKeyTest, EachNameFindsItsKey) {
    std::set<GeocacheKey> keys;
    for (const std::string_view name : GeocacheKeyNames()) {
        ASSERT_TRUE(FindGeocacheKey(name)) << name;
        keys.insert(*FindGeocacheKey(name));
    }
    EXPECT_EQ(keys.size(), GeocacheKeyNames().size());
    EXPECT_EQ(FindGeocacheKey("Found"), GeocacheKey::kFound);
    EXPECT_EQ(FindGeocacheKey("hidden"), GeocacheKey::kPlaced);
    EXPECT_EQ(FindGeocacheKey("fund"), std::nullopt);
    EXPECT_EQ(KindOf(GeocacheKey::kFound), GeocacheKeyKind::kDate);
    EXPECT_EQ(KindOf(GeocacheKey::kDistance), GeocacheKeyKind::kLength);
    EXPECT_EQ(KindOf(GeocacheKey::kArchived), GeocacheKeyKind::kFlag);
}

TEST(GeocacheKeyTest, SizesAreSortedByTheirBoxes) {
    const std::vector<Geocache> caches = {Sized(u"l", u"Large"),   Sized(u"m", u"micro"),
                                          Sized(u"v", u"Virtual"), Sized(u"r", u"Regular"),
                                          Sized(u"-", u""),        Sized(u"s", u"Small")};
    EXPECT_EQ(CodesIn("size", caches), "msrlv-");
    EXPECT_EQ(CodesIn("-size", caches), "vlrsm-");
}

TEST(GeocacheKeyTest, NumbersAreSortedAndMissingOnesComeLast) {
    std::vector<Geocache> caches = {Sized(u"a", u""), Sized(u"b", u""), Sized(u"c", u""), Sized(u"d", u"")};
    caches[0].terrain = 2.5;
    caches[1].terrain = 10.0;
    caches[3].terrain = 2.5;
    EXPECT_EQ(CodesIn("terrain", caches), "adbc");
    EXPECT_EQ(CodesIn("-terrain", caches), "badc");
    EXPECT_EQ(CodesIn("code", caches), "abcd");
    EXPECT_EQ(CodesIn("-code", caches), "dcba");
}

TEST(GeocacheKeyTest, TruthValuesAreSorted) {
    std::vector<Geocache> caches = {Sized(u"a", u""), Sized(u"b", u"")};
    caches[0].isArchived = true;
    EXPECT_EQ(CodesIn("archived", caches), "ba");
    EXPECT_EQ(CodesIn("-archived", caches), "ab");
}

TEST(GeocacheKeyTest, AnUnknownOrderNamesTheNearestKey) {
    const auto refusal = [](const std::string& text) {
        try {
            GeocacheOrder::Parse(text);
            return std::string();
        } catch (const std::invalid_argument& error) {
            return std::string(error.what());
        }
    };
    EXPECT_EQ(refusal("-sise"), "There is no key \"sise\"; did you mean \"size\"? The keys are code, name, "
                                "owner, type, size, country, state, hint, difficulty, terrain, bugs, logs, "
                                "distance, placed, found, available, archived.");
    EXPECT_EQ(refusal("").substr(0, 41), "There is no key \"\"; the keys are code, na");
    EXPECT_EQ(refusal(std::string(100'000, 'x')).substr(0, 20), "There is no key \"xxx");
}

} // namespace
} // namespace vexaTrackLib
