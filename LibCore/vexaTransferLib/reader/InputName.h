// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

#include <string>

namespace vexaTransferLib::reader {

/// The name of a file, as text and as the bytes that messages quote. The constructor converts it once.
class InputName {
public:
    InputName() = default;
    /// \throws std::runtime_error when ICU has no memory to convert the name
    explicit InputName(const icu::UnicodeString& text);

    const icu::UnicodeString& Text() const { return text_; }
    /// The name in ICU's default code page.
    const std::string& Bytes() const { return bytes_; }

private:
    icu::UnicodeString text_;
    std::string bytes_;
};

/// The name of a document whose file gives it none: the file's name without folder and extension. Only "/"
/// separates folders.
icu::UnicodeString DefaultDocumentName(const InputName& name);

} // namespace vexaTransferLib::reader
