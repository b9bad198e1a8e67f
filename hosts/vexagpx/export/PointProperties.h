// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/export/LeftOut.h>
#include <vexagpx/export/Properties.h>

#include <vexaTransferLib/GpxPoint.h>

namespace vexagpx {

/// Adds what a point has beside position, height and time; for a point that has nothing else this is one look at its
/// elements.
/// \param missing gets the numbers of what is not added
void TakePoint(const vexaTransferLib::GpxPoint& point, Properties& properties, LeftOut& missing);

/// Whether the point has anything that TakePoint adds or counts.
bool HasMoreThanPosition(const vexaTransferLib::GpxPoint& point);

/// Counts a height and a time that PositionOf leaves out.
void CountUnwritable(const vexaTransferLib::GpxPoint& point, LeftOut& missing);

} // namespace vexagpx
