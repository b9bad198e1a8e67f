// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/RouteReader.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/reader/VendorReader.h>
#include <vexaTransferLib/text/ContractSources.h>

#include <common/dbc.h>

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

    bool IsGuarded() const override { return true; }
    const char* MissingChildMessage() const override { return "Unable to read a GPX route child node."; }

    Way WayOf(const NodeView& child) override {
        return child.LocalName() != nullptr && IsStandard(version_, child) ? Way::kWhole : Way::kPassOver;
    }

    void ReadWhole(const NodeView& child) override {
        const char16_t* const name = child.LocalName();
        if (Equals(name, u"rtept"))
            ReadRoutePoint(child);
        else if (Equals(name, u"name"))
            ReadText(child, name_);
        else if (Equals(name, u"src"))
            ReadText(child, source_);
        else if (version_.IsGpx11() && Equals(name, u"type"))
            ReadText(child, type_);
        else if (version_.IsGpx11() && Equals(name, u"extensions"))
            ReadRouteType(child, routeType_);
    }

    void Finish() override { document_.AddRoute(std::move(Route())); }

private:
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
        GpxPoint point(kGpxRoutePoint, 0.0, 0.0);
        ReadPoint(context_, version_, kGpxRoutePoint, child, point);
        route.AddPoint(std::move(point));
    }

    ReadContext& context_;
    const GpxVersion version_;
    GpxDocument& document_;
    icu::UnicodeString name_;
    icu::UnicodeString source_;
    icu::UnicodeString type_;
    TarvikRouteType routeType_ = kTarvikRouteStandard;
    std::optional<GpxRoute> route_;
};

} // namespace

std::unique_ptr<ChildReader> EnterRoute(ReadContext& context, const GpxVersion& version, const NodeView& node,
                                        GpxDocument& document) {
    dbc::Ensure(node.HasChildList(), text::kGpxParserSource, "Unable to read GPX route child elements.");
    return std::make_unique<RouteReader>(context, version, document);
}

void ReadRoute(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxDocument& document) {
    ReadChildren(*EnterRoute(context, version, node, document), node);
}

} // namespace vexaTransferLib::reader
