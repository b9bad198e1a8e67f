// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/editing/ChangeList.h>

#include <unicode/timezone.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace vexagpx {

/// What is repaired only when it is wanted.
struct RepairRules {
    const icu::TimeZone* zone = nullptr; ///< of times without one; null leaves them
    bool dropsBadPoints = false;         ///< removes points without a place on the earth
};

/// A text and what was left in it.
struct RepairedMarkup {
    std::string text;
    std::uint64_t timesWithoutZone = 0;
    std::uint64_t badPoints = 0; ///< points without a place on the earth
};

/// Mends the markup of a GPX document in UTF-8 that is not well-formed or has no version or namespace, and copies the
/// rest. Takes time and memory linear in the text, however deep its elements are.
/// \throws std::runtime_error when there is no element of GPX in it, and for what would be lost
RepairedMarkup RepairMarkup(std::string_view text, const RepairRules& rules, ChangeList& changes);

} // namespace vexagpx
