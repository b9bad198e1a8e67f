// SPDX-License-Identifier: MIT
#include <vexagpx/commands/DumpPointDetails.h>

#include <vexagpx/commands/ElementJson.h>
#include <vexagpx/commands/LinkJson.h>
#include <vexagpx/output/OptionalMembers.h>

#include <vexaTransferLib/GpxExtensions.h>
#include <vexaTransferLib/GpxPointDetails.h>

#include <algorithm>
#include <bitset>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

using WriteValue = void (*)(std::string_view key, const GpxPointDetails& details, JsonWriter& json);

template <auto get>
void WriteResult(std::string_view key, const GpxPointDetails& details, JsonWriter& json) {
    MemberIfAny(json, key, (details.*get)());
}

using Details = GpxPointDetails;

/// A member and the element of GPX that it is written for.
struct Value {
    std::string_view key;
    std::string_view element;
    WriteValue write;
};

constexpr Value kValues[] = {
    {"satellites", "sat", WriteResult<&Details::GetSatelliteCount>},
    {"hdop", "hdop", WriteResult<&Details::GetHorizontalDilution>},
    {"vdop", "vdop", WriteResult<&Details::GetVerticalDilution>},
    {"pdop", "pdop", WriteResult<&Details::GetPositionDilution>},
    {"ageOfDgpsData", "ageofdgpsdata", WriteResult<&Details::GetDgpsAge>},
    {"dgpsId", "dgpsid", WriteResult<&Details::GetDgpsStation>},
};

constexpr std::size_t kValueCount = std::size(kValues);

struct Sensor {
    std::string_view key;
    std::optional<double> GpxSensors::*value;
};

constexpr Sensor kSensors[] = {
    {"speed", &GpxSensors::speed},
    {"course", &GpxSensors::course},
    {"heartRate", &GpxSensors::heartRate},
    {"cadence", &GpxSensors::cadence},
    {"temperature", &GpxSensors::temperature},
    {"waterTemperature", &GpxSensors::waterTemperature},
    {"power", &GpxSensors::power},
    {"depth", &GpxSensors::depth},
};

/// What there is in a point, found in one pass over its elements.
class Contents {
public:
    explicit Contents(const GpxElement& point) {
        const std::string_view nameSpace = point.GetNamespace();
        for (const GpxElement& child : point.GetChildren())
            Add(child, nameSpace);
    }

    bool HasLink() const { return hasLink_; }
    bool HasFix() const { return hasFix_; }
    bool HasVariation() const { return hasVariation_; }
    bool MayHaveForeign() const { return mayHaveForeign_; }
    bool MayHaveSensors() const { return mayHaveForeign_ || hasMovement_; }
    /// \param index in kValues
    bool Has(std::size_t index) const { return values_[index]; }

private:
    void Add(const GpxElement& child, std::string_view nameSpace);
    void AddOwn(std::string_view name);

    std::bitset<kValueCount> values_;
    bool hasLink_ = false;
    bool hasFix_ = false;
    bool hasVariation_ = false;
    bool hasMovement_ = false;
    bool mayHaveForeign_ = false;
};

void Contents::Add(const GpxElement& child, std::string_view nameSpace) {
    const std::string_view name = child.GetName();
    if (name == "extensions" || child.GetNamespace() != nameSpace)
        mayHaveForeign_ = true;
    else if (name != "ele" && name != "time")
        AddOwn(name);
}

void Contents::AddOwn(std::string_view name) {
    hasLink_ |= name == "link" || name == "url";
    hasFix_ |= name == "fix";
    hasVariation_ |= name == "magvar";
    hasMovement_ |= name == "speed" || name == "course";
    for (std::size_t i = 0; i < kValueCount; ++i)
        if (name == kValues[i].element)
            values_.set(i);
}

void WriteSensors(const GpxSensors& sensors, JsonWriter& json) {
    for (const Sensor& sensor : kSensors)
        MemberIfAny(json, sensor.key, sensors.*sensor.value);
}

/// Values that the model has only if it knows them.
void WriteUnknownToModel(const GpxPoint& point, const GpxPointDetails& details, const Contents& contents,
                         JsonWriter& json) {
    double variation;
    if (contents.HasVariation() && !point.GetMagneticVariation(variation))
        MemberIfAny(json, "magneticVariation", details.GetMagneticVariation());
    GpxFix fix;
    if (contents.HasFix() && !point.GetFix(fix))
        MemberIfAny(json, "fix", details.GetFix());
    TarvikRoutePointType type;
    if (contents.MayHaveForeign() && point.GetPointType() == kGpxRoutePoint &&
        !point.GetTarvikRoutePointType(type))
        MemberIfAny(json, "routePointType", details.GetRoutePointType());
}

} // namespace

void WritePointDetails(const GpxPoint& point, const GpxElement& geocache, JsonWriter& json) {
    const GpxElement element = point.GetElement();
    if (!element)
        return;
    const Contents contents(element);
    const GpxPointDetails details(element);
    WriteUnknownToModel(point, details, contents, json);
    for (std::size_t i = 0; i < kValueCount; ++i)
        if (contents.Has(i))
            kValues[i].write(kValues[i].key, details, json);
    if (contents.MayHaveSensors())
        WriteSensors(details.GetSensors(), json);
    if (contents.HasLink())
        WriteLinks(json, details.GetLinks());
    if (contents.MayHaveForeign()) {
        std::vector<GpxElement> foreign = ForeignElements(element);
        foreign.erase(std::remove(foreign.begin(), foreign.end(), geocache), foreign.end());
        ElementJson(json).Write("extensions", foreign);
    }
}

} // namespace vexagpx
