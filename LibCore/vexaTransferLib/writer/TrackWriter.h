// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxTrack.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/writer/TextSink.h>

namespace vexaTransferLib::writer {

/// Appends a `trk`; see GpxTrack::AppendToString.
void WriteTrack(TextSink& sink, const GpxVersion& version, const GpxTrack& track);

} // namespace vexaTransferLib::writer
