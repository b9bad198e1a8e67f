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

// The vendor's own elements. The two type readers want the vendor's namespace; the others go by local name
// alone, because files with other prefixes and none are about.

/// The last recognised type among the children; false, and `type` untouched, when there is none.
bool ReadRouteType(ReadContext& context, const NodeView& extensions, TarvikRouteType& type);
bool ReadRoutePointType(ReadContext& context, const NodeView& extensions, TarvikRoutePointType& type);

/// Form attributes, symbol number and GUID of a waypoint. A geocache is read, and told of, elsewhere.
void ReadWaypointData(ReadContext& context, FieldSources& sources, const NodeView& extensions,
                      GpxPoint& point);
/// Colour of a track; false when there is none.
bool ReadTrackData(ReadContext& context, const NodeView& extensions, GpxTrack& track);
/// The metadata block of a document; both records are replaced by fresh ones. True when
/// there was something in it.
bool ReadDocumentData(ReadContext& context, const NodeView& extensions, GpxDocument& document);

} // namespace vexaTransferLib::reader
