// SPDX-License-Identifier: MIT
#include <vexagpx/commands/ShowJson.h>

#include <vexagpx/commands/AuthorJson.h>
#include <vexagpx/commands/BoundsJson.h>
#include <vexagpx/commands/PathSummary.h>
#include <vexagpx/commands/ShowDetails.h>
#include <vexagpx/commands/SourceJson.h>
#include <vexagpx/output/HiddenFields.h>
#include <vexagpx/output/OptionalMembers.h>
#include <vexagpx/output/Rounded.h>
#include <vexagpx/report/DocumentCounts.h>

#include <vexaTransferLib/GpxCacheDetails.h>
#include <vexaTransferLib/GpxMetadata.h>
#include <vexaTransferLib/GpxPathDetails.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

/// Writes one document. Counts and bounds come last, so that one pass over the points is enough.
class ShowJson {
public:
    explicit ShowJson(Output& out) : json_(out) {}

    void Write(const GpxDocument& document, const DocumentSource& source);

private:
    void WriteHead(const GpxDocument& document, bool isNameInvented);
    void WriteWaypoints(const GpxDocument& document);
    void WriteWaypoint(const GpxPoint& waypoint);
    void WriteGeocaches(const GpxDocument& document);
    void WriteGeocache(const GpxPoint& waypoint, const GpxGroundspeakCache& cache);
    void WriteRating(std::string_view key, const icu::UnicodeString& rating);
    void WriteRoutes(const GpxDocument& document);
    void WriteTracks(const GpxDocument& document);
    void WriteTrack(const GpxTrack& track);
    void WritePathHead(const GpxElement& path);
    void WriteFigures(const PathSummary& path);
    void WriteSensors(const SensorStatistics& sensors);
    void WriteBox();

    template <class Owner>
    void WriteName(std::string_view key, const Owner& owner) {
        if (icu::UnicodeString name; owner.GetName(name))
            MemberIfAny(json_, key, name);
    }

    JsonWriter json_;
    vexaTrackLib::Bounds bounds_;
    DocumentCounts counts_;
};

void ShowJson::Write(const GpxDocument& document, const DocumentSource& source) {
    json_.BeginObject();
    WriteSource(json_, source);
    WriteHead(document, source.isNameInvented);
    WriteWaypoints(document);
    WriteGeocaches(document);
    WriteRoutes(document);
    WriteTracks(document);
    WriteContents(json_, counts_);
    WriteBox();
    json_.EndObject();
}

void ShowJson::WriteHead(const GpxDocument& document, bool isNameInvented) {
    if (!isNameInvented)
        MemberIfAny(json_, "name", DocumentName(document));
    if (double time = 0.0; document.GetDocumentTime(time))
        TimeMember(json_, "time", time);
    if (!document.GetElement())
        return;
    const GpxMetadata metadata(document.GetElement());
    if (const std::optional<GpxPerson> author = metadata.GetAuthor())
        WriteAuthor(json_, *author);
    MemberIfAny(json_, "description", metadata.GetDescription());
    MemberIfAny(json_, "keywords", metadata.GetKeywords());
    WriteLinks(json_, metadata.GetLinks());
}

void ShowJson::WriteWaypoints(const GpxDocument& document) {
    json_.Key("waypoints");
    json_.BeginArray();
    for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point)
        WriteWaypoint(*point);
    json_.EndArray();
}

void ShowJson::WriteWaypoint(const GpxPoint& waypoint) {
    ++counts_.waypoints;
    double latitude;
    double longitude;
    waypoint.GetPoint(latitude, longitude);
    bounds_.Add(latitude, longitude);
    json_.BeginObject();
    WriteName("name", waypoint);
    json_.Member("latitude", latitude);
    json_.Member("longitude", longitude);
    if (double elevation = 0.0; waypoint.GetElevation(elevation))
        json_.Member("elevation", elevation);
    if (double time = 0.0; waypoint.GetTime(time))
        TimeMember(json_, "time", time);
    json_.EndObject();
}

void ShowJson::WriteGeocaches(const GpxDocument& document) {
    json_.Key("geocaches");
    json_.BeginArray();
    for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point) {
        GpxGroundspeakCache cache;
        if (point->GetGroundspeakCache(cache))
            WriteGeocache(*point, cache);
    }
    json_.EndArray();
}

