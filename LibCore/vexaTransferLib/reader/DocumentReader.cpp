// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/DocumentReader.h>

#include <vexaTransferLib/reader/ChildGuard.h>
#include <vexaTransferLib/reader/GpxModelAccess.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/RouteReader.h>
#include <vexaTransferLib/reader/TrackReader.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/reader/VendorReader.h>

#include <memory>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

// GPX 1.0 has these below the root, GPX 1.1 in its metadata; both places are read in both versions.
bool ReadNameOrTime(const NodeView& child, GpxDocument& document) {
    if (Equals(child.LocalName(), u"name")) {
        icu::UnicodeString name;
        if (child.TextContent(name))
            GpxModelAccess::SetName(document, std::move(name));
        return true;
    }
    if (Equals(child.LocalName(), u"time")) {
        double time = 0.0;
        if (ReadTime(child, time))
            GpxModelAccess::SetTime(document, time);
        return true;
    }
    return false;
}

void ReadMetaData(ReadContext& context, const NodeView& metadata, GpxDocument& document) {
    ForEachNamedChild(metadata, [&](const NodeView& child) {
        if (!ReadNameOrTime(child, document) && Equals(child.LocalName(), u"extensions"))
            ReadDocumentData(context, child, document);
    });
}

// GPX wants waypoints, then routes, then tracks; what stands out of that order is passed over.
class RootReader final : public ChildReader {
public:
    RootReader(ReadContext& context, const GpxVersion& version, GpxDocument& document)
        : context_(context), version_(version), document_(document) {}

    bool IsGuarded() const override { return false; }
    const char* MissingChildMessage() const override { return "Unable to read a GPX child node."; }

    Way WayOf(const NodeView& child) override {
        const char16_t* const name = child.LocalName();
        if (!IsStandard(version_, child) || name == nullptr)
            return Way::kPassOver;
        if (Equals(name, u"wpt"))
            return routeSeen_ || trackSeen_ ? Way::kPassOver : Way::kWhole;
        if (Equals(name, u"trk")) {
            trackSeen_ = true;
            return Way::kChildByChild;
        }
        if (Equals(name, u"rte")) {
            if (trackSeen_)
                return Way::kPassOver;
            routeSeen_ = true;
            return Way::kChildByChild;
        }
        const bool isRead = Equals(name, u"metadata") || Equals(name, u"name") || Equals(name, u"time");
        return isRead ? Way::kWhole : Way::kPassOver;
    }

    std::unique_ptr<ChildReader> Enter(const NodeView& child) override {
        return Equals(child.LocalName(), u"trk") ? EnterTrack(context_, version_, child, document_)
                                                 : EnterRoute(context_, version_, child, document_);
    }

    void ReadWhole(const NodeView& child) override {
        if (Equals(child.LocalName(), u"wpt"))
            ReadWaypoint(child);
        else if (Equals(child.LocalName(), u"metadata"))
            ReadMetaData(context_, child, document_);
        else
            ReadNameOrTime(child, document_);
    }

    void Finish() override {}

private:
    void ReadWaypoint(const NodeView& child) {
        GpxPoint point(kGpxWaypoint, 0.0, 0.0);
        ReadPoint(context_, version_, kGpxWaypoint, child, point);
        document_.AddWaypoint(std::move(point));
    }

    ReadContext& context_;
    const GpxVersion version_;
    GpxDocument& document_;
    bool routeSeen_ = false;
    bool trackSeen_ = false;
};

} // namespace

std::unique_ptr<ChildReader> EnterDocument(ReadContext& context, const NodeView& root,
                                           GpxDocument& document) {
    icu::UnicodeString versionText;
    dbc::Ensure(ReadTextAttribute(root, u"version", versionText), text::kGpxParserSource,
                "Unable to read the GPX version.");
    const GpxVersion version(versionText);
    dbc::Ensure(root.HasChildList(), text::kGpxParserSource, "Unable to read the GPX file nodes.");
    return std::make_unique<RootReader>(context, version, document);
}

void RequireGpxRoot(const NodeView& root) {
    if (!Equals(root.LocalName(), u"gpx"))
        throw dbc::postcondition_error("The GPX document element was not found.");
}

void ReadDocument(ReadContext& context, const NodeView& root, GpxDocument& document) {
    ReadChildren(*EnterDocument(context, root, document), root);
}

} // namespace vexaTransferLib::reader
