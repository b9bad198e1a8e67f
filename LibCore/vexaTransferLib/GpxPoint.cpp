// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxPoint.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ContractSources.h>
#include <vexaTransferLib/text/OptionalText.h>

#include <common/dbc.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>

namespace vexaTransferLib {

// Contract reports name these lines for the checks of the writers (in writer/), which run on behalf of this class.
namespace text::sites {

static constexpr CheckSiteMaker Here{kGpxPointSource};

constinit const CheckSite kPointVersion = Here();          // PointWriter.cpp: neither GPX 1.0 nor 1.1
constinit const CheckSite kPointOutput = Here();           // PointWriter.cpp: the text is too large
constinit const CheckSite kUnknownPointType = Here();      // PointWriter.cpp: a point of an unknown kind
constinit const CheckSite kUnknownFix = Here();            // PointWriter.cpp: an unknown kind of fix
constinit const CheckSite kUnknownRoutePointType = Here(); // VendorWriter.cpp: an unknown route point type

} // namespace text::sites

namespace {

constexpr double kLatitudeLimit = 90.0;
constexpr double kLongitudeLimit = 180.0;
// 180 degrees is the same as -180 degrees. The smallest step of a 32-bit float at this size keeps them apart.
constexpr double kJustBelow180 = 180.0 - 1.0 / (1 << 23);

bool Equal(double a, double b) {
    const double epsilon = std::numeric_limits<double>::epsilon();
    return b >= a - epsilon && a + epsilon >= b;
}

// The comparisons are written so that a NaN fails.
bool IsLatitude(double value) {
    return (value > -kLatitudeLimit || Equal(value, -kLatitudeLimit)) &&
           (value < kLatitudeLimit || Equal(value, kLatitudeLimit));
}

bool IsLongitude(double value) {
    return (value > -kLongitudeLimit || Equal(value, -kLongitudeLimit)) && value < kLongitudeLimit;
}

double Wrapped(double longitude) {
    return Equal(longitude, kLongitudeLimit) ? kJustBelow180 : longitude;
}

// A caller can put any number into an enumeration; a negative one becomes a large one and is refused too.
bool IsBetween(std::uint32_t value, std::uint32_t first, std::uint32_t last) {
    return value >= first && value <= last;
}

} // namespace

static_assert(sizeof(GpxPoint) <= 64, "files contain millions of points");

GpxPoint::GpxPoint(GpxPointType type, double latitude, double longitude)
    : latitude_(latitude), longitude_(Wrapped(longitude)), place_(0),
      pointType_(static_cast<std::uint8_t>(type) & 0xF), fix_(0), routePointType_(0), hasElevation_(0),
      hasTime_(0), isChanged_(0) {
    dbc::Require(IsBetween(type, kGpxWaypoint, kGpxTrackPoint), text::kGpxPointSource,
                 "The GPX point type is invalid.");
    RequirePosition(latitude_, longitude_);
}

void GpxPoint::RequirePosition(double latitude, double longitude) {
    dbc::Require(IsLatitude(latitude), text::kGpxPointSource, "The GPX point's latitude is invalid.");
    dbc::Require(IsLongitude(longitude), text::kGpxPointSource, "The GPX point's longitude is invalid.");
}

bool GpxPoint::IsPosition(double latitude, double longitude) {
    return IsLatitude(latitude) && (IsLongitude(longitude) || Equal(longitude, kLongitudeLimit));
}

GpxPoint::GpxPoint(const GpxPoint& other) = default;

GpxPoint::GpxPoint(GpxPoint&& other) noexcept = default;

GpxPoint& GpxPoint::operator=(const GpxPoint& other) {
    if (this != &other)
        *this = GpxPoint(other);
    return *this;
}

GpxPoint& GpxPoint::operator=(GpxPoint&& other) noexcept = default;

GpxPoint::~GpxPoint() = default;

GpxPointType GpxPoint::GetPointType() const {
    return static_cast<GpxPointType>(pointType_);
}

void GpxPoint::GetPoint(double& latitude, double& longitude) const {
    latitude = latitude_;
    longitude = longitude_;
}

void GpxPoint::SetPoint(double latitude, double longitude) {
    RequirePosition(latitude, Wrapped(longitude));
    latitude_ = latitude;
    longitude_ = Wrapped(longitude);
    isChanged_ = 1;
}

// For changing them.
GpxPoint::RareData& GpxPoint::Rare() {
    if (!rare_)
        rare_ = std::make_unique<RareData>();
    isChanged_ = 1;
    return *rare_;
}

bool GpxPoint::GetText(icu::UnicodeString& out, icu::UnicodeString RareData::*field) const {
    return rare_ && text::CopyText(out, (*rare_).*field);
}

void GpxPoint::SetText(const char* message, icu::UnicodeString RareData::*field,
                       const icu::UnicodeString& value) {
    icu::UnicodeString copy;
    text::AssignText(message, copy, value);
    (Rare().*field).swap(copy);
}

bool GpxPoint::GetName(icu::UnicodeString& name) const {
    return GetText(name, &RareData::name);
}

bool GpxPoint::GetComment(icu::UnicodeString& comment) const {
    return GetText(comment, &RareData::comment);
}

bool GpxPoint::GetDescription(icu::UnicodeString& description) const {
    return GetText(description, &RareData::description);
}

bool GpxPoint::GetSource(icu::UnicodeString& source) const {
    return GetText(source, &RareData::source);
}

bool GpxPoint::GetSymbol(icu::UnicodeString& symbol) const {
    return GetText(symbol, &RareData::symbol);
}

bool GpxPoint::GetType(icu::UnicodeString& type) const {
    return GetText(type, &RareData::type);
}

void GpxPoint::SetName(const icu::UnicodeString& name) {
    SetText("The GPX point name cannot be empty.", &RareData::name, name);
}

void GpxPoint::SetComment(const icu::UnicodeString& comment) {
    SetText("The GPX point comment cannot be empty.", &RareData::comment, comment);
}

void GpxPoint::SetDescription(const icu::UnicodeString& description) {
    SetText("The GPX point description cannot be empty.", &RareData::description, description);
}

void GpxPoint::SetSource(const icu::UnicodeString& source) {
    SetText("The GPX point source cannot be empty.", &RareData::source, source);
}

void GpxPoint::SetSymbol(const icu::UnicodeString& symbol) {
    SetText("The GPX point symbol cannot be empty.", &RareData::symbol, symbol);
}

void GpxPoint::SetType(const icu::UnicodeString& type) {
    SetText("The GPX point type cannot be empty.", &RareData::type, type);
}

bool GpxPoint::GetElevation(double& elevation) const {
    if (hasElevation_ != 0)
        elevation = elevation_;
    return hasElevation_ != 0;
}

bool GpxPoint::GetTime(double& time) const {
    if (hasTime_ != 0)
        time = time_;
    return hasTime_ != 0;
}

bool GpxPoint::GetMagneticVariation(double& variation) const {
    return rare_ && GetAutoPtrValue(variation, rare_->magneticVariation);
}

bool GpxPoint::GetGeoidHeight(double& height) const {
    return rare_ && GetAutoPtrValue(height, rare_->geoidHeight);
}

bool GpxPoint::GetURL(GpxUrl& url) const {
    return rare_ && GetAutoPtrValue(url, rare_->url);
}

void GpxPoint::SetElevation(double elevation) {
    elevation_ = elevation;
    hasElevation_ = 1;
    isChanged_ = 1;
}

void GpxPoint::SetTime(double const& time) {
    time_ = time;
    hasTime_ = 1;
    isChanged_ = 1;
}

void GpxPoint::SetMagneticVariation(double variation) {
    dbc::Require(
        variation >= 0.0 && variation < 360.0, text::kGpxPointSource,
        "The GPX point's magnetic variation must be greater than or equal to zero and less than 360.");
    SetAutoPtrValue(Rare().magneticVariation, variation);
}

void GpxPoint::SetGeoidHeight(double height) {
    SetAutoPtrValue(Rare().geoidHeight, height);
}

void GpxPoint::SetURL(const GpxUrl& url) {
    SetAutoPtrValue(Rare().url, url);
}

bool GpxPoint::GetFix(GpxFix& fix) const {
    if (fix_ != 0)
        fix = static_cast<GpxFix>(fix_);
    return fix_ != 0;
}

void GpxPoint::SetFix(GpxFix fix) {
    dbc::Require(IsBetween(fix, kGpxFixNone, kGpxFixPPS), text::kGpxPointSource,
                 "The GPX point's fix type was unknown.");
    fix_ = static_cast<std::uint8_t>(fix);
    isChanged_ = 1;
}

bool GpxPoint::GetTarvikRoutePointType(TarvikRoutePointType& type) const {
    dbc::Invariant(pointType_ == kGpxRoutePoint, text::kGpxPointSource,
                   "The route point type is only available for route points.");
    if (routePointType_ != 0)
        type = static_cast<TarvikRoutePointType>(routePointType_);
    return routePointType_ != 0;
}

void GpxPoint::SetTarvikRoutePointType(TarvikRoutePointType type) {
    dbc::Invariant(pointType_ == kGpxRoutePoint, text::kGpxPointSource,
                   "The route point type is only available for route points.");
    dbc::Require(IsBetween(type, kTarvikRoutePointStart, kTarvikRoutePointTurn), text::kGpxPointSource,
                 "The GPX point's route point type was unknown.");
    routePointType_ = static_cast<std::uint8_t>(type);
    isChanged_ = 1;
}

bool GpxPoint::GetGroundspeakCache(GpxGroundspeakCache& cache) const {
    dbc::Invariant(pointType_ == kGpxWaypoint, text::kGpxPointSource,
                   "The GPX Groundspeak geocache information is only available for waypoints.");
    return rare_ && GetAutoPtrValue(cache, rare_->geocache);
}

void GpxPoint::SetGroundspeakCache(const GpxGroundspeakCache& cache) {
    dbc::Invariant(pointType_ == kGpxWaypoint, text::kGpxPointSource,
                   "The GPX Groundspeak geocache information can only be set on waypoints.");
    Rare().geocache = std::make_unique<GpxGroundspeakCache>(cache);
}

void GpxPoint::SetFormAttribute(const icu::UnicodeString& key, const icu::UnicodeString& value,
                                double modTime) {
    const boost::shared_ptr<FormData> record = boost::make_shared<FormData>();
    record->key = text::Copied(key);
    record->value = text::Copied(value);
    record->modTime = modTime;
    Rare().formAttributes[record->key] = record;
}

boost::shared_ptr<FormData> GpxPoint::GetFormAttribute(const icu::UnicodeString& key) const {
    if (!rare_)
        return {};
    const auto found = rare_->formAttributes.find(key);
    return found != rare_->formAttributes.end() ? found->second : boost::shared_ptr<FormData>();
}

// What is cleared needs no memory: the block of rare values is not made for it.

void GpxPoint::ClearName() noexcept {
    if (rare_)
        rare_->name.remove();
    isChanged_ = 1;
}

void GpxPoint::ClearComment() noexcept {
    if (rare_)
        rare_->comment.remove();
    isChanged_ = 1;
}

void GpxPoint::ClearDescription() noexcept {
    if (rare_)
        rare_->description.remove();
    isChanged_ = 1;
}

void GpxPoint::ClearSource() noexcept {
    if (rare_)
        rare_->source.remove();
    isChanged_ = 1;
}

void GpxPoint::ClearSymbol() noexcept {
    if (rare_)
        rare_->symbol.remove();
    isChanged_ = 1;
}

void GpxPoint::ClearType() noexcept {
    if (rare_)
        rare_->type.remove();
    isChanged_ = 1;
}

void GpxPoint::ClearElevation() noexcept {
    elevation_ = 0.0;
    hasElevation_ = 0;
    isChanged_ = 1;
}

void GpxPoint::ClearTime() noexcept {
    time_ = 0.0;
    hasTime_ = 0;
    isChanged_ = 1;
}

void GpxPoint::ClearMagneticVariation() noexcept {
    if (rare_)
        rare_->magneticVariation.reset();
    isChanged_ = 1;
}

void GpxPoint::ClearGeoidHeight() noexcept {
    if (rare_)
        rare_->geoidHeight.reset();
    isChanged_ = 1;
}

void GpxPoint::ClearURL() noexcept {
    if (rare_)
        rare_->url.reset();
    isChanged_ = 1;
}

void GpxPoint::ClearGroundspeakCache() noexcept {
    if (rare_)
        rare_->geocache.reset();
    isChanged_ = 1;
}

void GpxPoint::ClearFix() noexcept {
    fix_ = 0;
    isChanged_ = 1;
}

void GpxPoint::ClearTarvikRoutePointType() noexcept {
    routePointType_ = 0;
    isChanged_ = 1;
}

void GpxPoint::ClearFormAttributes() noexcept {
    if (rare_)
        rare_->formAttributes.clear();
    isChanged_ = 1;
}

bool GpxPoint::ClearFormAttribute(const icu::UnicodeString& key) {
    isChanged_ = 1;
    return rare_ && rare_->formAttributes.erase(key) != 0;
}

namespace {

bool IsSame(double left, double right) {
    return left == right || (std::isnan(left) && std::isnan(right));
}

bool IsSame(const GpxPoint::FormAttributes& left, const GpxPoint::FormAttributes& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const auto& one, const auto& other) {
                          return one.first == other.first && one.second->value == other.second->value &&
                                 IsSame(one.second->modTime, other.second->modTime);
                      });
}

