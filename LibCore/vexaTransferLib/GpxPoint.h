// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// One location of a GPX document: a waypoint, a route point or a track point.

#include <common/Export.h>
#include <common/UnicodeStrUtils.h>
#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxGroundspeakCache.h>
#include <vexaTransferLib/GpxUrl.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/OptionalValue.h>

#include <boost/shared_ptr.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <unicode/unistr.h>

#include <cstdint>
#include <map>
#include <optional>

namespace vexaTransferLib {

/// The kind of a point, which is fixed at construction.
enum GpxPointType : std::uint32_t {
    kGpxWaypoint = 1,   ///< written as `wpt`
    kGpxRoutePoint = 2, ///< written as `rtept`
    kGpxTrackPoint = 3  ///< written as `trkpt`
};

/// How a receiver found the position (`fix`).
enum GpxFix : std::uint32_t {
    kGpxFixNone = 1, ///< "none": the receiver had no fix
    kGpxFix2D = 2,   ///< "2d"
    kGpxFix3D = 3,   ///< "3d"
    kGpxFixDGPS = 4, ///< "dgps"
    kGpxFixPPS = 5   ///< "pps"
};

/// The role of a route point in its route (vendor extension `routePointType`).
enum TarvikRoutePointType : std::uint32_t {
    kTarvikRoutePointStart = 1,  ///< "start"
    kTarvikRoutePointStop = 2,   ///< "stop"
    kTarvikRoutePointVia = 3,    ///< "via"
    kTarvikRoutePointFinish = 4, ///< "finish"
    kTarvikRoutePointTurn = 5    ///< "turn"
};

/// One keyed attribute of a point's form (vendor extension `formstring`). Shared between copies of a point.
struct VEXATRANSFERLIB_API FormData {
    icu::UnicodeString key;   ///< in the spelling that was set last
    icu::UnicodeString value; ///< may be empty
    double modTime = 0.0;     ///< milliseconds since 1970-01-01T00:00:00 UTC; 0 means unknown
};

/// One location, with the standard GPX data, the vendor's extension data and, on a waypoint, a geocache.
///
/// Units: degrees WGS 84 for the position, metres for elevation and geoid height, degrees for the magnetic
/// variation, milliseconds since 1970-01-01T00:00:00 UTC for times.
///
/// The kind is fixed at construction. All values but the position are absent at first; each can be set, replaced and
/// cleared. A getter returns false and leaves its output unchanged when the value is absent. Elevation, geoid height
/// and time may be NaN or infinite, and are then present.
///
/// Copies are deep, except that they share the FormData records; setting a form attribute of one afterwards
/// does not change the other. A moved-from point may only be assigned to or destroyed. An operation that
/// throws leaves the point unchanged. Const operations may run on several threads at once.
///
/// A point takes at most 64 bytes while it has only a position, an elevation, a time, a fix and a route point
/// type. All other values are in one block, which the first of them allocates.
///
///     GpxPoint point(kGpxWaypoint, 47.5, -122.25);
///     point.SetName("Home");
///     point.SetElevation(35.0);
///     document.AddWaypoint(point);
class VEXATRANSFERLIB_API GpxPoint {
public:
    /// Form attributes by key; keys that differ only in case are one key.
    typedef std::map<icu::UnicodeString, boost::shared_ptr<FormData>,
                     UnicodeStrUtils::UnicodeStringCaseInsensitiveComp>
        FormAttributes;

    /// \param latitude -90 to 90, both included
    /// \param longitude -180 (included) to 180; 180 itself is stored as 179.9999998807907, just below
    /// \throws dbc::precondition_error, checked in this order: "The GPX point type is invalid.", "The GPX
    ///         point's latitude is invalid.", "The GPX point's longitude is invalid." (a NaN is invalid)
    GpxPoint(GpxPointType type, double latitude, double longitude);
    /// \{
    /// Copies share the FormData records; a point that was moved from may only be assigned to or destroyed.
    GpxPoint(const GpxPoint& other);
    GpxPoint(GpxPoint&& other) noexcept;
    GpxPoint& operator=(const GpxPoint& other);
    GpxPoint& operator=(GpxPoint&& other) noexcept;
    /// \}
    virtual ~GpxPoint();

    /// Appends the point as one GPX element with its children; lines end in CR LF, those of the geocache in
    /// LF. Extensions are written in version 1.1 only. Form keys and the GUID are written unescaped. Times lose
    /// their fraction of a second, coordinates and the variation are written with 9 decimals, elevation and
    /// geoid height with 6. The text does not depend on any locale.
    /// \throws dbc::precondition_error "GPX points can only be written to version 1.0 or 1.1 files."
    /// \throws dbc::invariant_error "Unable to write an unknown GPX point type.", "Unable to write an unknown
    ///         GPS fix type.", "Unable to write an unknown route point type."; the last two leave in
    ///         \p out the lines that were written before
    /// \throws dbc::postcondition_error "The GPX text is too large to be held in memory."; \p out is then
    ///         bogus
    virtual void AppendToString(const GpxVersion& version, icu::UnicodeString& out) const;

