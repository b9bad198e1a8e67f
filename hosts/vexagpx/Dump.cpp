// SPDX-License-Identifier: MIT
#include <vexagpx/Dump.h>

#include <vexagpx/Documents.h>
#include <vexagpx/JsonWriter.h>
#include <vexagpx/MetaDataJson.h>

#include <vexaTransferLib/model/GpxModelAccess.h>

#include <array>
#include <string_view>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

constexpr std::array<std::string_view, 6> kFixNames = {"", "none", "2d", "3d", "dgps", "pps"};
constexpr std::array<std::string_view, 3> kRouteTypeNames = {"", "points", "directions"};
constexpr std::array<std::string_view, 6> kRoutePointTypeNames = {"",    "start",  "stop",
                                                                  "via", "finish", "turn"};

/// Writes the members that are left out when they are absent.
class Dumper {
public:
    explicit Dumper(Output& out) : json_(out) {}

    void WriteDocument(const GpxDocument& document, const std::string* entry);

private:
    void WriteRoute(const GpxRoute& route);
    void WriteTrack(const GpxTrack& track);
    void WritePoint(const GpxPoint& point);
    void WritePointTexts(const GpxPoint& point);
    void WriteVendorData(const GpxPoint& point);
    void WriteFormAttributes(const GpxPoint::FormAttributes& attributes);
    void WriteGeocache(const GpxGroundspeakCache& cache);
    void WriteLog(const GpxGroundspeakCacheLog& log);

    void Member(std::string_view key, const icu::UnicodeString& text) {
        if (!text.isEmpty()) {
            json_.Key(key);
            json_.String(text);
        }
    }

    template <class Number>
    void NumberMember(std::string_view key, Number number) {
        json_.Key(key);
        json_.Number(number);
    }

    template <std::size_t size>
    void NameMember(std::string_view key, const std::array<std::string_view, size>& names,
                    std::size_t value) {
        json_.Key(key);
        json_.String(names.at(value));
    }

    template <class Owner>
    void Member(std::string_view key, const Owner& owner, bool (Owner::*get)(icu::UnicodeString&) const) {
        icu::UnicodeString text;
        if ((owner.*get)(text))
            Member(key, text);
    }

    void Member(std::string_view key, const GpxPoint& point, bool (GpxPoint::*get)(double&) const) {
        double number = 0.0;
        if ((point.*get)(number))
            NumberMember(key, number);
    }

    template <class Owner>
    void LinkMember(const Owner& owner) {
        GpxUrl url(u"absent");
        if (!owner.GetURL(url))
            return;
        json_.Key("url");
        json_.BeginObject();
        Member("url", url.GetUrl());
        Member("text", url, &GpxUrl::GetUrlText);
        Member("type", url, &GpxUrl::GetUrlType);
        json_.EndObject();
    }

    /// An array of what `write` makes of each element.
    template <class Iterator, class Write>
    void Array(Iterator begin, Iterator end, Write write) {
        json_.BeginArray();
        for (Iterator at = begin; at != end; ++at)
            write(*at);
        json_.EndArray();
    }

    template <class Iterator>
    void PointArray(Iterator begin, Iterator end) {
        Array(begin, end, [this](const GpxPoint& point) { WritePoint(point); });
    }

    JsonWriter json_;
};

void Dumper::WriteDocument(const GpxDocument& document, const std::string* entry) {
    json_.BeginObject();
    if (entry != nullptr) {
        json_.Key("entry");
        json_.String(icu::UnicodeString::fromUTF8(*entry));
    }
    Member("name", GpxModelAccess::GetName(document));
    double time = 0.0;
    if (document.GetDocumentTime(time))
        NumberMember("time", time);
    MetaDataJson records(json_, EmptyTexts::kLeftOut);
    records.Write(GpxModelAccess::GetGISMetaData(document).get());
    records.Write(GpxModelAccess::GetAnnotateMetaData(document).get());
    records.Write(GpxModelAccess::GetStats(document).get());
    json_.Key("waypoints");
    PointArray(document.GetWaypointIter(), document.GetWaypointEndIter());
    json_.Key("routes");
    Array(document.GetRouteIter(), document.GetRouteEndIter(),
          [this](const GpxRoute& route) { WriteRoute(route); });
    json_.Key("tracks");
    Array(document.GetTrackIter(), document.GetTrackEndIter(),
          [this](const GpxTrack& track) { WriteTrack(track); });
    json_.EndObject();
}

