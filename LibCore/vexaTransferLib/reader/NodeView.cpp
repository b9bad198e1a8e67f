// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/NodeView.h>

#include <vexaTransferLib/text/IcuText.h>

namespace vexaTransferLib::reader {

std::string PathOf(const std::vector<const char16_t*>& names) {
    icu::UnicodeString path;
    for (const char16_t* name : names) {
        if (!path.isEmpty())
            path.append(u'/');
        path.append(name, -1);
    }
    text::ThrowIfBogus(path);
    std::string narrow;
    return path.toUTF8String(narrow);
}

} // namespace vexaTransferLib::reader
