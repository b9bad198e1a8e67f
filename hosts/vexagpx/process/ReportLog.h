// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Posix.h>

#include <common/dbc.h>

namespace vexagpx {

/// Keeps the library's contract reports off the screen: while this object exists, they go to a log, or nowhere.
class ReportLog {
public:
    /// \param log where the reports go; they are dropped when it is not open
    explicit ReportLog(Descriptor log);
    ~ReportLog();
    ReportLog(const ReportLog&) = delete;
    ReportLog& operator=(const ReportLog&) = delete;

    /// Ends the log. False when some of it could not be written.
    bool Close();

private:
    static void Take(const char* source, int line, void* log) noexcept;

    Descriptor log_;
    bool isComplete_ = true;
    dbc::ReportReceiver before_;
};

} // namespace vexagpx
