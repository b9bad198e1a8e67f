// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/RouteReader.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/ToldValues.h>
#include <vexaTransferLib/reader/VendorReader.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <optional>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

// A route checks its points against its type, so the type must be known when the route is made: at the first
// route point, with what stood before it.
class RouteReader final : public ChildReader {
public:
    RouteReader(ReadContext& context, const GpxVersion& version, GpxDocument& document)
        : context_(context), version_(version), document_(document) {}

    bool IsolatesFailures() const override { return true; }
    const char* MissingChildMessage() const override { return "Unable to read a GPX route child node."; }
    const text::CheckSite& MissingChildSite() const override { return text::sites::kRouteChild; }

    Visit Classify(const NodeView& child) override {
        if (child.LocalName() == nullptr)
            return Visit::kSkip;
        if (IsStandard(version_, child))
            return Visit::kAsTree;
        SkipForeignToGpx(context_.reporter, version_, child,
                         Equals(child.LocalName(), gpx::kRtept) || FieldOf(child) != nullptr);
        return Visit::kSkip;
    }

    void ReadTree(const NodeView& child) override {
        if (Equals(child.LocalName(), gpx::kRtept))
            ReadRoutePoint(child);
        else if (const char16_t* const field = FieldOf(child); field == nullptr)
            context_.reporter.SkipUnknown(child);
        else if (route_)
            context_.reporter.Skip(child, kGpxOutOfOrder, "It stands behind the first route point.", true);
        else if (ReadField(child))
            sources_.Set(field, child);
    }

    void Finish() override { document_.AddRoute(std::move(Route())); }

private:
    /// The name, when it is that of something other than a point that a route has.
    static const char16_t* FieldOf(const NodeView& child) {
        for (const auto* field : {&gpx::kName, &gpx::kSrc, &gpx::kType, &gpx::kExtensions})
            if (Equals(child.LocalName(), *field))
                return *field;
        return nullptr;
    }

    /// True when the route will have the element's value.
    bool ReadField(const NodeView& child) {
        const char16_t* const name = child.LocalName();
        if (Equals(name, gpx::kName))
            return ReadText(context_, child, name_);
        if (Equals(name, gpx::kSrc))
            return ReadText(context_, child, source_);
        if (version_.IsGpx10()) {
            context_.reporter.SkipOtherVersion(child, version_);
            return false;
        }
        if (Equals(name, gpx::kType))
            return ReadText(context_, child, type_);
        return ReadRouteType(context_, child, routeType_);
    }

    GpxRoute& Route() {
        if (!route_) {
            GpxRoute route(routeType_);
            if (!name_.isEmpty())
                route.SetName(name_);
            if (!source_.isEmpty())
                route.SetSource(source_);
            if (!type_.isEmpty())
                route.SetType(type_);
            route_ = std::move(route);
        }
        return *route_;
    }

    void ReadRoutePoint(const NodeView& child) {
        GpxRoute& route = Route();
        route.AddPoint(ReadPoint(context_, version_, kGpxRoutePoint, child));
    }

    ReadContext& context_;
    const GpxVersion version_;
    GpxDocument& document_;
    icu::UnicodeString name_;
    icu::UnicodeString source_;
    icu::UnicodeString type_;
    TarvikRouteType routeType_ = kTarvikRouteStandard;
    std::optional<GpxRoute> route_;
    FieldSources sources_{context_.reporter, FieldSources::Lifetime::kShort};
};

} // namespace

std::unique_ptr<ChildReader> EnterRoute(ReadContext& context, const GpxVersion& version, const NodeView& node,
                                        GpxDocument& document) {
    text::Ensure(node.HasChildList(), text::sites::kRouteChildren,
                 "Unable to read GPX route child elements.");
    context.CountObject();
    return std::make_unique<RouteReader>(context, version, document);
}

void ReadRoute(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxDocument& document) {
    ReadChildren(context, *EnterRoute(context, version, node, document), node);
}

} // namespace vexaTransferLib::reader
