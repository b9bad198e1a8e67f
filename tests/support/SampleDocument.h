// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>

#include <string>

namespace vexaTransferLib::testing_support {

/// A point as GPX 1.1 text in UTF-8: every field that can be written, so that two points can be compared.
std::string Written(const GpxPoint& point);
std::string Written(const GpxRoute& route);
std::string Written(const GpxTrack& track);

/// A waypoint with every field that a waypoint can have.
GpxPoint FullWaypoint();
GpxGroundspeakCache FullGeocache();

/// A document with every element that can be written. It is written as tests/data/writer/everything-1.0.gpx and
/// -1.1.gpx; everything-1.1.json is what the tool's dump shows of the latter.
GpxDocument FullDocument();

} // namespace vexaTransferLib::testing_support
