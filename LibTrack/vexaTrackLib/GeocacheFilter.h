// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Conditions on geocaches as users write them.

#include <vexaTrackLib/GeocacheKey.h>

#include <common/Export.h>

#include <string_view>
#include <vector>

namespace vexaTrackLib {

/// A condition that geocaches meet or not, made from a text such as `difficulty>=4 and type~mystery and available`.
///
/// The text is one or several comparisons joined by "and". A comparison is a key (GeocacheKey), an operator and a
/// value; a key of truth values stands alone, with "not" before it, or with `=true` or `=false` after it. The operators
/// are `=`, `!=`, `<`, `<=`, `>`, `>=`, and for texts `~`, which means "contains". Texts are compared without regard to
/// case. A value ends with the next "and"; one in quotation marks may contain anything. Numbers have a decimal point;
/// lengths may have a unit (`500m`, `2km`, `1mi`, `300ft`), and are metres without one; dates are written `2024-05-31`,
/// and are compared by days in UTC. A geocache that does not have the value meets no comparison of it, not even `!=`.
///
///     const GeocacheFilter filter = GeocacheFilter::Parse("terrain<3 and found<2024-01-01");
///     caches.erase(std::remove_if(caches.begin(), caches.end(),
///                                 [&](const Geocache& cache) { return !filter.Accepts(cache); }), caches.end());
class VEXATRANSFERLIB_API GeocacheFilter {
public:
    /// A filter that accepts all.
    GeocacheFilter() = default;
    /// \param text in UTF-8
    /// \throws std::invalid_argument with what is wrong and where: "Column 12: \"x\" is not a number."
    static GeocacheFilter Parse(std::string_view text);

    /// Adds the conditions of another filter: both must be met.
    void Add(const GeocacheFilter& other);
    /// Whether the geocache meets all conditions.
    bool Accepts(const Geocache& cache) const;

private:
    friend class GeocacheFilterParser;

    enum class Operator { kEqual, kUnequal, kLess, kLessOrEqual, kGreater, kGreaterOrEqual, kContains };

    struct Condition {
        GeocacheKey key;
        Operator op;
        GeocacheValue value;
    };

    VEXATRANSFERLIB_LOCAL static bool IsMet(const Condition& condition, const Geocache& cache);

    std::vector<Condition> conditions_;
};

} // namespace vexaTrackLib
