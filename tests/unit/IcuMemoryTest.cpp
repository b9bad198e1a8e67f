// SPDX-License-Identifier: MIT
#include "support/IcuMemory.h"

#include <gtest/gtest.h>
#include <unicode/unistr.h>

using vexaTransferLib::testing_support::RefusedIcuMemory;

namespace {

constexpr std::int32_t kLong = 10000;

bool CanHold(std::int32_t length) {
    return !icu::UnicodeString(length, u'x', length).isBogus();
}

} // namespace

TEST(IcuMemoryTest, RefusesAboveTheLimitAndCounts) {
    const RefusedIcuMemory refused = RefusedIcuMemory::Above(4096);
    EXPECT_TRUE(CanHold(1000));
    EXPECT_EQ(refused.Refused(), 0U);
    EXPECT_FALSE(CanHold(kLong));
    EXPECT_GT(refused.Refused(), 0U);
}

TEST(IcuMemoryTest, RefusesTheCallWithTheNumberOnly) {
    const RefusedIcuMemory refused = RefusedIcuMemory::AtCall(2);
    EXPECT_TRUE(CanHold(kLong));
    EXPECT_FALSE(CanHold(kLong));
    EXPECT_TRUE(CanHold(kLong));
    EXPECT_EQ(refused.Refused(), 1U);
}

TEST(IcuMemoryTest, CountsEveryRequest) {
    const RefusedIcuMemory refused = RefusedIcuMemory::None();
    EXPECT_TRUE(CanHold(kLong));
    EXPECT_EQ(refused.Calls(), 1U);
    EXPECT_TRUE(CanHold(kLong));
    EXPECT_EQ(refused.Calls(), 2U);
    EXPECT_EQ(refused.Refused(), 0U);
}

TEST(IcuMemoryTest, EndsWithTheScope) {
    {
        const RefusedIcuMemory refused = RefusedIcuMemory::Above(0);
        EXPECT_FALSE(CanHold(kLong));
    }
    EXPECT_TRUE(CanHold(kLong));
}

TEST(IcuMemoryTest, TwoAtOnceAreRefused) {
    const RefusedIcuMemory refused = RefusedIcuMemory::Above(4096);
    EXPECT_THROW(static_cast<void>(RefusedIcuMemory::Above(1)), std::logic_error);
    EXPECT_TRUE(CanHold(1000));
}
