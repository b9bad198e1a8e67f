// SPDX-License-Identifier: MIT
#include <common/dbc.h>

#include <cstdio>
#include <mutex>
#include <utility>

namespace dbc {

namespace {

/// What a host has set. Nothing is called while the mutex is locked, so that a handler may set another one.
class ReportSetting {
public:
    ReportReceiver Get() {
        const std::lock_guard lock(mutex_);
        return receiver_;
    }
    ReportReceiver Exchange(ReportReceiver receiver) {
        const std::lock_guard lock(mutex_);
        return std::exchange(receiver_, receiver);
    }

private:
    std::mutex mutex_;
    ReportReceiver receiver_;
};

// Ready before any constructor of a static object runs: a check may fail in one.
constinit ReportSetting reportSetting;

} // namespace

precondition_error::precondition_error(const std::string& message) : std::logic_error(message) {}
precondition_error::~precondition_error() = default;

postcondition_error::postcondition_error(const std::string& message) : std::logic_error(message) {}
postcondition_error::~postcondition_error() = default;

invariant_error::invariant_error(const std::string& message) : std::logic_error(message) {}
invariant_error::~invariant_error() = default;

void WriteReport(const char* source, int line, void*) noexcept {
    std::fprintf(stderr, "ASSERT failed at %s:%d\n", source, line);
}

ReportReceiver SetReportHandler(ReportHandler handler, void* context) noexcept {
    return reportSetting.Exchange({handler, context});
}

void ReportFailure(const char* source, int line) noexcept {
    const ReportReceiver receiver = reportSetting.Get();
    if (receiver.handler != nullptr)
        receiver.handler(source, line, receiver.context);
}

void FailPrecondition(const char* source, int line, const std::string& message) {
    ReportFailure(source, line);
    throw precondition_error(message);
}

void FailPostcondition(const char* source, int line, const std::string& message) {
    ReportFailure(source, line);
    throw postcondition_error(message);
}

void FailInvariant(const char* source, int line, const std::string& message) {
    ReportFailure(source, line);
    throw invariant_error(message);
}

} // namespace dbc
