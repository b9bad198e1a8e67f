// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <string_view>

namespace vexaTransferLib {

// Finds its way in well-formed XML in UTF-8, from an element inwards. Checks nothing.

/// True where an element starts.
inline bool IsStartTag(const char* at) {
    return at[0] == '<' && at[1] != '/' && at[1] != '!' && at[1] != '?';
}

/// A start tag. The views are into the text.
struct ScannedTag {
    std::string_view name;       ///< qualified
    std::string_view attributes; ///< with the blanks around them
    const char* end;             ///< after its ">"
    bool isEmpty;                ///< it ends the element too
};

/// \param tag its "<"
ScannedTag ScanTag(const char* tag);

/// An attribute. The value is as it stands, without its quotes.
struct ScannedAttribute {
    std::string_view name; ///< qualified
    std::string_view value;
};

/// Takes the first of the attributes off; false when there is none.
bool ScanAttribute(std::string_view& attributes, ScannedAttribute& attribute);

/// A part of the content of an element.
struct ScannedPart {
    enum class Kind {
        kText,
        kSection, ///< CDATA; the content is what is between its marks
        kElement, ///< from its start tag to the end of its end tag
        kOther,   ///< a comment or a processing instruction
        kEnd      ///< the end tag of the element
    };

    Kind kind;
    std::string_view content;
    const char* end; ///< where the next part starts
};

/// \param at in the content of an element, where a part starts
/// Linear in the length of the part. The stack does not grow with its depth.
ScannedPart ScanPart(const char* at);

/// The place after the end of the element.
/// \param tag its "<"
const char* SkipElement(const char* tag);

} // namespace vexaTransferLib
