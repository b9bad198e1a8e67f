// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/PointWriter.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/NumberText.h>
#include <vexaTransferLib/text/TimeText.h>
#include <vexaTransferLib/writer/Elements.h>
#include <vexaTransferLib/writer/LinkWriter.h>
#include <vexaTransferLib/writer/VendorWriter.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <string_view>

namespace vexaTransferLib {

void GpxPoint::AppendToString(const GpxVersion& version, icu::UnicodeString& out) const {
    writer::UnicodeSink sink(out);
    writer::WritePoint(sink, version, *this);
    writer::RequireNotBogus(out, text::sites::kPointOutput);
}

namespace writer {

namespace {

using Access = GpxModelAccess;

std::string_view ElementName(const GpxPoint& point) {
    const std::size_t type = Access::GetRawPointType(point);
    text::Invariant(type >= kGpxWaypoint && type <= kGpxTrackPoint, text::sites::kUnknownPointType,
                    "Unable to write an unknown GPX point type.");
    return text::kPointElementNames[type];
}

void WriteTime(TextSink& sink, double millis) {
    const std::string_view time = sink.TimeText(millis, text::YearDigits::kBare);
    if (!time.empty())
        AppendAsciiElement(sink, gpx::kTime, time);
}

void WriteRareElements(TextSink& sink, const GpxVersion& version, const Access::RareData& rare) {
    if (rare.magneticVariation)
        AppendFixedElement(sink, gpx::kMagvar, *rare.magneticVariation, text::kAngleDecimals);
    if (rare.geoidHeight)
        AppendFixedElement(sink, gpx::kGeoidheight, *rare.geoidHeight, text::kHeightDecimals);
    AppendTextElement(sink, gpx::kName, rare.name);
    AppendTextElement(sink, gpx::kCmt, rare.comment);
    AppendTextElement(sink, gpx::kDesc, rare.description);
    AppendTextElement(sink, gpx::kSrc, rare.source);
    if (rare.url)
        WriteLink(sink, version, *rare.url);
    AppendTextElement(sink, gpx::kSym, rare.symbol);
    AppendTextElement(sink, gpx::kType, rare.type);
}

void WriteFix(TextSink& sink, std::size_t fix) {
    text::Invariant(fix < text::kFixTexts.size(), text::sites::kUnknownFix,
                    "Unable to write an unknown GPS fix type.");
    AppendAsciiElement(sink, gpx::kFix, text::kFixTexts[fix]);
}

} // namespace

void WritePoint(TextSink& sink, const GpxVersion& version, const GpxPoint& point) {
    text::Require(version.IsGpx10() || version.IsGpx11(), text::sites::kPointVersion,
                  "GPX points can only be written to version 1.0 or 1.1 files.");
    const std::string_view name = ElementName(point);
    AppendPointStart(sink, name, Access::GetLatitude(point), Access::GetLongitude(point));
    if (const double* elevation = Access::GetElevation(point))
        AppendFixedElement(sink, gpx::kEle, *elevation, text::kHeightDecimals);
    if (const double* time = Access::GetTime(point))
        WriteTime(sink, *time);
    if (const auto* rare = Access::GetRareData(point))
        WriteRareElements(sink, version, *rare);
    if (const std::size_t fix = Access::GetRawFix(point))
        WriteFix(sink, fix);
    if (version.IsGpx11() && point.ContainsExtensions())
        WritePointData(sink, point);
    AppendLineEnd(sink, name);
}

} // namespace writer

} // namespace vexaTransferLib
