// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/TrackWriter.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/writer/Elements.h>
#include <vexaTransferLib/writer/LinkWriter.h>
#include <vexaTransferLib/writer/PointWriter.h>
#include <vexaTransferLib/writer/VendorWriter.h>

#include <unicode/unistr.h>

namespace vexaTransferLib {

void GpxTrack::AppendToString(const GpxVersion& version, icu::UnicodeString& out) const {
    writer::UnicodeSink sink(out);
    writer::WriteTrack(sink, version, *this);
    writer::RequireNotBogus(out, text::sites::kTrackOutput);
}

namespace writer {

namespace {

void WriteSegment(TextSink& sink, const GpxVersion& version, const GpxTrack::Segment& segment) {
    sink.Ascii("<trkseg>", kEndOfLine);
    for (const GpxPoint& point : segment)
        WritePoint(sink, version, point);
    sink.Ascii("</trkseg>", kEndOfLine);
}

} // namespace

void WriteTrack(TextSink& sink, const GpxVersion& version, const GpxTrack& track) {
    using Access = GpxModelAccess;
    text::Require(version.IsGpx10() || version.IsGpx11(), text::sites::kTrackVersion,
                  "GPX tracks can only be written to version 1.0 or 1.1 files.");
    sink.Ascii("<trk>", kEndOfLine);
    AppendTextElement(sink, "name", Access::GetName(track));
    AppendTextElement(sink, "desc", Access::GetDescription(track));
    AppendTextElement(sink, "src", Access::GetSource(track));
    if (const GpxUrl* link = Access::GetLink(track))
        WriteLink(sink, version, *link);
    if (version.IsGpx11())
        AppendTextElement(sink, "type", Access::GetType(track));
    // GPX 1.0 has no extensions, but other readers of the vendor look for the colour there too.
    WriteTrackData(sink, track);
    for (const GpxTrack::Segment& segment : Access::GetSegments(track))
        WriteSegment(sink, version, segment);
    sink.Ascii("</trk>", kEndOfLine);
}

} // namespace writer

} // namespace vexaTransferLib
