// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstdint>
#include <string>
#include <string_view>

namespace vexaTransferLib::saving {

// How the elements of a text are laid out in lines. A line ends with a line feed, a carriage return, or both.

/// A part of a text.
struct TextPart {
    std::uint64_t begin;
    std::uint64_t end;
};

/// The line end and the blanks before an element that is the first in its line: "\n    ". Empty for any other element,
/// and for one in the first line of the text.
std::string_view SeparatorBefore(std::string_view text, std::uint64_t begin);

/// What goes with an element that is removed: the separator before it and the blanks after it, when nothing else is in
/// its lines, otherwise the element alone.
TextPart LinesOf(std::string_view text, TextPart element);

/// Where something can be put after an element: behind comments that end its line, otherwise right behind it.
std::uint64_t PlaceAfter(std::string_view text, std::uint64_t elementEnd);

/// How a new element is laid out.
struct ElementLayout {
    std::string separator; ///< the line end and the blanks before it; empty when there are no lines
    std::string indent;    ///< what its children are indented by beyond it

    /// The layout of a child.
    ElementLayout Inner() const { return {separator.empty() ? separator : separator + indent, indent}; }
};

/// The blanks by which an inner element is indented beyond an outer one; two spaces when that is not to be seen.
std::string IndentBetween(std::string_view outerSeparator, std::string_view innerSeparator);

} // namespace vexaTransferLib::saving
