// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/VendorWriter.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/TimeText.h>
#include <vexaTransferLib/writer/Elements.h>
#include <vexaTransferLib/writer/GeocacheWriter.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vexaTransferLib::writer {

namespace {

using Access = GpxModelAccess;

void WriteRoutePointType(TextSink& sink, std::size_t type) {
    text::Invariant(type < text::kRoutePointTypeTexts.size(), text::sites::kUnknownRoutePointType,
                    "Unable to write an unknown route point type.");
    AppendAsciiElement(sink, "tarvik:routePointType", text::kRoutePointTypeTexts[type]);
}

void WriteFormAttribute(TextSink& sink, const icu::UnicodeString& key, const FormData& record) {
    sink.Ascii("\t\t<tarvik:formstring key=\"");
    sink.Raw(key);
    sink.Ascii("\"");
    const std::string_view modTime = sink.TimeText(record.modTime, text::YearDigits::kFour);
    if (record.modTime != 0.0 && !modTime.empty())
        sink.Ascii(" modtime=\"", modTime, "\"");
    sink.Ascii(">");
    sink.Escaped(record.value);
    AppendLineEnd(sink, "tarvik:formstring");
}

void WriteFormAttributes(TextSink& sink, const GpxPoint::FormAttributes& attributes) {
    if (attributes.empty())
        return;
    sink.Ascii("\t<tarvik:formdata>", kEndOfLine);
    for (const auto& [key, record] : attributes)
        WriteFormAttribute(sink, key, *record);
    sink.Ascii("\t</tarvik:formdata>", kEndOfLine);
}

void WriteRecord(TextSink& sink, const GISMetaData& record) {
    constexpr std::string_view kIndent = "\t\t";
    AppendRawElement(sink, kIndent, "tarvik:layername", record.layerName);
    AppendRawElement(sink, kIndent, "tarvik:layerkey", record.layerKey);
    AppendRawElement(sink, kIndent, "tarvik:form", record.form);
    AppendGroupedElement(sink, kIndent, "tarvik:defaultsymbol", record.defaultSymbol);
}

void WriteRecord(TextSink& sink, const AnnotateMetaData& record) {
    constexpr std::string_view kIndent = "\t\t";
    AppendRawElement(sink, kIndent, "tarvik:trackGUID", record.trackGUID);
    AppendRawElement(sink, kIndent, "tarvik:waypointGUID", record.waypointGUID);
}

void WriteRecord(TextSink& sink, const GPXStats& stats) {
    constexpr std::string_view kIndent = "\t\t\t";
    sink.Ascii("\t\t<tarvik:filestats>", kEndOfLine);
    if (stats.wptcount > 0)
        AppendGroupedElement(sink, kIndent, "tarvik:wptcount", stats.wptcount);
    if (stats.trkcount > 0)
        AppendGroupedElement(sink, kIndent, "tarvik:trkcount", stats.trkcount);
    if (stats.trksegcount > 0)
        AppendGroupedElement(sink, kIndent, "tarvik:trksegcount", stats.trksegcount);
    if (stats.trktotalkm > 0.0)
        AppendGroupedElement(sink, kIndent, "tarvik:trktotalkm", stats.trktotalkm);
    if (stats.geocachecount >= 0)
        AppendGroupedElement(sink, kIndent, "tarvik:geocachecount", stats.geocachecount);
    sink.Ascii("\t\t</tarvik:filestats>", kEndOfLine);
}

} // namespace

void WritePointData(TextSink& sink, const GpxPoint& point) {
    sink.Ascii("<extensions>", kEndOfLine);
    const std::size_t routePointType = Access::GetRawRoutePointType(point);
    if (point.GetPointType() == kGpxRoutePoint && routePointType != 0)
        WriteRoutePointType(sink, routePointType);
    if (const auto* rare = Access::GetRareData(point)) {
        WriteFormAttributes(sink, rare->formAttributes);
        if (rare->symbolNumber > 0)
            AppendGroupedElement(sink, "\t", "tarvik:tovasymbol", rare->symbolNumber);
        AppendRawElement(sink, "\t", "tarvik:objectid", rare->guid);
        if (rare->geocache)
            WriteGeocache(sink, *rare->geocache);
    }
    sink.Ascii("</extensions>", kEndOfLine);
}

void WriteRouteType(TextSink& sink, const GpxRoute& route) {
    TarvikRouteType type = kTarvikRouteStandard;
    if (!route.GetTarvikRouteType(type))
        return;
    sink.Ascii("<extensions>", kEndOfLine);
    AppendAsciiElement(sink, "tarvik:routeType", text::kRouteTypeTexts[type]);
    sink.Ascii("</extensions>", kEndOfLine);
}

void WriteTrackData(TextSink& sink, const GpxTrack& track) {
    const std::int32_t color = Access::GetColor(track);
    if (color < 0)
        return;
    sink.Ascii("<extensions>", kEndOfLine);
    AppendGroupedElement(sink, "\t", "tarvik:color", color);
    sink.Ascii("</extensions>", kEndOfLine);
}

void WriteDocumentData(TextSink& sink, const GpxDocument& document) {
    sink.Ascii("\t<extensions>", kEndOfLine);
    if (const auto& record = Access::GetGISMetaData(document))
        WriteRecord(sink, *record);
    if (const auto& record = Access::GetAnnotateMetaData(document))
        WriteRecord(sink, *record);
    if (const auto& stats = Access::GetStats(document))
        WriteRecord(sink, *stats);
    sink.Ascii("\t</extensions>", kEndOfLine);
}

} // namespace vexaTransferLib::writer
