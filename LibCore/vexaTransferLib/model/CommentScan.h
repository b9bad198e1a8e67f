// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vexaTransferLib {

/// Finds the comments and processing instructions of well-formed XML in UTF-8, one by one. The XML declaration is none.
class CommentScan {
public:
    explicit CommentScan(std::string_view text) : text_(text) {}

    /// False when there is no further one.
    bool Next();

    /// \{
    /// The places where it starts and ends, and what is between its marks.
    std::uint64_t Begin() const { return begin_; }
    std::uint64_t End() const { return end_; }
    std::string_view Content() const { return content_; }
    /// \}

private:
    void Take(std::size_t markSize, std::string_view endMark);
    bool IsDeclaration() const;

    std::string_view text_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::string_view content_;
};

} // namespace vexaTransferLib
