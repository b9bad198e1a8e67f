// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/reader/Children.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>

#include <memory>

namespace vexaTransferLib {
class GpxDocument;
}

namespace vexaTransferLib::reader {

/// The reader of the children of a `rte`, which appends the route when it finishes.
std::unique_ptr<ChildReader> EnterRoute(ReadContext& context, const GpxVersion& version, const NodeView& node,
                                        GpxDocument& document);

/// Reads a `rte` and appends the route; see GpxParser::ParseRteNode.
void ReadRoute(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxDocument& document);

} // namespace vexaTransferLib::reader
