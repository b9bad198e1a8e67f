// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>

namespace vexaTransferLib::reader {

/// Reads a `wpt`, `rtept` or `trkpt`; see GpxParser::ParsePointNode.
GpxPoint ReadPoint(ReadContext& context, const GpxVersion& version, GpxPointType type, const NodeView& node);

} // namespace vexaTransferLib::reader
