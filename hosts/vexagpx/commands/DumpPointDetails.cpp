// SPDX-License-Identifier: MIT
#include <vexagpx/commands/DumpPointDetails.h>

#include <vexagpx/commands/ElementJson.h>
#include <vexagpx/commands/LinkJson.h>
#include <vexagpx/output/OptionalMembers.h>

#include <vexaTransferLib/GpxExtensions.h>
#include <vexaTransferLib/GpxPointDetails.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <cstddef>
#include <iterator>
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

/// A member and the elements that its value may be in, in lower case.
struct Value {
    std::string_view key;
    WriteValue write;
    std::array<std::string_view, 4> elements;
};

using Details = GpxPointDetails;

constexpr Value kValues[] = {
    {"satellites", WriteResult<&Details::GetSatelliteCount>, {"sat"}},
    {"hdop", WriteResult<&Details::GetHorizontalDilution>, {"hdop"}},
    {"vdop", WriteResult<&Details::GetVerticalDilution>, {"vdop"}},
    {"pdop", WriteResult<&Details::GetPositionDilution>, {"pdop"}},
    {"ageOfDgpsData", WriteResult<&Details::GetDgpsAge>, {"ageofdgpsdata"}},
    {"dgpsId", WriteResult<&Details::GetDgpsStation>, {"dgpsid"}},
    {"speed", WriteResult<&Details::GetSpeed>, {"speed"}},
    {"course", WriteResult<&Details::GetCourse>, {"course", "bearing"}},
    {"heartRate", WriteResult<&Details::GetHeartRate>, {"hr", "heartrate", "heart_rate", "heartratebpm"}},
    {"cadence", WriteResult<&Details::GetCadence>, {"cad", "cadence", "runcadence"}},
    {"temperature", WriteResult<&Details::GetTemperature>, {"atemp", "temp", "temperature"}},
    {"waterTemperature", WriteResult<&Details::GetWaterTemperature>, {"wtemp"}},
    {"power", WriteResult<&Details::GetPower>, {"power", "powerinwatts", "watts"}},
    {"depth", WriteResult<&Details::GetDepth>, {"depth"}},
};

constexpr std::size_t kValueCount = std::size(kValues);

/// How deep in `extensions` sensor values are.
constexpr int kSensorLevels = 4;

bool EqualsLowerCase(std::string_view name, std::string_view lowerCase) {
    return name.size() == lowerCase.size() &&
           std::equal(name.begin(), name.end(), lowerCase.begin(), [](char left, char right) {
               return left == right || (left >= 'A' && left <= 'Z' && left - 'A' + 'a' == right);
           });
}

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
    /// \param index in kValues
    bool MayHave(std::size_t index) const { return values_[index]; }

private:
    void Add(const GpxElement& child, std::string_view nameSpace);
    void AddValues(std::string_view name);
    void AddInner(const GpxElement& parent, int levels);

    std::bitset<kValueCount> values_;
    bool hasLink_ = false;
    bool hasFix_ = false;
    bool hasVariation_ = false;
    bool mayHaveForeign_ = false;
};

void Contents::Add(const GpxElement& child, std::string_view nameSpace) {
    const std::string_view name = child.GetName();
    if (name == "ele" || name == "time")
        mayHaveForeign_ |= child.GetNamespace() != nameSpace;
    else if (name == "extensions" || child.GetNamespace() != nameSpace) {
        mayHaveForeign_ = true;
        AddValues(name);
        AddInner(child, kSensorLevels);
    } else {
        hasLink_ |= name == "link" || name == "url";
        hasFix_ |= name == "fix";
        hasVariation_ |= name == "magvar";
        AddValues(name);
    }
}

void Contents::AddValues(std::string_view name) {
    for (std::size_t i = 0; i < kValueCount; ++i)
        for (const std::string_view element : kValues[i].elements)
            if (!element.empty() && EqualsLowerCase(name, element))
                values_.set(i);
}

void Contents::AddInner(const GpxElement& parent, int levels) {
    for (const GpxElement& child : parent.GetChildren()) {
        AddValues(child.GetName());
        if (levels > 1)
            AddInner(child, levels - 1);
    }
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
        if (contents.MayHave(i))
            kValues[i].write(kValues[i].key, details, json);
    if (contents.HasLink())
        WriteLinks(json, details.GetLinks());
    if (contents.MayHaveForeign()) {
        std::vector<GpxElement> foreign = ForeignElements(element);
        foreign.erase(std::remove(foreign.begin(), foreign.end(), geocache), foreign.end());
        ElementJson(json).Write("extensions", foreign);
    }
}

} // namespace vexagpx
