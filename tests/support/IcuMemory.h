// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace vexaTransferLib::testing_support {

/// Counts ICU's requests for memory on this thread and refuses some of them as long as this object exists;
/// afterwards ICU allocates as before. There may be one at a time.
///
///     const RefusedIcuMemory refused = RefusedIcuMemory::Above(4096);
///     EXPECT_FAILURE(document.WriteToFile(...), ...);
class [[nodiscard]] RefusedIcuMemory {
public:
    /// Refuses every request for more than `bytes`.
    static RefusedIcuMemory Above(std::size_t bytes) { return RefusedIcuMemory(bytes, 0); }
    /// Refuses the request with this number, counted from 1.
    static RefusedIcuMemory AtCall(std::size_t number) {
        return RefusedIcuMemory(static_cast<std::size_t>(-1), number);
    }
    /// Refuses none and only counts.
    static RefusedIcuMemory None() { return AtCall(0); }

    ~RefusedIcuMemory();
    RefusedIcuMemory(const RefusedIcuMemory&) = delete;
    RefusedIcuMemory& operator=(const RefusedIcuMemory&) = delete;

    /// The number of requests so far, including the refused ones.
    std::size_t Calls() const;
    /// The number of bytes that they asked for.
    std::size_t Bytes() const;
    /// The number of refused requests so far.
    std::size_t Refused() const;

private:
    RefusedIcuMemory(std::size_t largest, std::size_t refusedCall);
};

} // namespace vexaTransferLib::testing_support
