// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

#include <cstddef>
#include <string_view>

namespace vexaTransferLib::cleaner {

/// The replacements that one step of the cleaning makes in a text, from its start to its end. The result is
/// built in a second string, because replacing in place would move the rest of the text every time. The string is
/// made at the first replacement, so that a text in which nothing is replaced needs no memory.
class Replacements {
public:
    /// The text must not change until Finish().
    explicit Replacements(icu::UnicodeString& text);
    Replacements(const Replacements&) = delete;
    Replacements& operator=(const Replacements&) = delete;

    std::u16string_view Text() const { return units_; }

    /// Replaces the units from `start` to before `end` by `with`. `start` must not lie before the `end` of the call
    /// before.
    void Replace(std::size_t start, std::size_t end, std::u16string_view with);

    /// Stores the result in the text. False when there is no memory for it; the text is then unchanged.
    [[nodiscard]] bool Finish();

private:
    void Append(std::u16string_view units);

    icu::UnicodeString& text_;
    const std::u16string_view units_;
    icu::UnicodeString result_;
    bool started_ = false;
    std::size_t copied_ = 0; // units of the text that the result already covers
};

} // namespace vexaTransferLib::cleaner
