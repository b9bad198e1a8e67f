// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>

namespace vexagpx {

/// What a reader sees as one character of a text: a letter with its marks, an emoji with what is joined to it, a flag.
struct Cluster {
    std::int32_t end; ///< where it ends in the text
    std::size_t
        width; ///< the columns that it takes in a terminal: 0, 1, 2, or more for letters of some scripts
};

/// The cluster of a printable text that starts at a place before its end. Takes as long as the cluster.
Cluster ClusterAt(const icu::UnicodeString& text, std::int32_t start);

/// True for a joiner, a variation selector or a tag at this place that is a part of an emoji or of a letter of a script
/// that needs joiners. Alone, they have no shape.
/// \param before the text in front of it
/// \param after the character after it; 0 at the end of the text
bool IsPartOfCluster(const icu::UnicodeString& before, UChar32 character, UChar32 after);

} // namespace vexagpx
