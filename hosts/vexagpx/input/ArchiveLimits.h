// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vexagpx {

/// The bytes that a stream may have by default.
inline constexpr std::uint64_t kMostOfStream = std::uint64_t{1} << 32;

/// Limits of what an archive or a gzip file may unpack to.
struct ArchiveLimits {
    std::uint64_t entrySize = std::uint64_t{1} << 30; ///< bytes of one entry
    std::uint64_t totalSize = std::uint64_t{1} << 32; ///< bytes of all that is unpacked of one archive
    /// How many times its size in the archive an entry may have, and how many times the size of the archive
    /// everything that is unpacked. Counts only for what unpacks to more than kAnyRatioUpTo.
    std::uint64_t ratio = 200;
    std::uint64_t entries = 100000;
    std::uint64_t streamSize = kMostOfStream; ///< bytes of a stream, whether it is an archive or not

    /// Bytes that do no harm, however small they were when packed.
    static constexpr std::uint64_t kAnyRatioUpTo = std::uint64_t{4} << 20;

    /// True when a size is beyond the ratio to the packed size, and large enough for that to count.
    bool IsBeyondRatio(std::uint64_t size, std::uint64_t packedSize) const {
        if (size <= kAnyRatioUpTo)
            return false;
        return size / ratio > packedSize || (size / ratio == packedSize && size % ratio != 0);
    }
};

} // namespace vexagpx
