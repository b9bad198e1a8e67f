// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxPointDetails.h>

#include <vexaTransferLib/model/ChildScan.h>
#include <vexaTransferLib/model/ElementFields.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/ValueText.h>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace vexaTransferLib {

namespace {

std::optional<double> NumberOfChild(const GpxElement& element, const text::ElementName& name) {
    return FindGpxChild(element, name).GetNumber();
}

struct SensorName {
    std::string_view name;
    GpxSensor sensor;
};

// The names of each quantity in all the formats that have it.
constexpr SensorName kSensorNames[] = {
    {"hr", GpxSensor::kHeartRate},
    {"heartrate", GpxSensor::kHeartRate},
    {"heart_rate", GpxSensor::kHeartRate},
    {"heartratebpm", GpxSensor::kHeartRate},
    {"cad", GpxSensor::kCadence},
    {"cadence", GpxSensor::kCadence},
    {"runcadence", GpxSensor::kCadence},
    {"atemp", GpxSensor::kTemperature},
    {"temp", GpxSensor::kTemperature},
    {"temperature", GpxSensor::kTemperature},
    {"wtemp", GpxSensor::kWaterTemperature},
    {"power", GpxSensor::kPower},
    {"powerinwatts", GpxSensor::kPower},
    {"watts", GpxSensor::kPower},
    {"speed", GpxSensor::kSpeed},
    {"course", GpxSensor::kCourse},
    {"bearing", GpxSensor::kCourse},
    {"depth", GpxSensor::kDepth},
};

constexpr int kSensorLevels = 4;

// In the order of the enumeration.
constexpr std::optional<double> GpxSensors::*kSensorValues[] = {
    &GpxSensors::heartRate, &GpxSensors::cadence, &GpxSensors::temperature, &GpxSensors::waterTemperature,
    &GpxSensors::power,     &GpxSensors::speed,   &GpxSensors::course,      &GpxSensors::depth};

// Walks through a point once and calls `take(sensor, element)` for each element with the name of a quantity.
template <class Take>
class SensorWalk {
public:
    SensorWalk(const SourceText& source, Take take) : source_(source), take_(std::move(take)) {}

    void Run(std::uint64_t point) {
        VisitChildren(source_.At(point), [this](const char* child) {
            if (!text::IsGpxNamespace(ElementAt(child).GetNamespace()))
                return Visit(child, kSensorLevels);
            // The element itself is a level above its children.
            const bool isExtensions = NameAt(child) == gpx::kExtensions.Local();
            return Visit(child, isExtensions ? kSensorLevels + 1 : 1);
        });
    }

private:
    // Takes the children that are but a short text, whose namespace does not matter, and calls `visit` with the start
    // of each other one. Returns the place after the parent, as `visit` does for the child.
    template <class VisitOther>
    const char* VisitChildren(const char* parent, VisitOther visit) {
        const ScannedTag parentTag = ScanTag(parent);
        if (parentTag.isEmpty)
            return parentTag.end;
        for (const char* at = parentTag.end;;) {
            while (*at != '<')
                ++at;
            if (IsStartTag(at)) {
                const ScannedTag tag = ScanTag(at);
                const ScannedLeaf leaf = ScanLeaf(tag, at);
                if (leaf.isSimple)
                    TakeElement(LocalNameOf(tag.name), at);
                at = leaf.isSimple ? leaf.end : visit(at);
                continue;
            }
            const ScannedPart part = ScanPart(at);
            at = part.end;
            if (part.kind == ScannedPart::Kind::kEnd)
                return at;
        }
    }

    // The element, and what is in it as deep as the levels say.
    const char* Visit(const char* element, int levels) {
        // A geocache has long texts, and values of no sensor.
        if (IsGroundspeakElement(ElementAt(element), groundspeak::kCache))
            return SkipElement(element);
        TakeElement(NameAt(element), element);
        if (levels == 1)
            return SkipElement(element);
        return VisitChildren(element, [this, levels](const char* child) { return Visit(child, levels - 1); });
    }

    void TakeElement(std::string_view name, const char* element) {
        for (const SensorName& sensor : kSensorNames)
            if (text::EqualsIgnoringCase(sensor.name, name))
                take_(sensor.sensor, ElementAt(element));
    }
    GpxElement ElementAt(const char* begin) const {
        return GpxModelAccess::MakeElement(&source_, source_.PlaceOf(begin));
    }
    static std::string_view NameAt(const char* begin) { return LocalNameOf(ScanTag(begin).name); }

    const SourceText& source_;
    Take take_;
};

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

// Of each quantity the first number counts.
GpxSensors GpxPointDetails::GetSensors() const {
    GpxSensors sensors;
    const auto take = [&sensors](GpxSensor sensor, const GpxElement& element) {
        std::optional<double>& value = sensors.*kSensorValues[static_cast<std::size_t>(sensor)];
        if (!value)
            value = element.GetNumber();
    };
    if (const SourceText* const source = GpxModelAccess::GetSource(GetElement()))
        SensorWalk(*source, take).Run(GpxModelAccess::GetPlace(GetElement()));
    return sensors;
}

std::vector<GpxSensorElement> GpxPointDetails::GetSensorElements() const {
    std::vector<GpxSensorElement> elements;
    const auto take = [&elements](GpxSensor sensor, const GpxElement& element) {
        elements.push_back({sensor, element});
    };
    if (const SourceText* const source = GpxModelAccess::GetSource(GetElement()))
        SensorWalk(*source, take).Run(GpxModelAccess::GetPlace(GetElement()));
    return elements;
}

std::optional<double> GpxPointDetails::GetHeartRate() const {
    return GetSensors().heartRate;
}

std::optional<double> GpxPointDetails::GetCadence() const {
    return GetSensors().cadence;
}

std::optional<double> GpxPointDetails::GetTemperature() const {
    return GetSensors().temperature;
}

std::optional<double> GpxPointDetails::GetWaterTemperature() const {
    return GetSensors().waterTemperature;
}

std::optional<double> GpxPointDetails::GetPower() const {
    return GetSensors().power;
}

std::optional<double> GpxPointDetails::GetSpeed() const {
    return GetSensors().speed;
}

std::optional<double> GpxPointDetails::GetCourse() const {
    return GetSensors().course;
}

std::optional<double> GpxPointDetails::GetDepth() const {
    return GetSensors().depth;
}

} // namespace vexaTransferLib
