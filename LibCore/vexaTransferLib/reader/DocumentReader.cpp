// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/DocumentReader.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/reader/FailureIsolation.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/RouteReader.h>
#include <vexaTransferLib/reader/ToldValues.h>
#include <vexaTransferLib/reader/TrackReader.h>
#include <vexaTransferLib/reader/VendorReader.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <memory>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

// GPX 1.0 has these below the root, GPX 1.1 in its metadata; both places are read in both versions.
bool ReadNameOrTime(ReadContext& context, FieldSources& sources, const NodeView& child,
                    GpxDocument& document) {
    if (Equals(child.LocalName(), gpx::kName)) {
        icu::UnicodeString name;
        if (child.TextContent(name)) {
            GpxModelAccess::SetName(document, std::move(name));
            sources.Set(gpx::kName, child);
        }
        return true;
    }
    if (Equals(child.LocalName(), gpx::kTime)) {
        double time = 0.0;
        if (ReadTime(context, child, time)) {
            GpxModelAccess::SetTime(document, time);
            sources.Set(gpx::kTime, child);
        }
        return true;
    }
    return false;
}

void ReadMetaData(ReadContext& context, FieldSources& sources, const NodeView& metadata,
                  GpxDocument& document) {
    ForEachNamedChild(context, metadata, [&](const NodeView& child) {
        if (ReadNameOrTime(context, sources, child, document))
            return;
        if (!Equals(child.LocalName(), gpx::kExtensions))
            context.reporter.SkipUnknown(child);
        else if (ReadDocumentData(context, child, document))
            sources.Set(gpx::kExtensions, child);
        else
            sources.Clear(gpx::kExtensions);
    });
}

// GPX wants waypoints, then routes, then tracks; what stands out of that order is skipped.
class RootReader final : public ChildReader {
public:
    RootReader(ReadContext& context, const GpxVersion& version, GpxDocument& document)
        : context_(context), version_(version), document_(document) {}

    bool IsolatesFailures() const override { return false; }
    const char* MissingChildMessage() const override { return "Unable to read a GPX child node."; }
    const text::CheckSite& MissingChildSite() const override { return text::sites::kGpxChild; }

    Visit Classify(const NodeView& child) override {
        const char16_t* const name = child.LocalName();
        if (!IsStandard(version_, child)) {
            if (name != nullptr)
                SkipForeignToGpx(context_.reporter, version_, child, IsKnown(name));
            return Visit::kSkip;
        }
        if (name == nullptr)
            return Visit::kSkip;
        if (!IsKnown(name)) {
            context_.reporter.SkipUnknown(child);
            return Visit::kSkip;
        }
        if (Equals(name, gpx::kWpt) || Equals(name, gpx::kRte) || Equals(name, gpx::kTrk))
            return WayInOrder(child);
        return Visit::kAsTree;
    }

    std::unique_ptr<ChildReader> Descend(const NodeView& child) override {
        return Equals(child.LocalName(), gpx::kTrk) ? EnterTrack(context_, version_, child, document_)
                                                    : EnterRoute(context_, version_, child, document_);
    }

    void ReadTree(const NodeView& child) override {
        if (Equals(child.LocalName(), gpx::kWpt))
            ReadWaypoint(child);
        else if (Equals(child.LocalName(), gpx::kMetadata))
            ReadMetaData(context_, sources_, child, document_);
        else
            ReadNameOrTime(context_, sources_, child, document_);
    }

    void Finish() override {}

private:
    static bool IsKnown(const char16_t* name) {
        for (const auto* known :
             {&gpx::kWpt, &gpx::kRte, &gpx::kTrk, &gpx::kMetadata, &gpx::kName, &gpx::kTime})
            if (Equals(name, *known))
                return true;
        return false;
    }

    // Of a waypoint, a route, or a track.
    Visit WayInOrder(const NodeView& child) {
        const bool isWaypoint = Equals(child.LocalName(), gpx::kWpt);
        const bool isTrack = Equals(child.LocalName(), gpx::kTrk);
        if (isWaypoint ? routeSeen_ || trackSeen_ : !isTrack && trackSeen_) {
            context_.reporter.Skip(
                child, kGpxOutOfOrder,
                isWaypoint ? "It stands behind a route or a track." : "It stands behind a track.", true);
            return Visit::kSkip;
        }
        trackSeen_ = trackSeen_ || isTrack;
        routeSeen_ = routeSeen_ || !(isTrack || isWaypoint);
        return isWaypoint ? Visit::kAsTree : Visit::kDescend;
    }

    void ReadWaypoint(const NodeView& child) {
        document_.AddWaypoint(ReadPoint(context_, version_, kGpxWaypoint, child));
    }

    ReadContext& context_;
    const GpxVersion version_;
    GpxDocument& document_;
    bool routeSeen_ = false;
    bool trackSeen_ = false;
    FieldSources sources_{context_.reporter, FieldSources::Lifetime::kShort};
};

} // namespace

std::unique_ptr<ChildReader> EnterDocument(ReadContext& context, const NodeView& root,
                                           GpxDocument& document) {
    icu::UnicodeString versionText;
    text::Ensure(ReadTextAttribute(root, gpx::kVersion, versionText), text::sites::kGpxVersion,
                 "Unable to read the GPX version.");
    const GpxVersion version(versionText);
    text::Ensure(root.HasChildList(), text::sites::kGpxChildren, "Unable to read the GPX file nodes.");
    return std::make_unique<RootReader>(context, version, document);
}

void RequireGpxRoot(const NodeView& root) {
    if (!Equals(root.LocalName(), gpx::kGpx))
        throw dbc::postcondition_error("The GPX document element was not found.");
}

void ReadDocument(ReadContext& context, const NodeView& root, GpxDocument& document) {
    ReadChildren(context, *EnterDocument(context, root, document), root);
}

} // namespace vexaTransferLib::reader
