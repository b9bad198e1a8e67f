// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>
#include <vexaTransferLib/writer/TextSink.h>

namespace vexaTransferLib::writer {

// The `extensions` elements, which contain the vendor's own elements.

/// Route point type, form attributes, symbol number, GUID and geocache of a point. Appends an empty element when the
/// point has none of them.
void WritePointData(TextSink& sink, const GpxPoint& point);
/// The route type; nothing for a standard route.
/// \throws dbc::invariant_error for a value outside the enumeration, nothing appended
void WriteRouteType(TextSink& sink, const GpxRoute& route);
/// The colour of a track; nothing when there is none.
void WriteTrackData(TextSink& sink, const GpxTrack& track);
/// The metadata records of a document. Appends an empty element when the document has none.
void WriteDocumentData(TextSink& sink, const GpxDocument& document);

} // namespace vexaTransferLib::writer
