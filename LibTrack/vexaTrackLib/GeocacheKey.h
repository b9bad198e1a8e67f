// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The values of geocaches by which they are filtered and sorted.

#include <vexaTrackLib/Geocache.h>

#include <common/Export.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vexaTrackLib {

/// A value of a geocache that has a name of its own for users.
enum class GeocacheKey : std::uint32_t {
    kCode,       ///< "code": a text
    kName,       ///< "name": a text
    kOwner,      ///< "owner": a text
    kType,       ///< "type": a text
    kSize,       ///< "size": a text; sorted from Micro to Large, what is not a size after them
    kCountry,    ///< "country": a text
    kState,      ///< "state": a text
    kHint,       ///< "hint": a text
    kDifficulty, ///< "difficulty": a number
    kTerrain,    ///< "terrain": a number
    kBugs,       ///< "bugs": how many travel bugs
    kLogs,       ///< "logs": how many logs
    kDistance,   ///< "distance": metres from the origin of the list
    kPlaced,     ///< "placed", or "hidden": a date
    kFound,      ///< "found": the date of the newest log that says that it was found
    kAvailable,  ///< "available": whether it is neither disabled nor archived
    kArchived    ///< "archived": whether it is no more
};

/// What a key has for values.
enum class GeocacheKeyKind : std::uint32_t { kText, kNumber, kLength, kDate, kFlag };

/// The value of a key: nothing, a text, a number (metres for a length, milliseconds since 1970 UTC for a date), or a
/// truth value.
using GeocacheValue = std::variant<std::monostate, icu::UnicodeString, double, bool>;

/// The key with this name, whatever the case of its letters; empty when there is none.
VEXATRANSFERLIB_API std::optional<GeocacheKey> FindGeocacheKey(std::string_view name);
/// The names of all keys, in the order of GeocacheKey.
VEXATRANSFERLIB_API std::vector<std::string_view> GeocacheKeyNames();
/// What the values of a key are.
VEXATRANSFERLIB_API GeocacheKeyKind KindOf(GeocacheKey key);
/// The value of a geocache. A geocache that says nothing about its availability is available and not archived.
VEXATRANSFERLIB_API GeocacheValue ValueOf(const Geocache& cache, GeocacheKey key);

/// An order of geocaches, for `std::stable_sort`: by the value of a key, texts without regard to case, geocaches
/// without the value last in either direction, and equal ones by their codes.
class VEXATRANSFERLIB_API GeocacheOrder {
public:
    /// \param isDescending greatest first
    explicit GeocacheOrder(GeocacheKey key, bool isDescending = false)
        : key_(key), isDescending_(isDescending) {}

    /// The key that a text names, with "-" before it for a descending order.
    /// \throws std::invalid_argument "There is no key \"sise\"." with the nearest one, if one is near, and all of them
    static GeocacheOrder Parse(std::string_view text);

    /// Whether the left one comes before the right one.
    bool operator()(const Geocache& left, const Geocache& right) const;

private:
    GeocacheKey key_;
    bool isDescending_;
};

/// The message for a name that is none of a key: with the key that is the nearest in
/// spelling, if one is near, and all of them.
VEXATRANSFERLIB_API std::string UnknownGeocacheKey(std::string_view name);

} // namespace vexaTrackLib
