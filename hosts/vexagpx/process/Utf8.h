// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/unistr.h>

#include <string>

namespace vexagpx {

/// The text in UTF-8.
inline std::string Utf8(const icu::UnicodeString& text) {
    std::string utf8;
    return text.toUTF8String(utf8);
}

} // namespace vexagpx
