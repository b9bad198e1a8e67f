// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/text/SourceLocation.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace vexaTransferLib::text {

/// Counts the lines and columns of a UTF-8 file as the XML parser does: from 1, a column for each UTF-16 code unit, and
/// CR LF, LF or CR alone between two lines. A byte order mark has no column.
///
/// Remembers marks on its way, so that any number of places costs as much as the length of the file at most, and each
/// of them no more than the distance between two marks.
class LineCounter {
public:
    /// \param bytes the part of the file that is in memory, at \p start
    /// \param place in these bytes, and not before the place that was forgotten
    SourceLocation Locate(std::string_view bytes, std::uint64_t start, std::uint64_t place);
    /// Counts up to a place and forgets those before it, because their bytes will not be there any more.
    void Forget(std::string_view bytes, std::uint64_t start, std::uint64_t place);

private:
    struct Mark {
        std::uint64_t place;
        SourceLocation location;
    };

    static Mark Count(std::string_view bytes, std::uint64_t start, Mark from, std::uint64_t place);

    Mark Nearest(std::uint64_t place) const;

    /// In the order of their places. The first is at or before the start of the bytes in memory.
    std::vector<Mark> marks_{{0, {1, 1}}};
    /// The last place that was located.
    Mark last_{0, {1, 1}};
};

} // namespace vexaTransferLib::text
