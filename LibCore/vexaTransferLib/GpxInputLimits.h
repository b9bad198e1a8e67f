// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// How large an untrusted file may be.

#include <cstdint>

namespace vexaTransferLib {

/// The limits of an untrusted file; see GpxParser::SetUntrusted. What is just at a limit is still read. The defaults
/// are far above what real files hold.
struct GpxInputLimits {
    /// Elements within elements, the root included.
    std::uint64_t elementDepth = 256;
    /// UTF-16 code units of one text between two tags, one attribute's value, one comment, or one processing
    /// instruction.
    std::uint64_t textLength = std::uint64_t{16} * 1024 * 1024;
    /// Of one element, its namespace declarations among them. An element beyond the limit is refused before the XML
    /// parser has read its start tag.
    std::uint64_t attributes = 1024;
    /// Waypoints, route points and track points in all.
    std::uint64_t points = 50'000'000;
    /// Different names that the XML parser must remember: those of elements as they are written, and the prefixes and
    /// namespaces that are declared. The parser searches names in a way that a hostile file can make slow, so
    /// that each element may cost as much as this number of comparisons.
    std::uint64_t names = 1024;
    /// Namespace declarations in scope at once: those of an element and of the elements around it.
    std::uint64_t namespaces = 512;
    /// UTF-16 code units of one namespace. A DOM parser (GpxParser::GetParser) looks at all of it for each element.
    std::uint64_t namespaceLength = 1024;
    /// Routes, tracks, track segments, geocaches, their logs and travel bugs, and form attributes in all: everything
    /// in the model that is not a point. Those that are read and then not kept count too.
    std::uint64_t objects = 1'000'000;
    /// Bytes of one start tag, as they are in the file.
    std::uint64_t tagBytes = std::uint64_t{4} * 1024 * 1024;
    /// For a scan by GpxTarvikExtParser only: elements that start before the first waypoint, route or track.
    std::uint64_t headElements = 100'000;
    /// For a scan by GpxTarvikExtParser only: bytes before the first waypoint, route or track has been read. Up to
    /// 1,024 more may pass, because the XML parser looks ahead.
    std::uint64_t headBytes = std::uint64_t{2} * 1024 * 1024;
};

} // namespace vexaTransferLib
