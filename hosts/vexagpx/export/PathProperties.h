// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/export/FeatureWriter.h>
#include <vexagpx/export/LeftOut.h>
#include <vexagpx/export/Properties.h>

#include <vexaTransferLib/GpxDocument.h>

namespace vexagpx {

/// \{
/// Adds what a route or a track has beside its points, which are not looked at unless it has a link.
/// \param missing gets the numbers of what is not added
void TakeRoute(const vexaTransferLib::GpxRoute& route, Properties& properties, LeftOut& missing);
void TakeTrack(const vexaTransferLib::GpxTrack& track, Properties& properties, LeftOut& missing);
/// \}

/// \{
/// Whether no point has anything but a position, a height and a time. It is found by counting the tags of the path, in
/// a small part of the time of a look at each point. False also when that leaves a doubt, such as for a comment.
bool HasPlainPoints(const vexaTransferLib::GpxRoute& route);
bool HasPlainPoints(const vexaTransferLib::GpxTrack& track);
/// \}

/// What a document has about itself.
/// \param missing gets the number of other values than its name, description, time and bounds
ExportHead HeadOf(const vexaTransferLib::GpxDocument& document, LeftOut& missing);

} // namespace vexagpx
