// SPDX-License-Identifier: MIT
#include "support/Utf16.h"

#include <cstdint>

namespace vexaTransferLib::testing_support {

std::string InUtf16(const icu::UnicodeString& text, bool bigEndian) {
    std::string bytes;
    for (std::int32_t i = 0; i < text.length(); ++i) {
        const auto unit = static_cast<unsigned>(text[i]);
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

} // namespace vexaTransferLib::testing_support
