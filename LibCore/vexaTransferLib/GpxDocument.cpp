// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxDocument.h>

#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ContractSources.h>
#include <vexaTransferLib/text/OptionalText.h>

#include <common/dbc.h>

#include <utility>

namespace vexaTransferLib {

// Contract reports name these lines for the checks of the writers (in writer/), which run on behalf of this class.
namespace text::sites {

static constexpr CheckSiteMaker Here{kGpxDocumentSource};

constinit const CheckSite kDocumentVersion = Here(); // DocumentWriter.cpp: neither GPX 1.0 nor 1.1
constinit const CheckSite kApplicationName = Here(); // DocumentWriter.cpp: no name of the application
constinit const CheckSite kApplicationUrl = Here();  // DocumentWriter.cpp: no URL of the application
constinit const CheckSite kDocumentOutput = Here();  // DocumentWriter.cpp: the text is too large
constinit const CheckSite kFileCreated = Here();     // DocumentWriter.cpp: the file cannot be created
constinit const CheckSite kFileWritten = Here();     // DocumentWriter.cpp: not all bytes are written
constinit const CheckSite kFileClosed = Here();      // DocumentWriter.cpp: the file cannot be closed

} // namespace text::sites

namespace {

constexpr char kNotAWaypoint[] = "Only waypoints can be added the GPX waypoint list.";

} // namespace

GpxDocument::GpxDocument() = default;

GpxDocument& GpxDocument::operator=(const GpxDocument& other) {
    if (this != &other)
        *this = GpxDocument(other);
    return *this;
}

GpxDocument::~GpxDocument() = default;

void GpxDocument::AddWaypoint(const GpxPoint& point) {
    dbc::Require(point.GetPointType() == kGpxWaypoint, text::kGpxDocumentSource, kNotAWaypoint);
    waypoints_.push_back(point);
}

void GpxDocument::AddWaypoint(GpxPoint&& point) {
    dbc::Require(point.GetPointType() == kGpxWaypoint, text::kGpxDocumentSource, kNotAWaypoint);
    waypoints_.push_back(std::move(point));
}

void GpxDocument::AddRoute(const GpxRoute& route) {
    routes_.push_back(route);
}

void GpxDocument::AddRoute(GpxRoute&& route) {
    routes_.push_back(std::move(route));
}

void GpxDocument::AddTrack(const GpxTrack& track) {
    tracks_.push_back(track);
}

void GpxDocument::AddTrack(GpxTrack&& track) {
    tracks_.push_back(std::move(track));
}

void GpxDocument::Clear() {
    waypoints_.clear();
    routes_.clear();
    tracks_.clear();
    name_.remove();
    time_ = 0.0;
    gisMetaData_.reset();
    annotateMetaData_.reset();
    stats_.reset();
    hasTime_ = false;
    element_ = GpxElement();
    fields_.clear();
    unread_.clear();
    readCounts_ = {};
    elementChanges_.reset();
}

GpxDocument::WaypointIterator GpxDocument::GetWaypointIter() const {
    return waypoints_.begin();
}

GpxDocument::WaypointIterator GpxDocument::GetWaypointEndIter() const {
    return waypoints_.end();
}

std::size_t GpxDocument::GetWaypointCount() const {
    return waypoints_.size();
}

GpxDocument::RouteIterator GpxDocument::GetRouteIter() const {
    return routes_.begin();
}

GpxDocument::RouteIterator GpxDocument::GetRouteEndIter() const {
    return routes_.end();
}

std::size_t GpxDocument::GetRouteCount() const {
    return routes_.size();
}

GpxDocument::TrackIterator GpxDocument::GetTrackIter() const {
    return tracks_.begin();
}

GpxDocument::TrackIterator GpxDocument::GetTrackEndIter() const {
    return tracks_.end();
}

std::size_t GpxDocument::GetTrackCount() const {
    return tracks_.size();
}

namespace {

bool IsSame(const GISMetaData& left, const GISMetaData& right) {
    return left.layerKey == right.layerKey && left.layerName == right.layerName && left.form == right.form &&
           left.defaultSymbol == right.defaultSymbol;
}

bool IsSame(const AnnotateMetaData& left, const AnnotateMetaData& right) {
    return left.trackGUID == right.trackGUID && left.waypointGUID == right.waypointGUID;
}

bool IsSame(const GPXStats& left, const GPXStats& right) {
    return left.wptcount == right.wptcount && left.trkcount == right.trkcount &&
           left.trksegcount == right.trksegcount && left.trktotalkm == right.trktotalkm &&
           left.geocachecount == right.geocachecount;
}

template <class Record>
bool IsSame(const boost::shared_ptr<Record>& left, const boost::shared_ptr<Record>& right) {
    return left && right ? IsSame(*left, *right) : !left == !right;
}

bool HasSameTime(const GpxDocument& left, const GpxDocument& right) {
    double one = 0.0;
    double other = 0.0;
    return left.GetDocumentTime(one) == right.GetDocumentTime(other) && one == other;
}

} // namespace

bool operator==(const GpxDocument& left, const GpxDocument& right) {
    return left.name_ == right.name_ && HasSameTime(left, right) &&
           IsSame(left.gisMetaData_, right.gisMetaData_) &&
           IsSame(left.annotateMetaData_, right.annotateMetaData_) && IsSame(left.stats_, right.stats_) &&
           left.waypoints_ == right.waypoints_ && left.routes_ == right.routes_ &&
           left.tracks_ == right.tracks_;
}

bool GpxDocument::GetDocumentTime(double& time) const {
    if (time_ == 0.0 && !hasTime_)
        return false;
    time = time_;
    return true;
}

void GpxDocument::SetDocumentTime(double time) noexcept {
    time_ = time;
    hasTime_ = true;
}

void GpxDocument::ClearDocumentTime() noexcept {
    time_ = 0.0;
    hasTime_ = false;
}

bool GpxDocument::GetName(icu::UnicodeString& name) const {
    return text::CopyText(name, name_);
}

void GpxDocument::SetName(const icu::UnicodeString& name) {
    text::AssignText("The GPX document name cannot be empty.", name_, name);
}

bool GpxDocument::HasExtensionData() const {
    return gisMetaData_ || annotateMetaData_ || stats_;
}

bool GpxDocument::HasMetaData() const {
    return !name_.isEmpty() || HasExtensionData();
}

} // namespace vexaTransferLib
