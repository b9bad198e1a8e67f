// SPDX-License-Identifier: MIT
#include <common/ScopeGuard.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

using vexaTransferLib::ScopeGuard;

namespace {

static_assert(!std::is_copy_constructible_v<ScopeGuard<void (*)()>>);
static_assert(!std::is_copy_assignable_v<ScopeGuard<void (*)()>>);
static_assert(!std::is_move_constructible_v<ScopeGuard<void (*)()>>);

} // namespace

TEST(ScopeGuardTest, RunsOnceWhenTheScopeEnds) {
    int calls = 0;
    {
        const ScopeGuard guard([&calls] { ++calls; });
        EXPECT_EQ(calls, 0);
    }
    EXPECT_EQ(calls, 1);
}

TEST(ScopeGuardTest, RunsWhenAnExceptionLeavesTheScope) {
    int calls = 0;
    try {
        const ScopeGuard guard([&calls] { ++calls; });
        throw std::runtime_error("out");
    } catch (const std::runtime_error&) {
        EXPECT_EQ(calls, 1);
    }
    EXPECT_EQ(calls, 1);
}

TEST(ScopeGuardTest, RunsInReverseOrder) {
    std::string order;
    {
        const ScopeGuard first([&order] { order += "first"; });
        const ScopeGuard second([&order] { order += "second "; });
    }
    EXPECT_EQ(order, "second first");
}

TEST(ScopeGuardTest, DismissedDoesNothing) {
    int calls = 0;
    {
        ScopeGuard guard([&calls] { ++calls; });
        guard.Dismiss();
        guard.Dismiss();
    }
    EXPECT_EQ(calls, 0);
}

TEST(ScopeGuardTest, TakesAnActionThatCanOnlyBeMoved) {
    auto owned = std::make_unique<int>(7);
    int seen = 0;
    {
        auto action = [value = std::move(owned), &seen] { seen = *value; };
        const ScopeGuard<decltype(action)> guard(std::move(action));
    }
    EXPECT_EQ(seen, 7);
}
