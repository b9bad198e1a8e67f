// SPDX-License-Identifier: MIT
#include <vexagpx/page/PageJson.h>

#include <vexagpx/output/JsonWriter.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace vexagpx {

namespace {

/// The unit of places in metres: a decimetre, or more on maps of continents.
double UnitOf(const PageDocument& document) {
    return std::max(0.1, document.extent / 1e7);
}

/// Writes the values of a segment's points as an array of differences; null where there is none.
template <class Value>
void WriteDifferences(std::string_view name, const PageSegment& segment, const Value& value,
                      JsonWriter& json) {
    json.Key(name);
    json.BeginArray();
    std::int64_t before = 0;
    for (const PagePoint& point : segment) {
        const double number = value(point);
        if (std::isnan(number)) {
            json.Literal("null");
            continue;
        }
        const std::int64_t rounded = std::llround(number);
        json.Number(rounded - before);
        before = rounded;
    }
    json.EndArray();
}

void WriteSegment(const PageSegment& segment, double unit, double epoch, JsonWriter& json) {
    json.BeginObject();
    WriteDifferences(
        "x", segment, [=](const PagePoint& point) { return point.x / unit; }, json);
    WriteDifferences(
        "y", segment, [=](const PagePoint& point) { return point.y / unit; }, json);
    WriteDifferences(
        "d", segment, [](const PagePoint& point) { return point.distance * 10.0; }, json);
    WriteDifferences(
        "h", segment, [](const PagePoint& point) { return point.height * 10.0; }, json);
    WriteDifferences(
        "t", segment, [=](const PagePoint& point) { return (point.time - epoch) / 100.0; }, json);
    json.EndObject();
}

/// The first time of a path, in milliseconds since 1970 UTC; 0 without times.
double EpochOf(const PagePath& path) {
    for (const PageSegment& segment : path.segments)
        for (const PagePoint& point : segment)
            if (!std::isnan(point.time))
                return point.time;
    return 0.0;
}

void WritePath(const PagePath& path, double unit, JsonWriter& json) {
    const double epoch = EpochOf(path);
    json.BeginObject();
    json.Member("name", path.name);
    json.Member("epoch", epoch / 1000.0);
    json.Key("pauses");
    json.BeginArray();
    for (const PagePause& pause : path.pauses) {
        json.BeginObject();
        json.Member("start", (pause.start - epoch) / 1000.0);
        json.Member("seconds", pause.seconds);
        json.EndObject();
    }
    json.EndArray();
    json.Key("segments");
    json.BeginArray();
    for (const PageSegment& segment : path.segments)
        WriteSegment(segment, unit, epoch, json);
    json.EndArray();
    json.EndObject();
}

void WriteWaypoint(const PageWaypoint& waypoint, double unit, JsonWriter& json) {
    json.BeginObject();
    json.Member("name", waypoint.name);
    json.Member("x", std::int64_t{std::llround(waypoint.x / unit)});
    json.Member("y", std::int64_t{std::llround(waypoint.y / unit)});
    json.EndObject();
}

void WriteDocument(const PageDocument& document, JsonWriter& json) {
    const double unit = UnitOf(document);
    json.BeginObject();
    json.Member("name", document.name);
    json.Member("unit", unit);
    json.Member("isNorthUp", document.isNorthUp);
    json.Member("isOfWorld", document.isOfWorld);
    json.Key("paths");
    json.BeginArray();
    for (const PagePath& path : document.paths)
        WritePath(path, unit, json);
    json.EndArray();
    json.Key("waypoints");
    json.BeginArray();
    for (const PageWaypoint& waypoint : document.waypoints)
        WriteWaypoint(waypoint, unit, json);
    json.EndArray();
    json.EndObject();
}

/// Only texts contain "<", and there it may be written as an escape.
void WriteWithoutLess(std::string_view json, Output& out) {
    for (std::size_t less = json.find('<'); less != std::string_view::npos; less = json.find('<')) {
        out.Write(json.substr(0, less));
        out.Write("\\u003c");
        json.remove_prefix(less + 1);
    }
    out.Write(json);
}

} // namespace

void WritePageJson(const std::vector<PageDocument>& documents, Output& out) {
    Output safe([&out](std::string_view piece) { WriteWithoutLess(piece, out); });
    JsonWriter json(safe);
    json.BeginObject();
    json.Key("documents");
    json.BeginArray();
    for (const PageDocument& document : documents)
        WriteDocument(document, json);
    json.EndArray();
    json.EndObject();
    safe.Flush();
}

} // namespace vexagpx