    /// The kind of point.
    GpxPointType GetPointType() const;
    /// The position in degrees.
    void GetPoint(double& latitude, double& longitude) const;
    /// Moves the point; everything else stays. The limits are those of the constructor.
    /// \throws dbc::precondition_error what the constructor throws for a position
    void SetPoint(double latitude, double longitude);

    /// \{
    /// Returns false and leaves the output unchanged when there is no such text.
    bool GetName(icu::UnicodeString& name) const;
    bool GetComment(icu::UnicodeString& comment) const; ///< GPX `cmt`; the reader never fills it
    bool GetDescription(icu::UnicodeString& description) const;
    bool GetSource(icu::UnicodeString& source) const;
    bool GetSymbol(icu::UnicodeString& symbol) const;
    bool GetType(icu::UnicodeString& type) const; ///< GPX `type`: free text, not the kind of point
    /// \}

    /// Each text setter replaces the text and refuses an empty one.
    /// \throws dbc::precondition_error "The GPX point name cannot be empty."
    void SetName(const icu::UnicodeString& name);
    /// \throws dbc::precondition_error "The GPX point comment cannot be empty."
    void SetComment(const icu::UnicodeString& comment);
    /// \throws dbc::precondition_error "The GPX point description cannot be empty."
    void SetDescription(const icu::UnicodeString& description);
    /// \throws dbc::precondition_error "The GPX point source cannot be empty."
    void SetSource(const icu::UnicodeString& source);
    /// \throws dbc::precondition_error "The GPX point symbol cannot be empty."
    void SetSymbol(const icu::UnicodeString& symbol);
    /// \throws dbc::precondition_error "The GPX point type cannot be empty."
    void SetType(const icu::UnicodeString& type);

    /// \{
    /// Returns false and leaves the output unchanged when there is no such value.
    bool GetElevation(double& elevation) const;
    bool GetTime(double& time) const;
    bool GetMagneticVariation(double& variation) const;
    bool GetGeoidHeight(double& height) const;
    bool GetURL(GpxUrl& url) const;
    /// \}

    /// \{
    /// Replaces the value.
    void SetElevation(double elevation);
    void SetTime(double const& time);
    /// \}
    /// \param variation at least 0 and less than 360
    /// \throws dbc::precondition_error "The GPX point's magnetic variation must be greater than or equal to
    ///         zero and less than 360." (a NaN is refused)
    void SetMagneticVariation(double variation);
    /// \{
    /// Replaces the value.
    void SetGeoidHeight(double height);
    void SetURL(const GpxUrl& url);
    /// \}

    /// Returns false and leaves \p fix unchanged when the point has none.
    bool GetFix(GpxFix& fix) const;
    /// \throws dbc::precondition_error "The GPX point's fix type was unknown." outside 1 to 5
    void SetFix(GpxFix fix);

    /// \throws dbc::invariant_error "The route point type is only available for route points."
    bool GetTarvikRoutePointType(TarvikRoutePointType& type) const;
    /// \throws dbc::invariant_error as the getter does, checked first
    /// \throws dbc::precondition_error "The GPX point's route point type was unknown." outside 1 to 5
    void SetTarvikRoutePointType(TarvikRoutePointType type);

    /// \throws dbc::invariant_error "The GPX Groundspeak geocache information is only available for
    ///         waypoints."
    bool GetGroundspeakCache(GpxGroundspeakCache& cache) const;
    /// \throws dbc::invariant_error "The GPX Groundspeak geocache information can only be set on waypoints."
    void SetGroundspeakCache(const GpxGroundspeakCache& cache);

    /// Stores a new record under \p key and removes one whose key differs from it in case at most. The map keeps
    /// the spelling of the key that was stored first, which is the one written; the record has the new spelling.
    /// Key and value may be empty.
    /// \param modTime milliseconds since 1970 UTC; 0 writes none
    void SetFormAttribute(const icu::UnicodeString& key, const icu::UnicodeString& value, double modTime);
    /// Returns the record under \p key, whose case is ignored, or a null pointer when there is none. Takes
    /// logarithmic time in the number of attributes.
    /// The record is the point's own and not a copy, although the point is const: what the caller writes into it
    /// changes this point and every copy of the point that shares the record, and no lock protects it from other
    /// threads. SetFormAttribute stores a new record instead and changes this point only.
    boost::shared_ptr<FormData> GetFormAttribute(const icu::UnicodeString& key) const;

    /// \{
    /// Removes the value, so that its getter returns false. Nothing happens when there is none, or when points of this
    /// kind have no such value. Constant time; what many values of the point share stays allocated.
    void ClearName() noexcept;
    void ClearComment() noexcept;
    void ClearDescription() noexcept;
    void ClearSource() noexcept;
    void ClearSymbol() noexcept;
    void ClearType() noexcept;
    void ClearElevation() noexcept;
    void ClearTime() noexcept;
    void ClearMagneticVariation() noexcept;
    void ClearGeoidHeight() noexcept;
    void ClearURL() noexcept;
    void ClearFix() noexcept;
    void ClearTarvikRoutePointType() noexcept;
    void ClearGroundspeakCache() noexcept;
    void ClearFormAttributes() noexcept;
    /// \}
    /// Removes the form attribute under \p key, whose case is ignored. Returns false when there is none.
    bool ClearFormAttribute(const icu::UnicodeString& key);

