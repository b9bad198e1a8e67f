// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace vexaTransferLib::testing_support {

/// A text without a zero after it, at the end of readable memory: reading past the text ends the process.
class PageEndText {
public:
    /// \param text fits into a page
    explicit PageEndText(std::u16string_view text);
    ~PageEndText();
    PageEndText(const PageEndText&) = delete;
    PageEndText& operator=(const PageEndText&) = delete;

    const char16_t* Get() const { return text_; }

private:
    void* memory_;
    std::size_t size_;
    const char16_t* text_;
};

} // namespace vexaTransferLib::testing_support
