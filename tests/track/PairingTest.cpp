// SPDX-License-Identifier: MIT
#include <vexaTrackLib/comparing/Pairing.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using vexaTrackLib::comparing::Key;
using vexaTrackLib::comparing::Pairing;

constexpr std::size_t kNone = Pairing::kNone;

// The key of each object is a letter; a blank is none.
struct Lists {
    std::string olds;
    std::string news;

    static std::optional<Key> KeyOf(char letter) {
        return letter == ' ' ? std::nullopt : std::optional(Key{7, static_cast<unsigned char>(letter)});
    }
    void PairIn(Pairing& pairing) const {
        pairing.PairBy([this](std::size_t i) { return KeyOf(olds[i]); },
                       [this](std::size_t i) { return KeyOf(news[i]); });
    }
};

std::vector<std::size_t> Partners(const Pairing& pairing, std::size_t oldCount) {
    std::vector<std::size_t> partners;
    for (std::size_t i = 0; i < oldCount; ++i)
        partners.push_back(pairing.NewOf(i));
    return partners;
}

TEST(PairingTest, EqualKeysArePairedInTheirOrder) {
    Pairing pairing(4, 4);
    Lists{"abab", "bbca"}.PairIn(pairing);
    EXPECT_THAT(Partners(pairing, 4), ElementsAre(3, 0, kNone, 1));
    EXPECT_EQ(pairing.OldOf(0), 1U);
    EXPECT_EQ(pairing.OldOf(1), 3U);
    EXPECT_EQ(pairing.OldOf(2), kNone);
    EXPECT_EQ(pairing.OldOf(3), 0U);
}

TEST(PairingTest, ObjectsWithoutAKeyOrWithAPartnerStayAsTheyAre) {
    Pairing pairing(3, 3);
    pairing.Pair(0, 2);
    Lists{"aa ", "a a"}.PairIn(pairing);
    EXPECT_THAT(Partners(pairing, 3), ElementsAre(2, 0, kNone));
}

TEST(PairingTest, KeysDifferInBothHalves) {
    Pairing pairing(1, 1);
    pairing.PairBy(
        [](std::size_t) {
            return std::optional(Key{1, 2});
        },
        [](std::size_t) {
            return std::optional(Key{2, 2});
        });
    EXPECT_EQ(pairing.NewOf(0), kNone);
}

TEST(PairingTest, TheRestIsPairedByOrderOnlyWhenAsManyAreLeft) {
    Pairing equal(3, 3);
    equal.Pair(1, 0);
    equal.PairRestByOrder();
    EXPECT_THAT(Partners(equal, 3), ElementsAre(1, 0, 2));

    Pairing unequal(3, 2);
    unequal.PairRestByOrder();
    EXPECT_THAT(Partners(unequal, 3), ElementsAre(kNone, kNone, kNone));
}

} // namespace
