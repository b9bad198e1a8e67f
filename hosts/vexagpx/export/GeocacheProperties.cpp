// SPDX-License-Identifier: MIT
#include <vexagpx/export/GeocacheProperties.h>

#include <vexagpx/export/ElementProperties.h>

#include <vexaTransferLib/GpxCacheDetails.h>

#include <cstdint>
#include <string_view>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

using Kind = ElementField::Kind;

constexpr ElementField kFields[] = {
    {"name", Field::kCacheName, Kind::kText},
    {"placed_by", Field::kCachePlacedBy, Kind::kText},
    {"owner", Field::kCacheOwner, Kind::kText},
    {"type", Field::kCacheType, Kind::kText},
    {"container", Field::kCacheContainer, Kind::kText},
    {"difficulty", Field::kCacheDifficulty, Kind::kNumber},
    {"terrain", Field::kCacheTerrain, Kind::kNumber},
    {"country", Field::kCacheCountry, Kind::kText},
    {"state", Field::kCacheState, Kind::kText},
    {"short_description", Field::kCacheShortDescription, Kind::kText},
    {"long_description", Field::kCacheLongDescription, Kind::kText},
    {"encoded_hints", Field::kCacheHints, Kind::kText},
    {"personal_note", Field::kCachePersonalNote, Kind::kText},
    {"favorite_points", Field::kCacheFavoritePoints, Kind::kCount},
};

std::uint64_t CountLogs(const GpxElement& logs) {
    std::uint64_t count = 0;
    for (const GpxElement& log : logs.GetChildren())
        count += log.GetName() == "log" ? 1 : 0;
    return count;
}

/// The names of all travel bugs, each on a line of its own.
icu::UnicodeString TravelBugNames(const GpxElement& bugs, std::string_view nameSpace) {
    icu::UnicodeString names;
    for (const GpxElement& bug : bugs.GetChildren()) {
        const icu::UnicodeString name = bug.FindChild(nameSpace, "name").GetText();
        if (!names.isEmpty() && !name.isEmpty())
            names += u'\n';
        names += name;
    }
    return names;
}

void TakeAttributes(const GpxElement& cache, Properties& properties) {
    const GpxCacheDetails details(cache);
    if (const auto id = details.GetId())
        properties.Add(Field::kCacheId, *id);
    if (const auto isAvailable = details.IsAvailable())
        properties.Add(Field::kCacheAvailable, *isAvailable);
    if (const auto isArchived = details.IsArchived())
        properties.Add(Field::kCacheArchived, *isArchived);
}

} // namespace

void TakeGeocache(const GpxElement& cache, Properties& properties, LeftOut& missing) {
    TakeAttributes(cache, properties);
    const std::string_view nameSpace = cache.GetNamespace();
    for (const GpxElement& child : cache.GetChildren()) {
        const std::string_view name = child.GetName();
        if (name == "logs") {
            const std::uint64_t logs = CountLogs(child);
            if (logs != 0)
                properties.Add(Field::kCacheLogs, logs);
            missing.logs += logs;
        } else if (name == "travelbugs") {
            properties.Add(Field::kCacheTravelBugs, TravelBugNames(child, nameSpace));
        } else if (!TakeElement(child, kFields, properties)) {
            missing.extensions += CountValues(child);
        }
    }
}

} // namespace vexagpx
