// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxInputLimits.h>
#include <vexaTransferLib/reader/ByteWindow.h>
#include <vexaTransferLib/reader/NotPlain.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace vexaTransferLib::reader {

/// An element with so many children that it pays to know their number before they are read.
struct LongElement {
    std::uint64_t begin;    ///< the place of its start tag
    std::uint64_t children; ///< those that have attributes
};

/// The least number of children of a LongElement.
inline constexpr std::uint64_t kLongElementChildren = 1024;

/// Puts them into the order of the file: an element is counted when it ends.
void SortByPlace(std::vector<LongElement>& longElements);

/// Finds out whether a file is plain, without reading anything from it. Reads the window to the end of the file, or to
/// the first part that is not plain.
/// \param limits of an untrusted file; empty for a trusted one
/// \param longElements gets them in the order of the file
/// \throws what the window throws; std::bad_alloc
NotPlain CheckPlain(ByteWindow& window, const std::optional<GpxInputLimits>& limits,
                    std::vector<LongElement>& longElements);

} // namespace vexaTransferLib::reader
