// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/TrackReader.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/reader/CommonElements.h>
#include <vexaTransferLib/reader/ElementTable.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/UnreadAttributes.h>
#include <vexaTransferLib/reader/VendorReader.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <utility>

namespace vexaTransferLib::reader {

namespace {

bool ReadTrackExtensions(const Element<GpxTrack>& element) {
    return ReadTrackData(element.context, element.node, element.owner);
}

// Unlike those of points, the extensions of a track are read in GPX 1.0 too.
constexpr ElementReader<GpxTrack> kTrackReaders[] = {
    {gpx::kTrkseg, nullptr, nullptr},
    {gpx::kName, gpx::kName, ReadTextInto<&GpxTrack::SetName>},
    {gpx::kCmt, gpx::kDesc, ReadComment},
    {gpx::kDesc, gpx::kDesc, ReadDescription},
    {gpx::kSrc, gpx::kSrc, ReadTextInto<&GpxTrack::SetSource>},
    {gpx::kExtensions, tarvik::kColor, ReadTrackExtensions},
    {gpx::kLink, gpx::kUrl, ReadLinkElement, Versions::kOnly11, Attributes::kOfReader},
    {gpx::kUrl, gpx::kUrl, ReadUrl, Versions::kOnly10},
    {gpx::kUrlname, gpx::kUrlname, ReadUrlName, Versions::kOnly10},
    {gpx::kType, gpx::kType, ReadTextInto<&GpxTrack::SetType>, Versions::kOnly11},
};
constexpr ElementTable<GpxTrack> kTrackElements = {Namespace::kGpx, kTrackReaders};

bool ReadTrackPoint(const Element<GpxTrack>& element) {
    element.owner.AddPoint(ReadPoint(element.context, *element.version, kGpxTrackPoint, element.node));
    return true;
}

// Only track points are read.
constexpr ElementReader<GpxTrack> kSegmentReaders[] = {
    {gpx::kTrkpt, nullptr, ReadTrackPoint},
};
constexpr ElementTable<GpxTrack> kSegmentElements = {Namespace::kGpx, kSegmentReaders};

class SegmentReader final : public ChildReader {
public:
    SegmentReader(ReadContext& context, const GpxVersion& version, GpxTrack& track)
        : context_(context), version_(version), track_(track) {}

    bool IsolatesFailures() const override { return true; }
    const char* MissingChildMessage() const override {
        return "Unable to read a GPX track segment child node.";
    }
    const text::CheckSite& MissingChildSite() const override { return text::sites::kSegmentChild; }

    Visit Classify(const NodeView& child) override {
        return ClassifyElement(kSegmentElements, context_, version_, child, WhenUnknown::kAtStart);
    }

    void ReadTree(const NodeView& child) override {
        ReadTrackPoint({context_, &version_, child, track_, sources_});
    }

    void Finish() override {}

private:
    ReadContext& context_;
    const GpxVersion version_;
    GpxTrack& track_;
    FieldSources sources_{context_.reporter, FieldSources::Lifetime::kShort};
};

std::unique_ptr<ChildReader> EnterSegment(ReadContext& context, const GpxVersion& version,
                                          const NodeView& node, GpxTrack& track) {
    text::Ensure(node.HasChildList(), text::sites::kSegmentChildren,
                 "Unable to read GPX track segment child elements.");
    context.CountObject();
    ReportUnreadAttributes(context.reporter, node);
    std::unique_ptr<ChildReader> reader = std::make_unique<SegmentReader>(context, version, track);
    track.AddSegment();
    context.MakeRoom(GpxModelAccess::GetLastSegment(track), context.expectedChildren);
    return reader;
}

class TrackReader final : public ChildReader {
public:
    TrackReader(ReadContext& context, const GpxVersion& version, GpxDocument& document)
        : context_(context), version_(version), document_(document) {}

    bool IsolatesFailures() const override { return true; }
    const char* MissingChildMessage() const override { return "Unable to read a GPX track child node."; }
    const text::CheckSite& MissingChildSite() const override { return text::sites::kTrackChild; }

    Visit Classify(const NodeView& child) override {
        return ClassifyElement(kTrackElements, context_, version_, child, WhenUnknown::kAtEnd);
    }

    std::unique_ptr<ChildReader> Descend(const NodeView& child) override {
        return EnterSegment(context_, version_, child, track_);
    }

    void ReadTree(const NodeView& child) override {
        ReadOwnElement(kTrackElements, {context_, &version_, child, track_, sources_});
    }

    void Finish() override { document_.AddTrack(std::move(track_)); }

private:
    ReadContext& context_;
    const GpxVersion version_;
    GpxDocument& document_;
    GpxTrack track_;
    FieldSources sources_{context_.reporter, FieldSources::Lifetime::kShort};
};

} // namespace

std::unique_ptr<ChildReader> EnterTrack(ReadContext& context, const GpxVersion& version, const NodeView& node,
                                        GpxDocument& document) {
    text::Ensure(node.HasChildList(), text::sites::kTrackChildren,
                 "Unable to read GPX track child elements.");
    context.CountObject();
    ReportUnreadAttributes(context.reporter, node);
    return std::make_unique<TrackReader>(context, version, document);
}

void ReadTrack(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxDocument& document) {
    ReadChildren(context, *EnterTrack(context, version, node, document), node);
}

void ReadSegment(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxTrack& track) {
    ReadChildren(context, *EnterSegment(context, version, node, track), node);
}

} // namespace vexaTransferLib::reader
