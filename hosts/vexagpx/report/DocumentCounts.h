// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>

#include <cstddef>

namespace vexagpx {

/// How much there is in a document.
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

} // namespace vexagpx
