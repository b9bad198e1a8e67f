// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/process/Output.h>

#include <vexaTransferLib/GpxDocument.h>

#include <cstddef>

namespace vexagpx {

/// How much a document contains.
struct DocumentCounts {
    std::size_t waypoints = 0;
    std::size_t routes = 0;
    std::size_t routePoints = 0;
    std::size_t tracks = 0;
    std::size_t segments = 0;
    std::size_t trackPoints = 0;
    std::size_t geocaches = 0;
    std::size_t logs = 0;
    std::size_t travelBugs = 0;
};

DocumentCounts CountDocument(const vexaTransferLib::GpxDocument& document);

enum class GeocacheDetail { kNumber, kLogsAndTravelBugs };

/// Writes three lines for a person: waypoints, routes and tracks.
void WriteCounts(const DocumentCounts& counts, GeocacheDetail detail, Output& out);

/// Writes all of them as the member "contents" of the current object.
void WriteContents(JsonWriter& json, const DocumentCounts& counts);

} // namespace vexagpx
