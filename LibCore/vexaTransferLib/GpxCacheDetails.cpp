// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxCacheDetails.h>

#include <vexaTransferLib/model/ElementFields.h>
#include <vexaTransferLib/text/ElementNames.h>

namespace vexaTransferLib {

namespace {

GpxElement Find(const GpxElement& parent, const text::ElementName& name) {
    return FindGroundspeakChild(parent, name);
}

// The elements with this name in all lists of the cache; a cache may have several lists.
template <class Value>
std::vector<Value> ValuesOf(const GpxElement& cache, const text::ElementName& list,
                            const text::ElementName& name, Value (*read)(const GpxElement&)) {
    std::vector<Value> values;
    for (const GpxElement& child : cache.GetChildren()) {
        if (!IsGroundspeakElement(child, list))
            continue;
        for (const GpxElement& element : child.GetChildren())
            if (IsGroundspeakElement(element, name))
                values.push_back(read(element));
    }
    return values;
}

GpxCacheAttribute ReadAttribute(const GpxElement& attribute) {
    return {IntegerOf(attribute, groundspeak::kId), BooleanOf(attribute, groundspeak::kInc),
            TextOf(attribute)};
}

GpxCacheLogDetails ReadLog(const GpxElement& element) {
    const GpxElement date = Find(element, groundspeak::kDate);
    const GpxElement finder = Find(element, groundspeak::kFinder);
    const GpxElement text = Find(element, groundspeak::kText);
    const GpxElement place = Find(element, groundspeak::kLogWpt);
    GpxCacheLogDetails log;
    log.id = IntegerOf(element, groundspeak::kId);
    log.date = TextOf(date);
    log.time = date.GetTime();
    log.type = TextOf(Find(element, groundspeak::kType));
    log.finder = TextOf(finder);
    log.finderId = TextOf(finder, groundspeak::kId);
    log.text = TextOf(text);
    log.isEncoded = BooleanOf(text, groundspeak::kEncoded);
    log.latitude = NumberOf(place, gpx::kLat);
    log.longitude = NumberOf(place, gpx::kLon);
    return log;
}

GpxTravelBug ReadTravelBug(const GpxElement& bug) {
    return {IntegerOf(bug, groundspeak::kId), TextOf(bug, groundspeak::kRef),
            TextOf(Find(bug, groundspeak::kName))};
}

} // namespace

GpxElement GpxCacheDetails::FindCache(const GpxElement& waypoint) {
    GpxElement cache;
    ForEachForeign(waypoint, [&](const GpxElement& element) {
        if (IsGroundspeakElement(element, groundspeak::kCache))
            cache = element;
        return !cache;
    });
    return cache;
}

std::optional<icu::UnicodeString> GpxCacheDetails::GetId() const {
    return TextOf(element_, groundspeak::kId);
}

std::optional<bool> GpxCacheDetails::IsAvailable() const {
    return BooleanOf(element_, groundspeak::kAvailable);
}

std::optional<bool> GpxCacheDetails::IsArchived() const {
    return BooleanOf(element_, groundspeak::kArchived);
}

std::optional<bool> GpxCacheDetails::IsForMembersOnly() const {
    return BooleanOf(element_, groundspeak::kMemberonly);
}

std::optional<bool> GpxCacheDetails::HasCustomCoordinates() const {
    return BooleanOf(element_, groundspeak::kCustomcoords);
}

std::optional<icu::UnicodeString> GpxCacheDetails::GetName() const {
    return TextOf(Find(element_, groundspeak::kName));
}

std::optional<icu::UnicodeString> GpxCacheDetails::GetPlacedBy() const {
    return TextOf(Find(element_, groundspeak::kPlacedBy));
}

std::optional<icu::UnicodeString> GpxCacheDetails::GetOwner() const {
    return TextOf(Find(element_, groundspeak::kOwner));
}

std::optional<icu::UnicodeString> GpxCacheDetails::GetOwnerId() const {
    return TextOf(Find(element_, groundspeak::kOwner), groundspeak::kId);
}

std::optional<icu::UnicodeString> GpxCacheDetails::GetType() const {
    return TextOf(Find(element_, groundspeak::kType));
}

std::optional<icu::UnicodeString> GpxCacheDetails::GetContainer() const {
    return TextOf(Find(element_, groundspeak::kContainer));
}

std::optional<double> GpxCacheDetails::GetDifficulty() const {
    return Find(element_, groundspeak::kDifficulty).GetNumber();
}

std::optional<double> GpxCacheDetails::GetTerrain() const {
    return Find(element_, groundspeak::kTerrain).GetNumber();
}

std::optional<icu::UnicodeString> GpxCacheDetails::GetCountry() const {
    return TextOf(Find(element_, groundspeak::kCountry));
}

std::optional<icu::UnicodeString> GpxCacheDetails::GetState() const {
    return TextOf(Find(element_, groundspeak::kState));
}

std::vector<GpxCacheAttribute> GpxCacheDetails::GetAttributes() const {
    return ValuesOf(element_, groundspeak::kAttributes, groundspeak::kAttribute, ReadAttribute);
}

std::optional<icu::UnicodeString> GpxCacheDetails::GetShortDescription() const {
    return TextOf(Find(element_, groundspeak::kShortDescription));
}

std::optional<icu::UnicodeString> GpxCacheDetails::GetLongDescription() const {
    return TextOf(Find(element_, groundspeak::kLongDescription));
}

std::optional<bool> GpxCacheDetails::IsShortDescriptionHtml() const {
    return BooleanOf(Find(element_, groundspeak::kShortDescription), groundspeak::kHtml);
}

std::optional<bool> GpxCacheDetails::IsLongDescriptionHtml() const {
    return BooleanOf(Find(element_, groundspeak::kLongDescription), groundspeak::kHtml);
}

std::optional<icu::UnicodeString> GpxCacheDetails::GetEncodedHints() const {
    return TextOf(Find(element_, groundspeak::kEncodedHints));
}

std::optional<icu::UnicodeString> GpxCacheDetails::GetPersonalNote() const {
    return TextOf(Find(element_, groundspeak::kPersonalNote));
}

std::optional<std::uint64_t> GpxCacheDetails::GetFavoritePoints() const {
    return UnsignedOf(Find(element_, groundspeak::kFavoritePoints));
}

std::vector<GpxCacheLogDetails> GpxCacheDetails::GetLogs() const {
    return ValuesOf(element_, groundspeak::kLogs, groundspeak::kLog, ReadLog);
}

std::vector<GpxTravelBug> GpxCacheDetails::GetTravelBugs() const {
    return ValuesOf(element_, groundspeak::kTravelbugs, groundspeak::kTravelbug, ReadTravelBug);
}

} // namespace vexaTransferLib
