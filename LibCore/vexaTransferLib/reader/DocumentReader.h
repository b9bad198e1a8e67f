// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/reader/Children.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>

#include <memory>

namespace vexaTransferLib::reader {

/// \throws dbc::postcondition_error when the root element is missing or is not a `gpx`
void RequireGpxRoot(const NodeView& root);

/// The reader of the root's children. Of the root it uses only the attributes.
std::unique_ptr<ChildReader> EnterDocument(ReadContext& context, const NodeView& root, GpxDocument& document);

/// Walks the children of the root element; see GpxParser::ParseGpxNode.
void ReadDocument(ReadContext& context, const NodeView& root, GpxDocument& document);

} // namespace vexaTransferLib::reader
