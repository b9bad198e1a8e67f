// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <string_view>

namespace vexaTransferLib::writer {

/// The entity for one of XML's five special characters; empty for any other, which is written as it is.
constexpr std::string_view EntityOf(char16_t unit) {
    switch (unit) {
    case u'"':
        return "&quot;";
    case u'&':
        return "&amp;";
    case u'\'':
        return "&apos;";
    case u'<':
        return "&lt;";
    case u'>':
        return "&gt;";
    default:
        return {};
    }
}

constexpr bool IsSpecial(char16_t unit) {
    return unit <= u'>' && !EntityOf(unit).empty();
}

} // namespace vexaTransferLib::writer
