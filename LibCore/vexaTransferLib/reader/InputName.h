// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

#include <string>

namespace vexaTransferLib::reader {

/// What a file is called, as text and as the bytes that messages quote. It is converted when it is made, and nowhere
/// else.
class InputName {
public:
    InputName() = default;
    /// \throws std::runtime_error when ICU has no memory to convert it
    explicit InputName(const icu::UnicodeString& text);

    const icu::UnicodeString& Text() const { return text_; }
    /// In ICU's default code page.
    const std::string& Bytes() const { return bytes_; }

private:
    icu::UnicodeString text_;
    std::string bytes_;
};

/// What a document is called that has no name of its own: the file's name without folder and extension. Only "/"
/// separates folders.
icu::UnicodeString DefaultDocumentName(const InputName& name);

} // namespace vexaTransferLib::reader
