// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxInputLimits.h>
#include <vexaTransferLib/reader/InputName.h>
#include <vexaTransferLib/reader/ReadErrors.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace vexaTransferLib::reader {

/// Counts the objects that one untrusted file adds to the model. Each operation throws ReadAborted with a
/// GpxReadError when there are too many.
class ModelLimiter {
public:
    ModelLimiter(const GpxInputLimits& limits, InputName name)
        : pointLimit_(limits.points), objectLimit_(limits.objects), name_(std::move(name)) {}

    void AddPoint() {
        if (++points_ > pointLimit_)
            RefuseOverLimit(name_, "It has more points than", pointLimit_, "points");
    }
    std::uint64_t PointsLeft() const { return pointLimit_ - std::min(points_, pointLimit_); }
    /// Counts an object that is not a point.
    void AddObject() {
        if (++objects_ > objectLimit_)
            RefuseOverLimit(name_, "It has more objects than", objectLimit_, "objects");
    }

private:
    std::uint64_t pointLimit_;
    std::uint64_t objectLimit_;
    InputName name_;
    std::uint64_t points_ = 0;
    std::uint64_t objects_ = 0;
};

} // namespace vexaTransferLib::reader
