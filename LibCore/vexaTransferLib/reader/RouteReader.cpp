// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/RouteReader.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/reader/ChildGuard.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/reader/VendorReader.h>

#include <optional>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

constexpr ChildMessages kMessages = {"Unable to read GPX route child elements.",
                                     "Unable to read a GPX route child node."};

// A route checks its points against its type, so the type must be known when the route is made: at the first
// route point, with what stood before it.
class RouteBuilder {
public:
    RouteBuilder(ReadContext& context, const GpxVersion& version) : context_(context), version_(version) {}

    void ReadChild(const NodeView& child) {
        const char16_t* const name = child.LocalName();
        if (!IsStandard(version_, child))
            return;
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

private:
    void ReadRoutePoint(const NodeView& child) {
        GpxRoute& route = Route();
        GpxPoint point(kGpxRoutePoint, 0.0, 0.0);
        ReadPoint(context_, version_, kGpxRoutePoint, child, point);
        route.AddPoint(std::move(point));
    }

    ReadContext& context_;
    const GpxVersion& version_;
    icu::UnicodeString name_;
    icu::UnicodeString source_;
    icu::UnicodeString type_;
    TarvikRouteType routeType_ = kTarvikRouteStandard;
    std::optional<GpxRoute> route_;
};

} // namespace

void ReadRoute(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxDocument& document) {
    RouteBuilder builder(context, version);
    ForEachGuardedChild(node, kMessages, [&](const NodeView& child) { builder.ReadChild(child); });
    document.AddRoute(std::move(builder.Route()));
}

} // namespace vexaTransferLib::reader
