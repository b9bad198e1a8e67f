// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxGroundspeakCache.h>
#include <vexaTransferLib/complete/CompleteContext.h>
#include <vexaTransferLib/model/ChildScan.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace vexaTransferLib::complete {

// One function for each kind of element. Each reads what a person would call readable, and leaves the rest where it is,
// in the source. It returns the place after the element; null when the caller is to skip it.

/// Reads the root's children into an empty document.
void ReadDocument(CompleteContext& context, GpxDocument& document);

/// Reads `wpt`, `rtept` or `trkpt` and appends the point. Appends none and returns null when the element has no
/// position that a point can have; that is reported.
const char* ReadPoint(CompleteContext& context, const ScannedChild& element, GpxPointType type,
                      std::vector<GpxPoint>& points);

const char* ReadRoute(CompleteContext& context, const ScannedChild& element, GpxDocument& document);
const char* ReadTrack(CompleteContext& context, const ScannedChild& element, GpxDocument& document);

/// Reads a `cache`, with its texts as they stand.
const char* ReadGeocache(CompleteContext& context, const ScannedChild& element, GpxGroundspeakCache& cache);
/// Reads a `log` and appends it to those of the geocache.
const char* ReadLog(CompleteContext& context, const ScannedChild& element, GpxGroundspeakCache& cache);

/// Reads the vendor's elements in the `extensions` of a point.
const char* ReadPointExtensions(CompleteContext& context, const ScannedChild& element, GpxPoint& point);

/// Reads one of the vendor's elements that is directly in a point, as GPX 1.0 has it.
const char* ReadVendorElement(CompleteContext& context, const ScannedChild& element, GpxPoint& point);

/// The link of a point or a track, while its elements are read: `link` of GPX 1.1, `url` and `urlname` of GPX 1.0.
struct LinkParts {
    icu::UnicodeString address;
    icu::UnicodeString text;
    icu::UnicodeString type;
    GpxElement element;
    bool isLink = false; ///< the address is that of a `link`

    const char* ReadLink(CompleteContext& context, const ScannedChild& link);
    /// Reads one of these three elements; null for any other.
    const char* Read(CompleteContext& context, const ScannedChild& child);
    /// Gives the link to an object, if there is one.
    template <class Object>
    void GiveTo(Object& object) const {
        if (!address.isEmpty())
            object.SetURL(Made());
    }

private:
    GpxUrl Made() const;
};

/// What routes and tracks have but points.
struct PathParts {
    icu::UnicodeString name;
    icu::UnicodeString description;
    icu::UnicodeString source;
    icu::UnicodeString type;
    LinkParts link;
};

/// Reads one of these elements; null for any other.
const char* ReadPathChild(CompleteContext& context, const ScannedChild& child, PathParts& parts);

/// \{
/// Reads one of the vendor's elements that is directly in a route or a track, as GPX 1.0 has it.
const char* ReadRouteVendorElement(CompleteContext& context, const ScannedChild& element, std::size_t& type);
const char* ReadTrackVendorElement(CompleteContext& context, const ScannedChild& element, GpxTrack& track);
/// \}

/// Reads the vendor's elements in the `extensions` of a route.
/// \param type the route type's number; unchanged when there is none
const char* ReadRouteExtensions(CompleteContext& context, const ScannedChild& extensions, std::size_t& type);
const char* ReadTrackExtensions(CompleteContext& context, const ScannedChild& extensions, GpxTrack& track);

/// The attributes that give a point its position.
struct Position {
    std::optional<double> latitude;
    std::optional<double> longitude;
    bool hasBlanks = false;
};
Position PositionOf(const ScannedTag& tag);

} // namespace vexaTransferLib::complete
