// SPDX-License-Identifier: MIT
#include <vexagpx/report/Occurrences.h>

#include <gmock/gmock.h>

#include <string>

namespace {

using testing::ElementsAre;
using namespace vexagpx;

TEST(OccurrencesTest, EntriesComeInTheOrderOfTheirFirstLocation) {
    Occurrences<std::string> things(false);
    things.Add("b", {5, 1});
    things.Add("a", {2, 9});
    things.Add("c", {2, 3});
    things.Add("b", {1, 7});
    std::vector<std::string> order;
    std::vector<std::vector<Location>> places;
    things.ForEach([&](const auto& entry) {
        order.push_back(entry.value);
        places.emplace_back(entry.locations.begin(), entry.locations.end());
    });
    EXPECT_THAT(order, ElementsAre("b", "c", "a"));
    EXPECT_EQ(things.Count(), 4U);
    EXPECT_THAT(places[0], ElementsAre(Location{1, 7}, Location{5, 1}));
}

TEST(OccurrencesTest, OnlyTheFirstTenLocationsAreKept) {
    Occurrences<std::string> things(false);
    for (std::uint64_t line = 1000; line > 0; --line)
        things.Add("a", {line, 1});
    things.ForEach([](const auto& entry) {
        EXPECT_EQ(entry.count, 1000U);
        ASSERT_EQ(entry.locations.size(), 10U);
        EXPECT_EQ(entry.locations.front(), (Location{1, 1}));
        EXPECT_EQ(entry.locations.back(), (Location{10, 1}));
    });
    EXPECT_EQ(things.DifferentCount(), 1U);
}

TEST(OccurrencesTest, ValuesAtOneLocationComeInTheOrderInWhichTheyWereAdded) {
    for (const bool each : {false, true}) {
        Occurrences<std::string> things(each);
        for (const char* thing : {"c", "a", "b"})
            things.Add(thing, {0, 0});
        std::vector<std::string> order;
        things.ForEach([&](const auto& entry) { order.push_back(entry.value); });
        EXPECT_THAT(order, ElementsAre("c", "a", "b"));
    }
}

TEST(OccurrencesTest, EachMayBeAnEntry) {
    Occurrences<std::string> things(true);
    for (int i = 0; i < 3; ++i)
        things.Add("a", {std::uint64_t(3 - i), 1});
    std::vector<Location> places;
    things.ForEach([&](const auto& entry) {
        EXPECT_EQ(entry.count, 1U);
        EXPECT_EQ(entry.locations.size(), 1U);
        places.push_back(entry.locations.front());
    });
    EXPECT_THAT(places, ElementsAre(Location{1, 1}, Location{2, 1}, Location{3, 1}));
    EXPECT_EQ(things.Count(), 3U);
    EXPECT_EQ(things.DifferentCount(), 1U);
}

} // namespace
