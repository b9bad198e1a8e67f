// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/TrackReader.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/reader/ChildGuard.h>
#include <vexaTransferLib/reader/CommonElements.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/reader/VendorReader.h>

#include <utility>

namespace vexaTransferLib::reader {

namespace {

constexpr ChildMessages kTrackMessages = {"Unable to read GPX track child elements.",
                                          "Unable to read a GPX track child node."};
constexpr ChildMessages kSegmentMessages = {"Unable to read GPX track segment child elements.",
                                            "Unable to read a GPX track segment child node."};

// What the reader of one child needs.
struct TrackChild {
    ReadContext& context;
    const GpxVersion& version;
    const NodeView& node;
    GpxTrack& track;
};

template <void (GpxTrack::*Set)(const icu::UnicodeString&)>
void ReadTextInto(const TrackChild& child) {
    icu::UnicodeString text;
    if (ReadText(child.node, text))
        (child.track.*Set)(text);
}

void ReadTrackType(const TrackChild& child) {
    if (child.version.IsGpx11())
        ReadTextInto<&GpxTrack::SetType>(child);
}

struct TrackElement {
    const char16_t* name;
    void (*read)(const TrackChild&);
};

// Unlike those of points, the extensions of a track are read in GPX 1.0 too.
constexpr TrackElement kElements[] = {
    {u"trkseg", [](const TrackChild& c) { ReadSegment(c.context, c.version, c.node, c.track); }},
    {u"name", ReadTextInto<&GpxTrack::SetName>},
    {u"cmt", [](const TrackChild& c) { ReadCommentAsDescription(c.node, c.track); }},
    {u"desc", [](const TrackChild& c) { ReadDescription(c.node, c.track); }},
    {u"src", ReadTextInto<&GpxTrack::SetSource>},
    {u"extensions", [](const TrackChild& c) { ReadTrackData(c.context, c.node, c.track); }},
    {u"link", [](const TrackChild& c) { ReadLinkElement(c.version, c.node, c.track); }},
    {u"url", [](const TrackChild& c) { ReadUrlElement(c.version, c.node, c.track); }},
    {u"urlname", [](const TrackChild& c) { ReadUrlNameElement(c.version, c.node, c.track); }},
    {u"type", ReadTrackType},
};

void ReadTrackChild(const TrackChild& child) {
    if (!IsStandard(child.version, child.node))
        return;
    for (const TrackElement& element : kElements) {
        if (Equals(child.node.LocalName(), element.name)) {
            element.read(child);
            return;
        }
    }
}

} // namespace

void ReadTrack(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxDocument& document) {
    GpxTrack track;
    ForEachGuardedChild(node, kTrackMessages, [&](const NodeView& child) {
        ReadTrackChild({context, version, child, track});
    });
    document.AddTrack(std::move(track));
}

void ReadSegment(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxTrack& track) {
    dbc::Ensure(node.HasChildList(), text::kGpxParserSource, kSegmentMessages.noChildren);
    track.AddSegment();
    ForEachGuardedChild(node, kSegmentMessages, [&](const NodeView& child) {
        if (!IsStandard(version, child) || !Equals(child.LocalName(), u"trkpt"))
            return;
        GpxPoint point(kGpxTrackPoint, 0.0, 0.0);
        ReadPoint(context, version, kGpxTrackPoint, child, point);
        track.AddPoint(std::move(point));
    });
}

} // namespace vexaTransferLib::reader
