// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/IcuText.h>

#include <unicode/unistr.h>

namespace vexaTransferLib::text {

/// The body of every getter of an optional text: an empty text is absent.
inline bool CopyText(icu::UnicodeString& out, const icu::UnicodeString& value) {
    if (value.isEmpty())
        return false;
    out = value;
    return true;
}

/// A copy of a text; a bogus one of a bogus text.
/// \throws std::bad_alloc when ICU cannot hold it
inline icu::UnicodeString Copied(const icu::UnicodeString& value) {
    icu::UnicodeString copy(value);
    if (!value.isBogus())
        ThrowIfBogus(copy);
    return copy;
}

/// The body of every setter of an optional text. The message is not a std::string, which would have to be built
/// on every call.
inline void AssignText(const char* message, icu::UnicodeString& target, const icu::UnicodeString& value) {
    Require(!value.isEmpty(), sites::kTextSetter, message);
    icu::UnicodeString copy = Copied(value);
    target.swap(copy);
}

} // namespace vexaTransferLib::text
