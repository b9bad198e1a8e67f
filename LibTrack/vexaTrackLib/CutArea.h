// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// A part of the world or a span of time, to cut it out of documents.

#include <common/Export.h>
#include <vexaTrackLib/MapProjection.h>
#include <vexaTransferLib/GpxMetadata.h>

#include <optional>

namespace vexaTransferLib {
class GpxPoint;
} // namespace vexaTransferLib

namespace vexaTrackLib {

/// A part of the world, a span of time, or both: then a point must lie in both. Values; const operations may run on
/// several threads at once. Nothing is thrown but what is said.
///
///     CutArea home = CutArea::Around(46.95, 7.45, 500.0);
///     home.SetSpan(CutArea::Span{from, std::nullopt});
class VEXATRANSFERLIB_API CutArea {
public:
    /// In milliseconds since 1970-01-01T00:00:00 UTC, both included; without one of them it has no such end.
    struct Span {
        std::optional<double> from; ///< the first
        std::optional<double> to;   ///< the last
    };

    /// Everywhere.
    CutArea() = default;
    /// A circle with its edge.
    /// \param latitude, longitude the middle, in degrees
    /// \param radius in metres
    /// \throws dbc::precondition_error "The place must be a latitude from -90 to 90 and a longitude from -180 to 180.",
    ///         "The radius must be a number of metres above 0."
    static CutArea Around(double latitude, double longitude, double radius);
    /// A box with its edges. It crosses the 180th meridian when the western edge is above the eastern one.
    /// \throws dbc::precondition_error "The box must have latitudes from -90 to 90, the southern one first, and
    ///         longitudes from -180 to 180."
    static CutArea Box(const vexaTransferLib::GpxBounds& box);

    /// Only what has a time in this span is in it, too.
    void SetSpan(const Span& span) { span_ = span; }

    /// True for a circle or a box.
    bool HasPlaces() const { return circle_ || box_; }
    /// True when a point needs a time to be in it.
    bool HasSpan() const { return span_.has_value(); }

    /// Whether a point is in it.
    bool Contains(const vexaTransferLib::GpxPoint& point) const;
    /// Whether a place is in it; false when it is everywhere.
    /// \param latitude, longitude in degrees, any numbers
    bool ContainsPlace(double latitude, double longitude) const;
    /// Whether the shortest line between two places passes through it; false when it is everywhere. On lines that are
    /// longer than 300 km it may be wrong by a hundredth of their length.
    bool Crosses(double latitude1, double longitude1, double latitude2, double longitude2) const;

private:
    struct Circle {
        double latitude;
        double longitude;
        double radius;
        MapProjection map;
    };

    VEXATRANSFERLIB_LOCAL bool CrossesCircle(double latitude1, double longitude1, double latitude2,
                                             double longitude2) const;
    VEXATRANSFERLIB_LOCAL bool CrossesBox(double latitude1, double longitude1, double latitude2,
                                          double longitude2) const;

    std::optional<Circle> circle_;
    std::optional<vexaTransferLib::GpxBounds> box_;
    std::optional<Span> span_;
};

} // namespace vexaTrackLib
