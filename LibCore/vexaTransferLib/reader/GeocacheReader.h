// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxGroundspeakCache.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>

namespace vexaTransferLib::reader {

// The Groundspeak geocache of a waypoint; see the operations of GpxParser. Nothing here throws on bad input.

/// \param source receives the element of the geocache that was read; may be null
bool ReadGeocacheFromExtensions(ReadContext& context, const NodeView& extensions, GpxGroundspeakCache& cache,
                                NodeView* source = nullptr);
bool ReadGeocache(ReadContext& context, const NodeView& node, GpxGroundspeakCache& cache);
bool ReadGeocacheLogs(ReadContext& context, const NodeView& logs, GpxGroundspeakCache& cache);
bool ReadTravelBugs(ReadContext& context, const NodeView& travelBugs, GpxGroundspeakCache& cache);

} // namespace vexaTransferLib::reader
