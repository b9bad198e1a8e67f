// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/ZIPFileReader.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace vexagpx {

/// For each range whether it is refused, so that no two of the others overlap: it reaches into one that starts
/// after it, or starts where one with a smaller index does. A missing range overlaps none.
std::vector<bool> FindOverlaps(const std::vector<std::optional<vexaTransferLib::ZipEntryRange>>& ranges);

/// The ranges of an archive's first entries, at most `most`; none for an entry that cannot be opened. Leaves
/// the reader at another entry.
std::vector<std::optional<vexaTransferLib::ZipEntryRange>> EntryRanges(vexaTransferLib::ZipFileReader& reader,
                                                                       std::uint64_t most);

} // namespace vexagpx
