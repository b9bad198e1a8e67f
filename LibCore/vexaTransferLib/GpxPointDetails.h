// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What the file has for a point, sensors included.

#include <common/Export.h>
#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxObjectDetails.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace vexaTransferLib {

/// One attribute of a form that was filled in for a point, as the file has it. Plain data.
struct VEXATRANSFERLIB_API GpxFormAttribute {
    icu::UnicodeString key;                 ///< never empty
    icu::UnicodeString value;               ///< may be empty
    std::optional<double> modificationTime; ///< in milliseconds since 1970-01-01T00:00:00 UTC
};

/// What sensors measured at a point; see GpxPointDetails for where each is looked for, and in which unit. Plain data.
struct VEXATRANSFERLIB_API GpxSensors {
    std::optional<double> heartRate;        ///< as GpxPointDetails::GetHeartRate
    std::optional<double> cadence;          ///< as GpxPointDetails::GetCadence
    std::optional<double> temperature;      ///< as GpxPointDetails::GetTemperature
    std::optional<double> waterTemperature; ///< as GpxPointDetails::GetWaterTemperature
    std::optional<double> power;            ///< as GpxPointDetails::GetPower
    std::optional<double> speed;            ///< as GpxPointDetails::GetSpeed
    std::optional<double> course;           ///< as GpxPointDetails::GetCourse
    std::optional<double> depth;            ///< as GpxPointDetails::GetDepth
};

/// What a sensor measures.
enum class GpxSensor : std::uint8_t {
    kHeartRate,        ///< as GpxPointDetails::GetHeartRate
    kCadence,          ///< as GpxPointDetails::GetCadence
    kTemperature,      ///< as GpxPointDetails::GetTemperature
    kWaterTemperature, ///< as GpxPointDetails::GetWaterTemperature
    kPower,            ///< as GpxPointDetails::GetPower
    kSpeed,            ///< as GpxPointDetails::GetSpeed
    kCourse,           ///< as GpxPointDetails::GetCourse
    kDepth             ///< as GpxPointDetails::GetDepth
};

/// An element with the name of a sensor's quantity.
struct VEXATRANSFERLIB_API GpxSensorElement {
    GpxSensor sensor;   ///< by its name
    GpxElement element; ///< whatever is in it
};

/// The values of a `wpt`, `rtept` or `trkpt` element of GPX 1.0 and 1.1, of the vendor's extension, and of sensors,
/// read on demand. What GpxObjectDetails says of values, costs and threads holds here too. Geocaches: see
/// GpxCacheDetails.
///
/// What sensors measured is a matter of extensions, except for the speed and course of GPX 1.0, and devices put it
/// into many of them. So GetHeartRate and the functions after it look for an element by its local name alone, in
/// any namespace, in upper or lower case: among the children of the point, and up to four levels deep in its
/// `extensions` and in its foreign children. The first one in document order whose text is a number counts.
/// Geocaches are left out. The numbers come as they are: some devices write -1 for what they do not know. The units
/// are those of the common extensions; a program that writes another unit under such a name gets its own number
/// back.
///
///     const GpxPointDetails details(point.GetElement());
///     if (const std::optional<double> rate = details.GetHeartRate())
///         Add(*rate);
class VEXATRANSFERLIB_API GpxPointDetails : public GpxObjectDetails {
public:
    /// Of a `wpt`, `rtept` or `trkpt`, whose name is not checked.
    using GpxObjectDetails::GpxObjectDetails;

    /// \{
    /// Degrees, WGS 84, of any size: the range is not checked.
    std::optional<double> GetLatitude() const;
    std::optional<double> GetLongitude() const;
    /// \}
    /// In metres.
    std::optional<double> GetElevation() const;
    /// In milliseconds since 1970-01-01T00:00:00 UTC. A time without a zone counts as UTC.
    std::optional<double> GetTime() const;
    /// In degrees.
    std::optional<double> GetMagneticVariation() const;
    /// The height of the geoid above the WGS 84 ellipsoid, in metres.
    std::optional<double> GetGeoidHeight() const;
    /// The name of the symbol, the text of `sym`.
    std::optional<icu::UnicodeString> GetSymbol() const;

    /// The text of `fix`: "none", "2d", "3d", "dgps", "pps", or whatever the file has there.
    std::optional<icu::UnicodeString> GetFix() const;
    /// The number of satellites that gave the position.
    std::optional<std::uint64_t> GetSatelliteCount() const;
    /// \{
    /// Dilutions of precision, which have no unit: `hdop`, `vdop` and `pdop`.
    std::optional<double> GetHorizontalDilution() const;
    std::optional<double> GetVerticalDilution() const;
    std::optional<double> GetPositionDilution() const;
    /// \}
    /// Seconds since the last update by DGPS.
    std::optional<double> GetDgpsAge() const;
    /// The number of the DGPS station. GPX allows up to 1023, which is not checked.
    std::optional<std::uint64_t> GetDgpsStation() const;

    /// \{
    /// The vendor's values of the point: the number of its symbol, its identifier, and its part in a route
    /// ("start", "stop", "via", "finish", "turn", or whatever the file has there). Of each the last one counts.
    std::optional<std::int32_t> GetSymbolNumber() const;
    std::optional<icu::UnicodeString> GetIdentifier() const;
    std::optional<icu::UnicodeString> GetRoutePointType() const;
    /// \}
    /// The attributes of the vendor's form in the order of the file; those without a key are left out. Of several
    /// forms the last one counts. A key may be there twice; then the last one counts.
    std::vector<GpxFormAttribute> GetFormAttributes() const;

    /// All that follow, found in one walk through the point: for programs that want more than one of many points.
    GpxSensors GetSensors() const;
    /// All elements that could have such a number, in their order, to change them with GpxElementEditor.
    std::vector<GpxSensorElement> GetSensorElements() const;
    /// Beats per minute: `hr`, `heartrate`, `heart_rate`, `HeartRateBpm`.
    std::optional<double> GetHeartRate() const;
    /// Revolutions per minute: `cad`, `cadence`. For running, devices write steps of one foot or of both per minute
    /// there, or into `RunCadence`, which is read too.
    std::optional<double> GetCadence() const;
    /// Of the air, in degrees Celsius: `atemp`, `temp`, `temperature`.
    std::optional<double> GetTemperature() const;
    /// In degrees Celsius: `wtemp`.
    std::optional<double> GetWaterTemperature() const;
    /// In watts: `power`, `PowerInWatts`, `Watts`.
    std::optional<double> GetPower() const;
    /// In metres per second: `speed`.
    std::optional<double> GetSpeed() const;
    /// Over ground, in degrees clockwise from true north: `course`, `bearing`.
    std::optional<double> GetCourse() const;
    /// Below the surface of the water, in metres: `depth`.
    std::optional<double> GetDepth() const;
};

} // namespace vexaTransferLib
