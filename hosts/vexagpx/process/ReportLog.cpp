// SPDX-License-Identifier: MIT
#include <vexagpx/process/ReportLog.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <utility>

namespace vexagpx {

ReportLog::ReportLog(Descriptor log) : log_(std::move(log)), before_(dbc::SetReportHandler(Take, this)) {}

ReportLog::~ReportLog() {
    dbc::SetReportHandler(before_.handler, before_.context);
}

bool ReportLog::Close() {
    if (!log_.Close())
        isComplete_ = false;
    return isComplete_;
}

void ReportLog::Take(const char* source, int line, void* log) noexcept {
    ReportLog& self = *static_cast<ReportLog*>(log);
    if (!self.log_.IsOpen())
        return;
    std::array<char, 512> text;
    const int length = std::snprintf(text.data(), text.size(), "ASSERT failed at %s:%d\n", source, line);
    const std::size_t size = std::min(static_cast<std::size_t>(length), text.size() - 1);
    if (!WriteAll(self.log_.Get(), {text.data(), size}))
        self.isComplete_ = false;
}

} // namespace vexagpx