template <class Value>
bool IsSame(const Value& left, const Value& right) {
    return left == right;
}

/// A map or a number may be there and say nothing.
bool IsAbsent(const GpxPoint::FormAttributes& attributes) {
    return attributes.empty();
}

bool IsAbsent(std::int32_t number) {
    return number == 0;
}

template <class Value>
bool IsAbsent(const Value&) {
    return false;
}

template <class Value>
bool IsSameField(const Value& left, const Value& right) {
    const bool hasLeft = left && !IsAbsent(*left);
    const bool hasRight = right && !IsAbsent(*right);
    return hasLeft && hasRight ? IsSame(*left, *right) : hasLeft == hasRight;
}

} // namespace

bool operator==(const GpxPoint& left, const GpxPoint& right) {
    if (left.GetPointType() != right.GetPointType())
        return false;
    bool isSame = true;
    GpxModelAccess::ForEachPointField(
        [&](const char*, auto get) { isSame = isSame && IsSameField(get(left), get(right)); });
    return isSame;
}

bool GpxPoint::ContainsExtensions() const {
    if (pointType_ == kGpxRoutePoint && routePointType_ != 0)
        return true;
    return rare_ && (!rare_->formAttributes.empty() || rare_->symbolNumber > 0 || !rare_->guid.isEmpty() ||
                     rare_->geocache != nullptr);
}

GpxElement GpxPoint::GetElement() const {
    return source_ ? GpxModelAccess::MakeElement(source_, place_) : GpxElement();
}

} // namespace vexaTransferLib
