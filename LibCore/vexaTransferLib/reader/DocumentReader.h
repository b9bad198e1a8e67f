// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>

namespace vexaTransferLib::reader {

/// Walks the children of the root element; see GpxParser::ParseGpxNode.
void ReadDocument(ReadContext& context, const NodeView& root, GpxDocument& document);

} // namespace vexaTransferLib::reader
