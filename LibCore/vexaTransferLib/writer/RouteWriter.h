// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/writer/TextSink.h>

namespace vexaTransferLib::writer {

/// Appends a `rte`; see GpxRoute::AppendToString.
void WriteRoute(TextSink& sink, const GpxVersion& version, const GpxRoute& route);

} // namespace vexaTransferLib::writer
