// SPDX-License-Identifier: MIT
#include "support/SmallStack.h"

#include <pthread.h>

#include <exception>
#include <stdexcept>

namespace vexaTransferLib::testing_support {

namespace {

struct Run {
    const std::function<void()>& action;
    std::exception_ptr exception;
};

void* Start(void* argument) {
    Run& run = *static_cast<Run*>(argument);
    try {
        run.action();
    } catch (...) {
        run.exception = std::current_exception();
    }
    return nullptr;
}

} // namespace

void RunOnASmallStack(const std::function<void()>& action) {
    Run run{action, nullptr};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_t thread;
    const bool started = pthread_attr_setstacksize(&attributes, kSmallStack) == 0 &&
                         pthread_create(&thread, &attributes, &Start, &run) == 0;
    pthread_attr_destroy(&attributes);
    if (!started)
        throw std::runtime_error("no thread with a small stack");
    pthread_join(thread, nullptr);
    if (run.exception)
        std::rethrow_exception(run.exception);
}

} // namespace vexaTransferLib::testing_support
