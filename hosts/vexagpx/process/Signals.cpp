// SPDX-License-Identifier: MIT
#include <vexagpx/process/Signals.h>

#include <vexagpx/process/Messages.h>
#include <vexagpx/process/Posix.h>
#include <vexagpx/process/ScopedRemoval.h>

#include <algorithm>
#include <atomic>
#include <climits>
#include <csignal>
#include <cstddef>
#include <string_view>

#include <unistd.h>

namespace vexagpx {

namespace {

constexpr int kDeadlySignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGABRT, SIGXCPU, SIGALRM};

// The seconds after which a noted signal ends the program anyway: a reader that waits for a server does not check it.
constexpr unsigned kPatience = 3;

std::atomic<bool> delayed{false};
std::atomic<int> noted{0};

// Plain memory, because the signal handler writes it.
char fatalMessage[PATH_MAX + 128];
std::atomic<std::size_t> fatalMessageLength{0};

bool IsInterruption(int signal) {
    return signal == SIGINT || signal == SIGTERM;
}

sigset_t DeadlySignals() {
    sigset_t set;
    ::sigemptyset(&set);
    for (const int signal : kDeadlySignals)
        ::sigaddset(&set, signal);
    return set;
}

extern "C" void TakeDeadlySignal(int signal) {
    if (delayed && noted == 0 && IsInterruption(signal)) {
        noted = signal;
        ::alarm(kPatience);
        return;
    }
    const int cause = signal == SIGALRM && noted != 0 ? noted.load() : signal;
    ClearStatus();
    if (IsInterruption(cause))
        static_cast<void>(WriteAll(STDERR_FILENO, {fatalMessage, fatalMessageLength}));
    RemoveScopedFiles();
    // The signal is blocked until this handler returns; then it has its default effect.
    std::signal(cause, SIG_DFL);
    ::raise(cause);
}

} // namespace

void CatchDeadlySignals() {
    for (const int signal : kDeadlySignals) {
        struct sigaction action {};
        if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler != SIG_DFL)
            continue;
        action.sa_handler = TakeDeadlySignal;
        action.sa_mask = DeadlySignals();
        // A read must not fail because a signal was noted.
        action.sa_flags = SA_RESTART;
        ::sigaction(signal, &action, nullptr);
    }
}

void RaiseDefault(const Interruption& interruption) {
    std::signal(interruption.signal, SIG_DFL);
    ::raise(interruption.signal);
}

DeferredInterrupt::DeferredInterrupt() {
    delayed = true;
}

DeferredInterrupt::~DeferredInterrupt() {
    delayed = false;
}

int PendingSignal() {
    return noted;
}

FatalSignalMessage::FatalSignalMessage(const std::string& message) {
    const std::string line = ErrorLine(message);
    const std::size_t length = std::min(line.size(), sizeof fatalMessage);
    line.copy(fatalMessage, length);
    fatalMessageLength = length;
}

FatalSignalMessage::~FatalSignalMessage() {
    fatalMessageLength = 0;
}

std::string CancelledMessage(const std::string& name) {
    return "The reading of the GPX file was cancelled: " + name;
}

SignalBlock::SignalBlock() : before_() {
    const sigset_t signals = DeadlySignals();
    ::sigprocmask(SIG_BLOCK, &signals, &before_);
}

SignalBlock::~SignalBlock() {
    ::sigprocmask(SIG_SETMASK, &before_, nullptr);
}

} // namespace vexagpx
