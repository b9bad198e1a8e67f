// SPDX-License-Identifier: MIT
#pragma once

#include <common/ScopeGuard.h>

#include <gtest/gtest.h>

#include <xercesc/util/OutOfMemoryException.hpp>

#include <array>
#include <cstddef>
#include <exception>
#include <string>
#include <string_view>

namespace vexaTransferLib::testing_support {

inline constexpr char kBadAlloc[] = "std::bad_alloc";
inline constexpr char kXercesOutOfMemory[] = "xercesc::OutOfMemoryException";

/// How an operation ended while memory was refused. Allocates no memory, so that the blocks of the operation
/// can be counted while it exists.
class Attempt {
public:
    void Fail(std::string_view failure) { length_ = failure.copy(text_.data(), text_.size()); }
    /// kBadAlloc, kXercesOutOfMemory, or "KIND: message"; empty when it succeeded.
    std::string_view Failure() const { return {text_.data(), length_}; }

    std::size_t refused = 0;

private:
    std::array<char, 500> text_{};
    std::size_t length_ = 0;
};

/// "precondition", "postcondition", "invariant", "runtime", or "unexpected"; and the message.
std::string Describe(const std::exception& failure);

/// \param refuse returns the object that refuses memory as long as it exists
template <class Refuse, class Action>
Attempt AttemptWith(Refuse refuse, Action action) {
    Attempt attempt;
    try {
        const auto refused = refuse();
        const ScopeGuard note([&] { attempt.refused = refused.Refused(); });
        action();
    } catch (const xercesc::OutOfMemoryException&) {
        attempt.Fail(kXercesOutOfMemory);
    } catch (const std::exception& failure) {
        attempt.Fail(Describe(failure));
    }
    return attempt;
}

/// Calls `attempt` with 1, 2, 3 ... until nothing was refused or a check fails. Each call is passed the
/// number of the request to refuse and returns an Attempt. Returns the number of refused requests.
template <class TryIt>
std::size_t ForEachCall(TryIt attempt) {
    for (std::size_t call = 1;; ++call) {
        const testing::ScopedTrace trace(__FILE__, __LINE__, "call " + std::to_string(call));
        if (attempt(call).refused == 0 || testing::Test::HasFailure())
            return call - 1;
    }
}

/// Records in the test's output how many requests a loop has refused.
void Record(const std::string& what, std::size_t calls);

} // namespace vexaTransferLib::testing_support
