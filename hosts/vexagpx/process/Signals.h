// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include <signal.h>

namespace vexagpx {

/// From now on, a signal that ends the program first clears the status line and removes temporary files. Signals that
/// the program's caller had ignored stay ignored.
void CatchDeadlySignals();

/// Thrown when SIGINT or SIGTERM has stopped the work and the message has been printed. It is no std::exception, so
/// that nothing between here and main() takes it for the failure of one file.
struct Interruption {
    int signal;
};

/// Ends the program as the signal does by default.
void RaiseDefault(const Interruption& interruption);

/// While this object exists, the first SIGINT or SIGTERM is only noted, for a reader that checks PendingSignal often.
/// A second one ends the program at once, and so does the first one when the reader does not react for some seconds.
class DeferredInterrupt {
public:
    DeferredInterrupt();
    ~DeferredInterrupt();
    DeferredInterrupt(const DeferredInterrupt&) = delete;
    DeferredInterrupt& operator=(const DeferredInterrupt&) = delete;
};

/// The signal that was noted; 0 for none.
int PendingSignal();

/// While this object exists, its message is printed when SIGINT or SIGTERM ends the program at once.
class FatalSignalMessage {
public:
    explicit FatalSignalMessage(const std::string& message);
    ~FatalSignalMessage();
    FatalSignalMessage(const FatalSignalMessage&) = delete;
    FatalSignalMessage& operator=(const FatalSignalMessage&) = delete;
};

/// "The reading of the GPX file was cancelled: walk.gpx".
std::string CancelledMessage(const std::string& name);

/// While this object exists, the signals that end the program are blocked: a file is created and its removal arranged,
/// or neither.
class SignalBlock {
public:
    SignalBlock();
    ~SignalBlock();
    SignalBlock(const SignalBlock&) = delete;
    SignalBlock& operator=(const SignalBlock&) = delete;

private:
    sigset_t before_;
};

} // namespace vexagpx
