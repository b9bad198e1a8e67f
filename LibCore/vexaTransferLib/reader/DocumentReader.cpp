// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/DocumentReader.h>

#include <vexaTransferLib/reader/ChildGuard.h>
#include <vexaTransferLib/reader/GpxModelAccess.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/RouteReader.h>
#include <vexaTransferLib/reader/TrackReader.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/reader/VendorReader.h>

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
class RootWalk {
public:
    RootWalk(ReadContext& context, const GpxVersion& version, GpxDocument& document)
        : context_(context), version_(version), document_(document) {}

    void ReadChild(const NodeView& child) {
        const char16_t* const name = child.LocalName();
        if (!IsStandard(version_, child) || name == nullptr)
            return;
        if (Equals(name, u"trk")) {
            ReadTrack(context_, version_, child, document_);
            trackSeen_ = true;
        } else if (Equals(name, u"wpt")) {
            if (!routeSeen_ && !trackSeen_)
                ReadWaypoint(child);
        } else if (Equals(name, u"rte")) {
            if (!trackSeen_) {
                ReadRoute(context_, version_, child, document_);
                routeSeen_ = true;
            }
        } else if (Equals(name, u"metadata")) {
            ReadMetaData(context_, child, document_);
        } else {
            ReadNameOrTime(child, document_);
        }
    }

private:
    void ReadWaypoint(const NodeView& child) {
        GpxPoint point(kGpxWaypoint, 0.0, 0.0);
        ReadPoint(context_, version_, kGpxWaypoint, child, point);
        document_.AddWaypoint(std::move(point));
    }

    ReadContext& context_;
    const GpxVersion& version_;
    GpxDocument& document_;
    bool routeSeen_ = false;
    bool trackSeen_ = false;
};

} // namespace

void ReadDocument(ReadContext& context, const NodeView& root, GpxDocument& document) {
    icu::UnicodeString versionText;
    dbc::Ensure(ReadTextAttribute(root, u"version", versionText), text::kGpxParserSource,
                "Unable to read the GPX version.");
    const GpxVersion version(versionText);
    dbc::Ensure(root.HasChildList(), text::kGpxParserSource, "Unable to read the GPX file nodes.");
    RootWalk walk(context, version, document);
    ChildWalk children(root);
    for (NodeView child; children.Next(child);) {
        dbc::Ensure(!child.IsNull(), text::kGpxParserSource, "Unable to read a GPX child node.");
        walk.ReadChild(child);
    }
}

} // namespace vexaTransferLib::reader
