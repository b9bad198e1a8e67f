// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include <signal.h>

namespace vexagpx {

/// From now on a signal that ends the program clears the status line and removes what is left over before it
/// does. Signals that the caller of the program had ignored stay ignored.
void CatchDeadlySignals();

/// Thrown where SIGINT or SIGTERM stopped the work, when that has been told. No std::exception, so that nobody
/// takes it for a failure of one file on its way to main().
struct Interruption {
    int signal;
};

/// Ends the program as the signal would have done by itself.
void RaiseDefault(const Interruption& interruption);

/// While one lives, the first SIGINT or SIGTERM is only noted, for a reader that looks at it often. A second
/// one ends the program at once, and so does the first one when nobody has heeded it for some seconds.
class DeferredInterrupt {
public:
    DeferredInterrupt();
    ~DeferredInterrupt();
    DeferredInterrupt(const DeferredInterrupt&) = delete;
    DeferredInterrupt& operator=(const DeferredInterrupt&) = delete;
};

/// The signal that was noted; 0 when there was none.
int PendingSignal();

/// What is said while a file is being read when SIGINT or SIGTERM ends the program at once.
class FatalSignalMessage {
public:
    explicit FatalSignalMessage(const std::string& message);
    ~FatalSignalMessage();
    FatalSignalMessage(const FatalSignalMessage&) = delete;
    FatalSignalMessage& operator=(const FatalSignalMessage&) = delete;
};

/// "The reading of the GPX file was cancelled: walk.gpx".
std::string CancelledMessage(const std::string& name);

/// While one lives, no deadly signal is taken: what is made is also noted as left over, or neither.
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
