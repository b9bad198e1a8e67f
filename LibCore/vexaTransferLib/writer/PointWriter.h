// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/writer/TextSink.h>

namespace vexaTransferLib::writer {

/// Appends a point as a `wpt`, `rtept` or `trkpt`; see GpxPoint::AppendToString.
void WritePoint(TextSink& sink, const GpxVersion& version, const GpxPoint& point);

} // namespace vexaTransferLib::writer
