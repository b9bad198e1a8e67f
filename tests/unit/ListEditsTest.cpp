// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/ListEdits.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <numeric>
#include <random>
#include <vector>

namespace vexaTransferLib::saving {
namespace {

using Numbers = std::vector<std::size_t>;

// The numbers at the indexes that are found.
Numbers Found(const Numbers& numbers) {
    Numbers found;
    std::size_t last = 0;
    for (const std::size_t index : LongestIncrease(numbers)) {
        EXPECT_TRUE(found.empty() || index > last) << "not in their order";
        last = index;
        found.push_back(numbers[index]);
    }
    EXPECT_TRUE(std::adjacent_find(found.begin(), found.end(), std::greater_equal<>()) == found.end());
    return found;
}

TEST(ListEditsTest, WhatIncreasesIsFoundWhole) {
    EXPECT_EQ(Found({}), Numbers{});
    EXPECT_EQ(Found({3}), Numbers{3});
    EXPECT_EQ(Found({0, 1, 5}), (Numbers{0, 1, 5}));
}

TEST(ListEditsTest, WhatIsOutOfOrderIsLeftOut) {
    EXPECT_EQ(Found({9, 0, 1, 2}), (Numbers{0, 1, 2}));
    EXPECT_EQ(Found({1, 2, 3, 0}), (Numbers{1, 2, 3}));
    EXPECT_EQ(Found({0, 4, 1, 2, 3}), (Numbers{0, 1, 2, 3}));
    EXPECT_EQ(Found({3, 2, 1}).size(), 1U);
}

TEST(ListEditsTest, OfEqualNumbersOneIsFound) {
    EXPECT_EQ(Found({1, 1, 2, 2}), (Numbers{1, 2}));
}

// By trying all parts.
std::size_t LongestByTrying(const Numbers& numbers) {
    std::size_t longest = 0;
    for (unsigned part = 0; part < (1U << numbers.size()); ++part) {
        Numbers taken;
        for (std::size_t i = 0; i < numbers.size(); ++i)
            if ((part & (1U << i)) != 0)
                taken.push_back(numbers[i]);
        if (std::adjacent_find(taken.begin(), taken.end(), std::greater_equal<>()) == taken.end())
            longest = std::max(longest, taken.size());
    }
    return longest;
}

TEST(ListEditsTest, NothingLongerIncreases) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        Numbers numbers(1 + random() % 9);
        std::generate(numbers.begin(), numbers.end(), [&] { return random() % 8; });
        EXPECT_EQ(Found(numbers).size(), LongestByTrying(numbers));
    }
}

TEST(ListEditsTest, AMillionNumbersAreNoTrouble) {
    Numbers numbers(1'000'000);
    std::iota(numbers.rbegin(), numbers.rend(), std::size_t{0});
    EXPECT_EQ(LongestIncrease(numbers).size(), 1U);
    std::reverse(numbers.begin(), numbers.end());
    EXPECT_EQ(LongestIncrease(numbers).size(), numbers.size());
}

} // namespace
} // namespace vexaTransferLib::saving
