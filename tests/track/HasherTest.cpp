// SPDX-License-Identifier: MIT
#include <vexaTrackLib/content/Hasher.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <set>
#include <string>

namespace {

using vexaTrackLib::content::Hasher;
using vexaTrackLib::content::UnorderedSum;

template <class... Values>
Hasher Hash(Values... values) {
    Hasher hasher;
    (hasher.Add(values), ...);
    return hasher;
}

bool AreEqual(const Hasher& left, const Hasher& right) {
    return left.High() == right.High() && left.Low() == right.Low();
}

TEST(HasherTest, EveryBitAndByteAndTheOrderCount) {
    std::set<std::uint64_t> halves;
    const auto add = [&halves](const Hasher& hasher) {
        EXPECT_TRUE(halves.insert(hasher.High()).second);
        EXPECT_TRUE(halves.insert(hasher.Low()).second);
    };
    add(Hasher());
    add(Hash(std::uint64_t{0}));
    add(Hash(std::uint64_t{0}, std::uint64_t{0}));
    add(Hash(std::uint64_t{1}, std::uint64_t{2}));
    add(Hash(std::uint64_t{2}, std::uint64_t{1}));
    for (int bit = 2; bit < 64; ++bit)
        add(Hash(std::uint64_t{1} << bit));
    for (std::size_t size = 1; size < 40; ++size)
        add(Hash(std::string_view(std::string(size, '\0'))));
    for (std::size_t at = 0; at < 20; ++at) {
        std::string text(20, 'a');
        text[at] = 'b';
        add(Hash(std::string_view(text)));
    }
}

TEST(HasherTest, BytesOfTwoTextsDoNotRunIntoEachOther) {
    EXPECT_FALSE(AreEqual(Hash(std::string_view("ab"), std::string_view("c")),
                          Hash(std::string_view("a"), std::string_view("bc"))));
}

TEST(HasherTest, EqualNumbersHaveOneHash) {
    EXPECT_TRUE(AreEqual(Hash(0.0), Hash(-0.0)));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(AreEqual(Hash(nan), Hash(-nan)));
    EXPECT_FALSE(AreEqual(Hash(1.0), Hash(1.0000000000000002)));
}

TEST(HasherTest, ManyValuesHaveDifferentHashes) {
    std::set<std::uint64_t> halves;
    for (std::uint64_t i = 0; i < 100000; ++i) {
        const Hasher hasher = Hash(static_cast<double>(i) * 0.001);
        halves.insert(hasher.High());
        halves.insert(hasher.Low());
    }
    EXPECT_EQ(halves.size(), 200000U);
}

TEST(HasherTest, ASumHasNoOrderButANumber) {
    const auto hashOf = [](std::initializer_list<std::uint64_t> items) {
        UnorderedSum sum;
        for (const std::uint64_t item : items)
            sum.Add(Hash(item));
        Hasher hasher;
        sum.AddTo(hasher);
        return hasher;
    };
    EXPECT_TRUE(AreEqual(hashOf({1, 2, 3}), hashOf({3, 1, 2})));
    EXPECT_FALSE(AreEqual(hashOf({1}), hashOf({1, 1})));
    EXPECT_FALSE(AreEqual(hashOf({}), hashOf({1})));
}

} // namespace
