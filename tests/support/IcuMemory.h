// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace vexaTransferLib::testing_support {

/// Counts ICU's requests for memory on this thread and refuses some while it lives; afterwards ICU allocates
/// as before. One at a time.
///
///     const RefusedIcuMemory refused = RefusedIcuMemory::Above(4096);
///     EXPECT_FAILURE(document.WriteToFile(...), ...);
class [[nodiscard]] RefusedIcuMemory {
public:
    /// Every request for more than `bytes`.
    static RefusedIcuMemory Above(std::size_t bytes) { return RefusedIcuMemory(bytes, 0); }
    /// The one request with this number, counted from 1.
    static RefusedIcuMemory AtCall(std::size_t number) {
        return RefusedIcuMemory(static_cast<std::size_t>(-1), number);
    }
    /// None: only counts.
    static RefusedIcuMemory None() { return AtCall(0); }

    ~RefusedIcuMemory();
    RefusedIcuMemory(const RefusedIcuMemory&) = delete;
    RefusedIcuMemory& operator=(const RefusedIcuMemory&) = delete;

    /// How many requests there were so far, the refused ones included.
    std::size_t Calls() const;
    /// How many bytes they were for.
    std::size_t Bytes() const;
    /// How many requests were refused so far.
    std::size_t Refused() const;

private:
    RefusedIcuMemory(std::size_t largest, std::size_t refusedCall);
};

} // namespace vexaTransferLib::testing_support
