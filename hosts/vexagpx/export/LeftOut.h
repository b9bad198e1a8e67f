// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vexagpx {

/// How much of the exported objects is not in the result.
struct LeftOut {
    std::uint64_t metadata = 0;     ///< values that a document has about itself
    std::uint64_t extensions = 0;   ///< values in extensions, and in elements that GPX does not have
    std::uint64_t logs = 0;         ///< of geocaches
    std::uint64_t numbers = 0;      ///< heights that are not finite, and times outside the years 0 to 9999
    std::uint64_t pointTimes = 0;   ///< times of the points of a line
    std::uint64_t pointDetails = 0; ///< points of a line that have more than a position, a height and a time
    std::uint64_t pathPoints = 0;   ///< points of a line in a format without lines

    /// What there is of it, with its number: "2 logs of geocaches".
    std::vector<std::string> Lines() const;
};

} // namespace vexagpx
