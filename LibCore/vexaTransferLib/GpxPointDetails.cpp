// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxPointDetails.h>

#include <vexaTransferLib/model/ElementFields.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/ValueText.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace vexaTransferLib {

namespace {

std::optional<double> NumberOfChild(const GpxElement& element, const text::ElementName& name) {
    return FindGpxChild(element, name).GetNumber();
}

// The names of a quantity, of all the formats that have it.
struct SensorNames {
    const std::string_view* begin;
    const std::string_view* end;

    bool Contain(std::string_view wanted) const {
        return std::any_of(begin, end,
                           [&](std::string_view name) { return text::EqualsIgnoringCase(name, wanted); });
    }
};

template <std::size_t Size>
constexpr SensorNames NamesOf(const std::string_view (&names)[Size]) {
    return {names, names + Size};
}

constexpr std::string_view kHeartRate[] = {"hr", "heartrate", "heart_rate", "heartratebpm"};
constexpr std::string_view kCadence[] = {"cad", "cadence", "runcadence"};
constexpr std::string_view kTemperature[] = {"atemp", "temp", "temperature"};
constexpr std::string_view kWaterTemperature[] = {"wtemp"};
constexpr std::string_view kPower[] = {"power", "powerinwatts", "watts"};
constexpr std::string_view kSpeed[] = {"speed"};
constexpr std::string_view kCourse[] = {"course", "bearing"};
constexpr std::string_view kDepth[] = {"depth"};

constexpr int kSensorLevels = 4;

// The number of the element or of the first one in it that has one of the names, as deep as the levels say.
std::optional<double> FindSensor(const GpxElement& element, SensorNames names, int levels) {
    // A geocache has long texts, and values of no sensor.
    if (IsGroundspeakElement(element, groundspeak::kCache))
        return std::nullopt;
    if (names.Contain(element.GetName()))
        if (const std::optional<double> number = element.GetNumber())
            return number;
    if (levels > 1)
        for (const GpxElement& child : element.GetChildren())
            if (const std::optional<double> number = FindSensor(child, names, levels - 1))
                return number;
    return std::nullopt;
}

std::optional<double> FindSensor(const GpxElement& point, SensorNames names) {
    for (const GpxElement& child : point.GetChildren()) {
        const bool isGpx = text::IsGpxNamespace(child.GetNamespace());
        // The element itself is a level above its children.
        const int levels = !isGpx                                        ? kSensorLevels
                           : child.GetName() == gpx::kExtensions.Local() ? kSensorLevels + 1
                                                                         : 1;
        if (const std::optional<double> number = FindSensor(child, names, levels))
            return number;
    }
    return std::nullopt;
}

} // namespace

std::optional<double> GpxPointDetails::GetLatitude() const {
    return NumberOf(GetElement(), gpx::kLat);
}

std::optional<double> GpxPointDetails::GetLongitude() const {
    return NumberOf(GetElement(), gpx::kLon);
}

std::optional<double> GpxPointDetails::GetElevation() const {
    return NumberOfChild(GetElement(), gpx::kEle);
}

std::optional<double> GpxPointDetails::GetTime() const {
    return FindGpxChild(GetElement(), gpx::kTime).GetTime();
}

std::optional<double> GpxPointDetails::GetMagneticVariation() const {
    return NumberOfChild(GetElement(), gpx::kMagvar);
}

std::optional<double> GpxPointDetails::GetGeoidHeight() const {
    return NumberOfChild(GetElement(), gpx::kGeoidheight);
}

std::optional<icu::UnicodeString> GpxPointDetails::GetSymbol() const {
    return TextOf(FindGpxChild(GetElement(), gpx::kSym));
}

std::optional<icu::UnicodeString> GpxPointDetails::GetFix() const {
    return TextOf(FindGpxChild(GetElement(), gpx::kFix));
}

std::optional<std::uint64_t> GpxPointDetails::GetSatelliteCount() const {
    return UnsignedOf(FindGpxChild(GetElement(), gpx::kSat));
}

std::optional<double> GpxPointDetails::GetHorizontalDilution() const {
    return NumberOfChild(GetElement(), gpx::kHdop);
}

std::optional<double> GpxPointDetails::GetVerticalDilution() const {
    return NumberOfChild(GetElement(), gpx::kVdop);
}

std::optional<double> GpxPointDetails::GetPositionDilution() const {
    return NumberOfChild(GetElement(), gpx::kPdop);
}

std::optional<double> GpxPointDetails::GetDgpsAge() const {
    return NumberOfChild(GetElement(), gpx::kAgeofdgpsdata);
}

std::optional<std::uint64_t> GpxPointDetails::GetDgpsStation() const {
    return UnsignedOf(FindGpxChild(GetElement(), gpx::kDgpsid));
}

std::optional<std::int32_t> GpxPointDetails::GetSymbolNumber() const {
    return VendorIntegerOf(FindVendorElement(GetElement(), tarvik::kTovasymbol));
}

std::optional<icu::UnicodeString> GpxPointDetails::GetIdentifier() const {
    return TextOf(FindVendorElement(GetElement(), tarvik::kObjectid));
}

std::optional<icu::UnicodeString> GpxPointDetails::GetRoutePointType() const {
    return TextOf(FindVendorElement(GetElement(), tarvik::kRoutePointType));
}

std::vector<GpxFormAttribute> GpxPointDetails::GetFormAttributes() const {
    std::vector<GpxFormAttribute> attributes;
    for (const GpxElement& child : FindVendorElement(GetElement(), tarvik::kFormdata).GetChildren()) {
        if (child.GetName() != tarvik::kFormstring.Local() || !text::IsTarvikNamespace(child.GetNamespace()))
            continue;
        std::optional<icu::UnicodeString> key = TextOf(child, tarvik::kKey);
        if (key && !key->isEmpty())
            attributes.push_back({std::move(*key), child.GetText(), TimeOf(child, tarvik::kModtime)});
    }
    return attributes;
}

std::optional<double> GpxPointDetails::GetHeartRate() const {
    return FindSensor(GetElement(), NamesOf(kHeartRate));
}

std::optional<double> GpxPointDetails::GetCadence() const {
    return FindSensor(GetElement(), NamesOf(kCadence));
}

std::optional<double> GpxPointDetails::GetTemperature() const {
    return FindSensor(GetElement(), NamesOf(kTemperature));
}

std::optional<double> GpxPointDetails::GetWaterTemperature() const {
    return FindSensor(GetElement(), NamesOf(kWaterTemperature));
}

std::optional<double> GpxPointDetails::GetPower() const {
    return FindSensor(GetElement(), NamesOf(kPower));
}

std::optional<double> GpxPointDetails::GetSpeed() const {
    return FindSensor(GetElement(), NamesOf(kSpeed));
}

std::optional<double> GpxPointDetails::GetCourse() const {
    return FindSensor(GetElement(), NamesOf(kCourse));
}

std::optional<double> GpxPointDetails::GetDepth() const {
    return FindSensor(GetElement(), NamesOf(kDepth));
}

} // namespace vexaTransferLib
