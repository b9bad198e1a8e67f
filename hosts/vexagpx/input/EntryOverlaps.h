// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/ZIPFileReader.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace vexagpx {

/// Says for each range whether it is refused, so that no two of the others overlap. A range is refused when it reaches
/// into one that starts after it, or when it starts where a range with a smaller index starts. A missing range overlaps
/// none.
std::vector<bool> FindOverlaps(const std::vector<std::optional<vexaTransferLib::ZipEntryRange>>& ranges);

/// The ranges of an archive's first entries, at most `most`; an entry that cannot be opened has none. The reader's
/// current entry changes.
std::vector<std::optional<vexaTransferLib::ZipEntryRange>> EntryRanges(vexaTransferLib::ZipFileReader& reader,
                                                                       std::uint64_t most);

} // namespace vexagpx
