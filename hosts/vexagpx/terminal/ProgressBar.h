// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/unistr.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace vexagpx {

/// How much of a file has been read.
struct Progress {
    std::uint64_t done = 0;
    std::uint64_t inAll = 0; ///< 0 when it is not known
};

/// "walk.gpx  [=====               ]  27%", or "walk.gpx  12.3 MB", in at most `width` columns.
icu::UnicodeString ProgressLine(const icu::UnicodeString& name, const Progress& progress, std::size_t width);

/// When to draw: first after half a second, and then about ten times a second.
class ProgressPace {
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit ProgressPace(Time start) : next_(start + std::chrono::milliseconds(500)) {}

    /// True when it is time, and then not again for a while.
    bool IsDue(Time now);

private:
    Time next_;
};

/// Shows the progress of one reading on standard error, if that is a terminal that can show it. The destructor clears
/// the line.
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

/// Switches all progress bars off.
void HideProgress();

} // namespace vexagpx
