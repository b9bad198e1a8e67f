// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The time from the earliest to the latest of some times.

#include <common/Export.h>

#include <limits>

namespace vexaTrackLib {

/// The earliest and the latest of some times, in milliseconds since 1970 UTC, as GpxPoint has them. Nothing is thrown;
/// const operations may run on several threads at once.
class VEXATRANSFERLIB_API TimeSpan {
public:
    /// Extends the span to a time. One that is not finite is ignored.
    void Add(double time);
    /// Extends the span to that of another.
    void Add(const TimeSpan& other);

    /// True when there was no time. First and last are then bogus.
    bool IsEmpty() const { return first_ > last_; }

    /// \{
    /// In milliseconds since 1970 UTC.
    double First() const { return first_; }
    double Last() const { return last_; }
    /// \}

private:
    double first_ = std::numeric_limits<double>::infinity();
    double last_ = -std::numeric_limits<double>::infinity();
};

} // namespace vexaTrackLib
