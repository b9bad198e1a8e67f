// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstdint>
#include <string_view>

namespace vexaTransferLib::text {

/// A text or an attribute's value as it is in a UTF-8 file.
struct RawText {
    enum class Form : std::uint8_t {
        kAscii,   ///< ASCII, and exactly what the reader gets
        kUtf8,    ///< the same, with other characters
        kEncoded, ///< has references, or line ends and white space that the reader gets in another form
        kSection  ///< of a CDATA section, where nothing is a reference, and not only ASCII
    };

    /// Places in the file.
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
    Form form = Form::kAscii;
};

/// Where a text is: white space in an attribute's value becomes blanks.
enum class TextPlace : std::uint8_t { kContent, kAttribute };

/// Writes the text as the XML parser gives it: with references and line ends replaced. The text is well-formed. There
/// must be room for as many code units as it has bytes. Returns the end of what was written.
char16_t* Decode(std::string_view text, RawText::Form form, TextPlace place, char16_t* out);

/// The length of the UTF-8 character at the start of \p text, or 0 when it is ill-formed or XML allows no such
/// character: U+FFFE and U+FFFF. Looks at up to three bytes after the first.
unsigned CharacterLength(const char* text);

/// The character of a reference such as "&amp;" or "&#x20AC;" that starts at \p text, which may have a zero byte in
/// place of its end.
struct Reference {
    unsigned length; ///< of the reference, with both its marks; 0 when it is none that every XML parser knows
    char32_t character; ///< one that XML allows
};
Reference ReadReference(const char* text);

} // namespace vexaTransferLib::text
