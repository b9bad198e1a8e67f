// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/DocumentReader.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/reader/Children.h>
#include <vexaTransferLib/reader/ElementTable.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/RouteReader.h>
#include <vexaTransferLib/reader/TrackReader.h>
#include <vexaTransferLib/reader/UnreadAttributes.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/reader/VendorReader.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <memory>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

using DocumentElement = Element<GpxDocument>;

// All text of the element counts, and an element without text gives an empty name.
bool ReadName(const DocumentElement& element) {
    icu::UnicodeString name;
    if (!element.node.TextContent(name))
        return false;
    element.context.reporter.ReportUnreadChildren(element.node);
    element.context.reporter.ReportReplaced(element.node, name);
    GpxModelAccess::SetName(element.owner, std::move(name));
    return true;
}

bool ReadDocumentTime(const DocumentElement& element) {
    double time = 0.0;
    if (!ReadTime(element.context, element.node, time))
        return false;
    GpxModelAccess::SetTime(element.owner, time);
    if (time <= 0.0)
        ReportTimeAsNone(element.context.reporter, element.node, nullptr,
                         "A document with this time counts as one without a time.");
    return true;
}

bool ReadExtensions(const DocumentElement& element) {
    if (ReadDocumentData(element.context, element.node, element.owner))
        return true;
    element.sources.Clear(gpx::kExtensions);
    return false;
}

constexpr ElementReader<GpxDocument> kMetadataReaders[] = {
    {gpx::kName, gpx::kName, ReadName},
    {gpx::kTime, gpx::kTime, ReadDocumentTime},
    {gpx::kExtensions, gpx::kExtensions, ReadExtensions},
};
constexpr ElementTable<GpxDocument> kMetadataElements = {Namespace::kAny, kMetadataReaders};

bool ReadMetadata(const DocumentElement& element) {
    ForEachNamedChild(element.context, element.node, [&](const NodeView& child) {
        ReadElement(kMetadataElements,
                    {element.context, element.version, child, element.owner, element.sources});
    });
    return true;
}

bool ReadWaypoint(const DocumentElement& element) {
    element.owner.AddWaypoint(ReadPoint(element.context, *element.version, kGpxWaypoint, element.node));
    return true;
}

// GPX 1.0 has name and time below the root, GPX 1.1 in its metadata; both places are read in both versions.
constexpr ElementReader<GpxDocument> kRootReaders[] = {
    {gpx::kWpt, nullptr, ReadWaypoint, Versions::kAll, Attributes::kOfReader},
    {gpx::kRte, nullptr, nullptr},
    {gpx::kTrk, nullptr, nullptr},
    {gpx::kMetadata, nullptr, ReadMetadata},
    {gpx::kName, gpx::kName, ReadName},
    {gpx::kTime, gpx::kTime, ReadDocumentTime},
};
constexpr ElementTable<GpxDocument> kRootElements = {Namespace::kGpx, kRootReaders};

// The place of an element in the order of waypoints, routes and tracks; 0 for one that may come anywhere.
enum Rank { kAnywhere, kWaypoints, kRoutes, kTracks };

Rank RankOf(const NodeView& child) {
    const char16_t* const name = child.LocalName();
    if (Equals(name, gpx::kWpt))
        return kWaypoints;
    if (Equals(name, gpx::kRte))
        return kRoutes;
    return Equals(name, gpx::kTrk) ? kTracks : kAnywhere;
}

class RootReader final : public ChildReader {
public:
    RootReader(ReadContext& context, const GpxVersion& version, const NodeView& root, GpxDocument& document)
        : context_(context), version_(version), document_(document) {
        if (context.reporter.IsWanted())
            ifNameless_ = SkipReporter::Describe(
                root, kGpxInvented, "The document's name is not from the file, which has none.", false);
    }

    bool IsolatesFailures() const override { return false; }
    const char* MissingChildMessage() const override { return "Unable to read a GPX child node."; }
    const text::CheckSite& MissingChildSite() const override { return text::sites::kGpxChild; }

    Visit Classify(const NodeView& child) override {
        const Visit visit = ClassifyElement(kRootElements, context_, version_, child, WhenUnknown::kAtStart);
        return visit != Visit::kSkip && IsInOrder(child) ? visit : Visit::kSkip;
    }

    std::unique_ptr<ChildReader> Descend(const NodeView& child) override {
        return Equals(child.LocalName(), gpx::kTrk) ? EnterTrack(context_, version_, child, document_)
                                                    : EnterRoute(context_, version_, child, document_);
    }

    void ReadTree(const NodeView& child) override {
        ReadOwnElement(kRootElements, {context_, &version_, child, document_, sources_});
    }

    void Finish() override {
        if (context_.reporter.IsWanted() && !sources_.Contains(gpx::kName) &&
            !GpxModelAccess::GetName(document_).isEmpty())
            context_.reporter.Notify(ifNameless_);
    }

private:
    bool IsInOrder(const NodeView& child) {
        const Rank rank = RankOf(child);
        if (rank == kAnywhere)
            return true;
        if (rank < lastRank_) {
            context_.reporter.Skip(
                child, kGpxOutOfOrder,
                rank == kWaypoints ? "It comes after a route or a track." : "It comes after a track.", true);
            return false;
        }
        lastRank_ = rank;
        return true;
    }

    ReadContext& context_;
    const GpxVersion version_;
    GpxDocument& document_;
    Rank lastRank_ = kWaypoints;
    /// For the end of the root, when its node is gone. Empty when there is no observer.
    GpxSkippedElement ifNameless_;
    FieldSources sources_{context_.reporter, FieldSources::Lifetime::kShort};
};

constexpr const char16_t* kRootAttributes[] = {gpx::kVersion};
// Every program that writes a file has its own in this place.
constexpr char16_t kCreator[] = u"creator";

} // namespace

std::unique_ptr<ChildReader> EnterDocument(ReadContext& context, const NodeView& root,
                                           GpxDocument& document) {
    icu::UnicodeString versionText;
    text::Ensure(ReadTextAttribute(root, gpx::kVersion, versionText), text::sites::kGpxVersion,
                 "Unable to read the GPX version.");
    const GpxVersion version(versionText);
    text::Ensure(root.HasChildList(), text::sites::kGpxChildren, "Unable to read the GPX file nodes.");
    ReportUnreadAttributes(context.reporter, root, kRootAttributes, kCreator);
    return std::make_unique<RootReader>(context, version, root, document);
}

void RequireGpxRoot(const NodeView& root) {
    if (!Equals(root.LocalName(), gpx::kGpx))
        throw dbc::postcondition_error("The GPX document element was not found.");
}

void ReadDocument(ReadContext& context, const NodeView& root, GpxDocument& document) {
    ReadChildren(context, *EnterDocument(context, root, document), root);
}

} // namespace vexaTransferLib::reader
