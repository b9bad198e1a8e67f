// SPDX-License-Identifier: MIT
#include <vexagpx/report/IndexJson.h>

#include <vexagpx/output/OptionalMembers.h>

namespace vexagpx {

namespace {

void WriteCounts(const DocumentCounts& counts, JsonWriter& json) {
    json.Key("kinds");
    json.BeginArray();
    for (const std::string_view kind : KindsOf(counts))
        json.String(kind);
    json.EndArray();
    json.Member("waypoints", counts.waypoints);
    json.Member("geocaches", counts.geocaches);
    json.Member("routes", counts.routes);
    json.Member("routePoints", counts.routePoints);
    json.Member("tracks", counts.tracks);
    json.Member("segments", counts.segments);
    json.Member("trackPoints", counts.trackPoints);
}

void WriteExtent(const IndexEntry& entry, JsonWriter& json) {
    if (!entry.times.IsEmpty()) {
        TimeMember(json, "firstTime", entry.times.First());
        TimeMember(json, "lastTime", entry.times.Last());
    }
    if (entry.bounds.IsEmpty())
        return;
    json.Key("bounds");
    json.BeginObject();
    json.Member("minLatitude", entry.bounds.South());
    json.Member("minLongitude", entry.bounds.West());
    json.Member("maxLatitude", entry.bounds.North());
    json.Member("maxLongitude", entry.bounds.East());
    json.EndObject();
}

} // namespace

void WriteIndexJson(const IndexEntry& entry, Output& out) {
    JsonWriter json(out);
    json.BeginObject();
    json.Member("file", entry.file);
    if (!entry.entry.empty())
        json.Member("entry", entry.entry);
    if (entry.error.empty()) {
        WriteCounts(entry.counts, json);
        WriteExtent(entry, json);
        if (!entry.content.empty())
            json.Member("content", entry.content);
    } else {
        json.Member("error", entry.error);
    }
    json.EndObject();
    out.Write("\n");
}

} // namespace vexagpx
