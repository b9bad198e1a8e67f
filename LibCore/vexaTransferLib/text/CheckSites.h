// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <common/dbc.h>

namespace vexaTransferLib::text {

/// The source and the line that a contract report names for a check that runs on behalf of a public class but
/// is in another file than the source of that class. The line is in that source and defines the check's site.
/// Each check has its own site.
struct CheckSite {
    const char* source;
    int line;
};

/// Makes sites of one source: each is the line that calls `Here()`.
///
///     constexpr CheckSiteMaker Here{kGpxParserSource};
///     constinit const CheckSite kGpxVersion = Here();
struct CheckSiteMaker {
    const char* source;

    constexpr CheckSite operator()(int line = __builtin_LINE()) const { return {source, line}; }
};

/// \{
/// The checks of common/dbc.h for such a site.
inline void Require(bool holds, const CheckSite& site, const char* message) {
    if (!holds)
        dbc::FailPrecondition(site.source, site.line, message);
}

inline void Ensure(bool holds, const CheckSite& site, const char* message) {
    if (!holds)
        dbc::FailPostcondition(site.source, site.line, message);
}

inline void Invariant(bool holds, const CheckSite& site, const char* message) {
    if (!holds)
        dbc::FailInvariant(site.source, site.line, message);
}

inline bool SoftCheck(bool holds, const CheckSite& site) noexcept {
    return dbc::SoftCheck(holds, site.source, site.line);
}
/// \}

namespace sites {

// GpxUtils.cpp has these.
extern const CheckSite kTextSetter;
extern const CheckSite kLongField;
extern const CheckSite kFraction;
extern const CheckSite kGpxTime;
extern const CheckSite kNumberFormat;

// The sources of the model have these: GpxUrl.cpp,
extern const CheckSite kLinkVersion;
extern const CheckSite kLinkOutput;
// GpxPoint.cpp,
extern const CheckSite kPointVersion;
extern const CheckSite kPointOutput;
extern const CheckSite kUnknownPointType;
extern const CheckSite kUnknownFix;
extern const CheckSite kUnknownRoutePointType;
// GpxRoute.cpp,
extern const CheckSite kRouteVersion;
extern const CheckSite kRouteOutput;
extern const CheckSite kUnknownRouteType;
// GpxTrack.cpp,
extern const CheckSite kTrackVersion;
extern const CheckSite kTrackOutput;
// GpxDocument.cpp.
extern const CheckSite kDocumentVersion;
extern const CheckSite kApplicationName;
extern const CheckSite kApplicationUrl;
extern const CheckSite kDocumentOutput;
extern const CheckSite kFileCreated;
extern const CheckSite kFileWritten;
extern const CheckSite kFileClosed;

// GpxParser.cpp has these.
extern const CheckSite kGpxVersion;
extern const CheckSite kGpxChildren;
extern const CheckSite kGpxChild;
extern const CheckSite kPointType;
extern const CheckSite kPointLatitude;
extern const CheckSite kPointLongitude;
extern const CheckSite kPointChildren;
extern const CheckSite kPointChild;
extern const CheckSite kLinkHref;
extern const CheckSite kLinkChildren;
extern const CheckSite kLinkChild;
extern const CheckSite kRouteChildren;
extern const CheckSite kRouteChild;
extern const CheckSite kTrackChildren;
extern const CheckSite kTrackChild;
extern const CheckSite kSegmentChildren;
extern const CheckSite kSegmentChild;
extern const CheckSite kExtensionChildren;
extern const CheckSite kExtensionChild;
extern const CheckSite kDocumentExtensions;
extern const CheckSite kVendorExtensions;
extern const CheckSite kElementText;
extern const CheckSite kAttributeText;
extern const CheckSite kGroundspeakNode;

} // namespace sites

} // namespace vexaTransferLib::text
