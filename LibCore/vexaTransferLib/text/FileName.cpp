// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/FileName.h>

#include <unicode/utf16.h>

#include <cstdint>
#include <limits>

namespace vexaTransferLib::text {

bool IsFileName(const icu::UnicodeString& path) noexcept {
    for (std::int32_t i = 0; i < path.length();) {
        const UChar32 character = path.char32At(i);
        if (character == 0 || U_IS_SURROGATE(character))
            return false;
        i += U16_LENGTH(character);
    }
    return !path.isEmpty();
}

bool IsFileName(const std::string& bytes) noexcept {
    // Messages contain the name as ICU text, which cannot be longer.
    constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();
    return !bytes.empty() && bytes.size() <= kMost && bytes.find('\0') == std::string::npos;
}

} // namespace vexaTransferLib::text
