// SPDX-License-Identifier: MIT
#include <vexaTransferLib/complete/CompleteReaders.h>

#include <vexaTransferLib/model/ElementText.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/Namespaces.h>

#include <boost/make_shared.hpp>

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace vexaTransferLib::complete {

namespace {

constexpr std::string_view kVersion10 = "1.0";
constexpr std::string_view kVersion11 = "1.1";
constexpr std::string_view kGpx10Uri = "http://www.topografix.com/GPX/1/0";

/// Waypoints come first in a file, then routes, then tracks.
enum class Rank { kWaypoints, kRoutes, kTracks };

/// A document while its elements are read.
class DocumentParts {
public:
    DocumentParts(CompleteContext& context, GpxDocument& document) : context_(context), document_(document) {}

    const char* ReadRootChild(const ScannedChild& child) {
        if (child.IsGpx(gpx::kWpt))
            return ReadWaypoint(child);
        if (child.IsGpx(gpx::kRte))
            return ReadRouteInOrder(child);
        if (child.IsGpx(gpx::kTrk))
            return ReadTrackInOrder(child);
        GpxModelAccess::AddField(document_, context_.ElementOf(child));
        if (child.kind == NamespaceKind::kTarvik)
            return ReadVendorField(child);
        if (child.kind != NamespaceKind::kGpx)
            return nullptr;
        if (child.name == gpx::kMetadata)
            return context_.ForEach(child, [&](const ScannedChild& part) { return ReadField(part); });
        return ReadField(child);
    }

    void Finish() {
        GpxModelAccess::SetName(document_, std::move(name_));
        if (time_)
            GpxModelAccess::SetAnyTime(document_, *time_);
        for (GpxPoint& waypoint : waypoints_)
            document_.AddWaypoint(std::move(waypoint));
        GpxModelAccess::GetReadCounts(document_) = {document_.GetWaypointCount(), document_.GetRouteCount(),
                                                    document_.GetTrackCount()};
    }

private:
    void CheckOrder(const ScannedChild& child, Rank rank) {
        if (rank < last_)
            context_.Tolerate(child, rank == Rank::kWaypoints ? "It comes after a route or a track."
                                                              : "It comes after a track.");
        else
            last_ = rank;
    }

    const char* ReadWaypoint(const ScannedChild& child) {
        CheckOrder(child, Rank::kWaypoints);
        const char* const end = ReadPoint(context_, child, kGpxWaypoint, waypoints_);
        if (end == nullptr)
            GpxModelAccess::AddUnread(document_, context_.ElementOf(child));
        return end;
    }
    const char* ReadRouteInOrder(const ScannedChild& child) {
        CheckOrder(child, Rank::kRoutes);
        return ReadRoute(context_, child, document_);
    }
    const char* ReadTrackInOrder(const ScannedChild& child) {
        CheckOrder(child, Rank::kTracks);
        return ReadTrack(context_, child, document_);
    }

    // The elements that GPX 1.0 has below the root and GPX 1.1 in `metadata`.
    const char* ReadField(const ScannedChild& child) {
        if (child.kind != NamespaceKind::kGpx)
            return nullptr;
        if (child.name == gpx::kName)
            return context_.ReadText(child, name_);
        if (child.name == gpx::kTime)
            return context_.ReadTime(child, time_);
        if (child.name == gpx::kExtensions)
            return context_.ForEach(child, [&](const ScannedChild& part) { return ReadVendorField(part); });
        return nullptr;
    }

    const char* ReadVendorField(const ScannedChild& child) {
        if (child.kind != NamespaceKind::kTarvik && child.kind != NamespaceKind::kGpx)
            return nullptr;
        if (child.name == tarvik::kLayerkey.Local())
            return context_.ReadText(child, Layer().layerKey);
        if (child.name == tarvik::kLayername.Local())
            return context_.ReadText(child, Layer().layerName);
        if (child.name == tarvik::kForm.Local())
            return context_.ReadText(child, Layer().form);
        if (child.name == tarvik::kDefaultsymbol.Local())
            return ReadDefaultSymbol(child);
        if (child.name == tarvik::kTrackGUID.Local())
            return context_.ReadText(child, Annotation().trackGUID);
        return child.name == tarvik::kWaypointGUID.Local()
                   ? context_.ReadText(child, Annotation().waypointGUID)
                   : nullptr;
    }
    const char* ReadDefaultSymbol(const ScannedChild& child) {
        const char* const end = context_.ReadInteger(child, defaultSymbol_);
        if (defaultSymbol_)
            Layer().defaultSymbol = *defaultSymbol_;
        return end;
    }

    // The records are made when the file has something for them.
    GISMetaData& Layer() {
        if (!GpxModelAccess::GetGISMetaData(document_))
            GpxModelAccess::SetGISMetaData(document_, boost::make_shared<GISMetaData>());
        return *GpxModelAccess::GetGISMetaData(document_);
    }
    AnnotateMetaData& Annotation() {
        if (!GpxModelAccess::GetAnnotateMetaData(document_))
            GpxModelAccess::SetAnnotateMetaData(document_, boost::make_shared<AnnotateMetaData>());
        return *GpxModelAccess::GetAnnotateMetaData(document_);
    }

    CompleteContext& context_;
    GpxDocument& document_;
    std::vector<GpxPoint> waypoints_;
    icu::UnicodeString name_;
    std::optional<double> time_;
    std::optional<std::int32_t> defaultSymbol_;
    Rank last_ = Rank::kWaypoints;
};

std::optional<std::string_view> FindRawAttribute(const ScannedTag& tag, std::string_view name) {
    std::string_view rest = tag.attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);)
        if (attribute.name == name)
            return attribute.value;
    return std::nullopt;
}

void CheckVersion(CompleteContext& context, const ScannedChild& root) {
    const std::optional<std::string_view> version = FindRawAttribute(root.tag, gpx::kVersion);
    const std::string_view uri = context.Names().RootUri();
    if (!version)
        context.Tolerate(root, "It has no version.");
    else if (version != kVersion10 && version != kVersion11)
        context.Tolerate(root, "Its version is not one of GPX.");
    if (uri.empty())
        context.Tolerate(root, "It is in no namespace.");
    else if (!text::IsGpxNamespace(uri))
        context.Tolerate(root, "Its namespace is not one of GPX.");
    else if ((version == kVersion10 && uri != kGpx10Uri) || (version == kVersion11 && uri != text::kGpx11Uri))
        context.Tolerate(root, "Its namespace is not that of its version.");
}

} // namespace

void ReadDocument(CompleteContext& context, GpxDocument& document) {
    const SourceText& source = *context.Source();
    const ScannedChild root = ScanChild(context.Names(), source, source.At(source.RootPlace()));
    if (context.IsWatched())
        CheckVersion(context, root);
    GpxModelAccess::SetElement(document, context.ElementOf(root));
    DocumentParts parts(context, document);
    context.ForEach(root, [&](const ScannedChild& child) { return parts.ReadRootChild(child); });
    parts.Finish();
}

} // namespace vexaTransferLib::complete
