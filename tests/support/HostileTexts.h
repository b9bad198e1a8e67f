// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/unistr.h>

#include <cstdint>
#include <span>

namespace vexaTransferLib::testing_support {

/// A text that makes a cleaner start a search again and again, most of which find nothing.
struct HostileText {
    const char* name;
    const char16_t* head = u"";
    const char16_t* unit;       // repeated
    const char16_t* then = u""; // repeated in the second half if not empty
    const char16_t* tail = u"";

    /// The text with about this number of UTF-16 units.
    icu::UnicodeString OfLength(std::int32_t length) const;
};

std::span<const HostileText> HostileTexts();

/// The pieces of the hostile texts in random order. Comments and the ends of elements are left out, because
/// cleaning would remove most of the text with them.
icu::UnicodeString HostileMixture(std::int32_t length);

} // namespace vexaTransferLib::testing_support