    /// \{
    /// Whether the points are of one kind and have equal values: all that can be set, the vendor's symbol number and
    /// the GUID. A NaN equals a NaN, and texts are equal unit by unit. The elements that the points were read from play
    /// no part. Takes as long as the texts.
    VEXATRANSFERLIB_API friend bool operator==(const GpxPoint& left, const GpxPoint& right);
    friend bool operator!=(const GpxPoint& left, const GpxPoint& right) { return !(left == right); }
    /// \}

    /// True when the point has anything for the extensions of GPX 1.1: a route point type, form attributes, a
    /// vendor symbol number above 0, a GUID or a geocache.
    bool ContainsExtensions() const;

    /// The element that the point was read from, if its document was read completely (GpxParser::SetComplete);
    /// otherwise a view of nothing. It shows what was read, whatever was set since.
    GpxElement GetElement() const;

private:
    friend class GpxModelAccess;

    struct RareData {
        std::optional<double> magneticVariation;
        std::optional<double> geoidHeight;
        icu::UnicodeString name;
        icu::UnicodeString comment;
        icu::UnicodeString description;
        icu::UnicodeString source;
        OwnedValue<GpxUrl> url;
        icu::UnicodeString symbol;
        icu::UnicodeString type;
        OwnedValue<GpxGroundspeakCache> geocache;
        FormAttributes formAttributes;
        std::int32_t symbolNumber = 0;
        icu::UnicodeString guid;
    };

    // The one list of a point's values, in the order of the tool's dump. Calls `visit` with the name of each
    // and a function that takes the value out of a point. Called through GpxModelAccess.
    template <class Visitor>
    static void ForEachField(Visitor visit) {
        const auto rare = [&visit](const char* name, auto member) {
            visit(
                name, [member](const GpxPoint& point) -> const auto* {
                    return point.rare_ ? &((*point.rare_).*member) : nullptr;
                });
        };
        visit("latitude", [](const GpxPoint& point) { return &point.latitude_; });
        visit("longitude", [](const GpxPoint& point) { return &point.longitude_; });
        visit("elevation",
              [](const GpxPoint& point) { return point.hasElevation_ != 0 ? &point.elevation_ : nullptr; });
        visit("time", [](const GpxPoint& point) { return point.hasTime_ != 0 ? &point.time_ : nullptr; });
        rare("magneticVariation", &RareData::magneticVariation);
        rare("geoidHeight", &RareData::geoidHeight);
        rare("name", &RareData::name);
        rare("comment", &RareData::comment);
        rare("description", &RareData::description);
        rare("source", &RareData::source);
        rare("url", &RareData::url);
        rare("symbol", &RareData::symbol);
        rare("type", &RareData::type);
        visit("fix", [](const GpxPoint& point) { return Numbered<GpxFix>(point.fix_); });
        visit("routePointType", [](const GpxPoint& point) {
            return Numbered<TarvikRoutePointType>(point.pointType_ == kGpxRoutePoint ? point.routePointType_
                                                                                     : 0);
        });
        rare("symbolNumber", &RareData::symbolNumber);
        rare("guid", &RareData::guid);
        rare("formAttributes", &RareData::formAttributes);
        visit(
            "geocache", [](const GpxPoint& point) -> const auto* {
                return point.rare_ && point.pointType_ == kGpxWaypoint ? &point.rare_->geocache : nullptr;
            });
    }

    template <class Enumeration>
    static std::optional<Enumeration> Numbered(std::uint64_t number) {
        return number != 0 ? std::optional(static_cast<Enumeration>(number)) : std::nullopt;
    }

    VEXATRANSFERLIB_LOCAL static void RequirePosition(double latitude, double longitude);
    VEXATRANSFERLIB_LOCAL static bool IsPosition(double latitude, double longitude);
    VEXATRANSFERLIB_LOCAL RareData& Rare();
    VEXATRANSFERLIB_LOCAL bool GetText(icu::UnicodeString& out, icu::UnicodeString RareData::*field) const;
    VEXATRANSFERLIB_LOCAL void SetText(const char* message, icu::UnicodeString RareData::*field,
                                       const icu::UnicodeString& value);

    double latitude_;
    double longitude_;
    double elevation_ = 0.0;
    double time_ = 0.0;
    OwnedValue<RareData> rare_;
    boost::intrusive_ptr<const SourceText> source_;
    /// Of the element in the source, which can be longer than any memory.
    std::uint64_t place_ : 40;
    std::uint64_t pointType_ : 4;
    std::uint64_t fix_ : 8;
    std::uint64_t routePointType_ : 8;
    std::uint64_t hasElevation_ : 1;
    std::uint64_t hasTime_ : 1;
    std::uint64_t isChanged_ : 1; ///< since it was read completely
};

} // namespace vexaTransferLib
