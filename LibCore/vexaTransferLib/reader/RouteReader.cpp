// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/RouteReader.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/reader/CommonElements.h>
#include <vexaTransferLib/reader/ElementTable.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/PointReader.h>
#include <vexaTransferLib/reader/UnreadAttributes.h>
#include <vexaTransferLib/reader/VendorReader.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <unicode/unistr.h>

#include <optional>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

// The parts of a route that have been read. The route is made at the first route point, from the elements
// before it: a route checks its points against its kind, which must be known when it is made.
struct RouteParts {
    icu::UnicodeString name;
    icu::UnicodeString source;
    icu::UnicodeString type;
    TarvikRouteType kind = kTarvikRouteStandard;
    std::optional<GpxRoute> route;
    /// 0 when they are not known, or there is room for them.
    std::uint64_t expectedPoints = 0;
};

GpxRoute& MadeRoute(RouteParts& parts) {
    if (!parts.route) {
        GpxRoute route(parts.kind);
        if (!parts.name.isEmpty())
            route.SetName(parts.name);
        if (!parts.source.isEmpty())
            route.SetSource(parts.source);
        if (!parts.type.isEmpty())
            route.SetType(parts.type);
        parts.route = std::move(route);
    }
    return *parts.route;
}

bool ReadRoutePoint(const Element<RouteParts>& element) {
    GpxRoute& route = MadeRoute(element.owner);
    if (element.owner.expectedPoints != 0)
        element.context.MakeRoom(GpxModelAccess::GetPoints(route),
                                 std::exchange(element.owner.expectedPoints, 0));
    route.AddPoint(ReadPoint(element.context, *element.version, kGpxRoutePoint, element.node));
    return true;
}

bool ReadRouteExtensions(const Element<RouteParts>& element) {
    return ReadRouteType(element.context, element.node, element.owner.kind);
}

constexpr ElementReader<RouteParts> kReaders[] = {
    {gpx::kRtept, nullptr, ReadRoutePoint, Versions::kAll, Attributes::kOfReader},
    {gpx::kName, gpx::kName, ReadTextInto<&RouteParts::name>},
    {gpx::kSrc, gpx::kSrc, ReadTextInto<&RouteParts::source>},
    {gpx::kType, gpx::kType, ReadTextInto<&RouteParts::type>, Versions::kOnly11},
    {gpx::kExtensions, gpx::kExtensions, ReadRouteExtensions, Versions::kOnly11},
};
constexpr ElementTable<RouteParts> kElements = {Namespace::kGpx, kReaders};

class RouteReader final : public ChildReader {
public:
    RouteReader(ReadContext& context, const GpxVersion& version, GpxDocument& document)
        : context_(context), version_(version), document_(document) {
        parts_.expectedPoints = context.expectedChildren;
    }

    bool IsolatesFailures() const override { return true; }
    const char* MissingChildMessage() const override { return "Unable to read a GPX route child node."; }
    const text::CheckSite& MissingChildSite() const override { return text::sites::kRouteChild; }

    Visit Classify(const NodeView& child) override {
        return ClassifyElement(kElements, context_, version_, child, WhenUnknown::kAtEnd);
    }

    void ReadTree(const NodeView& child) override {
        if (parts_.route && GivesField(child))
            context_.reporter.SkipContent(child, kGpxOutOfOrder, "It comes after the first route point.");
        else
            ReadOwnElement(kElements, {context_, &version_, child, parts_, sources_});
    }

    void Finish() override { document_.AddRoute(std::move(MadeRoute(parts_))); }

private:
    static bool GivesField(const NodeView& child) {
        const ElementReader<RouteParts>* const reader = kElements.Find(child.LocalName());
        return reader != nullptr && reader->field != nullptr;
    }

    ReadContext& context_;
    const GpxVersion version_;
    GpxDocument& document_;
    RouteParts parts_;
    FieldSources sources_{context_.reporter, FieldSources::Lifetime::kShort};
};

} // namespace

std::unique_ptr<ChildReader> EnterRoute(ReadContext& context, const GpxVersion& version, const NodeView& node,
                                        GpxDocument& document) {
    text::Ensure(node.HasChildList(), text::sites::kRouteChildren,
                 "Unable to read GPX route child elements.");
    context.CountObject();
    ReportUnreadAttributes(context.reporter, node);
    return std::make_unique<RouteReader>(context, version, document);
}

void ReadRoute(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxDocument& document) {
    ReadChildren(context, *EnterRoute(context, version, node, document), node);
}

} // namespace vexaTransferLib::reader
