// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxDocument.h>

#include <vexaTransferLib/text/ContractSources.h>
#include <vexaTransferLib/text/FileName.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/writer/Elements.h>
#include <vexaTransferLib/writer/Utf8Sink.h>

#include <common/ScopeGuard.h>
#include <common/dbc.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace vexaTransferLib {

namespace {

constexpr char kNotAWaypoint[] = "Only waypoints can be added the GPX waypoint list.";

void AppendMetaDataLine(writer::TextSink& sink, std::string_view name, const icu::UnicodeString& text) {
    writer::AppendRawElement(sink, "\t\t", name, text);
}

void AppendGISMetaData(writer::TextSink& sink, const GISMetaData& record) {
    AppendMetaDataLine(sink, "tarvik:layername", record.layerName);
    AppendMetaDataLine(sink, "tarvik:layerkey", record.layerKey);
    AppendMetaDataLine(sink, "tarvik:form", record.form);
    writer::AppendGroupedElement(sink, "\t\t", "tarvik:defaultsymbol", record.defaultSymbol);
}

void AppendAnnotateMetaData(writer::TextSink& sink, const AnnotateMetaData& record) {
    AppendMetaDataLine(sink, "tarvik:trackGUID", record.trackGUID);
    AppendMetaDataLine(sink, "tarvik:waypointGUID", record.waypointGUID);
}

void AppendStats(writer::TextSink& sink, const GPXStats& stats) {
    constexpr std::string_view kIndent = "\t\t\t";
    sink.Ascii("\t\t<tarvik:filestats>\r\n");
    if (stats.wptcount > 0)
        writer::AppendGroupedElement(sink, kIndent, "tarvik:wptcount", stats.wptcount);
    if (stats.trkcount > 0)
        writer::AppendGroupedElement(sink, kIndent, "tarvik:trkcount", stats.trkcount);
    if (stats.trksegcount > 0)
        writer::AppendGroupedElement(sink, kIndent, "tarvik:trksegcount", stats.trksegcount);
    if (stats.trktotalkm > 0.0)
        writer::AppendGroupedElement(sink, kIndent, "tarvik:trktotalkm", stats.trktotalkm);
    if (stats.geocachecount >= 0)
        writer::AppendGroupedElement(sink, kIndent, "tarvik:geocachecount", stats.geocachecount);
    sink.Ascii("\t\t</tarvik:filestats>\r\n");
}

// The C library would accept a small document on a full disk into its buffer and only fail when the file is
// closed; without a buffer its count tells the truth.
void WriteBytes(std::FILE* file, const UnicodeStrUtils::ByteString& bytes) {
    constexpr char kWriteFailed[] = "Unable to write the GPX file. Target could be write protected or full.";
    ScopeGuard closeFile([file] { std::fclose(file); });
    std::setvbuf(file, nullptr, _IONBF, 0);
    const std::size_t written = std::fwrite(bytes.buffer.get(), 1, bytes.length, file);
    dbc::Ensure(written == bytes.length, text::kGpxDocumentSource, kWriteFailed);
    closeFile.Dismiss();
    dbc::Ensure(std::fclose(file) == 0, text::kGpxDocumentSource, kWriteFailed);
}

} // namespace

GpxDocument::GpxDocument() {
    Clear();
}

GpxDocument& GpxDocument::operator=(const GpxDocument& other) {
    if (this != &other)
        *this = GpxDocument(other);
    return *this;
}

GpxDocument::~GpxDocument() = default;

void GpxDocument::AddWaypoint(const GpxPoint& point) {
    dbc::Require(point.GetPointType() == kGpxWaypoint, text::kGpxDocumentSource, kNotAWaypoint);
    waypoints_.push_back(point);
}

void GpxDocument::AddWaypoint(GpxPoint&& point) {
    dbc::Require(point.GetPointType() == kGpxWaypoint, text::kGpxDocumentSource, kNotAWaypoint);
    waypoints_.push_back(std::move(point));
}

void GpxDocument::AddRoute(const GpxRoute& route) {
    routes_.push_back(route);
}

void GpxDocument::AddRoute(GpxRoute&& route) {
    routes_.push_back(std::move(route));
}

void GpxDocument::AddTrack(const GpxTrack& track) {
    tracks_.push_back(track);
}

void GpxDocument::AddTrack(GpxTrack&& track) {
    tracks_.push_back(std::move(track));
}

void GpxDocument::Clear() {
    waypoints_.clear();
    routes_.clear();
    tracks_.clear();
    name_.remove();
    time_ = 0.0;
    gisMetaData_.reset();
    annotateMetaData_.reset();
    stats_.reset();
}

GpxDocument::WaypointIterator GpxDocument::GetWaypointIter() const {
    return waypoints_.begin();
}

GpxDocument::WaypointIterator GpxDocument::GetWaypointEndIter() const {
    return waypoints_.end();
}

std::size_t GpxDocument::GetWaypointCount() const {
    return waypoints_.size();
}

GpxDocument::RouteIterator GpxDocument::GetRouteIter() const {
    return routes_.begin();
}

GpxDocument::RouteIterator GpxDocument::GetRouteEndIter() const {
    return routes_.end();
}

std::size_t GpxDocument::GetRouteCount() const {
    return routes_.size();
}

GpxDocument::TrackIterator GpxDocument::GetTrackIter() const {
    return tracks_.begin();
}

GpxDocument::TrackIterator GpxDocument::GetTrackEndIter() const {
    return tracks_.end();
}

std::size_t GpxDocument::GetTrackCount() const {
    return tracks_.size();
}