void Dumper::WriteRoute(const GpxRoute& route) {
    json_.BeginObject();
    Member("name", route, &GpxRoute::GetName);
    Member("source", route, &GpxRoute::GetSource);
    Member("type", route, &GpxRoute::GetType);
    TarvikRouteType type;
    if (route.GetTarvikRouteType(type))
        NameMember("routeType", kRouteTypeNames, type);
    json_.Key("points");
    PointArray(route.GetPointIter(), route.GetPointEndIter());
    json_.EndObject();
}

void Dumper::WriteTrack(const GpxTrack& track) {
    json_.BeginObject();
    Member("name", track, &GpxTrack::GetName);
    Member("description", track, &GpxTrack::GetDescription);
    Member("source", track, &GpxTrack::GetSource);
    Member("type", track, &GpxTrack::GetType);
    LinkMember(track);
    if (GpxModelAccess::GetColor(track) >= 0)
        NumberMember("color", std::int32_t{GpxModelAccess::GetColor(track)});
    json_.Key("segments");
    Array(track.GetSegmentIter(), track.GetSegmentEndIter(),
          [this](const GpxTrack::Segment& segment) { PointArray(segment.begin(), segment.end()); });
    json_.EndObject();
}

void Dumper::WritePoint(const GpxPoint& point) {
    double latitude;
    double longitude;
    point.GetPoint(latitude, longitude);
    json_.BeginObject();
    NumberMember("latitude", latitude);
    NumberMember("longitude", longitude);
    Member("elevation", point, &GpxPoint::GetElevation);
    Member("time", point, &GpxPoint::GetTime);
    Member("magneticVariation", point, &GpxPoint::GetMagneticVariation);
    Member("geoidHeight", point, &GpxPoint::GetGeoidHeight);
    WritePointTexts(point);
    GpxFix fix;
    if (point.GetFix(fix))
        NameMember("fix", kFixNames, fix);
    WriteVendorData(point);
    json_.EndObject();
}

void Dumper::WritePointTexts(const GpxPoint& point) {
    Member("name", point, &GpxPoint::GetName);
    Member("comment", point, &GpxPoint::GetComment);
    Member("description", point, &GpxPoint::GetDescription);
    Member("source", point, &GpxPoint::GetSource);
    LinkMember(point);
    Member("symbol", point, &GpxPoint::GetSymbol);
    Member("type", point, &GpxPoint::GetType);
}

void Dumper::WriteVendorData(const GpxPoint& point) {
    TarvikRoutePointType type;
    if (point.GetPointType() == kGpxRoutePoint && point.GetTarvikRoutePointType(type))
        NameMember("routePointType", kRoutePointTypeNames, type);
    if (GpxModelAccess::GetSymbolNumber(point) > 0)
        NumberMember("symbolNumber", GpxModelAccess::GetSymbolNumber(point));
    Member("guid", GpxModelAccess::GetGUID(point));
    const GpxPoint::FormAttributes attributes = GpxModelAccess::GetFormAttributes(point);
    if (!attributes.empty())
        WriteFormAttributes(attributes);
    GpxGroundspeakCache cache;
    if (point.GetPointType() == kGpxWaypoint && point.GetGroundspeakCache(cache))
        WriteGeocache(cache);
}

void Dumper::WriteFormAttributes(const GpxPoint::FormAttributes& attributes) {
    json_.Key("formAttributes");
    Array(attributes.begin(), attributes.end(),
          [this](const GpxPoint::FormAttributes::value_type& attribute) {
              json_.BeginObject();
              Member("key", attribute.first);
              Member("value", attribute.second->value);
              if (attribute.second->modTime != 0.0)
                  NumberMember("modTime", attribute.second->modTime);
              json_.EndObject();
          });
}

void Dumper::WriteGeocache(const GpxGroundspeakCache& cache) {
    json_.Key("geocache");
    json_.BeginObject();
    Member("name", cache.name);
    Member("owner", cache.owner);
    Member("type", cache.type);
    Member("container", cache.container);
    Member("difficulty", cache.difficulty);
    Member("terrain", cache.terrain);
    Member("short_description", cache.short_description);
    Member("long_description", cache.long_description);
    Member("encoded_hints", cache.encoded_hints);
    if (!cache.logs.empty()) {
        json_.Key("logs");
        Array(cache.logs.begin(), cache.logs.end(),
              [this](const GpxGroundspeakCacheLog& log) { WriteLog(log); });
    }
    if (!cache.travelbugs.empty()) {
        json_.Key("travelbugs");
        Array(cache.travelbugs.begin(), cache.travelbugs.end(),
              [this](const icu::UnicodeString& travelbug) { json_.String(travelbug); });
    }
    json_.EndObject();
}

