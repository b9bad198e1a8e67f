// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>

namespace vexaTransferLib::reader {

// The vendor's own elements. The readers of the two types require the vendor's namespace. The others accept
// any namespace, because existing files declare another namespace for these elements, or none.

/// Reads the last recognised type among the children. False, with `type` unchanged, when there is none.
bool ReadRouteType(ReadContext& context, const NodeView& extensions, TarvikRouteType& type);
bool ReadRoutePointType(ReadContext& context, const NodeView& extensions, TarvikRoutePointType& type);

/// Reads form attributes, symbol number and GUID of a waypoint. Geocaches have a reader of their own.
void ReadWaypointData(ReadContext& context, FieldSources& sources, const NodeView& extensions,
                      GpxPoint& point);
/// Reads the colour of a track; false when there is none.
bool ReadTrackData(ReadContext& context, const NodeView& extensions, GpxTrack& track);
/// Reads the vendor's metadata of a document, into two new records. True when there was any.
bool ReadDocumentData(ReadContext& context, const NodeView& extensions, GpxDocument& document);

} // namespace vexaTransferLib::reader
