// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/JsonWriter.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>

namespace vexagpx {

// Each function writes what an object of a completely read document has beside the model, as members of the current
// JSON object. Of an object of any other document they write nothing.

void WriteDocumentDetails(const vexaTransferLib::GpxDocument& document, JsonWriter& json);
void WriteRouteDetails(const vexaTransferLib::GpxRoute& route, JsonWriter& json);
void WriteTrackDetails(const vexaTransferLib::GpxTrack& track, JsonWriter& json);

} // namespace vexagpx
