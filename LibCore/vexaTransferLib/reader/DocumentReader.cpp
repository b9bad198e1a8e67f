// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/DocumentReader.h>

#include <vexaTransferLib/reader/ChildGuard.h>
#include <vexaTransferLib/reader/GpxModelAccess.h>
#include <vexaTransferLib/reader/KeptElements.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/RouteReader.h>
#include <vexaTransferLib/reader/ToldValues.h>
#include <vexaTransferLib/reader/TrackReader.h>
#include <vexaTransferLib/reader/VendorReader.h>

#include <memory>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

// GPX 1.0 has these below the root, GPX 1.1 in its metadata; both places are read in both versions.
bool ReadNameOrTime(ReadContext& context, KeptElements& kept, const NodeView& child, GpxDocument& document) {
    if (Equals(child.LocalName(), u"name")) {
        icu::UnicodeString name;
        if (child.TextContent(name)) {
            GpxModelAccess::SetName(document, std::move(name));
            kept.Keep(u"name", child);
        }
        return true;
    }
    if (Equals(child.LocalName(), u"time")) {
        double time = 0.0;
        if (ReadTime(context, child, time)) {
            GpxModelAccess::SetTime(document, time);
            kept.Keep(u"time", child);
        }
        return true;
    }
    return false;
}

void ReadMetaData(ReadContext& context, KeptElements& kept, const NodeView& metadata, GpxDocument& document) {
    ForEachNamedChild(context, metadata, [&](const NodeView& child) {
        if (ReadNameOrTime(context, kept, child, document))
            return;
        if (!Equals(child.LocalName(), u"extensions"))
            context.receipt.Unknown(child);
        else if (ReadDocumentData(context, child, document))
            kept.Keep(u"extensions", child);
        else
            kept.Drop(u"extensions");
    });
}

// GPX wants waypoints, then routes, then tracks; what stands out of that order is passed over.
class RootReader final : public ChildReader {
public:
    RootReader(ReadContext& context, const GpxVersion& version, GpxDocument& document)
        : context_(context), version_(version), document_(document) {}

    bool IsGuarded() const override { return false; }
    const char* MissingChildMessage() const override { return "Unable to read a GPX child node."; }
    const text::Place& MissingChildPlace() const override { return text::places::kGpxChild; }

    Way WayOf(const NodeView& child) override {
        const char16_t* const name = child.LocalName();
        if (!IsStandard(version_, child)) {
            if (name != nullptr)
                TellForeignToGpx(context_.receipt, version_, child, IsKnown(name));
            return Way::kPassOver;
        }
        if (name == nullptr)
            return Way::kPassOver;
        if (!IsKnown(name)) {
            context_.receipt.Unknown(child);
            return Way::kPassOver;
        }
        if (Equals(name, u"wpt") || Equals(name, u"rte") || Equals(name, u"trk"))
            return WayInOrder(child);
        return Way::kWhole;
    }

    std::unique_ptr<ChildReader> Enter(const NodeView& child) override {
        return Equals(child.LocalName(), u"trk") ? EnterTrack(context_, version_, child, document_)
                                                 : EnterRoute(context_, version_, child, document_);
    }

    void ReadWhole(const NodeView& child) override {
        if (Equals(child.LocalName(), u"wpt"))
            ReadWaypoint(child);
        else if (Equals(child.LocalName(), u"metadata"))
            ReadMetaData(context_, kept_, child, document_);
        else
            ReadNameOrTime(context_, kept_, child, document_);
    }

    void Finish() override {}

private:
    static bool IsKnown(const char16_t* name) {
        for (const char16_t* known : {u"wpt", u"rte", u"trk", u"metadata", u"name", u"time"})
            if (Equals(name, known))
                return true;
        return false;
    }

    // Of a waypoint, a route, or a track.
    Way WayInOrder(const NodeView& child) {
        const bool isWaypoint = Equals(child.LocalName(), u"wpt");
        const bool isTrack = Equals(child.LocalName(), u"trk");
        if (isWaypoint ? routeSeen_ || trackSeen_ : !isTrack && trackSeen_) {
            context_.receipt.PassOver(
                child, kGpxOutOfOrder,
                isWaypoint ? "It stands behind a route or a track." : "It stands behind a track.", true);
            return Way::kPassOver;
        }
        trackSeen_ = trackSeen_ || isTrack;
        routeSeen_ = routeSeen_ || !(isTrack || isWaypoint);
        return isWaypoint ? Way::kWhole : Way::kChildByChild;
    }

    void ReadWaypoint(const NodeView& child) {
        document_.AddWaypoint(ReadPoint(context_, version_, kGpxWaypoint, child));
    }

    ReadContext& context_;
    const GpxVersion version_;
    GpxDocument& document_;
    bool routeSeen_ = false;
    bool trackSeen_ = false;
    KeptElements kept_{context_.receipt, KeptElements::Elements::kGo};
};

} // namespace

std::unique_ptr<ChildReader> EnterDocument(ReadContext& context, const NodeView& root,
                                           GpxDocument& document) {
    icu::UnicodeString versionText;
    text::Ensure(ReadTextAttribute(root, u"version", versionText), text::places::kGpxVersion,
                 "Unable to read the GPX version.");
    const GpxVersion version(versionText);
    text::Ensure(root.HasChildList(), text::places::kGpxChildren, "Unable to read the GPX file nodes.");
    return std::make_unique<RootReader>(context, version, document);
}

void RequireGpxRoot(const NodeView& root) {
    if (!Equals(root.LocalName(), u"gpx"))
        throw dbc::postcondition_error("The GPX document element was not found.");
}

void ReadDocument(ReadContext& context, const NodeView& root, GpxDocument& document) {
    ReadChildren(context, *EnterDocument(context, root, document), root);
}

} // namespace vexaTransferLib::reader
