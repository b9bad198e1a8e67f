// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/unistr.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace vexagpx {

/// How far a reading is. `inAll` is 0 when it is not known.
struct Progress {
    std::uint64_t done = 0;
    std::uint64_t inAll = 0;
};

/// "walk.gpx  [=====               ]  27%", or "walk.gpx  12.3 MB", in at most `width` columns.
icu::UnicodeString ProgressLine(const icu::UnicodeString& name, const Progress& progress, std::size_t width);

/// When to draw: not before half a second has gone by, and then some ten times a second.
class ProgressPace {
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit ProgressPace(Time start) : next_(start + std::chrono::milliseconds(500)) {}

    /// True when it is time, and then not again for a while.
    bool IsDue(Time now);

private:
    Time next_;
};

/// The progress of one reading on standard error, if that is a terminal that can do it. Nothing of it remains
/// when this goes.
class ProgressBar {
public:
    /// \param name shown before the bar
    explicit ProgressBar(const std::string& name);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void Update(const Progress& progress);

private:
    icu::UnicodeString name_;
    bool wanted_;
    ProgressPace pace_;
};

/// From now on no bar shows anything.
void HideProgress();

} // namespace vexagpx
