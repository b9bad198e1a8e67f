// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTrackLib/statistics/Step.h>

#include <array>
#include <cstddef>
#include <optional>

namespace vexaTrackLib::statistics {

/// The highest mean speed over at least ten seconds and three steps in succession, in metres a second.
class FastestMeter {
public:
    void Add(const Step& step);
    /// Ends a segment.
    void Break();

    const std::optional<double>& Fastest() const { return fastest_; }

private:
    struct Piece {
        double metres = 0.0;
        double seconds = 0.0;
    };

    // Steps take a second at least, so that ten of them are always enough.
    static constexpr std::size_t kRoom = 16;

    void DropOldest();

    std::array<Piece, kRoom> pieces_;
    std::size_t oldest_ = 0;
    std::size_t count_ = 0;
    double metres_ = 0.0;
    double seconds_ = 0.0;
    std::optional<double> fastest_;
};

} // namespace vexaTrackLib::statistics
