// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Dump.h>

#include <vexagpx/commands/DumpDetails.h>
#include <vexagpx/commands/DumpPointDetails.h>
#include <vexagpx/commands/GeocacheJson.h>
#include <vexagpx/commands/SourceJson.h>
#include <vexagpx/output/HiddenFields.h>
#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/output/MetaDataJson.h>
#include <vexagpx/output/OptionalMembers.h>

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

    void WriteDocument(const GpxDocument& document, const DocumentSource& source);

private:
    void WriteRoute(const GpxRoute& route);
    void WriteTrack(const GpxTrack& track);
    void WritePoint(const GpxPoint& point);
    void WriteLink(const GpxUrl& url);
    void WriteFormAttributes(const GpxPoint::FormAttributes& attributes);

    void TextMember(std::string_view key, const icu::UnicodeString& text) { MemberIfAny(json_, key, text); }

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
    void Value(const GpxGroundspeakCache* cache) {
        geocacheElement_ = cache->element;
        geocaches_.Write(*cache);
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
    GeocacheJson geocaches_{json_};
    GpxElement geocacheElement_; ///< of the point that is written
};

void Dumper::WriteDocument(const GpxDocument& document, const DocumentSource& source) {
    json_.BeginObject();
    WriteSource(json_, source);
    if (!source.isNameInvented)
        TextMember("name", DocumentName(document));
    double time = 0.0;
    if (document.GetDocumentTime(time))
        TimeMember(json_, "time", time);
    WriteDocumentDetails(document, json_);
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
    WriteRouteDetails(route, json_);
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
    WriteTrackDetails(track, json_);
    json_.Key("segments");
    Array(track.GetSegmentIter(), track.GetSegmentEndIter(),
          [this](const GpxTrack::Segment& segment) { PointArray(segment.begin(), segment.end()); });
    json_.EndObject();
}

void Dumper::WritePoint(const GpxPoint& point) {
    json_.BeginObject();
    geocacheElement_ = GpxElement();
    ForEachField(point, [this](std::string_view name, const PointValue& value) {
        if (name == "time")
            return TimeMember(json_, name, std::get<double>(value));
        json_.Key(name);
        std::visit([this](const auto& it) { Value(it); }, value);
    });
    WritePointDetails(point, geocacheElement_, json_);
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
                  TimeMember(json_, "modTime", attribute.second->modTime);
              json_.EndObject();
          });
}

} // namespace

void DumpDocument(const GpxDocument& document, const DocumentSource& source, Output& out) {
    Dumper(out).WriteDocument(document, source);
    out.Write("\n");
}

bool Dump(const DumpOptions& options, Output& out) {
    const auto dump = [&out](const DocumentSource& source, const GpxDocument& document) {
        DumpDocument(document, source, out);
        out.Flush();
    };
    const bool succeeded = ReadDocuments(options.files, options.rules, dump, Watched::kInventedNames);
    out.Flush();
    return succeeded;
}

} // namespace vexagpx
