// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/VendorWriter.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ElementNames.h>
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
    AppendAsciiElement(sink, tarvik::kRoutePointType, text::kRoutePointTypeTexts[type]);
}

void WriteFormAttribute(TextSink& sink, const icu::UnicodeString& key, const FormData& record) {
    sink.Ascii("\t\t<", tarvik::kFormstring, " ", tarvik::kKey, "=\"");
    sink.Raw(key);
    sink.Ascii("\"");
    const std::string_view modTime = sink.TimeText(record.modTime, text::YearDigits::kFour);
    if (record.modTime != 0.0 && !modTime.empty())
        sink.Ascii(" ", tarvik::kModtime, "=\"", modTime, "\"");
    sink.Ascii(">");
    sink.Escaped(record.value);
    AppendLineEnd(sink, tarvik::kFormstring);
}

void WriteFormAttributes(TextSink& sink, const GpxPoint::FormAttributes& attributes) {
    if (attributes.empty())
        return;
    sink.Ascii("\t");
    AppendLineStart(sink, tarvik::kFormdata);
    for (const auto& [key, record] : attributes)
        WriteFormAttribute(sink, key, *record);
    sink.Ascii("\t");
    AppendLineEnd(sink, tarvik::kFormdata);
}

void WriteRecord(TextSink& sink, const GISMetaData& record) {
    constexpr std::string_view kIndent = "\t\t";
    AppendRawElement(sink, kIndent, tarvik::kLayername, record.layerName);
    AppendRawElement(sink, kIndent, tarvik::kLayerkey, record.layerKey);
    AppendRawElement(sink, kIndent, tarvik::kForm, record.form);
    AppendGroupedElement(sink, kIndent, tarvik::kDefaultsymbol, record.defaultSymbol);
}

void WriteRecord(TextSink& sink, const AnnotateMetaData& record) {
    constexpr std::string_view kIndent = "\t\t";
    AppendRawElement(sink, kIndent, tarvik::kTrackGUID, record.trackGUID);
    AppendRawElement(sink, kIndent, tarvik::kWaypointGUID, record.waypointGUID);
}

void WriteRecord(TextSink& sink, const GPXStats& stats) {
    constexpr std::string_view kIndent = "\t\t\t";
    sink.Ascii("\t\t");
    AppendLineStart(sink, tarvik::kFilestats);
    if (stats.wptcount > 0)
        AppendGroupedElement(sink, kIndent, tarvik::kWptcount, stats.wptcount);
    if (stats.trkcount > 0)
        AppendGroupedElement(sink, kIndent, tarvik::kTrkcount, stats.trkcount);
    if (stats.trksegcount > 0)
        AppendGroupedElement(sink, kIndent, tarvik::kTrksegcount, stats.trksegcount);
    if (stats.trktotalkm > 0.0)
        AppendGroupedElement(sink, kIndent, tarvik::kTrktotalkm, stats.trktotalkm);
    if (stats.geocachecount >= 0)
        AppendGroupedElement(sink, kIndent, tarvik::kGeocachecount, stats.geocachecount);
    sink.Ascii("\t\t");
    AppendLineEnd(sink, tarvik::kFilestats);
}

} // namespace

void WritePointData(TextSink& sink, const GpxPoint& point) {
    AppendLineStart(sink, gpx::kExtensions);
    const std::size_t routePointType = Access::GetRawRoutePointType(point);
    if (point.GetPointType() == kGpxRoutePoint && routePointType != 0)
        WriteRoutePointType(sink, routePointType);
    if (const auto* rare = Access::GetRareData(point)) {
        WriteFormAttributes(sink, rare->formAttributes);
        if (rare->symbolNumber > 0)
            AppendGroupedElement(sink, "\t", tarvik::kTovasymbol, rare->symbolNumber);
        AppendRawElement(sink, "\t", tarvik::kObjectid, rare->guid);
        if (rare->geocache)
            WriteGeocache(sink, *rare->geocache);
    }
    AppendLineEnd(sink, gpx::kExtensions);
}

void WriteRouteType(TextSink& sink, const GpxRoute& route) {
    TarvikRouteType type = kTarvikRouteStandard;
    if (!route.GetTarvikRouteType(type))
        return;
    AppendLineStart(sink, gpx::kExtensions);
    AppendAsciiElement(sink, tarvik::kRouteType, text::kRouteTypeTexts[type]);
    AppendLineEnd(sink, gpx::kExtensions);
}

void WriteTrackData(TextSink& sink, const GpxTrack& track) {
    const std::int32_t color = Access::GetColor(track);
    if (color < 0)
        return;
    AppendLineStart(sink, gpx::kExtensions);
    AppendGroupedElement(sink, "\t", tarvik::kColor, color);
    AppendLineEnd(sink, gpx::kExtensions);
}

void WriteDocumentData(TextSink& sink, const GpxDocument& document) {
    sink.Ascii("\t");
    AppendLineStart(sink, gpx::kExtensions);
    if (const auto& record = Access::GetGISMetaData(document))
        WriteRecord(sink, *record);
    if (const auto& record = Access::GetAnnotateMetaData(document))
        WriteRecord(sink, *record);
    if (const auto& stats = Access::GetStats(document))
        WriteRecord(sink, *stats);
    sink.Ascii("\t");
    AppendLineEnd(sink, gpx::kExtensions);
}

} // namespace vexaTransferLib::writer
