// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

/// True when there may be a document type declaration, in UTF-16 too: a trusting reader would open what it names.
inline bool HasDocumentType(std::string_view bytes) {
    std::string text(bytes);
    text.erase(std::remove(text.begin(), text.end(), '\0'), text.end());
    return text.find("<!D") != std::string::npos;
}
