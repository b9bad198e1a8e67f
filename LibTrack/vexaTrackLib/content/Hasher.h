// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vexaTrackLib::content {

/// Makes a hash of 128 bits of a sequence of values. Equal sequences have equal hashes, whatever the byte order of the
/// machine. Not cryptographic.
class Hasher {
public:
    void Add(std::uint64_t word);
    /// 0 and -0 are the same, and so are all that are no number.
    void Add(double number);
    /// The bytes and their number.
    void Add(std::string_view bytes);

    std::uint64_t High() const { return high_; }
    std::uint64_t Low() const { return low_; }

private:
    std::uint64_t high_ = 0x243F6A8885A308D3;
    std::uint64_t low_ = 0x13198A2E03707344;
};

/// Adds up the hashes of things without an order.
class UnorderedSum {
public:
    void Add(const Hasher& item) {
        high_ += item.High();
        low_ += item.Low();
        ++count_;
    }
    void AddTo(Hasher& hasher) const;

private:
    std::uint64_t high_ = 0;
    std::uint64_t low_ = 0;
    std::uint64_t count_ = 0;
};

} // namespace vexaTrackLib::content