void Dumper::WriteLog(const GpxGroundspeakCacheLog& log) {
    json_.BeginObject();
    if (log.id != 0)
        NumberMember("id", log.id);
    Member("date", log.date);
    Member("finder", log.finder);
    Member("text", log.text);
    Member("type", log.type);
    json_.EndObject();
}

/// Looks for a raw text in the order in which they are written. The name of a field is made when it is found.
class RawTextSearch {
public:
    using Wanted = std::function<bool(const icu::UnicodeString&, RawText::Place)>;

    explicit RawTextSearch(const Wanted& wanted) : wanted_(wanted) {}

    bool IsOver() const { return found.has_value(); }

    void Look(const std::string& field, const icu::UnicodeString& text) {
        Look(text, RawText::Place::kElement, [&field] { return field; });
    }

    /// \param owner what the points belong to: " of route 2"
    template <class Iterator>
    void LookAtPoints(const std::string& kind, const std::string& owner, Iterator begin, Iterator end) {
        std::size_t number = 0;
        for (Iterator point = begin; point != end && !IsOver(); ++point) {
            ++number;
            if (!point->ContainsExtensions())
                continue;
            const auto Named = [&](std::string field) {
                return field.append(kind).append(" ").append(std::to_string(number)).append(owner);
            };
            for (const auto& attribute : GpxModelAccess::GetFormAttributes(*point))
                Look(attribute.first, RawText::Place::kAttribute, [&] { return Named("form key of "); });
            Look(GpxModelAccess::GetGUID(*point), RawText::Place::kElement,
                 [&] { return Named("GUID of "); });
        }
    }

    std::optional<RawText> found;

private:
    template <class MakeName>
    void Look(const icu::UnicodeString& text, RawText::Place place, MakeName makeName) {
        if (!IsOver() && !text.isEmpty() && wanted_(text, place))
            found = RawText{makeName(), text, place};
    }

    const Wanted& wanted_;
};

void LookAtTracks(RawTextSearch& search, const GpxDocument& document) {
    std::size_t trackNumber = 0;
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        const std::string owner = " of track " + std::to_string(++trackNumber);
        std::size_t segmentNumber = 0;
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment)
            search.LookAtPoints("point", " of segment " + std::to_string(++segmentNumber) + owner,
                                segment->begin(), segment->end());
    }
}

} // namespace

void DumpDocument(const GpxDocument& document, const std::string* entry, Output& out) {
    Dumper(out).WriteDocument(document, entry);
    out.Write("\n");
}

bool Dump(const std::vector<std::string>& files, const InputRules& rules, Output& out) {
    const bool fine = ReadDocuments(files, rules, [&out](const Origin& origin, const GpxDocument& document) {
        DumpDocument(document, origin.entry, out);
        out.Flush();
    });
    out.Flush();
    return fine;
}

icu::UnicodeString DocumentName(const GpxDocument& document) {
    return GpxModelAccess::GetName(document);
}

std::optional<RawText> FindRawText(const GpxDocument& document, const GpxVersion& version,
                                   const RawTextSearch::Wanted& wanted) {
    RawTextSearch search(wanted);
    if (const auto& record = GpxModelAccess::GetGISMetaData(document)) {
        search.Look("layer name", record->layerName);
        search.Look("layer key", record->layerKey);
        search.Look("form", record->form);
    }
    if (const auto& record = GpxModelAccess::GetAnnotateMetaData(document)) {
        search.Look("track GUID", record->trackGUID);
        search.Look("waypoint GUID", record->waypointGUID);
    }
    if (version.IsGpx10())
        return std::move(search.found);
    search.LookAtPoints("waypoint", "", document.GetWaypointIter(), document.GetWaypointEndIter());
    std::size_t routeNumber = 0;
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route)
        search.LookAtPoints("point", " of route " + std::to_string(++routeNumber), route->GetPointIter(),
                            route->GetPointEndIter());
    LookAtTracks(search, document);
    return std::move(search.found);
}

} // namespace vexagpx
