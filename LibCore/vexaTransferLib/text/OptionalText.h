// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/text/CheckSites.h>

#include <unicode/unistr.h>

#include <new>

namespace vexaTransferLib::text {

/// The body of every getter of an optional text: an empty one is absent.
inline bool CopyText(icu::UnicodeString& out, const icu::UnicodeString& value) {
    if (value.isEmpty())
        return false;
    out = value;
    return true;
}

/// A copy that stands: one that ICU could not hold is bogus and would pass for an empty text.
inline icu::UnicodeString Copied(const icu::UnicodeString& value) {
    icu::UnicodeString copy(value);
    if (copy.isBogus() && !value.isBogus())
        throw std::bad_alloc();
    return copy;
}

/// The body of every setter of an optional text. The message is no std::string because one would be built on
/// every call.
inline void AssignText(const char* message, icu::UnicodeString& target, const icu::UnicodeString& value) {
    Require(!value.isEmpty(), sites::kTextSetter, message);
    icu::UnicodeString copy = Copied(value);
    target.swap(copy);
}

} // namespace vexaTransferLib::text
