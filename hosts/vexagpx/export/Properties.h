// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxLink.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace vexagpx {

/// What an exported object has beside its geometry, in the order in which it is written.
enum class Field : std::uint8_t {
    kFile,
    kRoute,
    kTrack,
    kSegment,
    kNumber,
    kName,
    kComment,
    kDescription,
    kSource,
    kLinks,
    kSymbol,
    kType,
    kRouteType,
    kRoutePointType,
    kColor,
    kSymbolNumber,
    kGuid,
    kMagneticVariation,
    kGeoidHeight,
    kFix,
    kSatellites,
    kHorizontalDilution,
    kVerticalDilution,
    kPositionDilution,
    kDgpsAge,
    kDgpsStation,
    kSpeed,
    kCourse,
    kHeartRate,
    kCadence,
    kTemperature,
    kWaterTemperature,
    kPower,
    kDepth,
    kCacheId,
    kCacheName,
    kCachePlacedBy,
    kCacheOwner,
    kCacheType,
    kCacheContainer,
    kCacheDifficulty,
    kCacheTerrain,
    kCacheCountry,
    kCacheState,
    kCacheAvailable,
    kCacheArchived,
    kCacheShortDescription,
    kCacheLongDescription,
    kCacheHints,
    kCachePersonalNote,
    kCacheFavoritePoints,
    kCacheLogs,
    kCacheTravelBugs,
    kCount ///< how many there are
};

inline constexpr std::size_t kFieldCount = static_cast<std::size_t>(Field::kCount);

/// The name in the result. Where GPX has an element for the value, the name is that of the element.
std::string_view NameOf(Field field);

using Links = std::vector<vexaTransferLib::GpxLink>;

/// Texts are not empty, and numbers are finite.
using Value = std::variant<icu::UnicodeString, double, std::uint64_t, bool, Links>;

struct Property {
    Field field;
    Value value;
};

/// The properties of one object. Of several values for a field the first counts.
class Properties {
public:
    void Clear() { all_.clear(); }

    bool Has(Field field) const;
    /// Adds nothing for an empty text, a number that is not finite and no links.
    void Add(Field field, Value value);
    /// Brings them into the order of Field.
    void Sort();

    std::size_t Size() const { return all_.size(); }
    std::vector<Property>::const_iterator begin() const { return all_.begin(); }
    std::vector<Property>::const_iterator end() const { return all_.end(); }

private:
    std::vector<Property> all_;
};

/// Each link on a line of its own: its address, and its text after a space.
icu::UnicodeString TextOf(const Links& links);

} // namespace vexagpx
