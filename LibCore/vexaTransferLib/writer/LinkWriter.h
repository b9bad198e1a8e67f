// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxUrl.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/writer/TextSink.h>

namespace vexaTransferLib::writer {

/// Appends the `url` and `urlname` of GPX 1.0 or the `link` of GPX 1.1; see GpxUrl::AppendToString.
void WriteLink(TextSink& sink, const GpxVersion& version, const GpxUrl& link);

} // namespace vexaTransferLib::writer
