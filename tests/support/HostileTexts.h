// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/unistr.h>

#include <cstdint>
#include <span>

namespace vexaTransferLib::testing_support {

/// A text that makes a cleaner begin a search over and over, most of them in vain.
struct HostileText {
    const char* name;
    const char16_t* head = u"";
    const char16_t* unit;       // over and over
    const char16_t* then = u""; // if anything, over and over in the second half
    const char16_t* tail = u"";

    /// About so many UTF-16 units of it.
    icu::UnicodeString OfLength(std::int32_t length) const;
};

std::span<const HostileText> HostileTexts();

/// Their pieces in random order, but for the comments and the ends of elements: those would take most of it
/// away at once.
icu::UnicodeString HostileMixture(std::int32_t length);

} // namespace vexaTransferLib::testing_support