void ShowJson::WriteGeocache(const GpxPoint& waypoint, const GpxGroundspeakCache& cache) {
    ++counts_.geocaches;
    counts_.logs += cache.logs.size();
    counts_.travelBugs += cache.travelbugs.size();
    json_.BeginObject();
    WriteName("code", waypoint);
    MemberIfAny(json_, "name", cache.name);
    MemberIfAny(json_, "type", cache.type);
    MemberIfAny(json_, "size", cache.container);
    WriteRating("difficulty", cache.difficulty);
    WriteRating("terrain", cache.terrain);
    if (cache.element) {
        const GpxCacheDetails details(cache.element);
        MemberIfAny(json_, "country", details.GetCountry());
        MemberIfAny(json_, "state", details.GetState());
        MemberIfAny(json_, "available", details.IsAvailable());
        MemberIfAny(json_, "archived", details.IsArchived());
    }
    json_.EndObject();
}

/// A number; what is no number is written as the text that it is.
void ShowJson::WriteRating(std::string_view key, const icu::UnicodeString& rating) {
    std::string text;
    rating.toUTF8String(text);
    double number = 0.0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    if (result.ec == std::errc() && result.ptr == end && std::isfinite(number))
        json_.Member(key, number);
    else
        MemberIfAny(json_, key, rating);
}

void ShowJson::WriteRoutes(const GpxDocument& document) {
    json_.Key("routes");
    json_.BeginArray();
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route) {
        PathSummary path(bounds_);
        for (auto point = route->GetPointIter(); point != route->GetPointEndIter(); ++point)
            path.Add(*point);
        ++counts_.routes;
        counts_.routePoints += path.Points();
        json_.BeginObject();
        WriteName("name", *route);
        WritePathHead(route->GetElement());
        WriteFigures(path);
        json_.EndObject();
    }
    json_.EndArray();
}

void ShowJson::WriteTracks(const GpxDocument& document) {
    json_.Key("tracks");
    json_.BeginArray();
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track)
        WriteTrack(*track);
    json_.EndArray();
}

void ShowJson::WriteTrack(const GpxTrack& track) {
    PathSummary path(bounds_);
    SensorStatistics sensors;
    for (auto segment = track.GetSegmentIter(); segment != track.GetSegmentEndIter(); ++segment) {
        path.Break();
        for (auto point = track.GetPointIter(segment); point != track.GetPointEndIter(segment); ++point) {
            path.Add(*point);
            sensors.Add(*point);
        }
    }
    ++counts_.tracks;
    counts_.segments += track.GetSegmentCount();
    counts_.trackPoints += path.Points();
    json_.BeginObject();
    WriteName("name", track);
    WritePathHead(track.GetElement());
    json_.Member("segments", track.GetSegmentCount());
    WriteFigures(path);
    WriteSensors(sensors);
    json_.EndObject();
}

void ShowJson::WritePathHead(const GpxElement& path) {
    if (!path)
        return;
    const GpxPathDetails details(path);
    MemberIfAny(json_, "number", details.GetNumber());
    MemberIfAny(json_, "type", details.GetType());
    MemberIfAny(json_, "comment", details.GetComment());
}

void ShowJson::WriteFigures(const PathSummary& path) {
    json_.Member("points", path.Points());
    json_.Member("distance", Rounded(path.Metres()));
    if (path.Times().IsEmpty())
        return;
    TimeMember(json_, "start", path.Times().First());
    TimeMember(json_, "end", path.Times().Last());
    json_.Member("elapsed", Rounded((path.Times().Last() - path.Times().First()) / 1000.0));
}

void ShowJson::WriteSensors(const SensorStatistics& sensors) {
    constexpr std::array<std::string_view, 4> kKeys = {"heartRate", "cadence", "power", "temperature"};
    for (std::size_t i = 0; i < kKeys.size(); ++i) {
        const SensorStatistics::Range& range = sensors.All()[i];
        if (range.count == 0)
            continue;
        json_.Key(kKeys[i]);
        json_.BeginObject();
        json_.Member("lowest", range.lowest);
        json_.Member("highest", range.highest);
        json_.Member("mean", Rounded(range.Mean()));
        json_.EndObject();
    }
}

void ShowJson::WriteBox() {
    if (!bounds_.IsEmpty())
        WriteBounds(json_, GpxBounds{bounds_.South(), bounds_.West(), bounds_.North(), bounds_.East()});
}

} // namespace

void WriteShowJson(const GpxDocument& document, const DocumentSource& source, Output& out) {
    ShowJson(out).Write(document, source);
    out.Write("\n");
}

} // namespace vexagpx
