// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Dump.h>

#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/output/HiddenFields.h>
#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/output/MetaDataJson.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

/// Writes a document without the members that it does not have.
class Dumper {
public:
    explicit Dumper(Output& out) : json_(out) {}

    void WriteDocument(const GpxDocument& document, const std::string* entry);

private:
    void WriteRoute(const GpxRoute& route);
    void WriteTrack(const GpxTrack& track);
    void WritePoint(const GpxPoint& point);
    void WriteLink(const GpxUrl& url);
    void WriteFormAttributes(const GpxPoint::FormAttributes& attributes);
    void WriteGeocache(const GpxGroundspeakCache& cache);
    void WriteLog(const GpxGroundspeakCacheLog& log);

    void TextMember(std::string_view key, const icu::UnicodeString& text) {
        if (!text.isEmpty())
            json_.Member(key, text);
    }

    template <class Owner>
    void FieldMember(std::string_view key, const Owner& owner,
                     bool (Owner::*get)(icu::UnicodeString&) const) {
        icu::UnicodeString text;
        if ((owner.*get)(text))
            TextMember(key, text);
    }

    // The values of a point.
    void Value(double number) { json_.Number(number); }
    void Value(std::int32_t number) { json_.Number(number); }
    void Value(std::string_view text) { json_.String(text); }
    void Value(const icu::UnicodeString* text) { json_.String(*text); }
    void Value(const GpxUrl* url) { WriteLink(*url); }
    void Value(const GpxPoint::FormAttributes* attributes) { WriteFormAttributes(*attributes); }
    void Value(const GpxGroundspeakCache* cache) { WriteGeocache(*cache); }

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
    if (entry != nullptr)
        json_.Member("entry", *entry);
    TextMember("name", DocumentName(document));
    double time = 0.0;
    if (document.GetDocumentTime(time))
        json_.Member("time", time);
    MetaDataJson records(json_, EmptyTexts::kLeftOut);
    records.Write(GisMetaDataOf(document));
    records.Write(AnnotateMetaDataOf(document));
    records.Write(StatsOf(document));
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
    FieldMember("name", route, &GpxRoute::GetName);
    FieldMember("source", route, &GpxRoute::GetSource);
    FieldMember("type", route, &GpxRoute::GetType);
    TarvikRouteType type;
    if (route.GetTarvikRouteType(type))
        json_.Member("routeType", NameOf(type));
    json_.Key("points");
    PointArray(route.GetPointIter(), route.GetPointEndIter());
    json_.EndObject();
}

void Dumper::WriteTrack(const GpxTrack& track) {
    json_.BeginObject();
    FieldMember("name", track, &GpxTrack::GetName);
    FieldMember("description", track, &GpxTrack::GetDescription);
    FieldMember("source", track, &GpxTrack::GetSource);
    FieldMember("type", track, &GpxTrack::GetType);
    GpxUrl url(u"absent");
    if (track.GetURL(url)) {
        json_.Key("url");
        WriteLink(url);
    }
    if (const std::optional<std::int32_t> color = ColorOf(track))
        json_.Member("color", *color);
    json_.Key("segments");
    Array(track.GetSegmentIter(), track.GetSegmentEndIter(),
          [this](const GpxTrack::Segment& segment) { PointArray(segment.begin(), segment.end()); });
    json_.EndObject();
}

void Dumper::WritePoint(const GpxPoint& point) {
    json_.BeginObject();
    ForEachField(point, [this](std::string_view name, const PointValue& value) {
        json_.Key(name);
        std::visit([this](const auto& it) { Value(it); }, value);
    });
    json_.EndObject();
}

void Dumper::WriteLink(const GpxUrl& url) {
    json_.BeginObject();
    TextMember("url", url.GetUrl());
    FieldMember("text", url, &GpxUrl::GetUrlText);
    FieldMember("type", url, &GpxUrl::GetUrlType);
    json_.EndObject();
}

void Dumper::WriteFormAttributes(const GpxPoint::FormAttributes& attributes) {
    Array(attributes.begin(), attributes.end(),
          [this](const GpxPoint::FormAttributes::value_type& attribute) {
              json_.BeginObject();
              TextMember("key", attribute.first);
              TextMember("value", attribute.second->value);
              if (attribute.second->modTime != 0.0)
                  json_.Member("modTime", attribute.second->modTime);
              json_.EndObject();
          });
}

void Dumper::WriteGeocache(const GpxGroundspeakCache& cache) {
    json_.BeginObject();
    TextMember("name", cache.name);
    TextMember("owner", cache.owner);
    TextMember("type", cache.type);
    TextMember("container", cache.container);
    TextMember("difficulty", cache.difficulty);
    TextMember("terrain", cache.terrain);
    TextMember("short_description", cache.short_description);
    TextMember("long_description", cache.long_description);
    TextMember("encoded_hints", cache.encoded_hints);
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
        json_.Member("id", log.id);
    TextMember("date", log.date);
    TextMember("finder", log.finder);
    TextMember("text", log.text);
    TextMember("type", log.type);
    json_.EndObject();
}

} // namespace

void DumpDocument(const GpxDocument& document, const std::string* entry, Output& out) {
    Dumper(out).WriteDocument(document, entry);
    out.Write("\n");
}

bool Dump(const DumpOptions& options, Output& out) {
    const auto dump = [&out](const DocumentSource& source, const GpxDocument& document) {
        DumpDocument(document, source.entry, out);
        out.Flush();
    };
    const bool succeeded = ReadDocuments(options.files, options.rules, dump);
    out.Flush();
    return succeeded;
}

} // namespace vexagpx