bool GpxDocument::GetDocumentTime(double& time) const {
    if (time_ == 0.0)
        return false;
    time = time_;
    return true;
}

bool GpxDocument::HasExtensionData() const {
    return gisMetaData_ || annotateMetaData_ || stats_;
}

bool GpxDocument::HasMetaData() const {
    return !name_.isEmpty() || HasExtensionData();
}

UnicodeStrUtils::ByteString GpxDocument::GetAsByteString(const GpxVersion& version,
                                                         const icu::UnicodeString& applicationName,
                                                         const icu::UnicodeString& applicationUrl) const {
    writer::Utf8Sink sink(text::kGpxDocumentSource);
    AppendTo(version, applicationName, applicationUrl, sink);
    return sink.Take();
}

void GpxDocument::WriteToString(const GpxVersion& version, const icu::UnicodeString& applicationName,
                                const icu::UnicodeString& applicationUrl, std::string& out) const {
    const UnicodeStrUtils::ByteString bytes = GetAsByteString(version, applicationName, applicationUrl);
    out = bytes.buffer.get();
}

void GpxDocument::WriteToFile(const GpxVersion& version, const icu::UnicodeString& applicationName,
                              const icu::UnicodeString& applicationUrl,
                              const icu::UnicodeString& fileName) const {
    const UnicodeStrUtils::ByteString bytes = GetAsByteString(version, applicationName, applicationUrl);
    const UnicodeStrUtils::ByteString path(fileName);
    std::FILE* const file = text::IsFileName(fileName) ? std::fopen(path.buffer.get(), "w+b") : nullptr;
    dbc::Ensure(file != nullptr, text::kGpxDocumentSource,
                "Unable to create the GPX file. Target could be write protected or full.");
    WriteBytes(file, bytes);
}

void GpxDocument::AppendTo(const GpxVersion& version, const icu::UnicodeString& applicationName,
                           const icu::UnicodeString& applicationUrl, writer::TextSink& sink) const {
    dbc::Require(version.IsGpx10() || version.IsGpx11(), text::kGpxDocumentSource,
                 "Cannot write to unknown GPX schema version.");
    dbc::Require(!applicationName.isEmpty(), text::kGpxDocumentSource,
                 "The application name is required to write a GPX document.");
    dbc::Require(!applicationUrl.isEmpty(), text::kGpxDocumentSource,
                 "The application URL is required to write a GPX document.");
    AppendHeader(version, applicationName, applicationUrl, sink);
    AppendMetaData(sink);
    for (const GpxPoint& waypoint : waypoints_)
        waypoint.AppendTo(version, sink);
    for (const GpxRoute& route : routes_)
        route.AppendTo(version, sink);
    for (const GpxTrack& track : tracks_)
        track.AppendTo(version, sink);
    sink.Ascii("</gpx>\r\n");
}

void GpxDocument::AppendHeader(const GpxVersion& version, const icu::UnicodeString& applicationName,
                               const icu::UnicodeString& applicationUrl, writer::TextSink& sink) const {
    sink.Ascii("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n<gpx version=\"");
    sink.Raw(version.GetVersionString());
    sink.Ascii("\"\r\n creator=\"");
    sink.Escaped(applicationName);
    sink.Ascii(" - ");
    sink.Escaped(applicationUrl);
    sink.Ascii("\"\r\n xmlns:xsi=\"");
    sink.Ascii(text::kXsiUri);
    sink.Ascii("\"\r\n xmlns=\"");
    sink.Ascii(text::kGpx11Uri);
    sink.Ascii("\"\r\n xmlns:tarvik=\"");
    sink.Ascii(text::kTarvikUri);
    sink.Ascii("\"\r\n xsi:schemaLocation=\"");
    sink.Ascii(text::kGpx11Uri);
    sink.Ascii(" ");
    sink.Ascii(text::kGpx11SchemaLocation);
    sink.Ascii("\r\n ");
    sink.Ascii(text::kTarvikUri);
    sink.Ascii(" ");
    sink.Ascii(text::kTarvikSchemaLocation);
    if (HasGeocache()) {
        sink.Ascii("\r\n ");
        sink.Ascii(text::kGroundspeak10Uri);
        sink.Ascii(" ");
        sink.Ascii(text::kGroundspeak10SchemaLocation);
    }
    sink.Ascii("\">\r\n");
}

bool GpxDocument::HasGeocache() const {
    return std::any_of(waypoints_.begin(), waypoints_.end(),
                       [](const GpxPoint& point) { return point.rare_ && point.rare_->geocache; });
}

void GpxDocument::AppendMetaData(writer::TextSink& sink) const {
    if (HasMetaData())
        sink.Ascii("<metadata>\r\n");
    if (!name_.isEmpty()) {
        sink.Ascii("\t");
        writer::AppendTextElement(sink, "name", name_);
    }
    // A time alone stands without a metadata element around it.
    if (time_ > 0.0) {
        sink.Ascii("\t");
        writer::AppendAsciiElement(sink, "time", sink.TimeText(time_, text::YearDigits::kFour));
    }
    if (HasExtensionData())
        AppendExtensionData(sink);
    if (HasMetaData())
        sink.Ascii("</metadata>\r\n");
}

void GpxDocument::AppendExtensionData(writer::TextSink& sink) const {
    sink.Ascii("\t<extensions>\r\n");
    if (gisMetaData_)
        AppendGISMetaData(sink, *gisMetaData_);
    if (annotateMetaData_)
        AppendAnnotateMetaData(sink, *annotateMetaData_);
    if (stats_)
        AppendStats(sink, *stats_);
    sink.Ascii("\t</extensions>\r\n");
}

} // namespace vexaTransferLib
