// SPDX-License-Identifier: MIT
#include <vexagpx/caches/CacheJson.h>

#include <vexagpx/output/OptionalMembers.h>

namespace vexagpx {

using vexaTrackLib::Geocache;
using vexaTrackLib::GeocacheCompanion;
using vexaTransferLib::GpxCacheLogDetails;

namespace {

void WriteCompanion(const GeocacheCompanion& companion, JsonWriter& json) {
    json.BeginObject();
    json.Member("code", companion.code);
    MemberIfAny(json, "name", companion.name);
    MemberIfAny(json, "type", companion.type);
    if (companion.place) {
        json.Member("latitude", companion.place->latitude);
        json.Member("longitude", companion.place->longitude);
    }
    MemberIfAny(json, "comment", companion.comment);
    json.EndObject();
}

void WriteLog(const GpxCacheLogDetails& log, JsonWriter& json) {
    json.BeginObject();
    MemberIfAny(json, "id", log.id);
    TimeMember(json, "time", log.time);
    MemberIfAny(json, "type", log.type);
    MemberIfAny(json, "finder", log.finder);
    MemberIfAny(json, "text", LogText(log));
    json.EndObject();
}

void WriteValues(const Geocache& cache, JsonWriter& json) {
    json.Member("code", cache.code);
    MemberIfAny(json, "name", cache.name);
    MemberIfAny(json, "owner", cache.owner);
    MemberIfAny(json, "type", cache.type);
    MemberIfAny(json, "size", cache.size);
    MemberIfAny(json, "difficulty", cache.difficulty);
    MemberIfAny(json, "terrain", cache.terrain);
    MemberIfAny(json, "country", cache.country);
    MemberIfAny(json, "state", cache.state);
    json.Member("latitude", cache.place.latitude);
    json.Member("longitude", cache.place.longitude);
    MemberIfAny(json, "available", cache.isAvailable);
    MemberIfAny(json, "archived", cache.isArchived);
    TimeMember(json, "placed", cache.placedTime);
    TimeMember(json, "found", cache.foundTime);
    json.Member("logCount", cache.logCount);
    MemberIfAny(json, "distance", cache.metres);
    MemberIfAny(json, "bearing", cache.bearing);
    ArrayIfAny(json, "travelBugs", cache.travelBugs,
               [&](const icu::UnicodeString& bug) { json.String(bug); });
    ArrayIfAny(json, "companions", cache.companions,
               [&](const GeocacheCompanion& companion) { WriteCompanion(companion, json); });
}

} // namespace

void WriteCachesJson(const std::vector<Geocache>& caches, const std::vector<GeocacheCompanion>& orphans,
                     const CacheDetailsWanted& details, Output& out) {
    for (const Geocache& cache : caches) {
        JsonWriter json(out);
        json.BeginObject();
        WriteValues(cache, json);
        if (details.hint)
            MemberIfAny(json, "hint", Cleaned(cache.hint));
        if (details.description)
            MemberIfAny(json, "description", CleanDescription(cache));
        ArrayIfAny(json, "logs", NewestLogs(cache, details.logs),
                   [&](const GpxCacheLogDetails& log) { WriteLog(log, json); });
        json.EndObject();
        out.Write("\n");
    }
    for (const GeocacheCompanion& orphan : orphans) {
        JsonWriter json(out);
        json.BeginObject();
        json.Key("orphan");
        WriteCompanion(orphan, json);
        json.EndObject();
        out.Write("\n");
    }
}

} // namespace vexagpx
