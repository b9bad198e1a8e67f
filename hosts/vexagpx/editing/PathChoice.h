// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace vexagpx {

/// Which tracks and routes of a document to change, by their numbers from 1; all of them when none is named.
struct PathChoice {
    std::vector<std::uint64_t> tracks;
    std::vector<std::uint64_t> routes;

    bool IsAll() const { return tracks.empty() && routes.empty(); }
};

using TakeTrack = std::function<void(vexaTransferLib::GpxTrack& track, std::size_t number)>;
using TakeRoute = std::function<void(vexaTransferLib::GpxRoute& route, std::size_t number)>;

/// Calls `takeTrack` for each chosen track and `takeRoute` for each chosen route, in the order of the document.
/// \throws std::runtime_error, before any call, when a number is above that of the last one
void ForEachPath(vexaTransferLib::GpxDocument& document, const PathChoice& choice, const TakeTrack& takeTrack,
                 const TakeRoute& takeRoute);

} // namespace vexagpx
