// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>

namespace cli {

/// Blocks all signals while it exists, so that a child that is started meanwhile receives none before it has
/// set its handlers.
class SignalBlock {
public:
    SignalBlock() {
        sigset_t all;
        ::sigfillset(&all);
        ::sigprocmask(SIG_SETMASK, &all, &before_);
    }
    ~SignalBlock() { ::sigprocmask(SIG_SETMASK, &before_, nullptr); }
    SignalBlock(const SignalBlock&) = delete;
    SignalBlock& operator=(const SignalBlock&) = delete;

private:
    sigset_t before_;
};

/// For a child that becomes another program: no signal is blocked, and only \p ignored, if given, is ignored,
/// even if the caller of the tests ignores others.
inline void ResetSignals(int ignored = 0) {
    for (int signal = 1; signal < NSIG; ++signal)
        std::signal(signal, signal == ignored ? SIG_IGN : SIG_DFL);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

} // namespace cli
