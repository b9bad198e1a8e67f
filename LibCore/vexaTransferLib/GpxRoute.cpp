// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxRoute.h>

#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ContractSources.h>
#include <vexaTransferLib/text/OptionalText.h>

#include <common/dbc.h>

#include <utility>

namespace vexaTransferLib {

// Contract reports name these lines for the checks of the writers (in writer/), which run on behalf of this class.
namespace text::sites {

static constexpr CheckSiteMaker Here{kGpxRouteSource};

constinit const CheckSite kRouteVersion = Here();     // RouteWriter.cpp: neither GPX 1.0 nor 1.1
constinit const CheckSite kRouteOutput = Here();      // RouteWriter.cpp: the text is too large
constinit const CheckSite kUnknownRouteType = Here(); // RouteWriter.cpp: an unknown route type

} // namespace text::sites

namespace {

bool Accepts(TarvikRouteType routeType, bool hasPointType, TarvikRoutePointType pointType) {
    switch (routeType) {
    case kTarvikRouteStandard:
        return true;
    case kTarvikRoutePoints:
        return hasPointType && pointType != kTarvikRoutePointTurn;
    case kTarvikRouteDirections:
        return hasPointType;
    }
    return false;
}

} // namespace

GpxRoute::GpxRoute(TarvikRouteType routeType) : routeType_(routeType) {
    dbc::Require(static_cast<std::uint32_t>(routeType) <= kTarvikRouteDirections, text::kGpxRouteSource,
                 "The GPX route type is invalid.");
}

GpxRoute& GpxRoute::operator=(const GpxRoute& other) {
    if (this != &other)
        *this = GpxRoute(other);
    return *this;
}

GpxRoute::~GpxRoute() = default;

bool GpxRoute::GetName(icu::UnicodeString& name) const {
    return text::CopyText(name, name_);
}

bool GpxRoute::GetSource(icu::UnicodeString& source) const {
    return text::CopyText(source, source_);
}

bool GpxRoute::GetType(icu::UnicodeString& type) const {
    return text::CopyText(type, type_);
}

void GpxRoute::SetName(const icu::UnicodeString& name) {
    text::AssignText("The GPX route name cannot be empty.", name_, name);
}

void GpxRoute::SetSource(const icu::UnicodeString& source) {
    text::AssignText("The GPX route source cannot be empty.", source_, source);
}

void GpxRoute::SetType(const icu::UnicodeString& type) {
    text::AssignText("The GPX route type cannot be empty.", type_, type);
}

void GpxRoute::SetTarvikRouteType(TarvikRouteType routeType) {
    GpxRoute changed(routeType);
    for (const GpxPoint& point : points_)
        changed.CheckPoint(point);
    routeType_ = routeType;
}

bool operator==(const GpxRoute& left, const GpxRoute& right) {
    return left.routeType_ == right.routeType_ && left.name_ == right.name_ &&
           left.source_ == right.source_ && left.type_ == right.type_ && left.points_ == right.points_;
}

bool GpxRoute::GetTarvikRouteType(TarvikRouteType& routeType) const {
    if (routeType_ == kTarvikRouteStandard)
        return false;
    routeType = routeType_;
    return true;
}

void GpxRoute::CheckPoint(const GpxPoint& point) const {
    dbc::Require(point.GetPointType() == kGpxRoutePoint, text::kGpxRouteSource,
                 "Only route points can be added to GPX routes.");
    TarvikRoutePointType pointType = kTarvikRoutePointStart;
    const bool hasPointType = point.GetTarvikRoutePointType(pointType);
    dbc::Require(Accepts(routeType_, hasPointType, pointType), text::kGpxRouteSource,
                 "The route point type cannot be used with this route type.");
}

void GpxRoute::AddPoint(const GpxPoint& point) {
    CheckPoint(point);
    points_.push_back(point);
}

void GpxRoute::AddPoint(GpxPoint&& point) {
    CheckPoint(point);
    points_.push_back(std::move(point));
}

GpxRoute::PointIterator GpxRoute::GetPointIter() const {
    return points_.begin();
}

GpxRoute::PointIterator GpxRoute::GetPointEndIter() const {
    return points_.end();
}

std::size_t GpxRoute::GetPointCount() const {
    return points_.size();
}

} // namespace vexaTransferLib
