// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/TrackReader.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/reader/CommonElements.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/ToldValues.h>
#include <vexaTransferLib/reader/VendorReader.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

// What the reader of one child needs.
struct TrackChild {
    ReadContext& context;
    const GpxVersion& version;
    const NodeView& node;
    GpxTrack& track;
    FieldSources& sources;
};

template <void (GpxTrack::*Set)(const icu::UnicodeString&)>
bool ReadTextInto(const TrackChild& child) {
    icu::UnicodeString text;
    if (!ReadText(child.context, child.node, text))
        return false;
    (child.track.*Set)(text);
    return true;
}

bool ReadTrackType(const TrackChild& child) {
    if (child.version.IsGpx11())
        return ReadTextInto<&GpxTrack::SetType>(child);
    child.context.reporter.SkipOtherVersion(child.node, child.version);
    return false;
}

struct TrackElement {
    const char16_t* name;
    const char16_t* field;
    /// True when the field has the element's value.
    bool (*read)(const TrackChild&);
};

// Unlike those of points, the extensions of a track are read in GPX 1.0 too.
constexpr TrackElement kElements[] = {
    {gpx::kName, gpx::kName, ReadTextInto<&GpxTrack::SetName>},
    {gpx::kCmt, gpx::kDesc,
     [](const TrackChild& c) { return ReadCommentAsDescription(c.context, c.node, c.track); }},
    {gpx::kDesc, gpx::kDesc,
     [](const TrackChild& c) { return ReadDescription(c.context, c.sources, c.node, c.track); }},
    {gpx::kSrc, gpx::kSrc, ReadTextInto<&GpxTrack::SetSource>},
    {gpx::kExtensions, tarvik::kColor,
     [](const TrackChild& c) { return ReadTrackData(c.context, c.node, c.track); }},
    {gpx::kLink, gpx::kUrl,
     [](const TrackChild& c) { return ReadLinkElement(c.context, c.version, c.node, c.track); }},
    {gpx::kUrl, gpx::kUrl,
     [](const TrackChild& c) { return ReadUrlElement(c.context, c.version, c.node, c.track); }},
    {gpx::kUrlname, gpx::kUrlname,
     [](const TrackChild& c) { return ReadUrlNameElement(c.context, c.version, c.node, c.track); }},
    {gpx::kType, gpx::kType, ReadTrackType},
};

const TrackElement* FindElement(const char16_t* name) {
    const auto* const found =
        std::find_if(std::begin(kElements), std::end(kElements),
                     [&](const TrackElement& element) { return Equals(name, element.name); });
    return found != std::end(kElements) ? found : nullptr;
}

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
        const bool isPoint = Equals(child.LocalName(), gpx::kTrkpt);
        if (isPoint && IsStandard(version_, child))
            return Visit::kAsTree;
        PassOver(child, isPoint);
        return Visit::kSkip;
    }

    void ReadTree(const NodeView& child) override {
        track_.AddPoint(ReadPoint(context_, version_, kGpxTrackPoint, child));
    }

    void Finish() override {}

private:
    void PassOver(const NodeView& child, bool isPoint) {
        if (child.LocalName() == nullptr || !context_.reporter.IsWanted())
            return;
        if (IsStandard(version_, child))
            context_.reporter.SkipUnknown(child);
        else
            SkipForeignToGpx(context_.reporter, version_, child, isPoint);
    }

    ReadContext& context_;
    const GpxVersion version_;
    GpxTrack& track_;
};

std::unique_ptr<ChildReader> EnterSegment(ReadContext& context, const GpxVersion& version,
                                          const NodeView& node, GpxTrack& track) {
    text::Ensure(node.HasChildList(), text::sites::kSegmentChildren,
                 "Unable to read GPX track segment child elements.");
    context.CountObject();
    std::unique_ptr<ChildReader> reader = std::make_unique<SegmentReader>(context, version, track);
    track.AddSegment();
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
        const char16_t* const name = child.LocalName();
        if (name == nullptr)
            return Visit::kSkip;
        if (!IsStandard(version_, child)) {
            SkipForeignToGpx(context_.reporter, version_, child,
                             Equals(name, gpx::kTrkseg) || FindElement(name) != nullptr);
            return Visit::kSkip;
        }
        return Equals(name, gpx::kTrkseg) ? Visit::kDescend : Visit::kAsTree;
    }

    std::unique_ptr<ChildReader> Descend(const NodeView& child) override {
        return EnterSegment(context_, version_, child, track_);
    }

    void ReadTree(const NodeView& child) override {
        const TrackElement* const element = FindElement(child.LocalName());
        if (element == nullptr)
            context_.reporter.SkipUnknown(child);
        else if (element->read({context_, version_, child, track_, sources_}))
            sources_.Set(element->field, child);
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
    return std::make_unique<TrackReader>(context, version, document);
}

void ReadTrack(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxDocument& document) {
    ReadChildren(context, *EnterTrack(context, version, node, document), node);
}

void ReadSegment(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxTrack& track) {
    ReadChildren(context, *EnterSegment(context, version, node, track), node);
}

} // namespace vexaTransferLib::reader
