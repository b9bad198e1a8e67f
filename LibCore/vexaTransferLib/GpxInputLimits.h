// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// How much a file from a stranger may be.

#include <cstdint>

namespace vexaTransferLib {

/// The limits of an untrusted file; see GpxParser::SetUntrusted. What lies at a limit is still read. The defaults
/// are far above what real files hold.
struct GpxInputLimits {
    /// Elements within elements, the root included.
    std::uint64_t elementDepth = 256;
    /// UTF-16 code units of one text between two tags, one attribute's value, one comment, or one processing
    /// instruction.
    std::uint64_t textLength = std::uint64_t{16} * 1024 * 1024;
    /// Of one element.
    std::uint64_t attributes = 1024;
    /// Waypoints, route points and track points in all.
    std::uint64_t points = 50'000'000;
};

} // namespace vexaTransferLib
