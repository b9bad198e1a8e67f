// SPDX-License-Identifier: MIT
#include <vexagpx/export/PointProperties.h>

#include <vexagpx/export/ElementProperties.h>
#include <vexagpx/export/GeocacheProperties.h>
#include <vexagpx/export/Position.h>
#include <vexagpx/output/HiddenFields.h>

#include <vexaTransferLib/GpxCacheDetails.h>
#include <vexaTransferLib/GpxPointDetails.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>
#include <variant>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

using Kind = ElementField::Kind;

// What the model has no member for.
constexpr ElementField kFields[] = {
    {"sat", Field::kSatellites, Kind::kCount},
    {"hdop", Field::kHorizontalDilution, Kind::kNumber},
    {"vdop", Field::kVerticalDilution, Kind::kNumber},
    {"pdop", Field::kPositionDilution, Kind::kNumber},
    {"ageofdgpsdata", Field::kDgpsAge, Kind::kNumber},
    {"dgpsid", Field::kDgpsStation, Kind::kCount},
    // What the model has of these is taken first. It lacks what it refuses: a variation of 360 degrees, an unknown fix.
    {"magvar", Field::kMagneticVariation, Kind::kNumber},
    {"fix", Field::kFix, Kind::kText},
};

// What is taken from the model or as a link.
constexpr std::string_view kTakenOtherwise[] = {"name", "cmt",         "desc", "src", "sym",
                                                "type", "geoidheight", "link", "url", "urlname"};

struct ModelField {
    std::string_view name; ///< as ForEachField has it
    Field field;
};

constexpr ModelField kModelFields[] = {
    {"name", Field::kName},
    {"comment", Field::kComment},
    {"description", Field::kDescription},
    {"source", Field::kSource},
    {"symbol", Field::kSymbol},
    {"type", Field::kType},
    {"magneticVariation", Field::kMagneticVariation},
    {"geoidHeight", Field::kGeoidHeight},
    {"fix", Field::kFix},
    {"routePointType", Field::kRoutePointType},
    {"symbolNumber", Field::kSymbolNumber},
    {"guid", Field::kGuid},
};

struct Sensor {
    Field field;
    std::optional<double> GpxSensors::*value;
};

constexpr Sensor kSensors[] = {
    {Field::kSpeed, &GpxSensors::speed},
    {Field::kCourse, &GpxSensors::course},
    {Field::kHeartRate, &GpxSensors::heartRate},
    {Field::kCadence, &GpxSensors::cadence},
    {Field::kTemperature, &GpxSensors::temperature},
    {Field::kWaterTemperature, &GpxSensors::waterTemperature},
    {Field::kPower, &GpxSensors::power},
    {Field::kDepth, &GpxSensors::depth},
};

void AddModelValue(Field field, const PointValue& value, Properties& properties) {
    if (const auto* text = std::get_if<const icu::UnicodeString*>(&value))
        properties.Add(field, **text);
    else if (const double* number = std::get_if<double>(&value))
        properties.Add(field, *number);
    else if (const std::int32_t* count = std::get_if<std::int32_t>(&value))
        properties.Add(field, static_cast<double>(*count));
    else if (const auto* word = std::get_if<std::string_view>(&value))
        properties.Add(field, icu::UnicodeString::fromUTF8(*word));
}

/// \return how many of the values are from the vendor's extensions
std::uint64_t TakeModel(const GpxPoint& point, Properties& properties) {
    std::uint64_t ofVendor = 0;
    ForEachField(point, [&](std::string_view name, const PointValue& value) {
        for (const ModelField& field : kModelFields)
            if (field.name == name) {
                AddModelValue(field.field, value, properties);
                ofVendor += field.field == Field::kRoutePointType || field.field == Field::kSymbolNumber ||
                                    field.field == Field::kGuid
                                ? 1
                                : 0;
            }
    });
    return ofVendor;
}

