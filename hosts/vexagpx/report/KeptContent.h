// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/report/ContentFacts.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxStandardWriter.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace vexagpx {

/// Counts what the writer says that it has left out, for each object and element.
class UnwrittenCounts {
public:
    void Add(const vexaTransferLib::GpxUnwritten& what) { ++counts_[what.object][what.element]; }

    /// True when the loss of this is what the writer has reported. Each report of a link explains one link.
    bool Explain(const ContentFact& lost);

private:
    std::unordered_map<std::string, std::unordered_map<std::string, std::uint64_t>> counts_;
};

/// A value of a document that is missing in, or not the same in, what was written.
struct LostContent {
    std::string path; ///< as in ContentFact
    std::string value;
    std::optional<std::string> now; ///< the value in its place; none when it is missing
    std::uint64_t line = 0;         ///< in the original

    /// "gpx/wpt[2]/ele is "6", and not "5" (line 3).", with long texts shortened.
    std::string Text() const;
};

struct LostContents {
    static constexpr std::size_t kMost = 10;

    std::vector<LostContent> first; ///< in the order of the original
    std::uint64_t count = 0;
};

/// Compares every element and attribute of two documents that were read completely: the second was written from the
/// first. Memory and time are proportional to both sources, but for sorting.
/// \param form that of the version in which it was written
/// \param unwritten explains what is missing; what it explains is none of the result
LostContents FindLost(const vexaTransferLib::GpxDocument& before, const vexaTransferLib::GpxDocument& after,
                      ContentForm form, UnwrittenCounts unwritten);

} // namespace vexagpx
