// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTrackLib/content/Hasher.h>

#include <vexaTransferLib/GpxDocument.h>

#include <string_view>

namespace vexaTrackLib::content {

/// Adds all of a point.
void AddPoint(const vexaTransferLib::GpxPoint& point, Hasher& hasher);

/// The same without the logs of its geocache.
void AddPointWithoutLogs(const vexaTransferLib::GpxPoint& point, Hasher& hasher);

/// \{
/// Adds what a route or a track has beside points and segments.
void AddRoute(const vexaTransferLib::GpxRoute& route, Hasher& hasher);
void AddTrack(const vexaTransferLib::GpxTrack& track, Hasher& hasher);
/// \}

/// Adds the elements of an object in any order, those in its `extensions` like all others.
/// \param object may be a view of nothing
/// \param part the local name of children that are added otherwise
void AddFields(const vexaTransferLib::GpxElement& object, std::string_view part, Hasher& hasher);

} // namespace vexaTrackLib::content
