// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/editing/ChangeList.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace vexagpx {

/// Tells what was repaired, with the lines of the text that is repaired. Takes time linear in the text, because its
/// changes come in the order of their places.
class RepairLog {
public:
    RepairLog(std::string_view text, ChangeList& changes) : text_(text), changes_(changes) {}

    /// \param offset of the place in the text; that of an earlier place counts as the last one
    /// \param kind a word for programs
    void Add(std::size_t offset, std::string_view kind, std::string what) {
        offset = std::max(offset, offset_);
        line_ +=
            static_cast<std::size_t>(std::count(text_.begin() + static_cast<std::ptrdiff_t>(offset_),
                                                text_.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
        offset_ = offset;
        changes_.Add({std::string(kind), "line", line_, {}, std::move(what), {}});
    }

private:
    std::string_view text_;
    ChangeList& changes_;
    std::size_t offset_ = 0;
    std::size_t line_ = 1;
};

} // namespace vexagpx
