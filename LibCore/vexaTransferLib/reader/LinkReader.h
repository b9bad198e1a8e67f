// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxUrl.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>

namespace vexaTransferLib::reader {

/// Reads a GPX 1.1 `link`; see GpxParser::ParseLinkNode.
void ReadLink(ReadContext& context, const NodeView& node, GpxUrl& link);

} // namespace vexaTransferLib::reader
