// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Posix.h>

#include <functional>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace vexagpx {

/// Tells the contract report lines in a stream of bytes from everything else. What cannot become a report
/// line is passed on at once, so that a prompt or the last words of a crash are not held back.
class ReportSplitter {
public:
    using Sink = std::function<void(std::string_view)>;

    ReportSplitter(Sink reports, Sink others) : reports_(std::move(reports)), others_(std::move(others)) {}

    void Take(std::string_view bytes);
    /// The stream has ended: a line that was not finished is no report.
    void End();

private:
    enum class Place { kLineStart, kInReport, kInOther };

    std::size_t TakeOther(std::string_view bytes);
    std::size_t TakeCandidate(std::string_view bytes);

    Sink reports_;
    Sink others_;
    Place place_ = Place::kLineStart;
    std::string held_;
};

/// Keeps the contract report of the library off the screen. The library writes it to standard error and has
/// no switch for it, so standard error becomes a pipe, and a child process copies everything but report lines
/// from there to where standard error led before. A child, because what the program says when it crashes must
/// come through as well.
class ReportFilter {
public:
    /// \param log takes the report lines when it is open
    /// \throws std::system_error
    explicit ReportFilter(Descriptor log);
    /// Gives standard error back and waits until the child has written everything.
    ~ReportFilter();
    ReportFilter(const ReportFilter&) = delete;
    ReportFilter& operator=(const ReportFilter&) = delete;

    /// The destructor's work; false when the log could not be written.
    bool Finish();

private:
    Descriptor original_;
    pid_t child_ = -1;
};

} // namespace vexagpx