/// \return how many sensors there are
std::uint64_t TakeSensors(const GpxElement& point, Properties& properties) {
    std::uint64_t count = 0;
    const GpxSensors sensors = GpxPointDetails(point).GetSensors();
    for (const Sensor& sensor : kSensors)
        if (const std::optional<double>& value = sensors.*sensor.value) {
            properties.Add(sensor.field, *value);
            ++count;
        }
    return count;
}

bool IsPositionPart(std::string_view name) {
    return name == "ele" || name == "time";
}

/// The elements of a point, looked at once.
class PointElements {
public:
    explicit PointElements(const GpxPoint& point) : point_(point), element_(point.GetElement()) {}

    void Take(Properties& properties, LeftOut& missing);

private:
    void Look(Properties& own);
    void TakeOwn(const GpxElement& child, Properties& own);
    void TakeCache(Properties& properties, LeftOut& missing);

    const GpxPoint& point_;
    GpxElement element_;
    std::uint64_t foreignValues_ =
        0; ///< in elements that are not taken, or as sensors, and in all extensions
    bool hasOwn_ = false;
    bool hasLink_ = false;
    bool hasMovement_ = false;
    bool hasForeign_ = false;
};

void PointElements::Take(Properties& properties, LeftOut& missing) {
    Properties own;
    Look(own);
    std::uint64_t known = 0;
    if (hasOwn_ || point_.ContainsExtensions())
        known += TakeModel(point_, properties);
    for (const Property& property : own)
        properties.Add(property.field, property.value);
    if (hasLink_)
        properties.Add(Field::kLinks, GpxPointDetails(element_).GetLinks());
    if (hasForeign_ || hasMovement_)
        known += TakeSensors(element_, properties);
    if (hasForeign_ && point_.GetPointType() == kGpxWaypoint)
        TakeCache(properties, missing);
    missing.extensions += foreignValues_ > known ? foreignValues_ - known : 0;
}

/// \param own gets what the model has no member for
void PointElements::Look(Properties& own) {
    std::string_view nameSpace;
    for (const GpxElement& child : element_.GetChildren()) {
        const std::string_view name = child.GetName();
        if (IsPositionPart(name))
            continue;
        if (name != "extensions" && nameSpace.empty())
            nameSpace = element_.GetNamespace();
        if (IsForeign(child, nameSpace)) {
            hasForeign_ = true;
            foreignValues_ += CountValues(child);
        } else {
            hasOwn_ = true;
            TakeOwn(child, own);
        }
    }
}

void PointElements::TakeOwn(const GpxElement& child, Properties& own) {
    const std::string_view name = child.GetName();
    hasLink_ = hasLink_ || name == "link" || name == "url";
    hasMovement_ = hasMovement_ || name == "speed" || name == "course";
    const bool isTaken =
        TakeElement(child, kFields, own) ||
        std::find(std::begin(kTakenOtherwise), std::end(kTakenOtherwise), name) != std::end(kTakenOtherwise);
    foreignValues_ += isTaken ? 0 : CountValues(child);
}

/// A geocache has its own count of what is not taken.
void PointElements::TakeCache(Properties& properties, LeftOut& missing) {
    const GpxElement cache = GpxCacheDetails::FindCache(element_);
    if (!cache)
        return;
    foreignValues_ -= CountValues(cache);
    TakeGeocache(cache, properties, missing);
}

} // namespace

void TakePoint(const GpxPoint& point, Properties& properties, LeftOut& missing) {
    PointElements(point).Take(properties, missing);
}

bool HasMoreThanPosition(const GpxPoint& point) {
    for (const GpxElement& child : point.GetElement().GetChildren())
        if (!IsPositionPart(child.GetName()))
            return true;
    return false;
}

void CountUnwritable(const GpxPoint& point, LeftOut& missing) {
    double value = 0.0;
    if (point.GetElevation(value) && !std::isfinite(value))
        ++missing.numbers;
    if (point.GetTime(value) && !IsWritableTime(value))
        ++missing.numbers;
}

} // namespace vexagpx
