// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTrackLib/comparing/Pairing.h>

#include <vexaTransferLib/GpxPoint.h>

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <vector>

namespace vexaTrackLib::merging {

bool IsGeocache(const vexaTransferLib::GpxPoint& waypoint);

/// Finds the waypoint that is the same as another one: it has the same name and is within ten metres, or one of both is
/// a geocache, whose name is its code; without names, both have the same place and time. Constant time, however many
/// have one name: of several that lie within a few metres only the first is known.
class WaypointIndex {
public:
    /// Adds a waypoint with its index in the list.
    void Add(const vexaTransferLib::GpxPoint& waypoint, std::size_t index);
    /// The index of the same waypoint.
    /// \param waypoints the list
    std::optional<std::size_t> Find(const vexaTransferLib::GpxPoint& waypoint,
                                    const std::vector<vexaTransferLib::GpxPoint>& waypoints) const;

private:
    using Indexes = std::unordered_map<comparing::Key, std::size_t, comparing::KeyHash>;

    std::optional<std::size_t> FindNear(const comparing::Key& name, const vexaTransferLib::GpxPoint& waypoint,
                                        const std::vector<vexaTransferLib::GpxPoint>& waypoints) const;

    Indexes named_;     ///< the first one with a name
    Indexes geocaches_; ///< the first geocache with a name
    Indexes
        placed_; ///< the first one with a name in a cell of the earth, or without a name with a place and time
};

} // namespace vexaTrackLib::merging
