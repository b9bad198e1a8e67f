// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxTrack.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/reader/Children.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>

#include <memory>

namespace vexaTransferLib {
class GpxDocument;
}

namespace vexaTransferLib::reader {

/// The reader of the children of a `trk`, which appends the track when it finishes.
std::unique_ptr<ChildReader> EnterTrack(ReadContext& context, const GpxVersion& version, const NodeView& node,
                                        GpxDocument& document);

/// Reads a `trk` and appends the track; see GpxParser::ParseTrkNode.
void ReadTrack(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxDocument& document);

/// Reads a `trkseg` into a new segment; see GpxParser::ParseTrkSegNode.
void ReadSegment(ReadContext& context, const GpxVersion& version, const NodeView& node, GpxTrack& track);

} // namespace vexaTransferLib::reader
