// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxGroundspeakCache.h>
#include <vexaTransferLib/writer/TextSink.h>

namespace vexaTransferLib::writer {

/// Appends the Groundspeak geocache of a waypoint. Its lines end in LF.
void WriteGeocache(TextSink& sink, const GpxGroundspeakCache& cache);

} // namespace vexaTransferLib::writer
