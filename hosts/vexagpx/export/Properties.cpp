// SPDX-License-Identifier: MIT
#include <vexagpx/export/Properties.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace vexagpx {

namespace {

constexpr std::array<std::string_view, kFieldCount> kNames = {
    "file",
    "route",
    "track",
    "segment",
    "number",
    "name",
    "cmt",
    "desc",
    "src",
    "links",
    "sym",
    "type",
    "routeType",
    "routePointType",
    "color",
    "symbolNumber",
    "guid",
    "magvar",
    "geoidheight",
    "fix",
    "sat",
    "hdop",
    "vdop",
    "pdop",
    "ageofdgpsdata",
    "dgpsid",
    "speed",
    "course",
    "heartRate",
    "cadence",
    "temperature",
    "waterTemperature",
    "power",
    "depth",
    "cacheId",
    "cacheName",
    "cachePlacedBy",
    "cacheOwner",
    "cacheType",
    "cacheContainer",
    "cacheDifficulty",
    "cacheTerrain",
    "cacheCountry",
    "cacheState",
    "cacheAvailable",
    "cacheArchived",
    "cacheShortDescription",
    "cacheLongDescription",
    "cacheHints",
    "cachePersonalNote",
    "cacheFavoritePoints",
    "cacheLogs",
    "cacheTravelBugs",
};
static_assert(!kNames.back().empty(), "a field has no name");

bool IsNothing(const Value& value) {
    if (const auto* text = std::get_if<icu::UnicodeString>(&value))
        return text->isEmpty();
    if (const double* number = std::get_if<double>(&value))
        return !std::isfinite(*number);
    const Links* links = std::get_if<Links>(&value);
    return links != nullptr && links->empty();
}

} // namespace

std::string_view NameOf(Field field) {
    return kNames.at(static_cast<std::size_t>(field));
}

bool Properties::Has(Field field) const {
    return std::any_of(all_.begin(), all_.end(),
                       [field](const Property& property) { return property.field == field; });
}

void Properties::Add(Field field, Value value) {
    if (!IsNothing(value) && !Has(field))
        all_.push_back({field, std::move(value)});
}

void Properties::Sort() {
    std::sort(all_.begin(), all_.end(),
              [](const Property& left, const Property& right) { return left.field < right.field; });
}

icu::UnicodeString TextOf(const Links& links) {
    icu::UnicodeString text;
    for (const vexaTransferLib::GpxLink& link : links) {
        if (!text.isEmpty())
            text += u'\n';
        text += link.href;
        if (!link.text.isEmpty())
            text += u' ' + link.text;
    }
    return text;
}

} // namespace vexagpx
