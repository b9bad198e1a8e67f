// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Contract errors ("design by contract") and the contract report.
///
/// Three kinds of failure, each derived directly from std::logic_error so that a host can tell them apart:
///
/// | error                      | means                                                                   |
/// |----------------------------|-------------------------------------------------------------------------|
/// | `dbc::precondition_error`  | the caller passed a bad argument                                        |
/// | `dbc::postcondition_error` | the work could not be done: unreadable input, failed output or cleaning |
/// | `dbc::invariant_error`     | an object of the wrong kind was asked, or holds a value it must not     |
///
/// A failed check writes one line to standard error, the contract report, and then throws:
///
///     ASSERT failed at LibCore/vexaTransferLib/GpxParser.cpp:123
///
/// The source named is the public class on whose behalf the check ran. A host that wants the reports elsewhere, or not
/// at all, says so with SetReportHandler. The library never changes that setting.

#include <common/Export.h>

#include <stdexcept>
#include <string>

namespace dbc {

/// A caller's argument was refused. `what()` is the message that the operation documents.
class VEXATRANSFERLIB_API precondition_error : public std::logic_error {
public:
    /// \{
    /// An error with its message; copies have the same.
    explicit precondition_error(const std::string& message);
    precondition_error(const precondition_error&) = default;
    precondition_error& operator=(const precondition_error&) = default;
    /// \}
    ~precondition_error() override;
};

/// Input could not be read, output could not be written, or text could not be cleaned.
class VEXATRANSFERLIB_API postcondition_error : public std::logic_error {
public:
    /// \{
    /// An error with its message; copies have the same.
    explicit postcondition_error(const std::string& message);
    postcondition_error(const postcondition_error&) = default;
    postcondition_error& operator=(const postcondition_error&) = default;
    /// \}
    ~postcondition_error() override;
};

/// An operation was asked of an object of the wrong kind, or an object holds a value outside its range.
class VEXATRANSFERLIB_API invariant_error : public std::logic_error {
public:
    /// \{
    /// An error with its message; copies have the same.
    explicit invariant_error(const std::string& message);
    invariant_error(const invariant_error&) = default;
    invariant_error& operator=(const invariant_error&) = default;
    /// \}
    ~invariant_error() override;
};

/// Receives the contract reports of the whole process. It is called by the thread whose check failed, before the error
/// is thrown, and by several threads at once when several checks fail at once. It must not throw, which its type says.
/// \param source path from the repository root, with its extension; a constant that is valid for ever
/// \param line in that source
/// \param context what SetReportHandler was given
using ReportHandler = void (*)(const char* source, int line, void* context) noexcept;

/// The handler until a host sets another one: writes "ASSERT failed at SOURCE:LINE" and a line feed to standard error.
VEXATRANSFERLIB_API void WriteReport(const char* source, int line, void* context) noexcept;

/// A handler, and what it is called with.
struct ReportReceiver {
    ReportHandler handler = &WriteReport; ///< null when reports are dropped
    void* context = nullptr;              ///< the host's
};

/// Sets the function that receives the contract reports. This is the only process-wide setting of the
/// library. May be called at any time, from any thread; a handler is always called with the context that was
/// given with it.
///
/// A check that fails in another thread at this moment may still call the former handler after this has returned, so
/// what that one's context points to must live on until those threads are through.
///
///     struct Log { ... };
///     void ToLog(const char* source, int line, void* log) noexcept { static_cast<Log*>(log)->Add(source, line); }
///     dbc::SetReportHandler(ToLog, &log);
///     dbc::SetReportHandler(nullptr, nullptr);             // silence
///     dbc::SetReportHandler(dbc::WriteReport, nullptr);    // as at the start
///
/// \param handler null drops the reports
/// \param context handed to the handler; never looked at
/// \return what was set before
VEXATRANSFERLIB_API ReportReceiver SetReportHandler(ReportHandler handler, void* context) noexcept;

/// Gives the contract report to the handler that is set.
/// \param source path from the repository root, with its extension
VEXATRANSFERLIB_API void ReportFailure(const char* source, int line) noexcept;

/// \{
/// Each makes the contract report and throws the error of its name with \p message as its `what()`.
[[noreturn]] VEXATRANSFERLIB_API void FailPrecondition(const char* source, int line,
                                                       const std::string& message);
[[noreturn]] VEXATRANSFERLIB_API void FailPostcondition(const char* source, int line,
                                                        const std::string& message);
[[noreturn]] VEXATRANSFERLIB_API void FailInvariant(const char* source, int line, const std::string& message);
/// \}

/// \{
/// Checks: nothing happens while \p holds is true; otherwise the report is made and the error is thrown.
/// \p source is passed by the caller because `__FILE__` would show the path of the machine that built the
///         library.
inline void Require(bool holds, const char* source, const char* message, int line = __builtin_LINE()) {
    if (!holds)
        FailPrecondition(source, line, message);
}

inline void Ensure(bool holds, const char* source, const char* message, int line = __builtin_LINE()) {
    if (!holds)
        FailPostcondition(source, line, message);
}

inline void Invariant(bool holds, const char* source, const char* message, int line = __builtin_LINE()) {
    if (!holds)
        FailInvariant(source, line, message);
}
/// \}

/// The check that does not throw: makes the report when \p holds is false, and returns \p holds.
inline bool SoftCheck(bool holds, const char* source, int line = __builtin_LINE()) noexcept {
    if (!holds)
        ReportFailure(source, line);
    return holds;
}

} // namespace dbc
