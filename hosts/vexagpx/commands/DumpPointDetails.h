// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/JsonWriter.h>

#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxPoint.h>

namespace vexagpx {

/// Writes what a point of a completely read document has beside the model, sensor values included, as members of the
/// current JSON object. Of any other point it writes nothing.
/// \param geocache the element of the geocache that is written already; a view of nothing when there is none
void WritePointDetails(const vexaTransferLib::GpxPoint& point, const vexaTransferLib::GpxElement& geocache,
                       JsonWriter& json);

} // namespace vexagpx
