// SPDX-License-Identifier: MIT
#include <vexagpx/input/EntryOverlaps.h>

#include <common/dbc.h>

#include <algorithm>
#include <limits>
#include <tuple>

namespace vexagpx {

using vexaTransferLib::ZipEntryRange;
using vexaTransferLib::ZipFileReader;

std::vector<bool> FindOverlaps(const std::vector<std::optional<ZipEntryRange>>& ranges) {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < ranges.size(); ++i)
        if (ranges[i])
            order.push_back(i);
    std::sort(order.begin(), order.end(), [&ranges](std::size_t one, std::size_t other) {
        return std::tie(ranges[one]->begin, one) < std::tie(ranges[other]->begin, other);
    });
    std::vector<bool> refused(ranges.size(), false);
    std::uint64_t nextBegin = std::numeric_limits<std::uint64_t>::max();
    for (std::size_t at = order.size(); at-- > 0;) {
        const ZipEntryRange& range = *ranges[order[at]];
        const bool sharesBegin = at > 0 && ranges[order[at - 1]]->begin == range.begin;
        refused[order[at]] = sharesBegin || range.end > nextBegin;
        if (!sharesBegin)
            nextBegin = range.begin;
    }
    return refused;
}

std::vector<std::optional<ZipEntryRange>> EntryRanges(ZipFileReader& reader, std::uint64_t most) {
    std::vector<std::optional<ZipEntryRange>> ranges;
    for (bool found = reader.GoToFirstFile(); found && ranges.size() < most; found = reader.GoToNextFile()) {
        try {
            ranges.emplace_back(reader.GetCurrentFileRange());
        } catch (const dbc::precondition_error&) { // nor can it be read
            ranges.emplace_back();
        }
    }
    return ranges;
}

} // namespace vexagpx
