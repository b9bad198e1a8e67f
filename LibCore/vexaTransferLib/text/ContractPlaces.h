// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <common/dbc.h>

namespace vexaTransferLib::text {

/// What a contract report names for a check that runs in another file than the source of the public class on whose
/// behalf it runs: that source, and the line there that says which check it is and where. Each check has its own
/// place.
struct Place {
    const char* source;
    int line;
};

/// \{
/// The checks of common/dbc.h for such a place.
inline void Require(bool holds, const Place& place, const char* message) {
    if (!holds)
        dbc::FailPrecondition(place.source, place.line, message);
}

inline void Ensure(bool holds, const Place& place, const char* message) {
    if (!holds)
        dbc::FailPostcondition(place.source, place.line, message);
}

inline bool SoftCheck(bool holds, const Place& place) noexcept {
    return dbc::SoftCheck(holds, place.source, place.line);
}
/// \}

namespace places {

// GpxUtils.cpp has these.
extern const Place kTextSetter;
extern const Place kLongField;
extern const Place kFraction;
extern const Place kGpxTime;
extern const Place kNumberFormat;

// GpxParser.cpp has these.
extern const Place kGpxVersion;
extern const Place kGpxChildren;
extern const Place kGpxChild;
extern const Place kPointType;
extern const Place kPointLatitude;
extern const Place kPointLongitude;
extern const Place kPointChildren;
extern const Place kPointChild;
extern const Place kLinkHref;
extern const Place kLinkChildren;
extern const Place kLinkChild;
extern const Place kRouteChildren;
extern const Place kRouteChild;
extern const Place kTrackChildren;
extern const Place kTrackChild;
extern const Place kSegmentChildren;
extern const Place kSegmentChild;
extern const Place kExtensionChildren;
extern const Place kExtensionChild;
extern const Place kDocumentExtensions;
extern const Place kVendorExtensions;
extern const Place kElementText;
extern const Place kAttributeText;
extern const Place kGroundspeakNode;

} // namespace places

} // namespace vexaTransferLib::text
