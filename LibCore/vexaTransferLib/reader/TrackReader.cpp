// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/TrackReader.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/reader/CommonElements.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/reader/VendorReader.h>
#include <vexaTransferLib/text/ContractSources.h>

#include <common/dbc.h>

#include <utility>

namespace vexaTransferLib::reader {

namespace {

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

class SegmentReader final : public ChildReader {
public:
    SegmentReader(ReadContext& context, const GpxVersion& version, GpxTrack& track)
        : context_(context), version_(version), track_(track) {}

    bool IsGuarded() const override { return true; }
    const char* MissingChildMessage() const override {
        return "Unable to read a GPX track segment child node.";
    }

    Way WayOf(const NodeView& child) override {
        const bool isPoint = Equals(child.LocalName(), u"trkpt") && IsStandard(version_, child);
        return isPoint ? Way::kWhole : Way::kPassOver;
    }

    void ReadWhole(const NodeView& child) override {
        GpxPoint point(kGpxTrackPoint, 0.0, 0.0);
        ReadPoint(context_, version_, kGpxTrackPoint, child, point);
        track_.AddPoint(std::move(point));
    }

    void Finish() override {}

private:
    ReadContext& context_;
    const GpxVersion version_;
    GpxTrack& track_;
};

std::unique_ptr<ChildReader> EnterSegment(ReadContext& context, const GpxVersion& version,
                                          const NodeView& node, GpxTrack& track) {
    dbc::Ensure(node.HasChildList(), text::kGpxParserSource,
                "Unable to read GPX track segment child elements.");
    track.AddSegment();
    return std::make_unique<SegmentReader>(context, version, track);
}

class TrackReader final : public ChildReader {
public:
    TrackReader(ReadContext& context, const GpxVersion& version, GpxDocument& document)
        : context_(context), version_(version), document_(document) {}

    bool IsGuarded() const override { return true; }
    const char* MissingChildMessage() const override { return "Unable to read a GPX track child node."; }

    Way WayOf(const NodeView& child) override {
        if (child.LocalName() == nullptr || !IsStandard(version_, child))
            return Way::kPassOver;
        return Equals(child.LocalName(), u"trkseg") ? Way::kChildByChild : Way::kWhole;
    }

    std::unique_ptr<ChildReader> Enter(const NodeView& child) override {
        return EnterSegment(context_, version_, child, track_);
    }

    void ReadWhole(const NodeView& child) override {
        for (const TrackElement& element : kElements) {
            if (Equals(child.LocalName(), element.name)) {
                element.read({context_, version_, child, track_});
                return;
            }
        }
    }

    void Finish() override { document_.AddTrack(std::move(track_)); }

private:
    ReadContext& context_;
    const GpxVersion version_;
    GpxDocument& document_;
    GpxTrack track_;
};

} // namespace

std::unique_ptr<ChildReader> EnterTrack(ReadContext& context, const GpxVersion& version, const NodeView& node,
                                        GpxDocument& document) {
    dbc::Ensure(node.HasChildList(), text::kGpxParserSource, "Unable to read GPX track child elements.");
    return std::make_unique<TrackReader>(context, version, document);
}

void ReadTrack(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxDocument& document) {
    ReadChildren(*EnterTrack(context, version, node, document), node);
}

void ReadSegment(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxTrack& track) {
    ReadChildren(*EnterSegment(context, version, node, track), node);
}

} // namespace vexaTransferLib::reader
