// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

#include <cstddef>
#include <string_view>

namespace vexaTransferLib::cleaner {

/// The replacements that one step of the cleaning makes in a text, from its begin to its end. They go into a
/// string of their own, begun with the first one: replacing in place moves the rest of the text every time,
/// and a text in which nothing is replaced needs no memory.
class Replacements {
public:
    /// The text must stay as it is until Finish().
    explicit Replacements(icu::UnicodeString& text);
    Replacements(const Replacements&) = delete;
    Replacements& operator=(const Replacements&) = delete;

    std::u16string_view Text() const { return units_; }

    /// Puts `with` in the place of the units from `begin` on that end before `end`; not before the end of the
    /// last call.
    void Replace(std::size_t begin, std::size_t end, std::u16string_view with);

    /// Gives the text its replacements. False when there is no memory for them; the text is then unchanged.
    [[nodiscard]] bool Finish();

private:
    void Append(std::u16string_view units);

    icu::UnicodeString& text_;
    const std::u16string_view units_;
    icu::UnicodeString result_;
    bool begun_ = false;
    std::size_t taken_ = 0;
};

} // namespace vexaTransferLib::cleaner
